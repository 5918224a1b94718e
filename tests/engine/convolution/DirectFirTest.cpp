#include "engine/dsp/convolution/DirectFir.h"
#include "tests/engine/convolution/ConvolutionOracle.h"

namespace AudioEngine::Convolution {
namespace {

using namespace OV::Testing;

// The scatter form in plain float: each guarded input sample adds v * tap into later outputs, in
// sample order. The packed kernel must give exactly this.
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

TEST(DirectFirTest, BothKernelsComputeTheFirAcrossRingWraps)
{
    const unsigned seed = 4099u;  // fixed, so that a failure repeats
    SCOPED_TRACE(testing::Message() << "seed " << seed);
    std::mt19937 random(seed);
    for (int count : {1, 2, 3, 4, 5, 128, 131}) {
        SCOPED_TRACE(testing::Message() << count << " taps");
        const std::vector<float> taps = Noise(random, static_cast<std::size_t>(count));
        // Three times round the ring: one block longer than the ring takes, run in place, then
        // blocks of 1 to 300 that put the ring position everywhere.
        const std::vector<float> x = Noise(random, 3 * static_cast<std::size_t>(count + DirectFir::MaxBlock));
        DirectFir packed(taps.data(), count), scalar(taps.data(), count, DirectFir::Kernel::ScalarDouble);
        std::vector<float> y(x.begin(), x.begin() + 5000);
        packed.Process(y.data(), y.data(), 5000);
        const std::vector<float> rest = InRandomBlocks(random, std::vector<float>(x.begin() + 5000, x.end()), 300,
                                                       [&](float* out, const float* in, int n) { packed.Process(out, in, n); });
        y.insert(y.end(), rest.begin(), rest.end());
        EXPECT_EQ(ScatterInFloat(taps, x), y);

        const std::vector<float> z
            = InRandomBlocks(random, x, 300, [&](float* out, const float* in, int n) { scalar.Process(out, in, n); });
        EXPECT_LT(MaxError(z, DirectConvolution(taps, x)), 1e-6 * AbsoluteSum(taps));
    }
}

}  // namespace
}  // namespace AudioEngine::Convolution
