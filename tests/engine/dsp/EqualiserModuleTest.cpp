// The stereo equaliser as a module: its exported names, left/right against mid/side, the output
// gains and their process states.
#include "engine/dsp/equaliser/MidSide.h"
#include "engine/dsp/gain/GaindB.h"
#include "engine/dsp/gain/ModuleKD2.h"
#include "tests/engine/dsp/EngineRunner.h"
#include "tests/engine/dsp/EqOracle.h"

#include <cmath>
#include <tuple>

#include <gtest/gtest.h>

namespace OV::Testing {
namespace {

using Equaliser = AudioEngine::VN4::MidSide<AudioEngine::VN4::LinearPhaseEq>;
using AudioEngine::ParameterBase;

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
    // Set 1 (L) has +12 dB at 1 kHz, set 2 (R) -6 dB. Mode, L = R (only mid) or L = -R (only
    // side), and the expected dB left and right.
    const std::tuple<float, bool, double, double> cases[] = {
        {0.0f, true, 12.0, -6.0}, {0.0f, false, 12.0, -6.0}, {1.0f, true, 12.0, 12.0}, {1.0f, false, -6.0, -6.0},
    };
    for (const auto& [mode, sameSign, left, right] : cases) {
        SCOPED_TRACE(testing::Message() << "mode " << mode << " same " << sameSign);
        EngineRunner<Equaliser> runner(rate);
        runner.Set("Linearize", 0.0f);
        runner.Set("ChannelMode", mode);
        for (const auto& [side, gain] : {std::pair{"L", 12.0f}, {"R", -6.0f}}) {
            runner.Set(std::string("Active_0") + side, 1.0f);
            runner.Set(std::string("F_0") + side, 1000.0f);
            runner.Set(std::string("Gain_0") + side, gain);
        }
        const std::vector<float>& input = sameSign ? tone : inverted;
        const auto out = runner.Run({tone, input});
        EXPECT_NEAR(left, GainDb(tone, out[0], 1000.0, rate), 0.01);
        EXPECT_NEAR(right, GainDb(input, out[1], 1000.0, rate), 0.01);
    }
}

TEST(EqualiserModuleTest, OutputGainsAndTheirProcessStates)
{
    using Gain = AudioEngine::Application::KD2::ModuleKD2<AudioEngine::GaindB<AudioEngine::VN4::LinearPhaseEq::GainDescriptor>>;
    const std::vector<float> input = {0.5f, -0.25f, 1e-40f, 1.0f, 0.75f, -1.0f, 0.0f, 0.125f};
    const double gain = -6.0;
    const float g = static_cast<float>(std::pow(10.0, gain / 20.0));
    // Process state and the output after the 4 samples of the host's pad.
    const std::pair<float, std::vector<float>> cases[] = {
        {0.0f, {0.5f * g, -0.25f * g, 0.0f, g}}, // denormal input becomes +0
        {1.0f, {0.5f, -0.25f, 1e-40f, 1.0f}},
        {2.0f, {0.0f, 0.0f, 0.0f, 0.0f}},
        {3.0f, {0.0f, 0.0f, 0.0f, 0.0f}},
    };
    for (const auto& [state, expected] : cases) {
        EngineRunner<Gain> runner;
        runner.Set("Gain", static_cast<float>(gain));
        runner.Set("Process", state);
        const std::vector<float> out = runner.RunMono(input, 8);
        for (std::size_t i = 0; i < expected.size(); ++i)
            EXPECT_NEAR(expected[i], out[i + hostDelay], 1e-7f * std::fabs(expected[i])) << state << " " << i;
    }
    // "Stop": the output keeps what it held.
    EngineRunner<Gain> stopped;
    stopped.RunMono(std::vector<float>(16, 0.25f), 8);
    stopped.Set("Process", 4.0f);
    EXPECT_EQ(std::vector<float>(8, 0.25f), stopped.RunMono(input, 8));
}

}  // namespace
}  // namespace OV::Testing
