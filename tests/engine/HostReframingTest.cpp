// Host blocks of any length through the re-framing: a scaling root at 1 returns the input
// delayed by exactly 4 samples, and the tree runs the blocks worked out below.
#include "engine/core/ModuleHost.h"
#include "tests/engine/TestModules.h"

#include <random>
#include <tuple>

#include <gtest/gtest.h>

namespace OV::Testing {
namespace {

using Host = AudioEngine::ModuleHost<StereoScaleTraits>;

// The blocks that a host block must produce, from the counts alone: with I0 samples taken
// before and I1 after, and S0 processed before (S0 is I0 rounded up to 4), the pad offers
// 4 + I1 - S0 samples; all whole granules but the last 4 samples run in blocks of 64 and a
// rest, and a partial granule at the end runs as one more block of 4.
std::vector<int> ExpectedBlocks(long before, long after)
{
    const long processed = (before + 3) / 4 * 4;
    const long available = 4 + after - processed;
    std::vector<int> blocks;
    if (available < 4)
        return blocks;
    for (long whole = available / 4 * 4 - 4; whole > 0; whole -= 64)
        blocks.push_back(static_cast<int>(std::min(whole, 64L)));
    if (available % 4 != 0)
        blocks.push_back(4);
    return blocks;
}

// Runs host blocks of the given lengths and checks output, blocks and ticks after each one.
void RunSequence(const std::vector<int>& lengths)
{
    Host host;
    StereoScale& root = host.GetRoot();
    long taken = 0;
    std::vector<float> inputL, inputR, outputL, outputR;
    for (int length : lengths) {
        std::vector<float> inL(length), inR(length), outL(length, 7.0f), outR(length, 7.0f);
        for (int i = 0; i < length; ++i) {
            inL[i] = static_cast<float>(taken + i + 1);
            inR[i] = -static_cast<float>(taken + i + 1) * 0.5f;
        }
        float* in[2] = {inL.data(), inR.data()};
        float* out[2] = {outL.data(), outR.data()};
        const int blocksBefore = root.blockCount;
        host.ProcessHostBlock(in, out, length);

        const std::vector<int> expected = ExpectedBlocks(taken, taken + length);
        ASSERT_EQ(expected, root.Blocks(blocksBefore)) << "host block of " << length << " after " << taken << " samples";
        ASSERT_EQ(static_cast<unsigned>(root.blockCount), host.GetTickCount());
        if (!expected.empty()) {
            ASSERT_EQ(expected.back(), host.GetBlockSize()) << "the tree sees the block it runs";
        }
        for (auto [all, part] : {std::pair{&inputL, &inL}, {&inputR, &inR}, {&outputL, &outL}, {&outputR, &outR}})
            all->insert(all->end(), part->begin(), part->end());
        taken += length;
    }
    for (std::size_t i = 0; i < outputL.size(); ++i) {
        ASSERT_EQ(i < 4 ? 0.0f : inputL[i - 4], outputL[i]) << "sample " << i;
        ASSERT_EQ(i < 4 ? 0.0f : inputR[i - 4], outputR[i]) << "sample " << i;
    }
}

TEST(HostReframingTest, BlocksWorkedOutByHand)
{
    // From a fresh host: 4 samples of silence are pending. One sample at a time: a block of 4
    // every fourth sample, starting with the first.
    const std::tuple<long, long, std::vector<int>> cases[] = {
        {0, 0, {}},         {0, 1, {4}},          {0, 3, {4}},          {0, 4, {4}},
        {0, 63, {60, 4}},   {0, 64, {64}},        {0, 65, {64, 4}},     {0, 70, {64, 4, 4}},
        {0, 100, {64, 36}}, {0, 128, {64, 64}},   {0, 131, {64, 64, 4}}, {0, 200, {64, 64, 64, 8}},
        {0, 1024, std::vector<int>(16, 64)}, {1, 2, {}}, {3, 4, {}}, {4, 5, {4}},
    };
    for (const auto& [before, after, blocks] : cases)
        EXPECT_EQ(blocks, ExpectedBlocks(before, after)) << before << " to " << after;
}

TEST(HostReframingTest, FixedAndRandomLengthsDelayByFourSamples)
{
    for (int length : {0, 1, 3, 4, 63, 64, 65, 200, 1024}) {
        SCOPED_TRACE(length);
        RunSequence(std::vector<int>(5, length));
    }
    const unsigned seed = 1729u;  // fixed, so that a failure repeats
    SCOPED_TRACE(testing::Message() << "seed " << seed);
    std::mt19937 random(seed);
    for (int run = 0; run < 20; ++run) {
        std::uniform_int_distribution<int> length(0, run % 2 == 0 ? 9 : 300);
        std::vector<int> lengths(60);
        for (int& value : lengths)
            value = length(random);
        RunSequence(lengths);
    }
}

}  // namespace
}  // namespace OV::Testing
