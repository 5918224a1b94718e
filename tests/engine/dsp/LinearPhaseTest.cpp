// The linear-phase path: an exact delay of 36864 samples when no band is active, symmetric
// impulse responses whose magnitude is the square of the section's, and a clean restart when
// linear phase is switched on.
#include "engine/dsp/equaliser/LinearizedFilterChain.h"
#include "tests/engine/dsp/EngineRunner.h"
#include "tests/engine/convolution/ConvolutionOracle.h"
#include "tests/engine/dsp/EqOracle.h"

#include <algorithm>
#include <cstring>
#include <random>

#include <gtest/gtest.h>

namespace OV::Testing {
namespace {

using AudioEngine::VN4::LinearizedFilterChain;
using Runner = EngineRunner<LinearizedFilterChain>;
constexpr int latency = 36864;

std::vector<float> SeededNoise(std::size_t length, unsigned seed)
{
    std::mt19937 random(seed);
    return Noise(random, length);
}

void ExpectDelayed(const std::vector<float>& input, const std::vector<float>& output, int delay)
{
    for (std::size_t i = 0; i < output.size(); ++i) {
        const float expected = static_cast<int>(i) < delay ? 0.0f : input[i - static_cast<std::size_t>(delay)];
        ASSERT_EQ(expected, output[i]) << "sample " << i;
    }
}

TEST(LinearPhaseTest, WithoutBandsTheSignalIsDelayedBitForBit)
{
    const std::vector<float> input = SeededNoise(3 * 16384 + 777, 7);
    for (int block : {64, 37, 512}) {
        Runner runner;
        ExpectDelayed(input, runner.RunMono(input, block), latency + hostDelay);
    }
    // Bypass keeps the delay with linear phase on, and has none with it off.
    for (bool linear : {true, false}) {
        Runner bypassed;
        bypassed.Set("Linearize", linear ? 1.0f : 0.0f);
        bypassed.Set("Active_0", 1.0f);
        bypassed.Set("Gain_0", 12.0f);
        bypassed.Set("Process", 1.0f);
        ExpectDelayed(input, bypassed.RunMono(input), (linear ? latency : 0) + hostDelay);
    }
}

TEST(LinearPhaseTest, ClearingHistoryRestartsFromSilenceAtAnyPointOfABlock)
{
    // Blocks of 64 samples: setting "Linearize" again after k blocks clears the history at
    // position 64k of the filter's block of 16384, before, inside and after the parts where it
    // works backward. Switching it on from off clears the same way, at the position it stood.
    for (int blocks : {10, 40, 100, 300}) {
        for (bool fromOff : {false, true}) {
            SCOPED_TRACE(testing::Message() << blocks << (fromOff ? " blocks, switched on" : " blocks, set again"));
            Runner runner;
            const std::vector<float> before = SeededNoise(64 * static_cast<std::size_t>(blocks), 11);
            const std::vector<float> early = runner.RunMono(before, 64);
            EXPECT_TRUE(std::all_of(early.begin(), early.end(), [](float x) { return x == 0.0f; }));
            if (fromOff) {
                runner.Set("Linearize", 0.0f);
                runner.RunMono(std::vector<float>(64 * 7, 0.5f), 64);
            }
            runner.Set("Linearize", 1.0f);
            const std::vector<float> after = SeededNoise(latency + 2 * 16384, 12);
            const std::vector<float> output = runner.RunMono(after, 64);
            // The 4 samples in the host's pad went in before the clear, and come out after it.
            std::vector<float> input(hostDelay, fromOff ? 0.5f : 0.0f);
            if (!fromOff)
                std::copy(before.end() - hostDelay, before.end(), input.begin());
            input.insert(input.end(), after.begin(), after.end() - hostDelay);
            ExpectDelayed(input, output, latency);
        }
    }
}

TEST(LinearPhaseTest, ImpulseResponseIsSymmetricWithTheSquaredMagnitude)
{
    constexpr float rate = 48000.0f;
    // The sections are designed for two passes: peak and shelf gains halved, shelf slopes
    // doubled; the high pass is not compensated.
    const Band bands[] = {
        {OraclePeak, 9.0f, 1000.0f, 1.0f}, {OracleLowShelf, 6.0f, 300.0f, 0.5f}, {OracleHiPass, 0.0f, 100.0f, 0.7f}};
    Runner runner(rate);
    for (int i = 0; i < 3; ++i)
        SetBand(runner, i, bands[i]);
    constexpr std::size_t at = 5000;
    const std::vector<float> output = runner.RunMono(Impulse(at + latency + 3 * 16384, at));
    const std::size_t centre = at + hostDelay + latency;
    float peak = 0.0f;
    for (float x : output)
        peak = std::max(peak, std::fabs(x));
    EXPECT_EQ(peak, std::fabs(output[centre]));
    for (std::size_t k = 1; k < 16000; ++k)
        ASSERT_NEAR(output[centre + k], output[centre - k], 2e-6f * peak) << k;

    const std::vector<float> response(output.begin() + static_cast<long>(centre - 16000),
                                      output.begin() + static_cast<long>(centre + 16000));
    for (double f : TestFrequencies(30)) {
        double section = 1.0;
        for (const Band& band : bands) {
            const double gain = band.type == OracleHiPass ? 0.0 : band.gain * 0.5;
            const double q = band.type == OracleLowShelf ? band.q * 2.0 : band.q;
            section *= SectionMagnitude(OracleSection(band.type, gain, band.frequency, q, rate), f, rate);
        }
        if (Db(section) < -60.0)
            continue;
        EXPECT_NEAR(2.0 * Db(section), Db(MeasuredMagnitude(response, f, rate)), 0.02) << f << " Hz";
    }
}

// Two channels' filters run as a pair give, bit for bit, what each gives alone, whatever the
// bands of each and however the host cuts the blocks.
TEST(LinearPhaseTest, APairOfChannelsEqualsEachChannelAlone)
{
    using AudioEngine::AudioAlgorithm::EqChain;
    using AudioEngine::AudioAlgorithm::ReversedBlockFilter;
    struct Channel {
        explicit Channel(int activeMask)
        {
            for (EqChain* chain : {&a, &b}) {
                chain->SetSampleRate(96000.0f);
                for (int band = 0; band < EqChain::bandCount; ++band) {
                    auto& settings = chain->bands[static_cast<std::size_t>(band)];
                    settings.active = (activeMask >> band) % 2 == 1;
                    settings.type = band % 5;
                    settings.gain = 3.0f * static_cast<float>(band) - 7.0f;
                    settings.frequency = 90.0f * static_cast<float>(band * band + 1);
                }
                chain->Reset();
            }
        }
        EqChain a, b;
        ReversedBlockFilter filter{a, b};
    };
    std::mt19937 random(99);
    const std::vector<float> inputs[2] = {SeededNoise(3 * 16384, 1), SeededNoise(3 * 16384, 2)};
    for (const auto& [maskL, maskR] : {std::pair{63, 63}, {5, 48}, {0, 21}}) {
        Channel pair[2] = {Channel(maskL), Channel(maskR)};
        Channel alone[2] = {Channel(maskL), Channel(maskR)};
        std::vector<float> paired[2], single[2];
        for (int c = 0; c < 2; ++c)
            paired[c] = single[c] = std::vector<float>(inputs[0].size());
        for (std::size_t done = 0; done < inputs[0].size();) {
            const int n = std::min<int>(std::uniform_int_distribution<int>(1, 3000)(random), static_cast<int>(inputs[0].size() - done));
            ReversedBlockFilter::ProcessPair(pair[0].filter, pair[1].filter, paired[0].data() + done, paired[1].data() + done,
                                             inputs[0].data() + done, inputs[1].data() + done, n);
            for (int c = 0; c < 2; ++c)
                alone[c].filter.Process(single[c].data() + done, inputs[c].data() + done, n);
            done += static_cast<std::size_t>(n);
        }
        for (int c = 0; c < 2; ++c)
            EXPECT_EQ(0, std::memcmp(single[c].data(), paired[c].data(), single[c].size() * sizeof(float)))
                << "masks " << maskL << ", " << maskR << ", channel " << c;
    }
}

}  // namespace
}  // namespace OV::Testing
