// The cascade kernels alone: six sections on each of two channels over the engine's internal
// blocks of 64 samples, by kernel.
#include "bench/FrameCounters.h"
#include "engine/dsp/equaliser/CascadeKernels.h"
#include "engine/dsp/equaliser/LinearPhaseEqFilterChain.h"

#include <cmath>
#include <vector>

#include <benchmark/benchmark.h>

namespace {

using namespace AudioEngine::AudioAlgorithm;

void Cascade(benchmark::State& state)
{
    const auto& runnable = RunnableCascadeKernels();
    if (static_cast<std::size_t>(state.range(0)) >= runnable.size()) {
        state.SkipWithError("this processor cannot run that kernel");
        return;
    }
    const CascadeKernels& kernels = *runnable[static_cast<std::size_t>(state.range(0))];
    state.SetLabel(kernels.name);
    EqChain chains[2];
    for (EqChain& chain : chains) {
        chain.SetSampleRate(48000.0f);
        chain.linearized = false;
        for (int band = 0; band < EqChain::bandCount; ++band) {
            chain.bands[static_cast<std::size_t>(band)].active = true;
            chain.bands[static_cast<std::size_t>(band)].gain = band % 2 == 0 ? 3.0f : -4.0f;
            chain.bands[static_cast<std::size_t>(band)].frequency = 100.0f * static_cast<float>(band + 1);
            chain.Design(band);
        }
    }
    const int block = static_cast<int>(state.range(1));
    std::vector<float> in(static_cast<std::size_t>(block)), outL(in.size()), outR(in.size());
    for (int i = 0; i < block; ++i)
        in[static_cast<std::size_t>(i)] = std::sin(0.1f * static_cast<float>(i));
    Biquad* left[6];
    Biquad* right[6];
    const int count = chains[0].RunningSections(left);
    chains[1].RunningSections(right);
    for (auto _ : state) {
        kernels.stereo(left, count, right, count, in.data(), in.data(), outL.data(), outR.data(), block);
        benchmark::DoNotOptimize(outL.data());
        benchmark::DoNotOptimize(outR.data());
    }
    OV::Bench::SetFrameCounters(state, block, 48000.0);
}
BENCHMARK(Cascade)->ArgsProduct({{0, 1, 2}, {64, 1024}})->ArgNames({"kernel", "block"});

}  // namespace
