// Draining the queue of parameter changes between internal blocks: ramps, jumps, barriers,
// dropped output-only writes and the ring's overflow.
#include "engine/core/ModuleHost.h"
#include "tests/engine/TestModules.h"

#include <cmath>

#include <gtest/gtest.h>

namespace OV::Testing {
namespace {

using Host = AudioEngine::ModuleHost<StereoScaleTraits>;

// Runs one internal block of 64 samples (host blocks of 64 run exactly one).
void RunBlock(Host& host)
{
    std::vector<float> in(64, 0.5f), out(64);
    float* ins[2] = {in.data(), in.data()};
    float* outs[2] = {out.data(), out.data()};
    host.ProcessHostBlock(ins, outs, 64);
}

float Value(Host& host, const char* name)
{
    return host.GetRoot().GetParameter(name)->GetValue();
}

TEST(ParameterQueueTest, PlainParametersGlideOverTheRampTime)
{
    Host host;
    host.SetSampleRate(48000.0f);
    RunBlock(host);
    host.GetParametersManager().Enqueue("Gain", 15.0f);
    // 30 dB of range in 0.1 s: each 64-sample block moves 30 * (64 / 48000) / 0.1 = 0.4 dB.
    const float step = 30.0f * ((64.0f / 48000.0f) / 0.1f);
    float expected = 0.0f;
    for (int block = 1; block <= 37; ++block) {
        RunBlock(host);
        expected += step;
        ASSERT_FLOAT_EQ(expected, Value(host, "Gain")) << block;
        ASSERT_EQ(1, host.GetOccupancy()) << "an unfinished ramp stays queued";
    }
    RunBlock(host);
    EXPECT_EQ(15.0f, Value(host, "Gain")) << "the last step lands exactly on the target";
    EXPECT_EQ(0, host.GetOccupancy());

    host.GetParametersManager().Enqueue("Gain", 14.9f);
    RunBlock(host);
    EXPECT_EQ(14.9f, Value(host, "Gain")) << "a change smaller than one step lands at once";
}

TEST(ParameterQueueTest, StepsStatesAndOutputOnlyParameters)
{
    Host host;
    RunBlock(host);
    StereoScale& root = host.GetRoot();
    AudioEngine::ParametersManager& queue = host.GetParametersManager();

    queue.Enqueue("Scale", -2.0f);
    queue.Enqueue("Mode", 1.7f);
    queue.Enqueue("Level", 5.0f);
    queue.Enqueue("Nowhere", 1.0f);
    const int writesBefore = root.writes;
    RunBlock(host);
    EXPECT_EQ(-2.0f, Value(host, "Scale")) << "a step parameter jumps";
    EXPECT_EQ(1.7f, Value(host, "Mode")) << "a state parameter stores the value as given";
    EXPECT_EQ(0.0f, Value(host, "Level")) << "an output-only parameter ignores the queue";
    EXPECT_EQ(writesBefore + 2, root.writes);
    EXPECT_EQ(0, host.GetOccupancy());

    queue.Enqueue("Mode", 1.2f);
    RunBlock(host);
    EXPECT_EQ(1.7f, Value(host, "Mode")) << "the same state is not written again";
    queue.Enqueue("Mode", 2.7f);
    queue.Enqueue("Scale", std::nanf(""));
    RunBlock(host);
    EXPECT_EQ(2.0f, Value(host, "Mode")) << "clamped to the last state";
    EXPECT_EQ(-2.0f, Value(host, "Scale")) << "NaN never enters the queue";
    // Far out of any integer's range: compared as states without an undefined conversion.
    for (const float far : {-3e9f, INFINITY}) {
        queue.Enqueue("Mode", far);
        RunBlock(host);
        EXPECT_EQ(far > 0.0f ? 2.0f : 0.0f, Value(host, "Mode")) << far;
    }
}

TEST(ParameterQueueTest, BarrierAppliesOlderChangesFirstInOrder)
{
    Host host;
    host.SetSampleRate(48000.0f);
    RunBlock(host);
    StereoScale& root = host.GetRoot();
    AudioEngine::ParametersManager& queue = host.GetParametersManager();
    queue.Enqueue("Gain", 10.0f);
    RunBlock(host);
    ASSERT_LT(Value(host, "Gain"), 10.0f);

    queue.Enqueue("Mode", 2.0f);
    queue.Enqueue("Fence", 3.0f);
    queue.Enqueue("Scale", 0.5f);
    const int first = root.writes;
    RunBlock(host);
    // In queue order: one more step of the ramp, the state; at the barrier the ramp that is
    // still queued lands on its target, then the barrier itself; then the rest.
    const std::vector<std::pair<std::string, float>> expected = {
        {"Gain", 2.0f * 0.4f}, {"Mode", 2.0f}, {"Gain", 10.0f}, {"Fence", 3.0f}, {"Scale", 0.5f}};
    ASSERT_EQ(first + static_cast<int>(expected.size()), root.writes);
    for (std::size_t i = 0; i < expected.size(); ++i) {
        EXPECT_EQ(expected[i].first, root.WriteName(first + static_cast<int>(i))) << i;
        EXPECT_FLOAT_EQ(expected[i].second, root.writeValues[static_cast<std::size_t>(first) + i]) << i;
    }
    EXPECT_EQ(0, host.GetOccupancy());
}

TEST(ParameterQueueTest, FullRingLosesTheOldestChanges)
{
    Host host;
    RunBlock(host);
    StereoScale& root = host.GetRoot();
    AudioEngine::ParametersManager& queue = host.GetParametersManager();
    constexpr int ring = AudioEngine::ParametersManager::ringSize;
    for (int i = 0; i < ring + 5; ++i)
        queue.Enqueue("Fence", static_cast<float>(i % 10));
    EXPECT_EQ(ring, host.GetOccupancy());
    const int first = root.writes;
    RunBlock(host);
    EXPECT_EQ(first + ring, root.writes);
    EXPECT_EQ(5.0f, root.writeValues[static_cast<std::size_t>(first)]) << "changes 0 to 4 were lost";
    EXPECT_EQ(0, host.GetOccupancy());
}

// A reader on another thread sees the tree between two passes that change it. The writer is
// held at chosen points here: inside a pass, and a whole pass inside the reader's reads.
TEST(ParameterQueueTest, ReadersSeeTheTreeOnlyBetweenChangePasses)
{
    Host host;
    RunBlock(host);
    AudioEngine::ParametersManager& queue = host.GetParametersManager();
    AudioEngine::ChangeSequence& changes = queue.GetChanges();
    int reads = 0;
    EXPECT_TRUE(changes.ReadStable([&] { ++reads; }));
    EXPECT_EQ(1, reads);

    {
        const AudioEngine::ChangeSequence::Pass pass(changes);
        reads = 0;
        EXPECT_FALSE(changes.ReadStable([&] { ++reads; }, 3));
        EXPECT_EQ(0, reads) << "nothing is read while a pass is open";
    }

    // Each way the queue applies changes is a pass: drained, flushed, replayed.
    host.SetFadeEnabled(false);
    queue.Enqueue("Gain", 3.0f);
    EXPECT_FALSE(changes.ReadStable([&] { RunBlock(host); }, 1)) << "drain";
    queue.Enqueue("Gain", 6.0f);
    EXPECT_FALSE(changes.ReadStable([&] { host.BeginTransaction(); }, 1)) << "flush";
    queue.Enqueue("Gain", 9.0f);
    host.CommitTransaction();
    EXPECT_FALSE(changes.ReadStable([&] { RunBlock(host); }, 1)) << "replay";
    EXPECT_EQ(9.0f, Value(host, "Gain"));
    EXPECT_TRUE(changes.ReadStable([&] { RunBlock(host); }, 1)) << "a block with nothing queued changes nothing";
}

}  // namespace
}  // namespace OV::Testing
