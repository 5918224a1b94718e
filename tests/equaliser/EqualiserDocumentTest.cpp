// The equaliser document: its 180 rows against the tables, worked out by hand; four sets kept
// in step, LinearPhase tied to the latency level, values from a stopped engine dropped, the
// reset with undo, and the saved state.
#include "equaliser/Document.h"

#include <tinyxml.h>

#include <cmath>
#include <set>
#include <tuple>

#include <gtest/gtest.h>

namespace OV::Testing {
namespace {

using CFW::DocView::Parameter;
using namespace CFW::DocView; // the sources
using Comp::ModuleLinearPhaseEq::DocumentProfile;
using Names = std::vector<std::string>;

const ParameterInfo& Row(int index)
{
    return DocumentProfile::Instance().GetParameterInfo(index);
}

TEST(DocumentProfileTest, RowsAsTabled)
{
    constexpr std::uint32_t B = Parameter::Bool, E = Parameter::Enum, F = Parameter::Float;
    const Names modes = {"HighPass", "LowShelf", "Peaking", "HighShelf", "LowPass"};
    // Index, name, type, flags, the default (0 or 1, the index, or the float), and floats'
    // range's top or enums' names.
    const std::tuple<int, const char*, std::uint32_t, std::uint32_t, float, float, Names> cases[] = {
        {0, "EngineStopped", B, 0, 0, 0, {}}, {1, "CurrentChannel", E, 1, 1, 0, {"L|M", "=", "R|S"}},
        {2, "ChannelMode", E, 1, 0, 0, {"L/R", "M/S"}}, {3, "Band1Gain", F, 4, 0, 15, {}},
        {4, "Band1Resonance", F, 4, 0.7f, 2, {}}, {5, "Band1Mode", E, 4, 1, 0, modes}, {6, "Band1Active", B, 4, 0, 0, {}},
        {7, "Band1Hz", F, 4, 130, 20000, {}}, {8, "Band1Q_Peaking", F, 4, 1, 20, {}}, {9, "Band1Q_Shelving", F, 4, 1, 3, {}},
        {12, "Band2Mode", E, 4, 2, 0, modes}, {14, "Band2Hz", F, 4, 250, 20000, {}}, {35, "Band5Hz", F, 4, 7000, 20000, {}},
        {40, "Band6Mode", E, 4, 3, 0, modes}, {42, "Band6Hz", F, 4, 3000, 20000, {}},
        {44, "Band6Q_Shelving", F, 4, 0.25f, 3, {}}, {45, "OutputLevel", F, 4, 0, 15, {}},
        {49, "LM_Band1Active", B, 1, 0, 0, {}}, {88, "LM_OutputLevel", F, 1, 0, 15, {}},
        {129, "RS_Band6Q_Peaking", F, 1, 0.25f, 20, {}}, {150, "Linked_Band3Hz", F, 4, 1000, 20000, {}},
        {174, "Linked_OutputLevel", F, 4, 0, 15, {}}, {175, "LinearPhase", B, 1, 1, 0, {}},
        {176, "Oversample", E, 0, 1, 0, {"Off", "2x"}}, {177, "Main.LatencyLevel", E, 16, 0, 0, {"Low", "Mid", "High"}},
        {179, "OutputMeterR", F, 2, 0, 100000, {}},
    };
    ASSERT_EQ(180, DocumentProfile::Instance().GetParameterCount());
    for (const auto& [index, name, type, flags, defaultValue, maximum, names] : cases) {
        const ParameterInfo& row = Row(index);
        EXPECT_EQ(std::make_tuple(name, type, flags), std::make_tuple(row.name, row.type, row.flags)) << index;
        EXPECT_FLOAT_EQ(defaultValue, row.GetDefault().ToNumber()) << index;
        if (type == F) {
            EXPECT_FLOAT_EQ(maximum, row.AsFloat()->range->GetMaximum()) << index;
        } else if (type == E) {
            EXPECT_EQ(names, row.AsEnum()->names) << index;
        }
    }
}

// Normalised and plain values at points worked out from each mapping's formula.
TEST(DocumentProfileTest, ValueMappings)
{
    const std::tuple<int, float, float> cases[] = {
        {7, 0.0f, 10.0f},     {7, 0.5f, 2508.75f},  // Hz: 10 + 19990 n^3
        {94, 0.5f, 2.0f},     {8, 1.0f, 20.0f},     // Q_Peaking: 0.2 * 100^n
        {9, 0.5f, 0.7745967f}, {52, 0.0f, 0.2f},    // Q_Shelving: 0.2 * 15^n
        {3, 0.75f, 7.5f},     {4, 0.5f, 1.15f},     // Gain, Resonance: linear over the range
        {178, 20.0f, 10.0f},  {179, -6.0f, 0.5011872f}, // meters: decibels to gain
    };
    for (const auto& [index, normalized, value] : cases) {
        const CFW::DataFilter::FloatConverter& converter = *Row(index).AsFloat()->converter;
        EXPECT_NEAR(value, converter.ToValue(normalized), 1e-5f * std::max(1.0f, std::abs(value))) << index;
        EXPECT_NEAR(normalized, converter.ToNormalized(value), 1e-5f * std::max(1.0f, std::abs(normalized))) << index;
    }
}

// Row + 43, + 86, + 129 is the same parameter of the next set, under the set's prefix.
TEST(DocumentProfileTest, SetsAreCopiesOfTheSetOnView)
{
    const char* prefixes[] = {"LM_", "RS_", "Linked_"};
    const std::uint32_t flags[] = {1, 1, 4};
    for (int index = 3; index <= 45; ++index) {
        for (int set = 1; set <= 3; ++set) {
            SCOPED_TRACE(index + 43 * set);
            const ParameterInfo& row = Row(index + 43 * set);
            EXPECT_EQ(prefixes[set - 1] + Row(index).name, row.name);
            EXPECT_EQ(flags[set - 1], row.flags);
            EXPECT_EQ(Row(index).GetDefault(), row.GetDefault());
            if (row.type == Parameter::Float) {
                EXPECT_EQ(Row(index).AsFloat()->converter->ToValue(0.3f), row.AsFloat()->converter->ToValue(0.3f));
            }
        }
    }
    std::set<std::string> names;
    for (int index = 0; index < 180; ++index)
        names.insert(Row(index).name);
    EXPECT_EQ(180u, names.size()) << "every row declared, every name once";
}


// Rows by hand: band b's parameter k in set s is 43 s + 7 b + k.
enum : int {
    EngineStopped = 0, View = 1, ChannelMode = 2, Band2Gain = 10, LM_Band2Gain = 53, RS_Band2Gain = 96, Linked_Band2Gain = 139,
    Band6Hz = 42, RS_Band6Hz = 128, Linked_Band1Hz = 136, LM_Band1Active = 49, LinearPhase = 175,
    LatencyLevel = 177, MeterL = 178, MeterR = 179,
};
enum : std::uint32_t { LM = 0, Both = 1, RS = 2 };

struct Equaliser {
    Comp::ModuleLinearPhaseEq::Document document{&DocumentProfile::Instance(), nullptr};

