// Running a module at twice the host rate: up-conversion, the module deceived about its rate
// and block, down-conversion; measured against the converters' own filter design.
#include "engine/ModuleHostEngine.h"
#include "engine/dsp/rate/ModuleOversampled.h"
#include "tests/engine/TestModules.h"
#include "tests/engine/dsp/EngineRunner.h"
#include "tests/engine/dsp/EqOracle.h"

#include <cmath>
#include <complex>
#include <random>

#include <gtest/gtest.h>

namespace OV::Testing {
namespace {

// A stereo module that records its left input (and, as any StereoScale, its block sizes), and
// adds a tone of its own at its running rate to both outputs.
class Probe : public StereoScale {
public:
    Probe() { seen.reserve(1 << 20); }

    std::vector<float> seen;
    double toneFrequency = 0.0; // Hz at the running rate; 0 for none
    long phase = 0;

protected:
    void ProcessBlock() override
    {
        StereoScale::ProcessBlock(); // at Scale 1: the input as it is
        for (int i = 0; i < GetBlockSize(); ++i, ++phase) {
            const float tone = toneFrequency > 0.0
                ? static_cast<float>(0.5 * std::sin(2.0 * M_PI * toneFrequency * static_cast<double>(phase) / GetSampleRate()))
                : 0.0f;
            seen.push_back(inL->GetBuffer()[i]);
            outL->GetBuffer()[i] += tone;
            outR->GetBuffer()[i] += tone;
        }
    }
};

using Oversampled = AudioEngine::ModuleOversampled<Probe, 1, 1>;
constexpr double hostRate = 48000.0;

// At the host rate, with oversampling on or off.
struct Runner : EngineRunner<Oversampled> {
    explicit Runner(bool on) : EngineRunner(static_cast<float>(hostRate)) { Set("Oversample", on ? 1.0f : 0.0f); }
    Probe& probe() { return Root().GetModule(); }
};

// The converters' filter at the doubled rate, from its taps.
double DesignGain(double frequency)
{
    const std::vector<float> taps = AudioEngine::Convolution::LowPassKernel::DesignTaps(256, 20600.0, 2 * hostRate);
    return MeasuredMagnitude(taps, frequency, 2 * hostRate);
}

// Amplitude at `frequency` over the last half of a signal.
double Amplitude(const std::vector<float>& signal, double frequency, double rate)
{
    const std::vector<float> tail(signal.begin() + static_cast<long>(signal.size() / 2), signal.end());
    return 2.0 * MeasuredMagnitude(tail, frequency, rate) / static_cast<double>(tail.size());
}

TEST(OversamplingTest, OffPassesBitForBitAtTheHostRate)
{
    Runner runner(false);
    std::mt19937 random(3);
    std::uniform_real_distribution<float> value(-1.0f, 1.0f);
    std::vector<float> left(5000), right(5000);
    for (std::size_t i = 0; i < left.size(); ++i) {
        left[i] = value(random);
        right[i] = value(random);
    }
    const auto out = runner.Run({left, right}, 77);
    for (std::size_t i = hostDelay; i < left.size(); ++i) {
        ASSERT_EQ(left[i - hostDelay], out[0][i]) << i;
        ASSERT_EQ(right[i - hostDelay], out[1][i]) << i;
    }
    EXPECT_EQ(static_cast<float>(hostRate), runner.probe().GetSampleRate());
}

TEST(OversamplingTest, OnRunsTheModuleAtTwiceTheRateAndBlock)
{
    Runner runner(true);
    EXPECT_EQ(static_cast<float>(2 * hostRate), runner.probe().GetSampleRate());
    runner.Run({std::vector<float>(640, 0.0f), std::vector<float>(640, 0.0f)}, 64);
    EXPECT_EQ(std::vector<int>(10, 128), runner.probe().Blocks());
}

TEST(OversamplingTest, UpAndDownKeepTheBandAndRejectImagesAndAliases)
{
    const std::size_t length = 48000;
    // DC and a 1 kHz tone keep their level, to the filter's gain there, twice over.
    {
        Runner runner(true);
        const std::vector<float> dc(length, 0.5f);
        const double gain = DesignGain(0.0);
        EXPECT_NEAR(0.5 * gain * gain, runner.Run({dc, dc})[0].back(), 1e-5);
        EXPECT_NEAR(1.0, gain, 1e-3);
    }
    {
        Runner runner(true);
        const std::vector<float> tone = Sine(length, 1000.0, hostRate);
        const double gain = DesignGain(1000.0);
        EXPECT_NEAR(0.5 * gain * gain, Amplitude(runner.Run({tone, tone})[0], 1000.0, hostRate), 1e-5);
    }
    // Zero stuffing mirrors an 18 kHz tone to 30 kHz; the up filter takes the image down by its
    // design's attenuation there.
    {
        Runner runner(true);
        const std::vector<float> tone = Sine(length, 18000.0, hostRate);
        runner.Run({tone, tone});
        const std::vector<float>& seen = runner.probe().seen;
        const double measured = Amplitude(seen, 30000.0, 2 * hostRate) / Amplitude(seen, 18000.0, 2 * hostRate);
        const double expected = DesignGain(30000.0) / DesignGain(18000.0);
        EXPECT_LT(Db(expected), -40.0);
        EXPECT_NEAR(Db(expected), Db(measured), 0.5);
    }
    // A 30 kHz tone made at the doubled rate would alias to 18 kHz; the down filter takes it
    // down by the same attenuation.
    {
        Runner runner(true);
        runner.probe().toneFrequency = 30000.0;
        const auto out = runner.Run({std::vector<float>(length, 0.0f), std::vector<float>(length, 0.0f)});
        EXPECT_NEAR(Db(DesignGain(30000.0)), Db(Amplitude(out[0], 18000.0, hostRate) / 0.5), 0.5);
    }
}

TEST(OversamplingTest, EqualiserReportsTheDoubledRate)
{
    AudioEngine::VN4::ModuleHostEngine engine;
    engine.SetSampleRate(48000.0f);
    engine.GetRoot().SampleRateChanged();
    EXPECT_EQ(48000.0f, engine.ReadParameter("SampleRate_Module")->GetValue());
    engine.GetRoot().SetParameter("GlobalOversample", 1.0f);
    EXPECT_EQ(96000.0f, engine.ReadParameter("SampleRate_Module")->GetValue());
    EXPECT_EQ(1.0f, engine.ReadParameter("Oversample_Module")->GetValue());
    engine.SetSampleRate(96000.0f);
    engine.GetRoot().SampleRateChanged();
    EXPECT_EQ(0.0f, engine.ReadParameter("Oversample_Module")->GetValue()) << "forced off above 48 kHz";
    EXPECT_EQ(96000.0f, engine.ReadParameter("SampleRate_Module")->GetValue());
}

}  // namespace
}  // namespace OV::Testing
