// The equaliser's bridge against a recording engine door: the bindings in order, what goes
// down, what comes up, and the coefficients read at idle.
#include "docview/utils/BasicContexts.h"
#include "equaliser/MAF.h"
#include "tests/docview/utils/RecordingWrapper.h"

#include <algorithm>

#include <gtest/gtest.h>

namespace OV::Testing {
namespace {

using CFW::DocView::Parameter;
using namespace CFW::DocViewUtils;
using namespace Comp::ModuleLinearPhaseEq;
using Lines = std::vector<std::string>;

// Also serves data blocks by name, and tells which were read.
class BlockWrapper : public TestDoubles::RecordingWrapper {
public:
    void ReadDataBlock(ResolvedName& name, std::vector<float>& out) override
    {
        blockReads.push_back(name.name);
        const auto found = blocks.find(name.name);
        out = found != blocks.end() ? found->second : std::vector<float>();
    }
    std::map<std::string, std::vector<float>> blocks;
    Lines blockReads;
};

struct Bridge {
    explicit Bridge(const std::string& prefix = "Module") { maf.Attach(&wrapper, prefix); }
    Lines Update() // what one Update sends to the engine, sorted
    {
        wrapper.Clear();
        maf.Update();
        Lines lines = wrapper.Log();
        std::sort(lines.begin(), lines.end());
        return lines;
    }
    void Set(int row, Parameter value, int source = CFW::DocView::SourceEditor) { document.SetParameter(row, value, source); }

