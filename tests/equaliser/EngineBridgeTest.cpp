// The equaliser component over the product's real engine: band settings go down into the
// engine's parameters, the output level comes back into the meter row, and the coefficients
// the chains run with come up through the ring.
#include "docview/interfaces/Automation.h"
#include "docview/interfaces/GUI.h"
#include "equaliser/Component.h"
#include "product/ComponentContext.h"
#include "product/MAFWrapper.h"
#include "tests/engine/dsp/EqOracle.h"

#include <atomic>
#include <cmath>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

namespace OV::Testing {
namespace {

using CFW::DocView::Parameter;
using CFW::DocView::SourceEditor;

constexpr int frames = 256;
constexpr float rate = 48000.0f;

// |H| of section `band` of a coefficient record (b0, b1, b2, a1, a2; a0 = 1) at `hz`.
double Magnitude(const std::vector<float>& c, int band, double hz)
{
    const std::size_t i = 5 * static_cast<std::size_t>(band);
    return SectionMagnitude({c[i], c[i + 1], c[i + 2], c[i + 3], c[i + 4]}, hz, rate);
}

// One instance's context, the component in it, and the engine behind the MAF at "Module",
// driven block by block on this one thread as the host's audio thread would.
struct Instance {
    Instance()
    {
        wrapper.SetSampleRate(rate);
        component.GetMAF()->Attach(&wrapper, "Module");
    }
    ~Instance() { component.GetMAF()->Detach(); }

    void Set(int row, Parameter value) { component.GetDocument().SetParameter(row, value, SourceEditor); }
    void Run(int blocks, float left, float right)
    {
        std::vector<float> in[2] = {std::vector<float>(frames, left), std::vector<float>(frames, right)};
        std::vector<float> out[2] = {std::vector<float>(frames), std::vector<float>(frames)};
        float* inputs[2] = {in[0].data(), in[1].data()};
        float* outputs[2] = {out[0].data(), out[1].data()};
        for (int i = 0; i < blocks; ++i) {
            component.GetMAF()->Update();
            wrapper.ProcessBlock(inputs, outputs, frames);
        }
    }

