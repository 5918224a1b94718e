// The low-pass kernel and its two stages: the direct FIR of the head and the segmented
// convolution of the tail.
#include "engine/dsp/convolution/AnySizeAdapter2.h"
#include "engine/dsp/convolution/DirectFir.h"
#include "engine/dsp/convolution/LowPassKernel.h"
#include "engine/dsp/convolution/SegmentedConv.h"
#include "tests/engine/convolution/ConvolutionOracle.h"
#include "tests/engine/dsp/EqOracle.h"

#include <functional>
#include <stdexcept>
#include <tuple>

#include <fftw3.h>

namespace AudioEngine::Convolution {
namespace {

using namespace OV::Testing;
using Tail = dsp::Domain::Adapters::AnySizeAdapter2<SegmentedConv>;

// The scatter form in plain float: each guarded input sample adds v * tap into later outputs, in
// sample order. The packed kernels must give exactly this.
std::vector<float> ScatterInFloat(const std::vector<float>& taps, const std::vector<float>& x)
{
    std::vector<float> y(x.size() + taps.size(), 0.0f);
    for (std::size_t i = 0; i < x.size(); ++i) {
        const float v = x[i] + DirectFir::Guard;
        for (std::size_t j = 0; j < taps.size(); ++j)
            y[i + j] = y[i + j] + v * taps[j];
    }
    y.resize(x.size());
    return y;
}

TEST(DirectFirTest, EveryKernelComputesTheFirAcrossRingWraps)
{
    const unsigned seed = 4099u;  // fixed, so that a failure repeats
    SCOPED_TRACE(testing::Message() << "seed " << seed);
    std::mt19937 random(seed);
    for (int count : {1, 2, 3, 4, 5, 8, 9, 128, 131}) {
        SCOPED_TRACE(testing::Message() << count << " taps");
        const std::vector<float> taps = Noise(random, static_cast<std::size_t>(count));
        // Three times round the ring: one block longer than the ring takes, run in place, then
        // blocks of 1 to 300 that put the ring position everywhere.
        const std::vector<float> x = Noise(random, 3 * static_cast<std::size_t>(count + DirectFir::MaxBlock));
        for (const DirectFir::Kernel kernel : {DirectFir::Kernel::Packed4, DirectFir::Kernel::Packed8}) {
            if (!DirectFir::Runs(kernel))
                continue;
            DirectFir packed(taps.data(), count, kernel);
            std::vector<float> y(x.begin(), x.begin() + 5000);
            packed.Process(y.data(), y.data(), 5000);
            const std::vector<float> rest = InRandomBlocks(random, std::vector<float>(x.begin() + 5000, x.end()), 300,
                                                           [&](float* out, const float* in, int n) { packed.Process(out, in, n); });
            y.insert(y.end(), rest.begin(), rest.end());
            EXPECT_EQ(ScatterInFloat(taps, x), y) << (kernel == DirectFir::Kernel::Packed4 ? "4" : "8") << " floats a step";
        }
        DirectFir scalar(taps.data(), count, DirectFir::Kernel::ScalarDouble);
        const std::vector<float> z
            = InRandomBlocks(random, x, 300, [&](float* out, const float* in, int n) { scalar.Process(out, in, n); });
        EXPECT_LT(MaxError(z, DirectConvolution(taps, x)), 1e-6 * AbsoluteSum(taps));
    }
}

// The tail's step as described, one index at a time, on the same transform: the scheduled
// convolver must give exactly this.
class PlainTail {
public:
    explicit PlainTail(const TailPartitions& partitions)
        : parts(partitions), n(partitions.GetBlockLength()), f(partitions.GetTransformLength()),
          stride(f / n - 1), count(stride * (partitions.GetPartitionCount() - 1) + 1), time(Spectrum()),
          accumulators(static_cast<std::size_t>(count), Spectrum()), overlap(2 * static_cast<std::size_t>(f))
    {
    }
    void Step(float* out, const float* in)
    {
        std::fill(time.begin() + n, time.end(), 0.0f);
        for (int i = 0; i < n; ++i)
            time[static_cast<std::size_t>(i)] = in[i] + SegmentedConv::Guard;
        parts.GetFft().Forward(time.data());
        for (int p = 0; p < parts.GetPartitionCount(); ++p) {
            std::vector<float>& acc = accumulators[static_cast<std::size_t>((stride * p + current) % count)];
            const float* h = parts.GetSpectrum(p);
            acc[0] += time[0] * h[0];
            acc[1] += time[1] * h[1];
            for (std::size_t k = 2; k < acc.size(); k += 2) {
                acc[k] += time[k] * h[k] - time[k + 1] * h[k + 1];
                acc[k + 1] += time[k] * h[k + 1] + time[k + 1] * h[k];
            }
        }
        std::vector<float>& acc = accumulators[static_cast<std::size_t>(current)];
        parts.GetFft().Backward(acc.data());
        for (int i = 0; i < f; ++i)
            overlap[static_cast<std::size_t>((position + i) % (2 * f))] += acc[static_cast<std::size_t>(i)];
        for (int i = 0; i < n; ++i) {
            float& slot = overlap[static_cast<std::size_t>((position + i) % (2 * f))];
            out[i] = slot;
            slot = 0.0f;
        }
        std::fill(acc.begin(), acc.end(), 0.0f);
        position = (position + n) % (2 * f);
        current = (current + 1) % count;
    }

private:
    std::vector<float> Spectrum() const { return std::vector<float>(static_cast<std::size_t>(f) + 2); }