    BasicMAFContext context{nullptr};
    Document document{&DocumentProfile::Instance(), nullptr};
    BlockWrapper wrapper;
    MAF maf{&MAFProfile::Instance(), &context, &document};
};

TEST(EqualiserMAFTest, BindingsInTheirOrder)
{
    enum Kind { Index, Float, Bool };
    struct Case {
        int position;
        Kind kind;
        int row;
        const char* name;
    };
    const Case cases[] = {
        {0, Index, 2, "ChannelMode"}, {1, Index, 49, "Active_0L"},  {2, Index, 48, "Mode_0L"},
        {3, Float, 46, "Gain_0L"},    {4, Float, 50, "F_0L"},       {5, Float, 47, "Q_LPHP_0L"},
        {6, Float, 51, "Q_Peaking_0L"}, {7, Float, 52, "Q_Shelving_0L"}, {8, Index, 92, "Active_0R"},
        {15, Index, 56, "Active_1L"}, {32, Float, 64, "F_2L"},     {84, Float, 130, "Q_Shelving_5R"},
        {85, Float, 88, "OutGainL"},  {86, Float, 131, "OutGainR"}, {87, Float, 178, "OutLevelL"},
        {88, Float, 179, "OutLevelR"}, {89, Bool, 175, "Linearize"},
    };
    const MAFProfile& profile = MAFProfile::Instance();
    EXPECT_EQ("LinearPhaseEQ", profile.GetName());
    ASSERT_EQ(90, profile.GetCreatorCount());
    for (const Case& c : cases) {
        SCOPED_TRACE(c.position);
        const MAFParamMediator::Creator* creator = &profile.GetCreator(c.position);
        if (const auto* index = dynamic_cast<const MAFParamMediatorEnum::Creator*>(creator)) {
            EXPECT_EQ(Index, c.kind);
            EXPECT_EQ(std::make_pair(c.row, std::string(c.name)), std::make_pair(index->row, index->name));
            EXPECT_TRUE(index->values.empty() && index->texts.empty()) << "the index itself";
        } else if (const auto* plain = dynamic_cast<const MAFParamMediatorFloat::Creator*>(creator)) {
            EXPECT_EQ(Float, c.kind);
            EXPECT_EQ(std::make_pair(c.row, std::string(c.name)), std::make_pair(plain->row, plain->name));
            EXPECT_EQ(1234.5f, plain->converter->ToNormalized(1234.5f)) << "the plain value";
        } else if (const auto* onOff = dynamic_cast<const MAFParamMediatorBool::Creator*>(creator)) {
            EXPECT_EQ(Bool, c.kind);
            EXPECT_EQ(std::make_pair(c.row, std::string(c.name)), std::make_pair(onOff->row, onOff->name));
            EXPECT_TRUE(!onOff->usesText && onOff->offValue == 0.0f && onOff->onValue == 1.0f);
        } else {
            ADD_FAILURE() << "another kind of binding";
        }
    }
}

TEST(EqualiserMAFTest, FirstUpdateCarriesBothChannelsAndNothingElse)
{
    Bridge bridge;
    const Lines sent = bridge.Update();
    EXPECT_EQ(88u, sent.size()) << "84 band values, ChannelMode, two output gains, Linearize";
    for (const char* line : {"F ChannelMode_Module=0", "F Mode_0L_Module=1", "F Mode_5R_Module=3", "F F_4L_Module=7000",
                             "F Q_Peaking_5L_Module=0.25", "F Q_LPHP_3R_Module=0.7", "F Linearize_Module=0"})
        EXPECT_NE(sent.end(), std::find(sent.begin(), sent.end(), line)) << line;
    EXPECT_EQ(sent.end(), std::find_if(sent.begin(), sent.end(), [](const std::string& line) { return line.find("OutLevel") != std::string::npos; }));
    EXPECT_EQ(Lines{}, bridge.Update());
}

TEST(EqualiserMAFTest, EditsReachTheEngineParametersOfTheirChannels)
{
    struct Step {
        int row;
        Parameter value;
        Lines sent;
    };
    const Step steps[] = {
        {53, Parameter::FromFloat(4.5f), {"F Gain_1L_Module=4.5"}},                          // LM_Band2Gain
        {21, Parameter::FromFloat(2000.0f), {"F F_2L_Module=2000", "F F_2R_Module=2000"}},    // Band3Hz, '='
        {126, Parameter::FromEnum(4), {"F Mode_5R_Module=4"}},                                // RS_Band6Mode
        {135, Parameter::FromBool(true), {"F Active_0L_Module=1", "F Active_0R_Module=1"}},   // Linked_Band1Active
        {174, Parameter::FromFloat(2.0f), {"F OutGainL_Module=2", "F OutGainR_Module=2"}},    // Linked_OutputLevel
        {111, Parameter::FromFloat(1.5f), {"F Q_LPHP_3R_Module=1.5"}},                        // RS_Band4Resonance
        {2, Parameter::FromEnum(1), {"F ChannelMode_Module=1"}},
        {175, Parameter::FromBool(true), {}},                                                 // not at Low
        {177, Parameter::FromEnum(2), {}},
        {175, Parameter::FromBool(true), {"F Linearize_Module=1"}},
        {177, Parameter::FromEnum(0), {"F Linearize_Module=0"}},
        {176, Parameter::FromEnum(0), {}},                                                    // Oversample: inert
    };
    Bridge bridge;
    bridge.Update();
    for (const Step& step : steps) {
        bridge.Set(step.row, step.value);
        EXPECT_EQ(step.sent, bridge.Update()) << &step - steps;
    }
}

TEST(EqualiserMAFTest, MetersComeUpUnlessTheEngineIsStopped)
{
    Bridge bridge;
    bridge.wrapper.values["OutLevelL_Module"] = 0.5f;
    bridge.wrapper.values["OutLevelR_Module"] = 0.25f;
    bridge.maf.Attach(&bridge.wrapper, "Module"); // resolves against the values now set
    bridge.maf.Poll();
    EXPECT_EQ(0.5f, bridge.document.GetParameter(178).AsFloat());
    EXPECT_EQ(0.25f, bridge.document.GetParameter(179).AsFloat());
    bridge.Set(0, Parameter::FromBool(true), CFW::DocView::SourceInternal);
    bridge.wrapper.values["OutLevelL_Module"] = 0.75f;
    bridge.maf.Poll();
    EXPECT_EQ(0.5f, bridge.document.GetParameter(178).AsFloat());
}

TEST(EqualiserMAFTest, IdlePushesTheCoefficientsOfBothChains)
{
    Bridge bridge;
    bridge.wrapper.blocks["ChainCoeffsL_Module"] = std::vector<float>(30, 0.5f);
    bridge.wrapper.blocks["ChainCoeffsR_Module"] = std::vector<float>(30, -0.5f);
    bridge.wrapper.values["SampleRate_Module"] = 96000.0f;
    bridge.maf.Attach(&bridge.wrapper, "Module");
    for (int i = 0; i < 3; ++i) // the third finds the ring full
        bridge.maf.Idle();
    EXPECT_EQ((Lines{"ChainCoeffsL_Module", "ChainCoeffsR_Module"}), Lines(bridge.wrapper.blockReads.begin(), bridge.wrapper.blockReads.begin() + 2));
    const ChainCoeffRecord* record = bridge.document.PeekCoefficients();
    ASSERT_NE(nullptr, record);
    EXPECT_EQ(std::vector<float>(30, 0.5f), record->left);
    EXPECT_EQ(std::vector<float>(30, -0.5f), record->right);
    EXPECT_EQ(96000.0f, record->sampleRate);
    EXPECT_EQ(2u, bridge.document.GetCoefficientRing().GetWriteIndex());

    bridge.document.PopCoefficients();
    bridge.document.PopCoefficients();
    bridge.maf.Detach();
    bridge.maf.Idle();
    EXPECT_EQ(nullptr, bridge.document.PeekCoefficients()) << "detached: nothing read";

    bridge.maf.Attach(&bridge.wrapper, ""); // no blocks under these names
    bridge.maf.Idle();
    EXPECT_EQ("ChainCoeffsR", bridge.wrapper.blockReads.back());
    ASSERT_NE(nullptr, bridge.document.PeekCoefficients());
    EXPECT_TRUE(bridge.document.PeekCoefficients()->left.empty());
    EXPECT_EQ(0.0f, bridge.document.PeekCoefficients()->sampleRate);
}

}  // namespace
}  // namespace OV::Testing
