#pragma once

#include <benchmark/benchmark.h>

namespace OV::Bench {

// Reports the time per frame ("frame_time", shown in seconds with an SI prefix: "n" is ns)
// and the realtime factor at `sampleRate`: seconds of audio processed per second of CPU time.
inline void SetFrameCounters(benchmark::State& state, double framesPerIteration, double sampleRate)
{
    using benchmark::Counter;
    state.counters["frame_time"]
        = Counter(framesPerIteration, Counter::kIsIterationInvariantRate | Counter::kInvert);
    state.counters["realtime_x"]
        = Counter(framesPerIteration / sampleRate, Counter::kIsIterationInvariantRate);
}

}  // namespace OV::Bench
