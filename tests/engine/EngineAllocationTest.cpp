// The audio path allocates nothing after the first block: re-framing, the queue, ramps,
// barriers, overflow and a transaction without fades.
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
