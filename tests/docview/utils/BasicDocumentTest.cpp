// The standard document: storing by bits within the rows' limits, signals, batches, state as
// attributes, and bindings to properties and preferences.
#include "docview/utils/BasicDocument.h"
#include "docview/utils/PreferencesManager.h"
#include "tests/docview/utils/DocumentTestProfile.h"
#include "tests/docview/utils/WorkerTestSetup.h"
#include "tests/support/ScratchFolder.h"

#include <tinyxml.h>

#include <cmath>
#include <cstdlib>
#include <memory>
#include <thread>

#include <gtest/gtest.h>

namespace OV::Testing {
namespace {

using CFW::DocViewUtils::BasicDocument;
using Row = TestDocumentProfile;

const TestDocumentProfile& Profile()
{
    static const TestDocumentProfile profile;
    return profile;
}

// Records every signal as one line.
struct Recorder {
    explicit Recorder(BasicDocument& document)
    {
        connections.emplace_back(document.ConnectParameterChanged([this](CFW::DocView::Document&, int index, Parameter value, int source) {
            lines.push_back("changed " + std::to_string(index) + "=" + std::to_string(value.ToNumber()) + " from " + std::to_string(source));
        }));
        connections.emplace_back(document.ConnectBeginBatch([this](CFW::DocView::Document&) { lines.push_back("begin"); }));
        connections.emplace_back(document.ConnectEndBatch([this](CFW::DocView::Document&) { lines.push_back("end"); }));
        connections.emplace_back(document.ConnectLoaded([this](CFW::DocView::Document&) { lines.push_back("loaded"); }));
    }
    std::vector<std::string> lines;
    std::vector<boost::signals2::scoped_connection> connections;
};

TEST(BasicDocumentTest, StartsAtTheDefaultsWithGapsUndefined)
{
    BasicDocument document(&Profile(), nullptr);
    EXPECT_EQ(10, Profile().GetParameterCount());
    EXPECT_EQ("Undefined", Profile().GetParameterInfo(8).name);
    EXPECT_EQ(-1, Profile().GetParameterInfo(8).index) << "a gap row is in no profile";
    EXPECT_EQ(Row::Mode, Profile().GetParameterInfo(Row::Mode).index);
    EXPECT_EQ(Parameter::FromEnum(1), document.GetParameter(Row::Mode));
    EXPECT_EQ(Parameter::FromBool(true), document.GetParameter(Row::Active));
    EXPECT_EQ(Parameter::FromFloat(3.0f), document.GetParameter(Row::Kept)) << "no-default rows start at their default too";
    EXPECT_EQ(120.0f, document.GetBPM());
}

TEST(BasicDocumentTest, ValuesStayWithinTheirRowsAndCompareByBits)
{
    BasicDocument document(&Profile(), nullptr);
    Recorder recorder(document);
    struct Case {
        int row;
        Parameter value;
        Parameter stored;
        bool signalled;
    };
    const Case cases[] = {
        {Row::Gain, Parameter::FromFloat(0.0f), Parameter::FromFloat(0.0f), false},
        {Row::Gain, Parameter::FromFloat(-0.0f), Parameter::FromFloat(-0.0f), true}, // bits differ
        {Row::Gain, Parameter::FromFloat(40.0f), Parameter::FromFloat(15.0f), true},
        {Row::Gain, Parameter::FromFloat(std::nanf("")), Parameter::FromFloat(15.0f), false},
        {Row::Mode, Parameter::FromEnum(999), Parameter::FromEnum(2), true},
        {Row::Mode, Parameter::FromFloat(0.7f), Parameter::FromEnum(0), true}, // another type, by number
        {Row::Active, Parameter::FromFloat(0.0f), Parameter::FromBool(false), true},
        {Row::Meter, Parameter::FromFloat(50.0f), Parameter::FromFloat(50.0f), false}, // transient
        {Row::Hidden, Parameter::FromFloat(1.0f), Parameter::FromFloat(20.0f), true},
    };
    for (const Case& c : cases) {
        const std::size_t before = recorder.lines.size();
        document.SetParameter(c.row, c.value, CFW::DocView::SourceEditor);
        EXPECT_EQ(c.stored, document.GetParameter(c.row)) << "row " << c.row << " set to " << c.value.ToNumber();
        EXPECT_EQ(c.signalled, recorder.lines.size() > before) << "row " << c.row << " set to " << c.value.ToNumber();
    }
    EXPECT_EQ("changed 0=15.000000 from 2", recorder.lines[1]);
    document.SetParameter(99, Parameter::FromFloat(1.0f), 1);
    document.SetParameter(-1, Parameter::FromFloat(1.0f), 1);
    EXPECT_EQ(Parameter(), document.GetParameter(99));
}

// Set at once or queued for the worker, a normalised value becomes the same row value.
TEST(BasicDocumentTest, NormalizedValuesGoThroughTheRowsConverter)
{
    struct Case {
        int row;
        float normalized;
        Parameter expected;
    };
    const Case cases[] = {{Row::Gain, 0.75f, Parameter::FromFloat(7.5f)},
                          {Row::Mode, 1.0f, Parameter::FromEnum(2)},
                          {Row::Mode, 0.3f, Parameter::FromEnum(1)},
                          {Row::Active, 0.3f, Parameter::FromBool(false)},
                          {Row::Active, 0.5f, Parameter::FromBool(true)}};
    TestContext context;
    BasicDocument direct(&Profile(), nullptr);
    BasicDocument queued(&Profile(), &context.documents);
    for (const Case& c : cases) {
        direct.SetNormalized(c.row, c.normalized, 3);
        EXPECT_EQ(c.expected, direct.GetParameter(c.row)) << c.row << " at " << c.normalized;
        ASSERT_TRUE(queued.QueueSetNormalized(c.row, c.normalized, 3));
        Drain(context);
        EXPECT_EQ(c.expected, queued.GetParameter(c.row)) << c.row << " at " << c.normalized << ", queued";
    }
    EXPECT_EQ(Parameter::FromFloat(0.5f), direct.GetNormalized(Row::Mode)) << "the middle of three";
}

TEST(BasicDocumentTest, BatchesNestAndResetKeepsNoDefaultRows)
{
    BasicDocument document(&Profile(), nullptr);
    document.SetParameter(Row::Kept, Parameter::FromFloat(9.0f), 1);
    document.SetParameter(Row::Gain, Parameter::FromFloat(4.0f), 1);
    Recorder recorder(document);
    document.Reset();
    EXPECT_EQ((std::vector<std::string>{"begin", "changed 0=0.000000 from 1", "end"}), recorder.lines);
    EXPECT_EQ(9.0f, document.GetParameter(Row::Kept).AsFloat());

    // A load inside a reset is one batch.
    recorder.lines.clear();
    document.ConnectBeginBatch([&](CFW::DocView::Document&) {
        if (recorder.lines.size() == 1)
            document.Load(TiXmlElement("State"));
    });
    document.Reset();
    EXPECT_EQ(1, std::count(recorder.lines.begin(), recorder.lines.end(), "begin"));
    EXPECT_EQ(1, std::count(recorder.lines.begin(), recorder.lines.end(), "end"));
}

TEST(BasicDocumentTest, StateIsAttributesOfSerialisableRows)
{
    BasicDocument document(&Profile(), nullptr);
    document.SetParameter(Row::Gain, Parameter::FromFloat(-3.1415927f), 1);
    document.SetParameter(Row::Mode, Parameter::FromEnum(2), 1);
    document.SetParameter(Row::Active, Parameter::FromBool(false), 1);
    document.SetParameter(Row::Kept, Parameter::FromFloat(0.1f), 1);
    document.SetParameter(Row::Hidden, Parameter::FromFloat(1000.0f), 1);
    TiXmlElement state("State");
    document.Save(state);
    EXPECT_STREQ("-3.14159274", state.Attribute("Gain"));
    EXPECT_STREQ("LowPass", state.Attribute("Mode"));
    EXPECT_STREQ("0", state.Attribute("Active"));
    EXPECT_EQ(nullptr, state.Attribute("Hidden"));
    EXPECT_EQ(nullptr, state.Attribute("Meter"));

    BasicDocument copy(&Profile(), nullptr);
    Recorder recorder(copy);
    EXPECT_TRUE(copy.Load(state));
    for (int row : {Row::Gain, Row::Mode, Row::Active, Row::Kept})
        EXPECT_EQ(document.GetParameter(row), copy.GetParameter(row)) << row;
    EXPECT_EQ("loaded", recorder.lines[recorder.lines.size() - 2]);

    // Missing attributes take defaults; an unknown name too, and the load is incomplete.
    TiXmlElement partial("State");
    partial.SetAttribute("Mode", "Bandpass");
    partial.SetAttribute("Active", "7");
    partial.SetAttribute("Gain", "not a number");
    EXPECT_FALSE(copy.Load(partial));
    EXPECT_EQ(Parameter::FromEnum(1), copy.GetParameter(Row::Mode));
    EXPECT_EQ(Parameter::FromBool(true), copy.GetParameter(Row::Active)) << "non-zero is true";
    EXPECT_EQ(Parameter::FromFloat(0.0f), copy.GetParameter(Row::Gain));
    EXPECT_EQ(Parameter::FromFloat(3.0f), copy.GetParameter(Row::Kept));

    std::vector<BasicDocument::Unresolved> unresolved;
    copy.LoadOlderState(partial, unresolved);
    ASSERT_EQ(1u, unresolved.size());
    EXPECT_EQ(Row::Mode, unresolved[0].index);
    EXPECT_EQ("Bandpass", unresolved[0].text);
}

TEST(BasicDocumentTest, PreferenceRowsFollowThePreference)
{
    const ScratchFolder config;
    setenv("XDG_CONFIG_HOME", config.Path().c_str(), 1);
    auto& preferences = CFW::DocViewUtils::PreferencesManager::Instance();
    preferences.SetRegistry(Platform::RegistryKey("Test Product", "Maker", 0));
    preferences.Set("Test.Level", Parameter::FromEnum(2));

    BasicDocument document(&Profile(), nullptr);
    EXPECT_EQ(Parameter::FromEnum(2), document.GetParameter(Row::Level)) << "a reset reads the preference";
    document.SetParameter(Row::Level, Parameter::FromEnum(1), 2);
    Parameter stored = Parameter::FromEnum(0);
    EXPECT_TRUE(preferences.Get("Test.Level", stored));
    EXPECT_EQ(Parameter::FromEnum(1), stored) << "a change is written through";

    BasicDocument other(&Profile(), nullptr);
    preferences.Set("Test.Level", Parameter::FromEnum(0));
    EXPECT_EQ(Parameter::FromEnum(0), document.GetParameter(Row::Level)) << "without a scheduler, at once";
    EXPECT_EQ(Parameter::FromEnum(0), other.GetParameter(Row::Level));
    std::string text;
    EXPECT_TRUE(Platform::RegistryKey("Test Product", "Maker", 0).ReadString("Test.Level", text));
    EXPECT_EQ("0", text);

    // A float with every digit reads back as itself, so writing it again is no change.
    const Parameter fine = Parameter::FromFloat(0.123456789f);
    preferences.Set("Test.Fine", fine);
    Parameter read = Parameter::FromFloat(0.0f);
    ASSERT_TRUE(preferences.Get("Test.Fine", read));
    EXPECT_EQ(fine, read);
}

// A preference changed on another instance's thread reaches a document through its own worker,
// never from that thread, even when its command pool is full; and its listeners run with the
// preferences' lock let go.
TEST(BasicDocumentTest, PreferenceChangesReachTheDocumentOnItsOwnWorker)
{
    const ScratchFolder config;
    setenv("XDG_CONFIG_HOME", config.Path().c_str(), 1);
    auto& preferences = CFW::DocViewUtils::PreferencesManager::Instance();
    preferences.SetRegistry(Platform::RegistryKey("Test Product", "Maker", 0));
    preferences.Set("Test.Level", Parameter::FromEnum(0));

    bool readerWasFree = false;
    boost::signals2::scoped_connection listener = preferences.Connect("Test.Level", [&](Parameter) {
        // Another thread reads the preferences while the listener runs.
        auto read = std::make_shared<std::promise<void>>();
        std::thread([read, &preferences] {
            Parameter value = Parameter::FromEnum(0);
            preferences.Get("Test.Level", value);
            read->set_value();
        }).detach();
        readerWasFree = read->get_future().wait_for(std::chrono::seconds(20)) == std::future_status::ready;
    });

    TestContext context;
    BasicDocument document(&Profile(), &context.documents);
    Gate gate;
    context.GetScheduler()->Enqueue(&gate);
    while (document.QueueSetParameter(Row::Gain, Parameter::FromFloat(1.0f), 3)) {
    }
    preferences.Set("Test.Level", Parameter::FromEnum(2));
    EXPECT_TRUE(readerWasFree) << "the listener ran under the preferences' lock";
    EXPECT_EQ(Parameter::FromEnum(0), document.GetParameter(Row::Level)) << "written from a foreign thread";
    gate.Open();
    Drain(context);
    Drain(context);  // the tick after the batch
    EXPECT_EQ(Parameter::FromEnum(2), document.GetParameter(Row::Level));
}

}  // namespace
}  // namespace OV::Testing
