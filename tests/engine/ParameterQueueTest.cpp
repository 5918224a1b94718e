// Parameters: clamps, holds, states and links. Draining the queue of parameter changes between
// internal blocks: ramps, jumps, barriers, dropped output-only writes and the ring's overflow.
// Transactions: changes made inside one land together between two internal blocks. Without
// fades (the product's setting) nothing is muted; with fades the sound fades out over 20 ms,
// stays silent while the changes land and the tree flushes, and fades in over 20 ms.
#include "engine/core/Handler.h"
#include "tests/engine/TestModules.h"

#include <algorithm>
#include <cmath>

#include <gtest/gtest.h>

namespace OV::Testing {
namespace {

using namespace AudioEngine;

// One internal block of 64 samples runs per host block of 64 (RunDc's default).
class ParameterQueueTest : public testing::Test {
protected:
    void SetUp() override { runner.RunDc(0.5f); }

    // Host blocks of 64 samples of DC 1.0; returns the left output.
    std::vector<float> RunBlocks(int blocks) { return runner.RunDc(1.0f, 64 * static_cast<std::size_t>(blocks)); }

    ScaleRunner runner; // at 48 kHz
    AudioEngine::ModuleHost<StereoScaleTraits>& host = runner.Host();
    StereoScale& root = runner.Root();
    AudioEngine::ParametersManager& queue = runner.Queue();
};

using TransactionTest = ParameterQueueTest;

TEST_F(ParameterQueueTest, PlainParametersGlideOverTheRampTime)
{
    queue.Enqueue("Gain", 15.0f);
    // 30 dB of range in 0.1 s: each 64-sample block moves 30 * (64 / 48000) / 0.1 = 0.4 dB.
    const float step = 30.0f * ((64.0f / 48000.0f) / 0.1f);
    float expected = 0.0f;
    for (int block = 1; block <= 37; ++block) {
        runner.RunDc(0.5f);
        expected += step;
        ASSERT_FLOAT_EQ(expected, runner.Get("Gain")) << block;
        ASSERT_EQ(1, host.GetOccupancy()) << "an unfinished ramp stays queued";
    }
    runner.RunDc(0.5f);
    EXPECT_EQ(15.0f, runner.Get("Gain")) << "the last step lands exactly on the target";
    EXPECT_EQ(0, host.GetOccupancy());

    queue.Enqueue("Gain", 14.9f);
    runner.RunDc(0.5f);
    EXPECT_EQ(14.9f, runner.Get("Gain")) << "a change smaller than one step lands at once";
}

TEST_F(ParameterQueueTest, StepsStatesAndOutputOnlyParameters)
{
    queue.Enqueue("Scale", -2.0f);
    queue.Enqueue("Mode", 1.7f);
    queue.Enqueue("Level", 5.0f);
    queue.Enqueue("Nowhere", 1.0f);
    const int writesBefore = root.writes;
    runner.RunDc(0.5f);
    EXPECT_EQ(-2.0f, runner.Get("Scale")) << "a step parameter jumps";
    EXPECT_EQ(1.7f, runner.Get("Mode")) << "a state parameter stores the value as given";
    EXPECT_EQ(0.0f, runner.Get("Level")) << "an output-only parameter ignores the queue";
    EXPECT_EQ(writesBefore + 2, root.writes);
    EXPECT_EQ(0, host.GetOccupancy());

    queue.Enqueue("Mode", 1.2f);
    runner.RunDc(0.5f);
    EXPECT_EQ(1.7f, runner.Get("Mode")) << "the same state is not written again";
    queue.Enqueue("Mode", 2.7f);
    queue.Enqueue("Scale", std::nanf(""));
    runner.RunDc(0.5f);
    EXPECT_EQ(2.0f, runner.Get("Mode")) << "clamped to the last state";
    EXPECT_EQ(-2.0f, runner.Get("Scale")) << "NaN never enters the queue";
    // Far out of any integer's range: compared as states without an undefined conversion.
    for (const float far : {-3e9f, INFINITY}) {
        queue.Enqueue("Mode", far);
        runner.RunDc(0.5f);
        EXPECT_EQ(far > 0.0f ? 2.0f : 0.0f, runner.Get("Mode")) << far;
    }
}

TEST_F(ParameterQueueTest, BarrierAppliesOlderChangesFirstInOrder)
{
    queue.Enqueue("Gain", 10.0f);
    runner.RunDc(0.5f);
    ASSERT_LT(runner.Get("Gain"), 10.0f);

    queue.Enqueue("Mode", 2.0f);
    queue.Enqueue("Fence", 3.0f);
    queue.Enqueue("Scale", 0.5f);
    const int first = root.writes;
    runner.RunDc(0.5f);
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

TEST_F(ParameterQueueTest, FullRingLosesTheOldestChanges)
{
    constexpr int ring = AudioEngine::ParametersManager::ringSize;
    for (int i = 0; i < ring + 5; ++i)
        queue.Enqueue("Fence", static_cast<float>(i % 10));
    EXPECT_EQ(ring, host.GetOccupancy());
    const int first = root.writes;
    runner.RunDc(0.5f);
    EXPECT_EQ(first + ring, root.writes);
    EXPECT_EQ(5.0f, root.writeValues[static_cast<std::size_t>(first)]) << "changes 0 to 4 were lost";
    EXPECT_EQ(0, host.GetOccupancy());
}

// A reader on another thread sees the tree between two passes that change it. The writer is
// held at chosen points here: inside a pass, and a whole pass inside the reader's reads.
TEST_F(ParameterQueueTest, ReadersSeeTheTreeOnlyBetweenChangePasses)
{
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
    EXPECT_FALSE(changes.ReadStable([&] { runner.RunDc(0.5f); }, 1)) << "drain";
    queue.Enqueue("Gain", 6.0f);
    EXPECT_FALSE(changes.ReadStable([&] { host.BeginTransaction(); }, 1)) << "flush";
    queue.Enqueue("Gain", 9.0f);
    host.CommitTransaction();
    EXPECT_FALSE(changes.ReadStable([&] { runner.RunDc(0.5f); }, 1)) << "replay";
    EXPECT_EQ(9.0f, runner.Get("Gain"));
    EXPECT_TRUE(changes.ReadStable([&] { runner.RunDc(0.5f); }, 1)) << "a block with nothing queued changes nothing";
}

TEST_F(TransactionTest, WithoutFadesChangesLandTogetherAtTheNextBlock)
{
    host.SetFadeEnabled(false);
    host.SetResetOnCommit(false);
    RunBlocks(2);

    queue.Enqueue("Gain", 12.0f); // a ramp still running when the transaction begins
    ASSERT_TRUE(host.BeginTransaction());
    EXPECT_EQ(12.0f, runner.Get("Gain")) << "begin lands what the ring held";
    EXPECT_FALSE(host.BeginTransaction());

    queue.Enqueue("Scale", 0.5f);
    queue.Enqueue("Mode", 2.0f);
    std::vector<float> out = RunBlocks(2);
    EXPECT_EQ(1.0f, out.back()) << "nothing lands while the transaction is open";
    EXPECT_TRUE(host.IsInTransaction());

    host.CommitTransaction();
    EXPECT_TRUE(host.IsInTransaction());
    out = RunBlocks(1);
    // The first internal block after the commit runs with both changes, unmuted and unfaded.
    EXPECT_EQ(std::vector<float>(64, 0.5f), out);
    EXPECT_EQ(2.0f, runner.Get("Mode"));
    EXPECT_FALSE(host.IsInTransaction());
    EXPECT_EQ(0, host.GetRoot().resets);
}

TEST_F(TransactionTest, EmptyCommitAndCancel)
{
    RunBlocks(1);
    ASSERT_TRUE(host.BeginTransaction());
    host.CommitTransaction();
    EXPECT_FALSE(host.IsInTransaction()) << "no records: no fade, no reset";
    EXPECT_EQ(std::vector<float>(64, 1.0f), RunBlocks(1));

    host.SetFadeEnabled(false);
    ASSERT_TRUE(host.BeginTransaction());
    queue.Enqueue("Scale", 0.0f);
    host.CancelTransaction();
    EXPECT_FALSE(host.IsInTransaction());
    EXPECT_EQ(std::vector<float>(64, 1.0f), RunBlocks(1)) << "a cancelled change never lands";
}

TEST_F(TransactionTest, FullTransactionGrowsAndIsFlagged)
{
    host.SetFadeEnabled(false);
    host.SetTransactionCapacity(10);
    RunBlocks(1);
    ASSERT_TRUE(host.BeginTransaction());
    for (int i = 0; i < 10; ++i)
        queue.Enqueue("Fence", 1.0f);
    EXPECT_FALSE(queue.TransactionOverflowed());
    queue.Enqueue("Scale", 3.0f);
    EXPECT_TRUE(queue.TransactionOverflowed());
    EXPECT_EQ(11, queue.TransactionRecords());
    host.CommitTransaction();
    const std::vector<float> out = RunBlocks(1);
    EXPECT_EQ(3.0f, out[4]) << "the write beyond the capacity was kept";
}

TEST_F(TransactionTest, WithFadesSoundFadesOutWaitsAndFadesIn)
{
    RunBlocks(2);
    constexpr int records = 12;
    ASSERT_TRUE(host.BeginTransaction());
    for (int i = 0; i < records - 1; ++i)
        queue.Enqueue("Fence", 1.0f);
    queue.Enqueue("Scale", 0.5f);
    host.CommitTransaction();

    const std::vector<float> out = RunBlocks(60);
    const double fade = 48000 * 0.020; // 960 samples

    // Fade-out: the gain falls by 1/960 per sample from the commit, through the old sound.
    for (int i = 0; i < 900; ++i)
        ASSERT_NEAR(1.0 - i / fade, out[static_cast<std::size_t>(i)], 1e-4) << i;
    // Then silence: 20 ms in whole blocks, within which the records replay (within 10 ms).
    const auto silent = std::find(out.begin() + 900, out.end(), 0.0f);
    const int firstSilence = static_cast<int>(silent - out.begin());
    const int firstSound = static_cast<int>(std::find_if(silent, out.end(), [](float x) { return x != 0.0f; }) - out.begin());
    ASSERT_LE(firstSilence, 960 + 64);
    ASSERT_GE(firstSound, 960 + 960);
    ASSERT_LE(firstSound, 960 + 960 + 192) << "each phase may take one block more for rounding";
    EXPECT_EQ(1, host.GetRoot().resets) << "reset on commit is on by default";
    // Fade-in over 20 ms, of the new sound (Scale 0.5); the input ramps too, so the output
    // follows the square of the ramp until the ramp is full.
    const int start = firstSound - 1;
    for (int i = 100; i < 900; i += 50) {
        const double ramp = i / fade;
        const float sample = out[static_cast<std::size_t>(start + i)];
        ASSERT_GT(sample, 0.5 * ramp * (ramp - 0.01) - 1e-3) << i;
        ASSERT_LT(sample, 0.5 * ramp + 1e-3) << i;
    }
    EXPECT_EQ(0.5f, out.back());
    EXPECT_FALSE(host.IsInTransaction());
}

TEST(ParameterTest, ValuesClampAndHoldFlagsKeepTheirExtreme)
{
    Parameter plain("P", "", -2.0f, 3.0f, 5.0f, 0);
    EXPECT_EQ(5.0f, plain.GetDefault()) << "kept as given";
    EXPECT_EQ(3.0f, plain.GetValue()) << "the default goes through the clamp";
    plain.SetValue(-2.5f);
    EXPECT_EQ(-2.0f, plain.GetValue());
    plain.SetValue(std::nanf(""));
    EXPECT_EQ(-2.0f, plain.GetValue()) << "NaN is ignored";
    plain.SetValue(1.25f);
    EXPECT_EQ(1.25f, plain.GetValue());
    EXPECT_EQ(1.25f, plain.GetValue()) << "a plain read is not destructive";

    Parameter floor("F", "", 0.0f, 10.0f, 4.0f, ParameterBase::FloorHold);
    floor.SetValue(7.0f);
    EXPECT_EQ(4.0f, floor.GetValue()) << "the smaller value is kept";
    EXPECT_EQ(10.0f, floor.GetValue()) << "a read re-arms to the maximum";
    floor.SetValue(6.0f);
    floor.SetValue(8.0f);
    EXPECT_EQ(6.0f, floor.GetValue());

    Parameter peak("K", "", 0.0f, 10.0f, 0.0f, ParameterBase::PeakHold);
    peak.SetValue(3.0f);
    peak.SetValue(2.0f);
    EXPECT_EQ(3.0f, peak.GetValue());
    EXPECT_EQ(0.0f, peak.GetValue()) << "a read re-arms to the minimum";
}

TEST(ParameterTest, StatesCountFromZeroInBuildingOrder)
{
    const Parameter mode("Mode_2", "", std::vector<std::string>{"HiPass", "LowShelving", "Peaking", "HiShelving", "LowPass"},
                         "Peaking", ParameterBase::Step);
    EXPECT_EQ((std::vector<float>{0, 4, 2, 1, 4}),
              (std::vector<float>{mode.GetMin(), mode.GetMax(), mode.GetDefault(), mode.GetStates().at("LowShelving"),
                                  mode.GetStates().at("LowPass")}));
    Parameter copy("S", "", std::vector<std::string>{"Off", "On", "Auto"}, "On", 0);
    copy.SetValue(2.7f);
    EXPECT_EQ(2.0f, copy.GetValue());
    copy.SetValue(1.7f);
    EXPECT_EQ(1.7f, copy.GetValue()) << "only consumers truncate";

    EXPECT_EQ("Gain_3", BandName("Gain", 3));
    EXPECT_EQ(3, BandOf("Gain_3"));
    EXPECT_EQ(0, BandOf("Q_LPHP_0"));
}

// A handler that records the writes that reach it.
class RecordingHandler : public ParameterHandler {
public:
    explicit RecordingHandler(const char* name) : ParameterHandler(name)
    {
        AddParameter(std::make_unique<Parameter>("Gain", "output gain", -15.0f, 15.0f, 0.0f, 0));
        AddParameter(std::make_unique<Parameter>("Only", "", 0.0f, 1.0f, 0.0f, ParameterBase::OutputOnly));
    }
    void SetParameter(const std::string& name, float value) override
    {
        writes.push_back(name + "=" + std::to_string(static_cast<int>(value)));
        ParameterHandler::SetParameter(name, value);
    }
    std::vector<std::string> writes;
};

TEST(ParameterTest, LinksWriteThroughTheTargetHandler)
{
    RecordingHandler left("L");
    RecordingHandler right("R");
    ParameterLinked link(left, "Gain", "Gain_Module");
    EXPECT_EQ("output gain", link.GetDescription());
    link.SetValue(20.0f);
    EXPECT_EQ(std::vector<std::string>{"Gain=20"}, left.writes) << "the handler sees the write";
    EXPECT_EQ(std::make_pair(15.0f, -15.0f), std::make_pair(link.GetValue(), link.GetMin())) << "clamped by the target";
    EXPECT_EQ(ParameterBase::OutputOnly, ParameterLinked(left, "Only", "x").GetFlags());

    link.Retarget(right);
    link.SetValue(-4.0f);
    EXPECT_EQ(std::vector<std::string>{"Gain=-4"}, right.writes);
    EXPECT_EQ(-4.0f, link.GetValue());
    EXPECT_EQ(15.0f, left.GetParameter("Gain")->GetValue());

    ParameterMultiLink both({&left, &right}, "Gain");
    both.SetValue(7.0f);
    EXPECT_EQ("Gain=7", left.writes.back());
    EXPECT_EQ("Gain=7", right.writes.back());
    right.SetParameter("Gain", 1.0f);
    EXPECT_EQ(7.0f, both.GetValue()) << "reads come from the first handler";
    EXPECT_EQ("output gain", both.GetDescription());
}

}  // namespace
}  // namespace OV::Testing
