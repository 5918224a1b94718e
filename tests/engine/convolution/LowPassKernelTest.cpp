#include "engine/dsp/convolution/LowPassKernel.h"
#include "tests/engine/convolution/ConvolutionOracle.h"

#include <functional>

#include <fftw3.h>

namespace AudioEngine::Convolution {
namespace {

using namespace OV::Testing;

// |H(f)| in dB of taps centred on T / 2, by a direct DFT.
double GainDb(const std::vector<float>& taps, double frequency, double sampleRate)
{
    double re = 0.0, im = 0.0;
    const double m = static_cast<double>(taps.size() / 2);
    for (std::size_t i = 0; i < taps.size(); ++i) {
        const double angle = -2.0 * M_PI * frequency / sampleRate * (static_cast<double>(i) - m);
        re += taps[i] * std::cos(angle);
        im += taps[i] * std::sin(angle);
    }
    return 20.0 * std::log10(std::hypot(re, im) + 1e-300);
}

TEST(LowPassKernelTest, DesignIsASymmetricWindowedLowPass)
{
    const struct {
        int taps;
        double cutoff, sampleRate;
    } cases[] = {{256, 20600, 88200}, {256, 20600, 192000}, {512, 5000, 48000}, {4096, 20600, 96000}};
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.taps << " taps, " << c.cutoff << " Hz at " << c.sampleRate);
        const std::vector<float> t = LowPassKernel::DesignTaps(c.taps, c.cutoff, c.sampleRate);
        ASSERT_EQ(static_cast<std::size_t>(c.taps), t.size());
        const int m = c.taps / 2;
        EXPECT_EQ(m, std::max_element(t.begin(), t.end()) - t.begin());
        EXPECT_FLOAT_EQ(static_cast<float>(2 * c.cutoff / c.sampleRate), t[static_cast<std::size_t>(m)]);
        EXPECT_EQ(0.0f, t[0]) << "the window's end";
        for (int k = 1; k < m; ++k)
            ASSERT_EQ(t[static_cast<std::size_t>(m - k)], t[static_cast<std::size_t>(m + k)]) << k;
        double sum = 0.0;
        for (float v : t)
            sum += v;
        EXPECT_NEAR(1.0, sum, 1e-5) << "DC gain";
        // Outside the window's main lobe, 4 fs / T wide about the cut-off.
        const double lobe = 4.0 * c.sampleRate / c.taps;
        for (double f = 0.0; f <= c.sampleRate / 2; f += c.sampleRate / 1000) {
            if (f <= c.cutoff - lobe) {
                ASSERT_NEAR(0.0, GainDb(t, f, c.sampleRate), 0.01) << f << " Hz";
            } else if (f >= c.cutoff + lobe) {
                ASSERT_LT(GainDb(t, f, c.sampleRate), -60.0) << f << " Hz";
            }
        }
    }
}

TEST(LowPassKernelTest, HeadAndTailTogetherAreTheWholeFir)
{
    const unsigned seed = 4099u;  // fixed, so that a failure repeats
    SCOPED_TRACE(testing::Message() << "seed " << seed);
    std::mt19937 random(seed);
    const struct {
        int taps, head;
    } cases[] = {{256, 128}, {128, 128}, {1024, 64}, {4096, 128}, {600, 16}, {2048, 256}};
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.taps << " taps, head " << c.head);
        LowPassKernel kernel(c.taps, 20600.0, 96000.0, c.head);
        const std::vector<float> taps = LowPassKernel::DesignTaps(c.taps, 20600.0, 96000.0);
        const std::vector<float> x = Noise(random, static_cast<std::size_t>(c.taps) + 4000);
        const std::vector<double> expected = DirectConvolution(taps, x);
        const std::vector<float> y
            = InRandomBlocks(random, x, 300, [&](float* out, const float* in, int n) { kernel.Process(out, in, n); });
        EXPECT_LT(MaxError(y, expected), 4e-6);
        // No delay but the filter's own: the impulse response peaks at the reported latency.
        EXPECT_EQ(kernel.GetLatency(), std::max_element(taps.begin(), taps.end()) - taps.begin());

        // 200 samples in one call: chunks of 64, 64, 64 and 8, in place.
        LowPassKernel fresh(c.taps, 20600.0, 96000.0, c.head);
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
    dsp::Domain::Adapters::AnySizeAdapter2<SegmentedConv> tail(split.GetTail());
    LowPassKernel kernel(256, 20600.0, 96000.0);
    const struct {
        const char* stage;
        std::function<void(float*, const float*, int)> process;
    } stages[] = {
        {"head", [&](float* out, const float* in, int n) { head.Process(out, in, n); }},
        {"tail", [&](float* out, const float* in, int n) { tail.Process(out, in, n); }},
        {"kernel", [&](float* out, const float* in, int n) { kernel.Process(out, in, n); }},
    };
    std::mt19937 random(3);
    std::vector<float> x = Noise(random, 156 * 64);
    x.resize(x.size() + 3 * 4096, 1e-40f);
    for (const auto& s : stages) {
        std::vector<float> y(x.size());
        for (std::size_t done = 0; done < x.size(); done += 64)
            s.process(y.data() + done, x.data() + done, 64);
        for (std::size_t i = x.size() - 4096; i < x.size(); ++i) {
            ASSERT_LT(std::fabs(y[i]), 1e-15f) << s.stage << " " << i;
            ASSERT_NE(FP_SUBNORMAL, std::fpclassify(y[i])) << s.stage << " " << i;
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
