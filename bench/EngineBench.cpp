// The whole engine on stereo pink noise at 48 kHz with all six bands of both channels active, as
// the latency levels run it: "Low" minimum phase, "Mid" minimum phase oversampled, "High" linear
// phase oversampled with its pad; and linear phase alone, as "High" runs above 48 kHz.
#include "bench/PinkNoise.h"
#include "bench/FrameCounters.h"
#include "engine/ModuleHostEngine.h"

#include <vector>

#include <benchmark/benchmark.h>

namespace {

using OV::Bench::PinkNoise;

using AudioEngine::VN4::ModuleHostEngine;

enum Mode { Low, Mid, High, LinearAlone };

void SetUp(ModuleHostEngine& engine, Mode mode)
{
    engine.SetSampleRate(48000.0f);
    auto& root = engine.GetRoot();
    root.SampleRateChanged();
    const float frequencies[6] = {40.0f, 180.0f, 700.0f, 2500.0f, 7000.0f, 14000.0f};
    for (const char* side : {"L", "R"}) {
        for (int band = 0; band < 6; ++band) {
            const std::string suffix = std::to_string(band) + side + "_Module";
            root.SetParameter("Active_" + suffix, 1.0f);
            root.SetParameter("Mode_" + suffix, static_cast<float>(band == 0 ? 0 : band == 5 ? 3 : 2));
            root.SetParameter("F_" + suffix, frequencies[band]);
            root.SetParameter("Gain_" + suffix, band % 2 == 0 ? 3.0f : -4.0f);
        }
    }
    root.SetParameter("Linearize_Module", mode == High || mode == LinearAlone ? 1.0f : 0.0f);
    root.SetParameter("GlobalOversample", mode == Mid || mode == High ? 1.0f : 0.0f);
    root.SetParameter("PadLatency", mode == High ? 18560.0f : 0.0f);
}

void Engine(benchmark::State& state)
{
    const Mode mode = static_cast<Mode>(state.range(0));
    const int block = static_cast<int>(state.range(1));
    ModuleHostEngine engine;
    SetUp(engine, mode);
    // A whole block of the reversed-block filter per pass, so its bursts average out.
    const int length = 16384;
    std::vector<float> left = PinkNoise(length, 1), right = PinkNoise(length, 2);
    std::vector<float> outL(length), outR(length);
    for (auto _ : state) {
        for (int done = 0; done < length; done += block) {
            float* in[2] = {left.data() + done, right.data() + done};
            float* out[2] = {outL.data() + done, outR.data() + done};
            engine.ProcessHostBlock(in, out, block);
        }
        benchmark::DoNotOptimize(outL.data());
    }
    OV::Bench::SetFrameCounters(state, length, 48000.0);
}
BENCHMARK(Engine)
    ->ArgsProduct({{Low, Mid, High, LinearAlone}, {32, 64, 1024}})
    ->ArgNames({"mode", "block"})
    ->Unit(benchmark::kMicrosecond);

}  // namespace
