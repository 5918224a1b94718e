// Minimum-phase responses of every band type, measured from an impulse through a filter
// chain, against the textbook designs.
#include "engine/dsp/equaliser/LinearizedFilterChain.h"
#include "tests/engine/dsp/EngineRunner.h"
#include "tests/engine/dsp/EqOracle.h"

#include <cmath>
#include <tuple>

#include <gtest/gtest.h>

namespace OV::Testing {
namespace {

using AudioEngine::VN4::LinearizedFilterChain;

// The impulse response, from the impulse on, until it has died away.
std::vector<float> ImpulseResponse(EngineRunner<LinearizedFilterChain>& runner)
{
    std::vector<float> response = runner.RunMono(Impulse(8192));
    response.erase(response.begin(), response.begin() + hostDelay);
    while (response.size() < (1u << 18)) {
        const std::vector<float> more = runner.RunMono(std::vector<float>(8192, 0.0f));
        response.insert(response.end(), more.begin(), more.end());
        if (std::all_of(more.begin(), more.end(), [](float x) { return std::fabs(x) < 1e-12f; }))
            break;
    }
    return response;
}

TEST(BandResponseTest, EveryBandTypeMatchesItsDesign)
{
    const std::vector<std::vector<Band>> settings = {
        {{OraclePeak, 12.0f, 1000.0f, 1.0f}},      {{OraclePeak, -15.0f, 100.0f, 4.0f}},
        {{OraclePeak, 6.0f, 10000.0f, 0.3f}},      {{OraclePeak, 3.0f, 40.0f, 0.7f}},
        {{OracleLowShelf, 9.0f, 200.0f, 1.0f}},    {{OracleLowShelf, -12.0f, 80.0f, 0.5f}},
        {{OracleHiShelf, 15.0f, 5000.0f, 3.0f}},   {{OracleHiShelf, -6.0f, 12000.0f, 0.2f}},
        {{OracleHiPass, 0.0f, 80.0f, 0.707f}},     {{OracleHiPass, 0.0f, 1000.0f, 2.0f}},
        {{OracleLowPass, 0.0f, 8000.0f, 0.3f}},    {{OracleLowPass, 0.0f, 200.0f, 1.2f}},
        {{OracleHiPass, 0.0f, 30.0f, 0.5f}, {OraclePeak, -4.0f, 300.0f, 2.0f}, {OracleHiShelf, 5.0f, 8000.0f, 0.8f}},
    };
    for (float rate : {44100.0f, 48000.0f, 96000.0f}) {
        for (const std::vector<Band>& bands : settings) {
            EngineRunner<LinearizedFilterChain> runner(rate);
            runner.Set("Linearize", 0.0f);
            for (std::size_t i = 0; i < bands.size(); ++i)
                SetBand(runner, static_cast<int>(2 * i + 1), bands[i]);
            const std::vector<float> response = ImpulseResponse(runner);
            for (double f : TestFrequencies(40)) {
                double expected = 1.0;
                for (const Band& band : bands)
                    expected *= SectionMagnitude(OracleSection(band.type, band.gain, band.frequency, band.q, rate), f, rate);
                if (Db(expected) < -80.0)
                    continue;
                ASSERT_NEAR(Db(expected), Db(MeasuredMagnitude(response, f, rate)), 0.01)
                    << "rate " << rate << ", type " << bands[0].type << " at " << bands[0].frequency << " Hz, measured at " << f;
            }
        }
    }
}

TEST(BandResponseTest, DesignsMatchTheTextbookAndFlatBandsPassTheSignal)
{
    // Linearized designs halve the gain and double the shelf slope. A slope of 20 is out of
    // the parameters' reach: it is limited to what the gain allows. A shelf or a peak at 0 dB
    // has its numerator equal to its denominator.
    // The band, the rate, and whether the design is linearized.
    const std::tuple<Band, float, bool> cases[] = {
        {{OracleLowShelf, 15.0f, 1000.0f, 20.0f}, 48000.0f, false}, {{OracleHiShelf, 15.0f, 1000.0f, 20.0f}, 48000.0f, false},
        {{OracleLowShelf, 0.0f, 3000.0f, 0.7f}, 44100.0f, true},    {{OraclePeak, 0.0f, 3000.0f, 0.7f}, 44100.0f, true},
        {{OracleHiShelf, 0.0f, 3000.0f, 0.7f}, 44100.0f, true},
    };
    for (const auto& [c, rate, linearized] : cases) {
        SCOPED_TRACE(testing::Message() << "type " << c.type << ", gain " << c.gain);
        AudioEngine::AudioAlgorithm::EqChain chain;
        chain.SetSampleRate(rate);
        chain.linearized = linearized;
        chain.bands[2] = {true, c.type, c.gain, c.frequency, c.q, c.q};
        chain.Design(2);
        const double shelfQ = c.type != OraclePeak && linearized ? 2.0 * c.q : c.q;
        const Section expected = OracleSection(c.type, linearized ? c.gain / 2 : c.gain, c.frequency, shelfQ, rate);
        const auto& s = chain.sections[2];
        EXPECT_TRUE(std::isfinite(s.b0));
        EXPECT_NEAR(expected.b0, s.b0, 1e-12);
        EXPECT_NEAR(expected.b1, s.b1, 1e-12);
        EXPECT_NEAR(expected.b2, s.b2, 1e-12);
        EXPECT_NEAR(expected.a1, s.a1, 1e-12);
        EXPECT_NEAR(expected.a2, s.a2, 1e-12);
        if (c.gain != 0.0f)
            continue;
        EXPECT_NEAR(1.0, s.b0, 1e-15);
        EXPECT_NEAR(s.a1, s.b1, 1e-15);
        EXPECT_NEAR(s.a2, s.b2, 1e-15);
        std::vector<float> signal = Impulse(64, 3);
        chain.Process(signal.data(), signal.data(), 64);
        for (std::size_t i = 0; i < signal.size(); ++i)
            EXPECT_NEAR(i == 3 ? 1.0f : 0.0f, signal[i], 1e-7f) << i;
    }
}

TEST(BandResponseTest, DenormalsNeverSurviveASample)
{
    // y = x + 0.5 y1 halves forever: its state must go from normal numbers straight to zero.
    AudioEngine::AudioAlgorithm::Biquad section;
    section.SetCoefficients(1.0, 0.0, 0.0, -0.5, 0.0);
    std::vector<float> signal(1200, 0.0f);
    signal[0] = 1.0f;
    section.Process(signal.data(), signal.data(), 1200);
    for (std::size_t i = 0; i < signal.size(); ++i)
        ASSERT_NE(FP_SUBNORMAL, std::fpclassify(signal[i])) << i;
    EXPECT_EQ(0.0f, signal.back());
    EXPECT_EQ(0.0, section.y1);
    EXPECT_FALSE(std::signbit(section.y1));
    // The input is only read.
    const float input[2] = {1e-40f, 0.0f};
    float output[2];
    section.Reset();
    section.Process(input, output, 2);
    EXPECT_EQ(1e-40f, input[0]);
    EXPECT_EQ(0.0f, output[0]);
}

}  // namespace
}  // namespace OV::Testing
