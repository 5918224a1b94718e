#include "engine/dsp/convolution/AnySizeAdapter2.h"
#include "engine/dsp/convolution/SegmentedConv.h"
#include "tests/engine/convolution/ConvolutionOracle.h"

#include <stdexcept>

namespace AudioEngine::Convolution {
namespace {

using namespace OV::Testing;
using Tail = dsp::Domain::Adapters::AnySizeAdapter2<SegmentedConv>;

struct Layout {
    int blockLength, tailLength;
    int transformLength, partitions, stride, accumulators; // worked out by hand
};

const Layout layouts[] = {
    {128, 128, 256, 1, 1, 1},   // the product: 256 taps, head 128
    {128, 3968, 256, 31, 1, 31},
    {64, 512, 128, 8, 1, 8},
    {64, 513, 256, 3, 3, 7},
    {64, 960, 256, 5, 3, 13},
    {16, 1024, 64, 22, 3, 64},
    {16, 1025, 128, 10, 7, 64},
    {32, 2048, 128, 22, 3, 64},
    {32, 2049, 256, 10, 7, 64},
    {256, 600, 512, 3, 1, 3},
    {128, 0, 256, 1, 1, 1},     // no tail at all
};

TEST(SegmentedConvTest, PartitionsFollowTheTableAndTheOutputIsOneBlockLate)
{
    const unsigned seed = 4099u;  // fixed, so that a failure repeats
    SCOPED_TRACE(testing::Message() << "seed " << seed);
    std::mt19937 random(seed);
    for (const Layout& l : layouts) {
        SCOPED_TRACE(testing::Message() << "B " << l.blockLength << " Lt " << l.tailLength);
        AlignedPool pool;
        const std::vector<float> taps = Noise(random, static_cast<std::size_t>(l.tailLength), 0.1f);
        const TailPartitions partitions(pool, taps.data(), l.tailLength, l.blockLength);
        Tail tail(partitions);
        EXPECT_EQ(l.transformLength, tail.GetTransformLength());
        EXPECT_EQ(l.partitions, tail.GetPartitionCount());
        EXPECT_EQ(l.stride, tail.GetStride());
        EXPECT_EQ(l.accumulators, tail.GetAccumulatorCount());

        const std::vector<float> x = Noise(random, static_cast<std::size_t>(l.tailLength) + 3000);
        const std::vector<float> y
            = InRandomBlocks(random, x, 300, [&](float* out, const float* in, int n) { tail.Process(out, in, n); });
        EXPECT_LT(MaxError(y, DirectConvolution(taps, x), static_cast<std::size_t>(l.blockLength)),
                  1e-6 * AbsoluteSum(taps) + 1e-7);
    }
    AlignedPool pool;
    const float tap = 1.0f;
    for (int blockLength : {8, 48, 100, 512})
        EXPECT_THROW(TailPartitions(pool, &tap, 1, blockLength), std::invalid_argument) << blockLength;
}

}  // namespace
}  // namespace AudioEngine::Convolution
