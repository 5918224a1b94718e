// The shell's share of a block: tempo step, processor flags and channel folding around an
// audio role that copies its input.
#include "docview/interfaces/Audio.h"
#include "docview/utils/BasicComponent.h"
#include "docview/utils/BasicComponentProfile.h"
#include "shell/framework/Process.h"
#include "bench/FrameCounters.h"

#include <algorithm>
#include <vector>

#include <benchmark/benchmark.h>

namespace {

using namespace OV::CFW;

class CopyAudio : public DocView::Audio, public DocView::AudioProfile {
public:
    const AudioProfile* GetProfile() const override { return this; }
    int GetInputCount() const override { return 2; }
    int GetOutputCount() const override { return 2; }
    void SetBlockSize(unsigned) override {}
    void SetSampleRate(float) override {}
    void SetTransport(float, double, double) override {}
    void Process(float** in, float** out, int frames, void*) override
    {
        std::copy(in[0], in[0] + frames, out[0]);
        std::copy(in[1], in[1] + frames, out[1]);
    }
    int GetLatency() override { return 0; }
    void Stop() override {}
};

class BenchComponent : public DocViewUtils::BasicComponent {
public:
    BenchComponent() : BasicComponent(&Profile()) { AddInterface(&audio); }

private:
    static DocViewUtils::BasicComponentProfile& Profile()
    {
        struct P : DocViewUtils::BasicComponentProfile {
            P() : BasicComponentProfile({0, 0, 0, {}}, "Bench") {}
        };
        static P profile;
        return profile;
    }
    CopyAudio audio;
};

// Host channels 2 (no folding) or 1 (folded into the stereo engine and back).
void ProcessBlock(benchmark::State& state)
{
    const int frames = static_cast<int>(state.range(0));
    const int hostChannels = static_cast<int>(state.range(1));
    HLA2Host host = {};
    HLAFramework::Process process(&host, new BenchComponent, 0, 2, 2);
    HLA2Process* table = OV::HLA2::Process::ToTable(&process);
    table->SetBlockSize(table, static_cast<unsigned>(frames));
    table->SetHostInputCount(table, hostChannels);
    table->SetHostOutputCount(table, hostChannels);
    std::vector<float> left(frames, 0.25f), right(frames, -0.5f), outLeft(frames), outRight(frames);
    float* inputs[2] = {left.data(), right.data()};
    float* outputs[2] = {outLeft.data(), outRight.data()};
    for (auto _ : state) {
        table->ProcessSeparate(table, inputs, outputs, frames, nullptr);
        benchmark::DoNotOptimize(outLeft.data());
    }
    OV::Bench::SetFrameCounters(state, frames, 48000.0);
}
BENCHMARK(ProcessBlock)->ArgsProduct({{64, 512}, {1, 2}})->ArgNames({"frames", "host_channels"});

}  // namespace


