// The audio path allocates nothing after the first block: re-framing, the queue, ramps,
// barriers, overflow and a transaction without fades.
#include "engine/ModuleHostEngine.h"
#include "engine/core/ModuleHost.h"
#include "tests/engine/TestModules.h"
#include "tests/support/AllocationCounter.h"

#include <gtest/gtest.h>

namespace OV::Testing {
namespace {

// Sets a host up without fades, runs its first block, then counts the allocations of `rounds`
// rounds of `change(round, queue)` and a host block of `length(round)` samples.
template <typename Host, typename Change, typename Length>
long AllocationsWhileRunning(Host& host, float rate, int capacity, int rounds, Change change, Length length)
{
    host.SetSampleRate(rate);
    host.GetRoot().SampleRateChanged();
    host.SetFadeEnabled(false);
    host.SetTransactionCapacity(capacity);
    std::vector<float> left(1024, 0.25f), right(1024, -0.25f), outL(1024), outR(1024);
    float* in[2] = {left.data(), right.data()};
    float* out[2] = {outL.data(), outR.data()};
    host.ProcessHostBlock(in, out, 512);
    const AllocationCounter counter;
    for (int round = 0; round < rounds; ++round) {
        change(round, host.GetParametersManager());
        host.ProcessHostBlock(in, out, length(round));
    }
    return counter.Count();
}

TEST(EngineAllocationTest, ProcessingAndDrainingAllocateNothing)
{
    AudioEngine::ModuleHost<StereoScaleTraits> host;
    const std::string gain = "Gain", scale = "Scale", fence = "Fence", mode = "Mode";
    const auto change = [&](int round, AudioEngine::ParametersManager& queue) {
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
    };
    EXPECT_EQ(0, AllocationsWhileRunning(host, 44100.0f, 100, 200, change, [](int round) { return 1 + (round * 37) % 1000; }));
}

TEST(EngineAllocationTest, WholeEngineRunsAndSwitchesWithoutAllocating)
{
    AudioEngine::VN4::ModuleHostEngine engine;
    // Every band of both sets running, so that redesigns reach full cascades.
    for (const char* side : {"L", "R"}) {
        for (int band = 0; band < 6; ++band) {
            const std::string suffix = std::to_string(band) + side + "_Module";
            engine.GetRoot().SetParameter("Active_" + suffix, 1.0f);
            engine.GetRoot().SetParameter("Mode_" + suffix, static_cast<float>(band % 5));
            engine.GetRoot().SetParameter("F_" + suffix, 100.0f * static_cast<float>(band + 1));
        }
    }
    // Every kind of change: band designs, mode and phase switches, oversampling on and off
    // (which rewires the converters), the pad, and a transaction.
    const std::string names[] = {"Active_0L_Module", "Gain_0L_Module", "F_2R_Module", "Mode_3L_Module",
                                 "Linearize_Module", "GlobalOversample", "PadLatency", "ChannelMode_Module",
                                 "OutGainR_Module", "Process_Module", "Q_Peaking_1L_Module"};
    const float values[] = {1.0f, 6.0f, 2000.0f, 3.0f, 0.0f, 1.0f, 18560.0f, 1.0f, -3.0f, 0.0f, 4.0f};
    const auto change = [&](int round, AudioEngine::ParametersManager& queue) {
        const std::size_t k = static_cast<std::size_t>(round) % std::size(names);
        queue.Enqueue(names[k], round % 20 < 10 ? values[k] : 0.0f);
        if (round % 30 == 29) {
            engine.BeginTransaction();
            queue.Enqueue(names[5], static_cast<float>(round % 2));
            queue.Enqueue(names[4], 1.0f);
            engine.CommitTransaction();
        }
    };
    EXPECT_EQ(0, AllocationsWhileRunning(engine, 48000.0f, 1000, 120, change, [](int round) { return 64 + (round * 53) % 449; }));
}

}  // namespace
}  // namespace OV::Testing
