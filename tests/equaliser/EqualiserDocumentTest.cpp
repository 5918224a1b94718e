// The equaliser document: four sets kept in step, LinearPhase tied to the latency level,
// values from a stopped engine dropped, the reset with undo, and the saved state.
#include "equaliser/Document.h"

#include <tinyxml.h>

#include <gtest/gtest.h>

namespace OV::Testing {
namespace {

using CFW::DocView::Parameter;
using namespace CFW::DocView; // the sources
using Comp::ModuleLinearPhaseEq::DocumentProfile;

// Rows by hand: band b's parameter k in set s is 43 s + 7 b + k.
enum : int {
    View = 1, ChannelMode = 2, Band2Gain = 10, LM_Band2Gain = 53, RS_Band2Gain = 96, Linked_Band2Gain = 139,
    Band6Hz = 42, RS_Band6Hz = 128, Linked_Band1Hz = 136, LM_Band1Active = 49, LinearPhase = 175,
    LatencyLevel = 177, MeterL = 178, MeterR = 179,
};
enum : std::uint32_t { LM = 0, Both = 1, RS = 2 };

struct Equaliser {
    Comp::ModuleLinearPhaseEq::Document document{&DocumentProfile::Instance(), nullptr};

    void Set(int row, float value, int source = SourceEditor) { document.SetParameter(row, Parameter::FromFloat(value), source); }
    void Select(std::uint32_t view) { document.SetParameter(View, Parameter::FromEnum(view), SourceEditor); }
    float Get(int row) const { return document.GetParameter(row).ToNumber(); }
    std::vector<std::string> Saved()
    {
        TiXmlElement element("State");
        document.Save(element);
        std::vector<std::string> attributes;
        for (const TiXmlAttribute* a = element.FirstAttribute(); a != nullptr; a = a->Next())
            attributes.push_back(std::string(a->Name()) + "=" + a->Value());
        return attributes;
    }
};

TEST(EqualiserDocumentTest, EditsReachTheSetsTheViewNames)
{
    struct Case {
        const char* what;
        std::uint32_t view;
        int row;
        int source;
        float value;
        float expected[4]; // Band2Gain on view, LM, RS, linked
    };
    const Case cases[] = {
        {"'=': view edited", Both, Band2Gain, SourceEditor, 5, {5, 5, 5, 5}},
        {"L|M: view edited", LM, Band2Gain, SourceEditor, 5, {5, 5, 0, 0}},
        {"R|S: view edited", RS, Band2Gain, SourceEditor, 5, {5, 0, 5, 0}},
        {"L|M: R|S changed", LM, RS_Band2Gain, SourceEditor, 5, {0, 0, 5, 0}},
        {"R|S: L|M changed", RS, LM_Band2Gain, SourceEditor, 5, {0, 5, 0, 0}},
        {"'=': L|M changed", Both, LM_Band2Gain, SourceEditor, 5, {5, 5, 0, 0}},
        {"'=': R|S changed", Both, RS_Band2Gain, SourceEditor, 5, {5, 0, 5, 0}},
        {"L|M: linked edited", LM, Linked_Band2Gain, SourceEditor, 5, {5, 5, 5, 5}},
        {"R|S: host writes the view", RS, Band2Gain, SourceHost, 5, {5, 5, 5, 0}},
        {"'=': host writes the view", Both, Band2Gain, SourceHost, 5, {5, 5, 5, 0}},
        {"R|S: host writes linked", RS, Linked_Band2Gain, SourceHost, 5, {5, 5, 5, 5}},
        {"'=': out of range", Both, Band2Gain, SourceEditor, 40, {15, 15, 15, 15}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        Equaliser eq;
        eq.Select(c.view);
        eq.Set(c.row, c.value, c.source);
        const int rows[4] = {Band2Gain, LM_Band2Gain, RS_Band2Gain, Linked_Band2Gain};
        for (int set = 0; set < 4; ++set)
            EXPECT_EQ(c.expected[set], eq.Get(rows[set])) << "set " << set;
    }
}

TEST(EqualiserDocumentTest, SelectingShowsAChannelAndGoingToBothKeepsTheDisplay)
{
    Equaliser eq;
    eq.Select(LM);
    eq.Set(LM_Band2Gain, 2.0f);
    eq.Set(RS_Band2Gain, 6.0f);
    eq.Set(RS_Band6Hz, 12000.0f);
    EXPECT_EQ(2.0f, eq.Get(Band2Gain));
    EXPECT_EQ(3000.0f, eq.Get(Band6Hz));
    eq.Select(RS);
    EXPECT_EQ(6.0f, eq.Get(Band2Gain));
    EXPECT_EQ(12000.0f, eq.Get(Band6Hz));
    eq.Select(Both);
    EXPECT_EQ(6.0f, eq.Get(Band2Gain)) << "the display stays";
    EXPECT_EQ(2.0f, eq.Get(LM_Band2Gain)) << "and so do the channels";
    eq.Set(Band2Gain, 6.0f); // the value already shown: still written to every set
    EXPECT_EQ(6.0f, eq.Get(LM_Band2Gain));
    EXPECT_EQ(6.0f, eq.Get(Linked_Band2Gain));
}

TEST(EqualiserDocumentTest, LinearPhaseOnlyAtLatencyHigh)
{
    struct Step {
        int row;
        std::uint32_t value;
        bool linearPhase;
    };
    const Step steps[] = {
        {LinearPhase, 1, false},                           // asked at Low
        {LatencyLevel, 1, false}, {LinearPhase, 1, false}, // at Mid
        {LatencyLevel, 2, false},                          // raising does not turn it on
        {LinearPhase, 1, true},
        {LatencyLevel, 1, false},                          // lowering turns it off
        {LatencyLevel, 2, false}, {LinearPhase, 1, true}, {LinearPhase, 0, false}, {LinearPhase, 1, true},
        {LatencyLevel, 0, false},
    };
    Equaliser eq;
    EXPECT_EQ(0.0f, eq.Get(LinearPhase)) << "on by default, but not at level Low";
    for (const Step& step : steps) {
        eq.document.SetParameter(step.row, Parameter{step.row == LinearPhase ? Parameter::Bool : Parameter::Enum, step.value}, SourceEditor);
        EXPECT_EQ(step.linearPhase ? 1.0f : 0.0f, eq.Get(LinearPhase)) << &step - steps;
    }
}

TEST(EqualiserDocumentTest, ValuesFromAStoppedEngineAreDropped)
{
    Equaliser eq;
    eq.Set(MeterL, 0.5f, SourceEngine);
    eq.Set(LM_Band2Gain, 5.0f, SourceEngine);
    EXPECT_EQ(0.5f, eq.Get(MeterL));
    EXPECT_EQ(5.0f, eq.Get(LM_Band2Gain));

    eq.document.SetParameter(0, Parameter::FromBool(true), SourceInternal); // EngineStopped
    eq.Set(MeterL, 0.25f, SourceEngine);
    eq.Set(MeterR, 0.125f, SourceEngine);
    eq.Set(LM_Band2Gain, 7.0f, SourceEngine);
    EXPECT_EQ(0.5f, eq.Get(MeterL));
    EXPECT_EQ(0.0f, eq.Get(MeterR));
    EXPECT_EQ(5.0f, eq.Get(LM_Band2Gain));
    eq.Set(LM_Band2Gain, 9.0f, SourceEditor);
    EXPECT_EQ(9.0f, eq.Get(LM_Band2Gain)) << "other sources still land";

    eq.document.SetParameter(0, Parameter::FromBool(false), SourceInternal);
    EXPECT_EQ(0.0f, eq.Get(MeterR)) << "a dropped value is not applied later";
    eq.Set(MeterR, 0.125f, SourceEngine);
    EXPECT_EQ(0.125f, eq.Get(MeterR));
}

// Every saved kind off its default, the view on R|S, and a linked row that reset leaves alone.
void Edit(Equaliser& eq)
{
    eq.Select(LM);
    eq.document.SetParameter(ChannelMode, Parameter::FromEnum(1), SourceEditor);
    eq.document.SetParameter(LM_Band1Active, Parameter::FromBool(true), SourceEditor);
    eq.Set(LM_Band2Gain, 4.0f);
    eq.Set(RS_Band6Hz, 5000.0f);
    eq.Set(Linked_Band1Hz, 640.0f);
    eq.Select(RS);
}

TEST(EqualiserDocumentTest, SecondPressOfResetRestoresUnlessSomethingWasSetBetween)
{
    struct Case {
        const char* what;
        void (*between)(Equaliser&);
        bool restores;
    };
    const Case cases[] = {
        {"nothing", [](Equaliser&) {}, true},
        {"an edit on view", [](Equaliser& eq) { eq.Set(Band2Gain, 1.0f); }, false},
        {"a row set to its present value", [](Equaliser& eq) { eq.document.SetParameter(ChannelMode, Parameter::FromEnum(0), SourceEditor); }, false},
        {"the latency level", [](Equaliser& eq) { eq.document.SetParameter(LatencyLevel, Parameter::FromEnum(2), SourceEditor); }, false},
        {"a load", [](Equaliser& eq) { eq.document.Load(TiXmlElement("State")); }, false},
        {"EngineStopped", [](Equaliser& eq) { eq.document.SetParameter(0, Parameter::FromBool(true), SourceInternal); }, true},
        {"a meter value", [](Equaliser& eq) { eq.Set(MeterL, 0.5f, SourceEngine); }, true},
    };
    const std::vector<std::string> defaults = Equaliser().Saved();
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        Equaliser eq;
        Edit(eq);
        const std::vector<std::string> edited = eq.Saved();
        eq.document.PressReset();
        EXPECT_EQ(defaults, eq.Saved());
        EXPECT_EQ(3000.0f, eq.Get(Band6Hz)) << "the view follows the channels";
        c.between(eq);
        eq.document.PressReset();
        EXPECT_EQ(c.restores ? edited : defaults, eq.Saved());
        EXPECT_EQ(c.restores ? 5000.0f : 3000.0f, eq.Get(Band6Hz));
        EXPECT_EQ(640.0f, eq.Get(Linked_Band1Hz)) << "the linked set is never reset";
        if (c.restores) {
            eq.document.PressReset();
            EXPECT_EQ(defaults, eq.Saved()) << "the press after a restore resets";
        }
    }
}

TEST(EqualiserDocumentTest, SavedStateIsTheSelectionBothChannelsAndLinearPhase)
{
    Equaliser source;
    Edit(source);
    source.Select(LM);
    const std::vector<std::string> saved = source.Saved();
    ASSERT_EQ(89u, saved.size()); // 2 + 2 * 43 + 1
    EXPECT_EQ("CurrentChannel=L|M", saved[0]);
    EXPECT_EQ("ChannelMode=M/S", saved[1]);
    EXPECT_EQ("LM_Band1Gain=0", saved[2]);
    EXPECT_EQ("LM_Band1Mode=LowShelf", saved[4]);
    EXPECT_EQ("LM_OutputLevel=0", saved[44]);
    EXPECT_EQ("RS_Band1Gain=0", saved[45]);
    EXPECT_EQ("RS_Band6Hz=5000", saved[84]);
    EXPECT_EQ("LinearPhase=0", saved[88]);

    TiXmlElement state("State");
    source.document.Save(state);
    Equaliser eq;
    eq.Set(Linked_Band2Gain, -6.0f); // '=': both channels and the view too
    eq.document.Load(state);
    EXPECT_EQ(saved, eq.Saved());
    EXPECT_EQ(-6.0f, eq.Get(Linked_Band2Gain)) << "the linked set is not in the state";
    EXPECT_EQ(0.0f, eq.Get(RS_Band2Gain));
    EXPECT_EQ(4.0f, eq.Get(Band2Gain)) << "L|M is on view";
    EXPECT_EQ(1.0f, eq.Get(LM_Band1Active - 43));
}

}  // namespace
}  // namespace OV::Testing