    const TailPartitions& parts;
    int n, f, stride, count;
    std::vector<float> time;
    std::vector<std::vector<float>> accumulators;
    std::vector<float> overlap;
    int position = 0, current = 0;
};

struct Layout {
    int blockLength, tailLength;
    int transformLength, partitions, stride, accumulators; // worked out by hand
};

const Layout layouts[] = {
    {128, 128, 256, 1, 1, 1}, // the product: 256 taps, head 128
    {128, 3968, 256, 31, 1, 31}, {64, 512, 128, 8, 1, 8},   {64, 513, 256, 3, 3, 7},    {64, 960, 256, 5, 3, 13},
    {16, 1024, 64, 22, 3, 64},   {16, 1025, 128, 10, 7, 64}, {32, 2048, 128, 22, 3, 64}, {32, 2049, 256, 10, 7, 64},
    {256, 600, 512, 3, 1, 3},
    {128, 0, 256, 1, 1, 1}, // no tail at all
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
        EXPECT_EQ(std::make_tuple(l.transformLength, l.partitions, l.stride, l.accumulators),
                  std::make_tuple(tail.GetTransformLength(), tail.GetPartitionCount(), tail.GetStride(),
                                  tail.GetAccumulatorCount()));

        const std::vector<float> x = Noise(random, static_cast<std::size_t>(l.tailLength) + 3000);
        const std::vector<float> y
            = InRandomBlocks(random, x, 300, [&](float* out, const float* in, int n) { tail.Process(out, in, n); });
        EXPECT_LT(MaxError(y, DirectConvolution(taps, x), static_cast<std::size_t>(l.blockLength)),
                  1e-6 * AbsoluteSum(taps) + 1e-7);

        // Block by block, bit for bit what the steps as described give.
        SegmentedConv scheduled(partitions);
        PlainTail plain(partitions);
        std::vector<float> fast(static_cast<std::size_t>(l.blockLength)), slow(fast.size());
        for (std::size_t at = 0; at + fast.size() <= x.size(); at += fast.size()) {
            scheduled.ProcessBlock(fast.data(), x.data() + at);
            plain.Step(slow.data(), x.data() + at);
            ASSERT_EQ(slow, fast) << "block at " << at;
        }
    }
    AlignedPool pool;
    const float tap = 1.0f;
    for (int blockLength : {8, 48, 100, 512})
        EXPECT_THROW(TailPartitions(pool, &tap, 1, blockLength), std::invalid_argument) << blockLength;
}

TEST(LowPassKernelTest, DesignIsASymmetricWindowedLowPass)
{
    const std::tuple<int, double, double> cases[] = {
        {256, 20600, 88200}, {256, 20600, 192000}, {512, 5000, 48000}, {4096, 20600, 96000}};
    for (const auto& [taps, cutoff, rate] : cases) {
        SCOPED_TRACE(testing::Message() << taps << " taps, " << cutoff << " Hz at " << rate);
        const std::vector<float> t = LowPassKernel::DesignTaps(taps, cutoff, rate);
        ASSERT_EQ(static_cast<std::size_t>(taps), t.size());
        const int m = taps / 2;
        EXPECT_EQ(m, std::max_element(t.begin(), t.end()) - t.begin());
        EXPECT_FLOAT_EQ(static_cast<float>(2 * cutoff / rate), t[static_cast<std::size_t>(m)]);
        EXPECT_EQ(0.0f, t[0]) << "the window's end";
        for (int k = 1; k < m; ++k)
            ASSERT_EQ(t[static_cast<std::size_t>(m - k)], t[static_cast<std::size_t>(m + k)]) << k;
        EXPECT_NEAR(1.0, std::accumulate(t.begin(), t.end(), 0.0), 1e-5) << "DC gain";
        // Outside the window's main lobe, 4 fs / T wide about the cut-off; |H| by a direct DFT.
        const double lobe = 4.0 * rate / taps;
        for (double f = 0.0; f <= rate / 2; f += rate / 1000) {
            if (f <= cutoff - lobe) {
                ASSERT_NEAR(0.0, Db(MeasuredMagnitude(t, f, rate)), 0.01) << f << " Hz";
            } else if (f >= cutoff + lobe) {
                ASSERT_LT(Db(MeasuredMagnitude(t, f, rate)), -60.0) << f << " Hz";
            }
        }
    }
}

TEST(LowPassKernelTest, HeadAndTailTogetherAreTheWholeFir)
{
    const unsigned seed = 4099u;  // fixed, so that a failure repeats
    SCOPED_TRACE(testing::Message() << "seed " << seed);
    std::mt19937 random(seed);
    // Taps and head length.
    for (const auto& [count, head] : {std::pair{256, 128}, {128, 128}, {1024, 64}, {4096, 128}, {600, 16}, {2048, 256}}) {
        SCOPED_TRACE(testing::Message() << count << " taps, head " << head);
        LowPassKernel kernel(count, 20600.0, 96000.0, head);
        const std::vector<float> taps = LowPassKernel::DesignTaps(count, 20600.0, 96000.0);
        const std::vector<float> x = Noise(random, static_cast<std::size_t>(count) + 4000);
        const std::vector<double> expected = DirectConvolution(taps, x);
        const std::vector<float> y
            = InRandomBlocks(random, x, 300, [&](float* out, const float* in, int n) { kernel.Process(out, in, n); });
        EXPECT_LT(MaxError(y, expected), 4e-6);
        // No delay but the filter's own: the impulse response peaks at the reported latency.
        EXPECT_EQ(kernel.GetLatency(), std::max_element(taps.begin(), taps.end()) - taps.begin());

        // 200 samples in one call: chunks of 64, 64, 64 and 8, in place.
        LowPassKernel fresh(count, 20600.0, 96000.0, head);
        std::vector<float> block(x.begin(), x.begin() + 200);
        fresh.Process(block.data(), block.data(), 200);
        EXPECT_LT(MaxError(block, expected), 4e-6);

        // Reset forgets what came before, wherever the blocks and rings stood.
        kernel.Reset();
        std::vector<float> again(x.begin(), x.begin() + 1000);
        kernel.Process(again.data(), again.data(), 1000);
        EXPECT_LT(MaxError(again, expected), 4e-6);
    }
}

TEST(LowPassKernelTest, NearSilenceGivesGuardLevelsNeverDenormals)
{
    // Each stage guards its own input: a signal that has decayed to subnormal values comes out
    // at the guards' level, in normal floats. The processor's flush-to-zero bits are off here.
    const std::vector<float> taps = LowPassKernel::DesignTaps(256, 20600.0, 96000.0);
    const SplitTaps split(taps.data(), 256, 128);
    DirectFir head(split.GetHead(), 128);
    Tail tail(split.GetTail());
    LowPassKernel kernel(256, 20600.0, 96000.0);
    const std::pair<const char*, std::function<void(float*, const float*, int)>> stages[] = {
        {"head", [&](float* out, const float* in, int n) { head.Process(out, in, n); }},
        {"tail", [&](float* out, const float* in, int n) { tail.Process(out, in, n); }},
        {"kernel", [&](float* out, const float* in, int n) { kernel.Process(out, in, n); }},
    };
    std::mt19937 random(3);
    std::vector<float> x = Noise(random, 156 * 64);
    x.resize(x.size() + 3 * 4096, 1e-40f);
    for (const auto& [stage, process] : stages) {
        std::vector<float> y(x.size());
        for (std::size_t done = 0; done < x.size(); done += 64)
            process(y.data() + done, x.data() + done, 64);
        for (std::size_t i = x.size() - 4096; i < x.size(); ++i) {
            ASSERT_LT(std::fabs(y[i]), 1e-15f) << stage << " " << i;
            ASSERT_NE(FP_SUBNORMAL, std::fpclassify(y[i])) << stage << " " << i;
        }
    }
}

TEST(LowPassKernelTest, AFailedPlanIsToldOnceAndProcessingGoesOn)
{
    const unsigned previous = FftProvider::SetPlannerFlags(FFTW_WISDOM_ONLY | FFTW_EXHAUSTIVE);
    testing::internal::CaptureStderr();
    LowPassKernel kernel(256, 20600.0, 88200.0);
    FftProvider::SetPlannerFlags(previous);
    std::mt19937 random(5);
    std::vector<float> y = Noise(random, 1000);
    kernel.Process(y.data(), y.data(), 1000);
    EXPECT_EQ("FAIL: Commit Descriptor\n", testing::internal::GetCapturedStderr());
    for (float v : y)
        ASSERT_TRUE(std::isfinite(v));
}

}  // namespace
}  // namespace AudioEngine::Convolution
