#include "engine/dsp/convolution/AlignedPool.h"
#include "engine/dsp/convolution/FftProvider.h"
#include "tests/engine/convolution/ConvolutionOracle.h"

#include <fftw3.h>

#include <tuple>

namespace AudioEngine::Convolution {
namespace {

using namespace OV::Testing;

TEST(FftProviderTest, ForwardIsThePackedDftAndBackwardItsInverse)
{
    const unsigned seed = 4099u;  // fixed, so that a failure repeats
    SCOPED_TRACE(testing::Message() << "seed " << seed);
    std::mt19937 random(seed);
    AlignedPool pool;
    for (int n : {64, 128, 256, 512}) {
        FftProvider fft;
        ASSERT_TRUE(fft.Create(n));
        // 16-byte aligned like every buffer of the engine, and one float off.
        for (int offset : {0, 1}) {
            SCOPED_TRACE(testing::Message() << "n " << n << " offset " << offset);
            float* x = pool.Allocate(static_cast<std::size_t>(n) + 3) + offset;
            const std::vector<float> signal = Noise(random, static_cast<std::size_t>(n));
            std::copy(signal.begin(), signal.end(), x);
            fft.Forward(x);
            for (int k = 0; k <= n / 2; ++k) {
                double re = 0.0, im = 0.0;
                for (int i = 0; i < n; ++i) {
                    const double angle = -2.0 * M_PI * k * i / n;
                    re += signal[static_cast<std::size_t>(i)] * std::cos(angle);
                    im += signal[static_cast<std::size_t>(i)] * std::sin(angle);
                }
                ASSERT_NEAR(re, x[2 * k], 1e-4) << k;
                ASSERT_NEAR(im, x[2 * k + 1], 1e-4) << k;
            }
            EXPECT_EQ(0.0f, x[1]);
            EXPECT_EQ(0.0f, x[n + 1]);
            fft.Backward(x);
            for (int i = 0; i < n; ++i)
                ASSERT_NEAR(signal[static_cast<std::size_t>(i)], x[i], 1e-6) << i;
        }
    }
}

TEST(FftProviderTest, AFailedPlanIsToldOnceAndLeavesTheDataAlone)
{
    // Length, planner flags, and the one line told.
    const std::tuple<int, unsigned, const char*> cases[] = {
        {0, FFTW_ESTIMATE, "FAIL: Create Descriptor\n"},
        {255, FFTW_ESTIMATE, "FAIL: Create Descriptor\n"},
        // No exhaustive wisdom exists in this process, so the planner refuses.
        {256, FFTW_WISDOM_ONLY | FFTW_EXHAUSTIVE, "FAIL: Commit Descriptor\n"},
    };
    for (const auto& [n, flags, line] : cases) {
        SCOPED_TRACE(line);
        const unsigned previous = FftProvider::SetPlannerFlags(flags);
        testing::internal::CaptureStderr();
        {
            FftProvider fft;
            EXPECT_FALSE(fft.Create(n));
            EXPECT_FALSE(fft.IsCommitted());
            std::vector<float> x(258, 0.5f);
            fft.Forward(x.data());
            fft.Backward(x.data());
            EXPECT_EQ(std::vector<float>(258, 0.5f), x);
        }
        EXPECT_EQ(line, testing::internal::GetCapturedStderr());
        FftProvider::SetPlannerFlags(previous);
    }
}

}  // namespace
}  // namespace AudioEngine::Convolution