    Products::VN4::ComponentContext context{nullptr};
    Comp::ModuleLinearPhaseEq::Component component{&context};
    Products::VN4::MAFWrapper wrapper;
};

TEST(EngineBridgeTest, BandSettingsReachTheEngineAndItsCoefficientsComeBack)
{
    Instance eq;
    eq.Set(48, Parameter::FromEnum(2));         // LM_Band1Mode Peaking
    eq.Set(49, Parameter::FromBool(true));      // LM_Band1Active
    eq.Set(46, Parameter::FromFloat(6.0f));     // LM_Band1Gain
    eq.Set(50, Parameter::FromFloat(1000.0f));  // LM_Band1Hz
    eq.Set(96, Parameter::FromFloat(-4.0f));    // RS_Band2Gain
    eq.Run(4, 0.0f, 0.0f);

    const std::pair<const char*, float> cases[] = {
        {"Mode_0L_Module", 2},    {"Active_0L_Module", 1},    {"Gain_0L_Module", 6},      {"F_0L_Module", 1000},
        {"Q_Peaking_0L_Module", 1}, {"Gain_0R_Module", 0},    {"Active_0R_Module", 0},    {"Mode_0R_Module", 1},
        {"Gain_1R_Module", -4},   {"F_1R_Module", 250},       {"Q_Peaking_1R_Module", 0.7f}, {"Mode_5R_Module", 3},
        {"F_5L_Module", 3000},    {"Q_Shelving_5L_Module", 0.25f}, {"ChannelMode_Module", 0}, {"Linearize_Module", 0},
    };
    for (const auto& [name, value] : cases)
        EXPECT_FLOAT_EQ(value, eq.wrapper.ReadParameter(name)) << name;

    // Off the audio thread in a host; here it follows the blocks, never runs beside them.
    eq.component.GetMAF()->Idle();
    const Comp::ModuleLinearPhaseEq::ChainCoeffRecord* record = eq.component.GetDocument().PeekCoefficients();
    ASSERT_NE(nullptr, record);
    ASSERT_EQ(30u, record->left.size());
    ASSERT_EQ(30u, record->right.size());
    EXPECT_EQ(rate, record->sampleRate);
    // A peaking section has the band's gain at its centre: 6 dB left, -4 dB right band 2.
    EXPECT_NEAR(std::pow(10.0, 6.0 / 20.0), Magnitude(record->left, 0, 1000.0), 1e-3);
    EXPECT_NEAR(std::pow(10.0, -4.0 / 20.0), Magnitude(record->right, 1, 250.0), 1e-3);
    EXPECT_NEAR(1.0, Magnitude(record->right, 0, 1000.0), 1e-4) << "band 1 right is a flat shelf";
}

// The editor's idle reads the coefficient blocks while the audio thread rewrites them and
// switches the chains under them (oversampling on and off). Each record must be one whole set
// the engine published: band 1's peaking section always has a1 == b1 and b0 + b2 == 1 + a2,
// which a set torn between two gains breaks; the sanitizers see any unordered access.
TEST(EngineBridgeTest, CoefficientsReadBesideTheAudioThreadAreWholeSets)
{
    Instance eq;
    for (const char* side : {"L", "R"}) {
        const std::string band = std::string("_0") + side + "_Module";
        eq.wrapper.SetFloatParameter("Mode" + band, 2.0f);
        eq.wrapper.SetFloatParameter("Active" + band, 1.0f);
    }
    std::atomic<bool> running{true};
    std::thread audio([&] {
        std::vector<float> in(frames, 0.1f), out[2] = {std::vector<float>(frames), std::vector<float>(frames)};
        float* inputs[2] = {in.data(), in.data()};
        float* outputs[2] = {out[0].data(), out[1].data()};
        for (int block = 0; block < 400; ++block) {
            eq.wrapper.SetFloatParameter("Gain_0L_Module", block % 2 == 0 ? 12.0f : -12.0f);
            eq.wrapper.SetFloatParameter("Gain_0R_Module", block % 3 == 0 ? 9.0f : -3.0f);
            if (block % 16 == 0)
                eq.wrapper.SetFloatParameter("GlobalOversample", static_cast<float>(block / 16 % 2));
            eq.wrapper.ProcessBlock(inputs, outputs, frames);
        }
        running = false;
    });
    int records = 0;
    do {
        eq.component.GetMAF()->Idle();
        while (const auto* record = eq.component.GetDocument().PeekCoefficients()) {
            ASSERT_EQ(30u, record->left.size());
            ASSERT_EQ(30u, record->right.size());
            EXPECT_TRUE(record->sampleRate == rate || record->sampleRate == 2 * rate) << record->sampleRate;
            for (const std::vector<float>* set : {&record->left, &record->right}) {
                const std::vector<float>& c = *set;
                EXPECT_EQ(c[3], c[1]);
                EXPECT_NEAR(1.0 + c[4], double(c[0]) + c[2], 1e-6);
            }
            eq.component.GetDocument().PopCoefficients();
            ++records;
        }
    } while (running);
    audio.join();
    EXPECT_GT(records, 0);
}

TEST(EngineBridgeTest, OutputLevelsComeBackIntoTheMeterRows)
{
    Instance eq;
    eq.Run(8, 0.5f, 0.25f); // all bands off: the output is the input
    eq.component.GetMAF()->Poll();
    EXPECT_NEAR(0.5f, eq.component.GetDocument().GetParameter(178).AsFloat(), 1e-4f);
    EXPECT_NEAR(0.25f, eq.component.GetDocument().GetParameter(179).AsFloat(), 1e-4f);
}

TEST(EngineBridgeTest, ComponentOffersItsRolesAndProfile)
{
    Instance eq;
    using namespace CFW::DocView;
    EXPECT_EQ(3, eq.component.GetInterfaceCount());
    EXPECT_EQ(&eq.component.GetDocument(), FindInterface<Document>(eq.component));
    EXPECT_EQ(eq.component.GetAutomation(), FindInterface<Automation>(eq.component));
    EXPECT_EQ(eq.component.GetMAF(), FindInterface<MAF>(eq.component));
    EXPECT_EQ(nullptr, eq.component.GetInterface(typeid(GUI)));
    const ComponentProfile& profile = Comp::ModuleLinearPhaseEq::Component::Profile();
    EXPECT_EQ(&profile, eq.component.GetProfile());
    EXPECT_EQ("Linear Phase EQ", profile.GetName());
    EXPECT_EQ("f8fd5639-da16-4332-86c3-e1e0e7272048", Platform::FormatGuid(profile.GetId()));
    EXPECT_NE(nullptr, profile.GetInterfaceProfile(typeid(DocumentProfile)));
    EXPECT_EQ("LinearPhaseEQ", dynamic_cast<const MAFProfile&>(*profile.GetInterfaceProfile(typeid(MAFProfile))).GetName());
}

}  // namespace
}  // namespace OV::Testing
