// The peak meter: overs, the level's envelope and its release, held peaks, and reads that
// consume the maximum gathered since the last read.
#include "engine/dsp/meter/Meter.h"
#include "tests/engine/dsp/EngineRunner.h"

#include <cmath>

#include <gtest/gtest.h>

namespace OV::Testing {
namespace {

using AudioEngine::PeakMeter;

TEST(MeterTest, OversNeedARunAtFullScaleOrOneSampleAbove)
{
    const std::pair<std::vector<float>, bool> cases[] = {
        {{1.0f, 1.0f, 1.0f}, true}, {{1.0f, 1.0f}, false}, {{1.0f, 1.0f, 0.5f, 1.0f}, false}, {{-1.0f, 1.0f, -1.0f}, true},
        {{1.0001f}, true},          {{0.9999f, 0.9999f, 0.9999f, 0.9999f}, false},
    };
    for (const auto& [burst, over] : cases) {
        EngineRunner<PeakMeter> runner;
        std::vector<float> signal(64, 0.0f);
        std::copy(burst.begin(), burst.end(), signal.begin() + 10);
        runner.Run({signal}, 64, 0);
        EXPECT_EQ(over ? 1.0f : 0.0f, runner.Get("Over")) << burst.size() << " samples from " << burst[0];
    }
}

TEST(MeterTest, OverAndPeakHoldForTwoSecondsThenRelease)
{
    constexpr float rate = 48000.0f;
    EngineRunner<PeakMeter> runner(rate);
    std::vector<float> signal(64, 0.0f);
    signal[8] = 1.5f; // tree sample 12: the host's pad comes first
    runner.Run({signal}, 64, 0);
    EXPECT_EQ(1.0f, runner.Get("Over"));
    EXPECT_EQ(1.5f, runner.Get("Peak"));

    // Both hold for 2 s = 96000 samples, counted from the sample that lit them: the over goes
    // out at sample 12 + 96000 and the held peak drops one sample later, within the same block
    // of 64, whose Peak still shows its maximum; from then on the peak follows the envelope,
    // which has released by 2 s at -20 dB per 600 ms. Reading every block consumes the maxima.
    const std::vector<float> silence(64, 0.0f);
    int overUntil = 64;
    std::vector<float> peaks(1600);
    for (int block = 1; block < 1600; ++block) {
        runner.Run({silence}, 64, 0);
        if (runner.Get("Over") == 1.0f)
            overUntil = (block + 1) * 64;
        peaks[static_cast<std::size_t>(block)] = runner.Get("Peak");
    }
    EXPECT_EQ((12 + 96000) / 64 * 64, overUntil);
    const std::size_t drop = (12 + 96001) / 64; // the block in which the hold ends
    EXPECT_EQ(1.5f, peaks[drop]);
    EXPECT_NEAR(1.5 * std::pow(0.1, 96001.0 / 28800.0), peaks[drop + 1], 1e-5);
}

TEST(MeterTest, LevelFollowsTheEnvelopeAndReadsConsumeTheMaximum)
{
    constexpr float rate = 48000.0f;
    EngineRunner<PeakMeter> runner(rate);
    runner.Run({std::vector<float>(64, 0.8f)}, 64, 0);
    EXPECT_EQ(0.8f, runner.Get("Level")) << "attack 0: the envelope jumps to the input";
    EXPECT_EQ(0.8f, runner.Get("Level")) << "the stored value stays until the next block";

    // Release of 600 ms: -20 dB per 600 ms of silence.
    const std::vector<float> silence(480, 0.0f);
    float level = 0.0f;
    for (int i = 0; i < 60; ++i) {
        runner.Run({silence}, 480, 0);
        level = runner.Get("Level");
    }
    // The 0.8 ran at tree samples 4 to 67 (after the host's pad), silence from 68; the last
    // block's maximum is its first sample, 64 + 60 * 480 - 480 = 28384, after 28317 samples of
    // release by the single-precision coefficient of 600 ms.
    const double coefficient = static_cast<float>(std::pow(0.1, 1000.0 / (600.0 * rate)));
    const double expected = 0.8 * std::pow(coefficient, 28384 - 68 + 1);
    EXPECT_NEAR(expected, level, expected * 1e-3);

    // Without reads in between, the level is the largest envelope since the last read.
    runner.Run({std::vector<float>(64, 0.3f)}, 64, 0);
    runner.Run({silence}, 480, 0);
    EXPECT_NEAR(0.3f, runner.Get("Level"), 1e-6f);
}

}  // namespace
}  // namespace OV::Testing
