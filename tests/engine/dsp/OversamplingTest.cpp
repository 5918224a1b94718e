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

// A stereo module that records its left input and block sizes, and adds a tone of its own at
// its running rate to both outputs.
class Probe : public AudioEngine::ModuleBasic {
public:
    Probe() : ModuleBasic(ModuleInfo{0, "Probe", ""}) { seen.reserve(1 << 20); }

    void BindPorts() override
    {
        inL = GetInput("InL");
        inR = GetInput("InR");
        outL = GetOutput("OutL");
        outR = GetOutput("OutR");
    }

    std::vector<float> seen;
    std::vector<int> blocks;
    double toneFrequency = 0.0; // Hz at the running rate; 0 for none
    long phase = 0;

protected:
    void CreateInputs() override
    {
        AddInput("InL");
        AddInput("InR");
    }
    void CreateOutputsBuffered() override
    {
        AddOutputBuffered("OutL");
        AddOutputBuffered("OutR");
    }
    void CreateParameters() override {}
    void ProcessBlock() override
    {
        const int n = GetBlockSize();
        blocks.push_back(n);
        const float* l = inL->GetBuffer();
        const float* r = inR->GetBuffer();
        float* ol = outL->GetBuffer();
        float* orr = outR->GetBuffer();
        for (int i = 0; i < n; ++i, ++phase) {
            const float tone = toneFrequency > 0.0
                ? static_cast<float>(0.5 * std::sin(2.0 * M_PI * toneFrequency * static_cast<double>(phase) / GetSampleRate()))
                : 0.0f;
            seen.push_back(l[i]);
            ol[i] = l[i] + tone;
            orr[i] = r[i] + tone;
        }
    }

private:
    AudioEngine::AudioContainers::Input* inL = nullptr;
    AudioEngine::AudioContainers::Input* inR = nullptr;
    AudioEngine::AudioContainers::Output* outL = nullptr;
    AudioEngine::AudioContainers::Output* outR = nullptr;
};

using Oversampled = AudioEngine::ModuleOversampled<Probe, 1, 1>;
constexpr double hostRate = 48000.0;

// The converters' filter at the doubled rate, from its taps.
double DesignGain(double frequency)
{
    const std::vector<float> taps = AudioEngine::Convolution::LowPassKernel::DesignTaps(256, 20600.0, 2 * hostRate);
    return MeasuredMagnitude(taps, frequency, 2 * hostRate);
}

std::vector<float> Tone(std::size_t length, double frequency, double rate)
{
    std::vector<float> signal(length);
    for (std::size_t i = 0; i < length; ++i)
        signal[i] = static_cast<float>(0.5 * std::sin(2.0 * M_PI * frequency * static_cast<double>(i) / rate));
    return signal;
}

// Amplitude at `frequency` over the last half of a signal.
double Amplitude(const std::vector<float>& signal, double frequency, double rate)
{
    const std::vector<float> tail(signal.begin() + static_cast<long>(signal.size() / 2), signal.end());
    return 2.0 * MeasuredMagnitude(tail, frequency, rate) / static_cast<double>(tail.size());
}

Probe& TheProbe(EngineRunner<Oversampled>& runner)
{
    return runner.Root().GetModule();
}

TEST(OversamplingTest, OffPassesBitForBitAtTheHostRate)
{
    EngineRunner<Oversampled> runner(static_cast<float>(hostRate));
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
    EXPECT_EQ(static_cast<float>(hostRate), TheProbe(runner).GetSampleRate());
}

TEST(OversamplingTest, OnRunsTheModuleAtTwiceTheRateAndBlock)
{
    EngineRunner<Oversampled> runner(static_cast<float>(hostRate));
    runner.Set("Oversample", 1.0f);
    EXPECT_EQ(static_cast<float>(2 * hostRate), TheProbe(runner).GetSampleRate());
    runner.Run({std::vector<float>(640, 0.0f), std::vector<float>(640, 0.0f)}, 64);
    EXPECT_EQ(std::vector<int>(10, 128), TheProbe(runner).blocks);
}

TEST(OversamplingTest, UpAndDownKeepTheBandAndRejectImagesAndAliases)
{
    const std::size_t length = 48000;
    // DC and a 1 kHz tone keep their level, to the filter's gain there, twice over.
    {
        EngineRunner<Oversampled> runner(static_cast<float>(hostRate));
        runner.Set("Oversample", 1.0f);
        const std::vector<float> dc(length, 0.5f);
        const auto out = runner.Run({dc, dc});
        const double gain = DesignGain(0.0);
        EXPECT_NEAR(0.5 * gain * gain, out[0].back(), 1e-5);
        EXPECT_NEAR(1.0, gain, 1e-3);
    }
    {
        EngineRunner<Oversampled> runner(static_cast<float>(hostRate));
        runner.Set("Oversample", 1.0f);
        const std::vector<float> tone = Tone(length, 1000.0, hostRate);
        const auto out = runner.Run({tone, tone});
        const double gain = DesignGain(1000.0);
        EXPECT_NEAR(0.5 * gain * gain, Amplitude(out[0], 1000.0, hostRate), 1e-5);
    }
    // Zero stuffing mirrors an 18 kHz tone to 30 kHz; the up filter takes the image down by its
    // design's attenuation there.
    {
        EngineRunner<Oversampled> runner(static_cast<float>(hostRate));
        runner.Set("Oversample", 1.0f);
        const std::vector<float> tone = Tone(length, 18000.0, hostRate);
        runner.Run({tone, tone});
        const std::vector<float>& seen = TheProbe(runner).seen;
        const double measured = Amplitude(seen, 30000.0, 2 * hostRate) / Amplitude(seen, 18000.0, 2 * hostRate);
        const double expected = DesignGain(30000.0) / DesignGain(18000.0);
        EXPECT_LT(Db(expected), -40.0);
        EXPECT_NEAR(Db(expected), Db(measured), 0.5);
    }
    // A 30 kHz tone made at the doubled rate would alias to 18 kHz; the down filter takes it
    // down by the same attenuation.
    {
        EngineRunner<Oversampled> runner(static_cast<float>(hostRate));
        runner.Set("Oversample", 1.0f);
        TheProbe(runner).toneFrequency = 30000.0;
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
