// Transactions: changes made inside one land together between two internal blocks. Without
// fades (the product's setting) nothing is muted; with fades the sound fades out over 20 ms,
// stays silent while the changes land and the tree flushes, and fades in over 20 ms.
#include "engine/core/ModuleHost.h"
#include "tests/engine/TestModules.h"

#include <algorithm>

#include <gtest/gtest.h>

namespace OV::Testing {
namespace {

using Host = AudioEngine::ModuleHost<StereoScaleTraits>;

// Runs host blocks of 64 samples of DC 1.0 and returns the left output.
std::vector<float> RunBlocks(Host& host, int blocks)
{
    std::vector<float> result;
    std::vector<float> in(64, 1.0f), out(64), right(64);
    float* ins[2] = {in.data(), in.data()};
    float* outs[2] = {out.data(), right.data()};
    for (int b = 0; b < blocks; ++b) {
        host.ProcessHostBlock(ins, outs, 64);
        result.insert(result.end(), out.begin(), out.end());
    }
    return result;
}

TEST(TransactionTest, WithoutFadesChangesLandTogetherAtTheNextBlock)
{
    Host host;
    host.SetSampleRate(48000.0f);
    host.SetFadeEnabled(false);
    host.SetResetOnCommit(false);
    RunBlocks(host, 2);
    AudioEngine::ParametersManager& queue = host.GetParametersManager();

    queue.Enqueue("Gain", 12.0f); // a ramp still running when the transaction begins
    ASSERT_TRUE(host.BeginTransaction());
    EXPECT_EQ(12.0f, host.GetRoot().GetParameter("Gain")->GetValue()) << "begin lands what the ring held";
    EXPECT_FALSE(host.BeginTransaction());

    queue.Enqueue("Scale", 0.5f);
    queue.Enqueue("Mode", 2.0f);
    std::vector<float> out = RunBlocks(host, 2);
    EXPECT_EQ(1.0f, out.back()) << "nothing lands while the transaction is open";
    EXPECT_TRUE(host.IsInTransaction());

    host.CommitTransaction();
    EXPECT_TRUE(host.IsInTransaction());
    out = RunBlocks(host, 1);
    // The first internal block after the commit runs with both changes, unmuted and unfaded.
    EXPECT_EQ(std::vector<float>(64, 0.5f), out);
    EXPECT_EQ(2.0f, host.GetRoot().GetParameter("Mode")->GetValue());
    EXPECT_FALSE(host.IsInTransaction());
    EXPECT_EQ(0, host.GetRoot().resets);
}

TEST(TransactionTest, EmptyCommitAndCancel)
{
    Host host;
    host.SetSampleRate(48000.0f);
    RunBlocks(host, 1);
    ASSERT_TRUE(host.BeginTransaction());
    host.CommitTransaction();
    EXPECT_FALSE(host.IsInTransaction()) << "no records: no fade, no reset";
    EXPECT_EQ(std::vector<float>(64, 1.0f), RunBlocks(host, 1));

    host.SetFadeEnabled(false);
    ASSERT_TRUE(host.BeginTransaction());
    host.GetParametersManager().Enqueue("Scale", 0.0f);
    host.CancelTransaction();
    EXPECT_FALSE(host.IsInTransaction());
    EXPECT_EQ(std::vector<float>(64, 1.0f), RunBlocks(host, 1)) << "a cancelled change never lands";
}

TEST(TransactionTest, FullTransactionGrowsAndIsFlagged)
{
    Host host;
    host.SetFadeEnabled(false);
    host.SetTransactionCapacity(10);
    RunBlocks(host, 1);
    ASSERT_TRUE(host.BeginTransaction());
    AudioEngine::ParametersManager& queue = host.GetParametersManager();
    for (int i = 0; i < 10; ++i)
        queue.Enqueue("Fence", 1.0f);
    EXPECT_FALSE(queue.TransactionOverflowed());
    queue.Enqueue("Scale", 3.0f);
    EXPECT_TRUE(queue.TransactionOverflowed());
    EXPECT_EQ(11, queue.TransactionRecords());
    host.CommitTransaction();
    const std::vector<float> out = RunBlocks(host, 1);
    EXPECT_EQ(3.0f, out[4]) << "the write beyond the capacity was kept";
}

TEST(TransactionTest, WithFadesSoundFadesOutWaitsAndFadesIn)
{
    Host host;
    constexpr float rate = 48000.0f;
    host.SetSampleRate(rate);
    RunBlocks(host, 2);
    constexpr int records = 12;
    ASSERT_TRUE(host.BeginTransaction());
    for (int i = 0; i < records - 1; ++i)
        host.GetParametersManager().Enqueue("Fence", 1.0f);
    host.GetParametersManager().Enqueue("Scale", 0.5f);
    host.CommitTransaction();

    const std::vector<float> out = RunBlocks(host, 60);
    const double fade = rate * 0.020; // 960 samples

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

}  // namespace
}  // namespace OV::Testing
