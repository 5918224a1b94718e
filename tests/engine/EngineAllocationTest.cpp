// The audio path allocates nothing after the first block: re-framing, the queue, ramps,
// barriers, overflow and a transaction without fades.
#include "engine/ModuleHostEngine.h"
#include "engine/core/ModuleHost.h"
#include "tests/engine/TestModules.h"
#include "tests/support/AllocationCounter.h"

#include <gtest/gtest.h>

namespace OV::Testing {
namespace {

TEST(EngineAllocationTest, ProcessingAndDrainingAllocateNothing)
{
    AudioEngine::ModuleHost<StereoScaleTraits> host;
    host.SetSampleRate(44100.0f);
    host.SetFadeEnabled(false);
    host.SetTransactionCapacity(100);
    std::vector<float> in(1024, 0.25f), out(1024);
    float* ins[2] = {in.data(), in.data()};
    float* outs[2] = {out.data(), out.data()};
    host.ProcessHostBlock(ins, outs, 512);
    const std::string gain = "Gain", scale = "Scale", fence = "Fence", mode = "Mode";
    AudioEngine::ParametersManager& queue = host.GetParametersManager();

    const AllocationCounter counter;
    for (int round = 0; round < 200; ++round) {
        queue.Enqueue(gain, static_cast<float>(round % 30 - 15));
        queue.Enqueue(scale, 0.5f + static_cast<float>(round % 3));
        queue.Enqueue(mode, static_cast<float>(round % 3));
        if (round % 7 == 0)
            queue.Enqueue(fence, 1.0f);
        if (round % 50 == 0) {
            host.BeginTransaction();
            queue.Enqueue(scale, 1.0f);
            host.CommitTransaction();
        }
        host.ProcessHostBlock(ins, outs, 1 + (round * 37) % 1000);
    }
    EXPECT_EQ(0, counter.Count());
}

}  // namespace
}  // namespace OV::Testing

namespace OV::Testing {
namespace {

TEST(EngineAllocationTest, WholeEngineRunsAndSwitchesWithoutAllocating)
{
    AudioEngine::VN4::ModuleHostEngine engine;
    engine.SetSampleRate(48000.0f);
    engine.GetRoot().SampleRateChanged();
    engine.SetFadeEnabled(false);
    engine.SetTransactionCapacity(1000);
    std::vector<float> left(512, 0.25f), right(512, -0.25f), outL(512), outR(512);
    float* in[2] = {left.data(), right.data()};
    float* out[2] = {outL.data(), outR.data()};
    engine.ProcessHostBlock(in, out, 512);
    // Every kind of change: band designs, mode and phase switches, oversampling on and off
    // (which rewires the converters), the pad, and a transaction.
    const std::string names[] = {"Active_0L_Module", "Gain_0L_Module", "F_2R_Module", "Mode_3L_Module",
                                 "Linearize_Module", "GlobalOversample", "PadLatency", "ChannelMode_Module",
                                 "OutGainR_Module", "Process_Module"};
    const float values[] = {1.0f, 6.0f, 2000.0f, 3.0f, 0.0f, 1.0f, 18560.0f, 1.0f, -3.0f, 0.0f};
    AudioEngine::ParametersManager& queue = engine.GetParametersManager();

    const AllocationCounter counter;
    for (int round = 0; round < 120; ++round) {
        const std::size_t k = static_cast<std::size_t>(round) % std::size(names);
        queue.Enqueue(names[k], round % 20 < 10 ? values[k] : 0.0f);
        if (round % 30 == 29) {
            engine.BeginTransaction();
            queue.Enqueue(names[5], static_cast<float>(round % 2));
            queue.Enqueue(names[4], 1.0f);
            engine.CommitTransaction();
        }
        engine.ProcessHostBlock(in, out, 64 + (round * 53) % 449);
    }
    EXPECT_EQ(0, counter.Count());
}

}  // namespace
}  // namespace OV::Testing
