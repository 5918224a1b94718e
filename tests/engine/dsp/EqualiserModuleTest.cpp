// The stereo equaliser as a module: its exported names, left/right against mid/side, the output
// gains and their process states.
#include "engine/dsp/equaliser/MidSide.h"
#include "engine/dsp/gain/GaindB.h"
#include "engine/dsp/gain/ModuleKD2.h"
#include "tests/engine/dsp/EngineRunner.h"
#include "tests/engine/dsp/EqOracle.h"
#include "tests/support/AllocationCounter.h"

#include <cmath>

#include <gtest/gtest.h>

namespace OV::Testing {
namespace {

using Equaliser = AudioEngine::VN4::MidSide<AudioEngine::VN4::LinearPhaseEq>;
using AudioEngine::ParameterBase;

std::vector<float> Sine(std::size_t length, double frequency, double rate, float amplitude = 0.5f)
{
    std::vector<float> signal(length);
    for (std::size_t i = 0; i < length; ++i)
        signal[i] = amplitude * static_cast<float>(std::sin(2.0 * M_PI * frequency * static_cast<double>(i) / rate));
    return signal;
}

// Gain of `output` against `input` at `frequency`, over the second half (after the onset).
double GainDb(const std::vector<float>& input, const std::vector<float>& output, double frequency, double rate)
{
    const std::size_t half = input.size() / 2;
    const std::vector<float> in(input.begin() + static_cast<long>(half), input.end() - hostDelay);
    const std::vector<float> out(output.begin() + static_cast<long>(half + hostDelay), output.end());
    return Db(MeasuredMagnitude(out, frequency, rate) / MeasuredMagnitude(in, frequency, rate));
}

TEST(EqualiserModuleTest, ExportsEachChannelsSettingsUnderItsOwnName)
{
    EngineRunner<Equaliser> runner(96000.0f);
    Equaliser& eq = runner.Root();
    for (const char* name : {"Gain_3L", "Gain_3R", "F_0L", "Q_LPHP_5R", "Mode_2L", "Active_1R", "OutGainL",
                             "OutGainR", "OutLevelL", "OutLevelR", "Linearize", "Process", "ChannelMode"})
        EXPECT_NE(nullptr, eq.GetParameter(name)) << name;
    EXPECT_EQ(nullptr, eq.GetParameter("Gain_3")) << "band settings exist per channel only";
    ASSERT_NE(nullptr, eq.GetDataBlock("ChainCoeffsL"));
    std::vector<float> left, right;
    eq.GetDataBlock("ChainCoeffsR")->GetData(right);
    EXPECT_EQ(30u, right.size());

    ParameterBase* rate = eq.GetParameter("SampleRate");
    EXPECT_EQ(96000.0f, rate->GetValue()) << "published on a rate change";
    EXPECT_EQ(static_cast<unsigned>(ParameterBase::OutputOnly | ParameterBase::Step), rate->GetFlags());

    // A band designed on one channel shows in that channel's coefficients only.
    eq.SetParameter("Linearize", 0.0f);
    eq.SetParameter("Mode_4L", 1.0f);
    eq.SetParameter("Gain_4L", 6.0f);
    eq.SetParameter("F_4L", 250.0f);
    eq.SetParameter("Q_Shelving_4L", 0.9f);
    const Section expected = OracleSection(OracleLowShelf, 6.0, 250.0, 0.9, 96000.0);
    eq.GetDataBlock("ChainCoeffsL")->GetData(left);
    eq.GetDataBlock("ChainCoeffsR")->GetData(right);
    const double published[] = {expected.b0, expected.b1, expected.b2, expected.a1, expected.a2};
    for (int i = 0; i < 5; ++i)
        EXPECT_NEAR(published[i], left[static_cast<std::size_t>(20 + i)], 1e-6) << i;
    EXPECT_NE(left, right);
}

TEST(EqualiserModuleTest, MidSideModeMovesTheFirstSetToMidAndTheSecondToSide)
{
    constexpr float rate = 48000.0f;
    const std::vector<float> tone = Sine(16384, 1000.0, rate);
    std::vector<float> inverted(tone);
    for (float& x : inverted)
        x = -x;
    struct Case {
        float mode;
        bool sameSign; // L = R (only mid) or L = -R (only side)
        double left, right; // expected dB
    };
    // Set 1 (L) has +12 dB at 1 kHz, set 2 (R) -6 dB.
    const Case cases[] = {
        {0.0f, true, 12.0, -6.0},
        {0.0f, false, 12.0, -6.0},
        {1.0f, true, 12.0, 12.0},
        {1.0f, false, -6.0, -6.0},
    };
    for (const Case& c : cases) {
        EngineRunner<Equaliser> runner(rate);
        runner.Set("Linearize", 0.0f);
        runner.Set("ChannelMode", c.mode);
        for (const char* side : {"L", "R"}) {
            const std::string s = side;
            runner.Set("Active_0" + s, 1.0f);
            runner.Set("F_0" + s, 1000.0f);
            runner.Set("Gain_0" + s, s == "L" ? 12.0f : -6.0f);
        }
        const std::vector<float>& right = c.sameSign ? tone : inverted;
        const auto out = runner.Run({tone, right});
        EXPECT_NEAR(c.left, GainDb(tone, out[0], 1000.0, rate), 0.01) << "mode " << c.mode << " same " << c.sameSign;
        EXPECT_NEAR(c.right, GainDb(right, out[1], 1000.0, rate), 0.01) << "mode " << c.mode << " same " << c.sameSign;
    }
}

TEST(EqualiserModuleTest, OutputGainsAndTheirProcessStates)
{
    using Gain = AudioEngine::Application::KD2::ModuleKD2<AudioEngine::GaindB<AudioEngine::VN4::LinearPhaseEq::GainDescriptor>>;
    const std::vector<float> input = {0.5f, -0.25f, 1e-40f, 1.0f, 0.75f, -1.0f, 0.0f, 0.125f};
    const double gain = -6.0;
    const float g = static_cast<float>(std::pow(10.0, gain / 20.0));
    struct Case {
        float state;
        std::vector<float> expected; // after the 4 samples of the host's pad
    };
    const Case cases[] = {
        {0.0f, {0.5f * g, -0.25f * g, 0.0f, g}}, // denormal input becomes +0
        {1.0f, {0.5f, -0.25f, 1e-40f, 1.0f}},
        {2.0f, {0.0f, 0.0f, 0.0f, 0.0f}},
        {3.0f, {0.0f, 0.0f, 0.0f, 0.0f}},
    };
    for (const Case& c : cases) {
        EngineRunner<Gain> runner;
        runner.Set("Gain", static_cast<float>(gain));
        runner.Set("Process", c.state);
        const std::vector<float> out = runner.RunMono(input, 8);
        for (std::size_t i = 0; i < c.expected.size(); ++i)
            EXPECT_NEAR(c.expected[i], out[i + hostDelay], 1e-7f * std::fabs(c.expected[i])) << c.state << " " << i;
    }
    // "Stop": the output keeps what it held.
    EngineRunner<Gain> stopped;
    stopped.RunMono(std::vector<float>(16, 0.25f), 8);
    stopped.Set("Process", 4.0f);
    const std::vector<float> out = stopped.RunMono(input, 8);
    EXPECT_EQ(std::vector<float>(8, 0.25f), out);
}

TEST(EqualiserModuleTest, RunningAndRedesigningAllocateNothing)
{
    EngineRunner<Equaliser> runner;
    for (const char* side : {"L", "R"}) {
        for (int band = 0; band < 6; ++band) {
            const std::string suffix = std::to_string(band) + side;
            runner.Set("Active_" + suffix, 1.0f);
            runner.Set("Mode_" + suffix, static_cast<float>(band % 5));
            runner.Set("F_" + suffix, 100.0f * static_cast<float>(band + 1));
        }
    }
    runner.Set("ChannelMode", 1.0f);
    std::vector<float> left = Sine(512, 440.0, 48000.0), right = Sine(512, 660.0, 48000.0), outL(512), outR(512);
    float* in[2] = {left.data(), right.data()};
    float* out[2] = {outL.data(), outR.data()};
    runner.Host().ProcessHostBlock(in, out, 512);
    const std::string names[] = {"Gain_2L", "F_3R", "Q_Peaking_1L", "Mode_4R", "Active_0L", "Linearize", "OutGainR"};

    const AllocationCounter counter;
    for (int round = 0; round < 80; ++round) {
        runner.Host().GetParametersManager().Enqueue(names[round % 7], static_cast<float>(round % 2));
        runner.Host().ProcessHostBlock(in, out, 512);
    }
    EXPECT_EQ(0, counter.Count());
}

}  // namespace
}  // namespace OV::Testing