    void Set(int row, float value, int source = SourceEditor) { document.SetParameter(row, Parameter::FromFloat(value), source); }
    void Select(std::uint32_t view) { SetState(View, view); }
    float Get(int row) const { return document.GetParameter(row).ToNumber(); }
    std::vector<float> Get(std::initializer_list<int> rows) const
    {
        std::vector<float> values;
        for (int row : rows)
            values.push_back(Get(row));
        return values;
    }
    // A Bool or Enum row, of the row's own type.
    void SetState(int row, std::uint32_t value, int source = SourceEditor)
    {
        document.SetParameter(row, Parameter{DocumentProfile::Instance().GetParameterInfo(row).type, value}, source);
    }
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
    // What, the view, the row written, by whom, its value, and Band2Gain on view, LM, RS, linked.
    const std::tuple<const char*, std::uint32_t, int, int, float, std::vector<float>> cases[] = {
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
    for (const auto& [what, view, row, source, value, expected] : cases) {
        Equaliser eq;
        eq.Select(view);
        eq.Set(row, value, source);
        EXPECT_EQ(expected, eq.Get({Band2Gain, LM_Band2Gain, RS_Band2Gain, Linked_Band2Gain})) << what;
    }
}

TEST(EqualiserDocumentTest, SelectingShowsAChannelAndGoingToBothKeepsTheDisplay)
{
    Equaliser eq;
    eq.Select(LM);
    eq.Set(LM_Band2Gain, 2.0f);
    eq.Set(RS_Band2Gain, 6.0f);
    eq.Set(RS_Band6Hz, 12000.0f);
    EXPECT_EQ((std::vector<float>{2, 3000}), eq.Get({Band2Gain, Band6Hz}));
    eq.Select(RS);
    EXPECT_EQ((std::vector<float>{6, 12000}), eq.Get({Band2Gain, Band6Hz}));
    eq.Select(Both);
    EXPECT_EQ((std::vector<float>{6, 2}), eq.Get({Band2Gain, LM_Band2Gain})) << "the display stays, and so do the channels";
    eq.Set(Band2Gain, 6.0f); // the value already shown: still written to every set
    EXPECT_EQ((std::vector<float>{6, 6}), eq.Get({LM_Band2Gain, Linked_Band2Gain}));
}

TEST(EqualiserDocumentTest, LinearPhaseOnlyAtLatencyHigh)
{
    // The row set, its value, and LinearPhase after it.
    const std::tuple<int, std::uint32_t, bool> steps[] = {
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
    int step = 0;
    for (const auto& [row, value, linearPhase] : steps) {
        eq.SetState(row, value);
        EXPECT_EQ(linearPhase ? 1.0f : 0.0f, eq.Get(LinearPhase)) << step++;
    }
}

TEST(EqualiserDocumentTest, ValuesFromAStoppedEngineAreDropped)
{
    Equaliser eq;
    eq.Set(MeterL, 0.5f, SourceEngine);
    eq.Set(LM_Band2Gain, 5.0f, SourceEngine);
    EXPECT_EQ((std::vector<float>{0.5f, 5}), eq.Get({MeterL, LM_Band2Gain}));

    eq.SetState(EngineStopped, 1, SourceInternal);
    eq.Set(MeterL, 0.25f, SourceEngine);
    eq.Set(MeterR, 0.125f, SourceEngine);
    eq.Set(LM_Band2Gain, 7.0f, SourceEngine);
    EXPECT_EQ((std::vector<float>{0.5f, 0, 5}), eq.Get({MeterL, MeterR, LM_Band2Gain}));
    eq.Set(LM_Band2Gain, 9.0f, SourceEditor);
    EXPECT_EQ(9.0f, eq.Get(LM_Band2Gain)) << "other sources still land";

    eq.SetState(EngineStopped, 0, SourceInternal);
    EXPECT_EQ(0.0f, eq.Get(MeterR)) << "a dropped value is not applied later";
    eq.Set(MeterR, 0.125f, SourceEngine);
    EXPECT_EQ(0.125f, eq.Get(MeterR));
}

// Every saved kind off its default, the view on R|S, and a linked row that reset leaves alone.
void Edit(Equaliser& eq)
{
    eq.Select(LM);
    eq.SetState(ChannelMode, 1);
    eq.SetState(LM_Band1Active, 1);
    eq.Set(LM_Band2Gain, 4.0f);
    eq.Set(RS_Band6Hz, 5000.0f);
    eq.Set(Linked_Band1Hz, 640.0f);
    eq.Select(RS);
}

TEST(EqualiserDocumentTest, SecondPressOfResetRestoresUnlessSomethingWasSetBetween)
{
    // What comes between the presses, and whether the second press restores.
    const std::tuple<const char*, void (*)(Equaliser&), bool> cases[] = {
        {"nothing", [](Equaliser&) {}, true},
        {"an edit on view", [](Equaliser& eq) { eq.Set(Band2Gain, 1.0f); }, false},
        {"a row set to its present value", [](Equaliser& eq) { eq.SetState(ChannelMode, 0); }, false},
        {"the latency level", [](Equaliser& eq) { eq.SetState(LatencyLevel, 2); }, false},
        {"a load", [](Equaliser& eq) { eq.document.Load(TiXmlElement("State")); }, false},
        {"EngineStopped", [](Equaliser& eq) { eq.SetState(EngineStopped, 1, SourceInternal); }, true},
        {"a meter value", [](Equaliser& eq) { eq.Set(MeterL, 0.5f, SourceEngine); }, true},
    };
    const std::vector<std::string> defaults = Equaliser().Saved();
    for (const auto& [what, between, restores] : cases) {
        SCOPED_TRACE(what);
        Equaliser eq;
        Edit(eq);
        const std::vector<std::string> edited = eq.Saved();
        eq.document.PressReset();
        EXPECT_EQ(defaults, eq.Saved());
        EXPECT_EQ(3000.0f, eq.Get(Band6Hz)) << "the view follows the channels";
        between(eq);
        eq.document.PressReset();
        EXPECT_EQ(restores ? edited : defaults, eq.Saved());
        EXPECT_EQ(restores ? 5000.0f : 3000.0f, eq.Get(Band6Hz));
        EXPECT_EQ(640.0f, eq.Get(Linked_Band1Hz)) << "the linked set is never reset";
        if (restores) {
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
    for (const auto& [index, attribute] : {std::pair{0, "CurrentChannel=L|M"}, {1, "ChannelMode=M/S"}, {2, "LM_Band1Gain=0"},
                                           {4, "LM_Band1Mode=LowShelf"}, {44, "LM_OutputLevel=0"}, {45, "RS_Band1Gain=0"},
                                           {84, "RS_Band6Hz=5000"}, {88, "LinearPhase=0"}})
        EXPECT_EQ(attribute, saved[static_cast<std::size_t>(index)]);

    TiXmlElement state("State");
    source.document.Save(state);
    Equaliser eq;
    eq.Set(Linked_Band2Gain, -6.0f); // '=': both channels and the view too
    eq.document.Load(state);
    EXPECT_EQ(saved, eq.Saved());
    // The linked set is not in the state; L|M is on view.
    EXPECT_EQ((std::vector<float>{-6, 0, 4, 1}), eq.Get({Linked_Band2Gain, RS_Band2Gain, Band2Gain, LM_Band1Active - 43}));
}

}  // namespace
}  // namespace OV::Testing
