// The standard document: storing by bits within the rows' limits, signals, batches, state as
// attributes, and bindings to properties and preferences.
#include "docview/utils/BasicDocument.h"
#include "docview/utils/PreferencesManager.h"
#include "tests/docview/utils/WorkerTestSetup.h"
#include "tests/support/AllocationCounter.h"
#include "tests/support/ScratchFolder.h"

#include <tinyxml.h>

#include <cmath>
#include <cstdlib>
#include <memory>
#include <thread>

#include <gtest/gtest.h>

namespace OV::Testing {
namespace {

using CFW::DocView::SourceHost;
using CFW::DocViewUtils::BasicDocument;
using Row = TestDocumentProfile;

// Records every signal as one line.
struct Recorder {
    explicit Recorder(BasicDocument& document)
    {
        using CFW::DocView::Document;
        connections.emplace_back(document.ConnectParameterChanged([this](Document&, int index, Parameter value, int source) {
            lines.push_back("changed " + std::to_string(index) + "=" + std::to_string(value.ToNumber()) + " from " + std::to_string(source));
        }));
        connections.emplace_back(document.ConnectBeginBatch([this](Document&) { lines.push_back("begin"); }));
        connections.emplace_back(document.ConnectEndBatch([this](Document&) { lines.push_back("end"); }));
        connections.emplace_back(document.ConnectLoaded([this](Document&) { lines.push_back("loaded"); }));
    }
    std::vector<std::string> lines;
    std::vector<boost::signals2::scoped_connection> connections;
};

// The preferences kept in `config`, with Test.Level set to `level`.
CFW::DocViewUtils::PreferencesManager& Preferences(const ScratchFolder& config, std::uint32_t level)
{
    setenv("XDG_CONFIG_HOME", config.Path().c_str(), 1);
    auto& preferences = CFW::DocViewUtils::PreferencesManager::Instance();
    preferences.SetRegistry(Platform::RegistryKey("Test Product", "Maker", 0));
    preferences.Set("Test.Level", Parameter::FromEnum(level));
    return preferences;
}

TEST(BasicDocumentTest, StartsAtTheDefaultsAndKeepsValuesWithinTheirRowsByBits)
{
    BasicDocument document(&Profile(), nullptr);
    EXPECT_EQ(10, Profile().GetParameterCount());
    EXPECT_EQ("Undefined", Profile().GetParameterInfo(8).name);
    EXPECT_EQ(-1, Profile().GetParameterInfo(8).index) << "a gap row is in no profile";
    EXPECT_EQ(120.0f, document.GetBPM());
    // No-default rows start at their default too.
    for (const auto& [row, value] : {std::pair{Row::Mode, Parameter::FromEnum(1)}, {Row::Active, Parameter::FromBool(true)},
                                     {Row::Kept, Parameter::FromFloat(3.0f)}})
        EXPECT_EQ(value, document.GetParameter(row)) << row;

    Recorder recorder(document);
    const struct { int row; Parameter value, stored; bool signalled; } cases[] = {
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
    for (const auto& [row, value, stored, signalled] : cases) {
        const std::size_t before = recorder.lines.size();
        document.SetParameter(row, value, CFW::DocView::SourceEditor);
        EXPECT_EQ(stored, document.GetParameter(row)) << "row " << row << " set to " << value.ToNumber();
        EXPECT_EQ(signalled, recorder.lines.size() > before) << "row " << row << " set to " << value.ToNumber();
    }
    EXPECT_EQ("changed 0=15.000000 from 2", recorder.lines[1]);
    document.SetParameter(99, Parameter::FromFloat(1.0f), 1);
    document.SetParameter(-1, Parameter::FromFloat(1.0f), 1);
    EXPECT_EQ(Parameter(), document.GetParameter(99));
}

TEST(BasicDocumentTest, NormalizedValuesGoThroughTheRowsConverter)
{
    const struct { int row; float normalized; Parameter expected; } cases[] = {
        {Row::Gain, 0.75f, Parameter::FromFloat(7.5f)}, {Row::Mode, 1.0f, Parameter::FromEnum(2)},
        {Row::Mode, 0.3f, Parameter::FromEnum(1)},      {Row::Active, 0.3f, Parameter::FromBool(false)},
        {Row::Active, 0.5f, Parameter::FromBool(true)}};
    TestContext context;
    BasicDocument direct(&Profile(), nullptr);
    BasicDocument queued(&Profile(), &context.documents);
    for (const auto& [row, normalized, expected] : cases) {
        direct.SetNormalized(row, normalized, 3);
        EXPECT_EQ(expected, direct.GetParameter(row)) << row << " at " << normalized;
        ASSERT_TRUE(queued.QueueSetNormalized(row, normalized, 3));
        Drain(context);
        EXPECT_EQ(expected, queued.GetParameter(row)) << row << " at " << normalized << ", queued";
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
    for (const auto& [row, value] : {std::pair{Row::Gain, Parameter::FromFloat(-3.1415927f)}, {Row::Mode, Parameter::FromEnum(2)},
                                     {Row::Active, Parameter::FromBool(false)}, {Row::Kept, Parameter::FromFloat(0.1f)},
                                     {Row::Hidden, Parameter::FromFloat(1000.0f)}})
        document.SetParameter(row, value, 1);
    TiXmlElement state("State");
    document.Save(state);
    for (const auto& [name, text] : {std::pair<const char*, const char*>{"Gain", "-3.14159274"}, {"Mode", "LowPass"},
                                     {"Active", "0"}, {"Hidden", nullptr}, {"Meter", nullptr}})
        EXPECT_STREQ(text, state.Attribute(name)) << name;

    BasicDocument copy(&Profile(), nullptr);
    Recorder recorder(copy);
    EXPECT_TRUE(copy.Load(state));
    for (int row : {Row::Gain, Row::Mode, Row::Active, Row::Kept})
        EXPECT_EQ(document.GetParameter(row), copy.GetParameter(row)) << row;
    EXPECT_EQ("loaded", recorder.lines[recorder.lines.size() - 2]);

    // Missing attributes take defaults; an unknown name too, and the load is incomplete.
    TiXmlDocument xml;
    xml.Parse(R"(<State Mode="Bandpass" Active="7" Gain="not a number"/>)");
    EXPECT_FALSE(copy.Load(*xml.RootElement()));
    EXPECT_EQ(Parameter::FromEnum(1), copy.GetParameter(Row::Mode));
    EXPECT_EQ(Parameter::FromBool(true), copy.GetParameter(Row::Active)) << "non-zero is true";
    EXPECT_EQ(Parameter::FromFloat(0.0f), copy.GetParameter(Row::Gain));
    EXPECT_EQ(Parameter::FromFloat(3.0f), copy.GetParameter(Row::Kept));

    std::vector<BasicDocument::Unresolved> unresolved;
    copy.LoadOlderState(*xml.RootElement(), unresolved);
    ASSERT_EQ(1u, unresolved.size());
    EXPECT_EQ(Row::Mode, unresolved[0].index);
    EXPECT_EQ("Bandpass", unresolved[0].text);
}

TEST(BasicDocumentTest, PreferenceRowsFollowThePreference)
{
    const ScratchFolder config;
    auto& preferences = Preferences(config, 2);

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
    auto& preferences = Preferences(config, 0);

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
    while (document.QueueSetParameter(Row::Gain, Parameter::FromFloat(1.0f), 3)) {}
    preferences.Set("Test.Level", Parameter::FromEnum(2));
    EXPECT_TRUE(readerWasFree) << "the listener ran under the preferences' lock";
    EXPECT_EQ(Parameter::FromEnum(0), document.GetParameter(Row::Level)) << "written from a foreign thread";
    gate.Open();
    Drain(context);
    Drain(context);  // the tick after the batch
    EXPECT_EQ(Parameter::FromEnum(2), document.GetParameter(Row::Level));
}

// Changes queued from any thread run on the scheduler's worker against the document: in order,
// 200 at most in flight, and harmlessly after the document has gone.
TEST(QueuedChangesTest, TwoHundredWaitInOrderWhileTheWorkerIsBusy)
{
    TestContext context;
    BasicDocument document(&Profile(), &context.documents);
    std::vector<float> seen;  // the worker's until drained
    std::size_t seenBeforeTempo = 0;
    document.ConnectParameterChanged([&](CFW::DocView::Document&, int, Parameter value, int source) {
        EXPECT_EQ(SourceHost, source);
        seen.push_back(value.AsFloat());
    });
    document.ConnectBPMChanged([&](CFW::DocView::Document&, float bpm, int) {
        EXPECT_EQ(97.0f, bpm);
        seenBeforeTempo = seen.size();
    });
    const auto value = [](int i) { return -10.0f + 0.1f * static_cast<float>(i); };

    Gate gate;
    context.GetScheduler()->Enqueue(&gate);
    gate.WaitUntilHeld();
    {
        const AllocationCounter counter;
        for (int i = 0; i < 200; ++i)
            EXPECT_TRUE(document.QueueSetParameter(Row::Gain, Parameter::FromFloat(value(i)), SourceHost));
        EXPECT_FALSE(document.QueueSetParameter(Row::Gain, Parameter::FromFloat(5.0f), SourceHost));
        EXPECT_EQ(0, counter.Count()) << "queueing allocates nothing";
    }
    gate.Open();
    // A tempo change goes through the same queue, after the 200.
    ASSERT_TRUE(document.QueueSetBPM(97.0f, CFW::DocView::SourceHostTempo));
    Drain(context);
    EXPECT_EQ(200u, seenBeforeTempo);
    ASSERT_EQ(200u, seen.size());
    for (int i = 0; i < 200; ++i)
        EXPECT_FLOAT_EQ(value(i), seen[static_cast<std::size_t>(i)]);
    EXPECT_TRUE(document.QueueSetParameter(Row::Gain, Parameter::FromFloat(5.0f), 3)) << "the pool is full again";
    // As a component does: no command runs once its documents start to go.
    context.GetScheduler()->Stop();
}

TEST(QueuedChangesTest, ChangesForAGoneDocumentReturnToTheirPool)
{
    TestContext context;
    Gate gate;
    context.GetScheduler()->Enqueue(&gate);
    gate.WaitUntilHeld();
    {
        BasicDocument document(&Profile(), &context.documents);
        for (int i = 0; i < 200; ++i)
            ASSERT_TRUE(document.QueueSetParameter(Row::Gain, Parameter::FromFloat(1.0f), 3));
    }
    // Commands run in order: once a later one holds the worker, the 200 have run against nothing.
    Gate marker;
    context.GetScheduler()->Enqueue(&marker);
    gate.Open();
    marker.WaitUntilHeld();
    BasicDocument next(&Profile(), &context.documents);
    for (int i = 0; i < 200; ++i)
        EXPECT_TRUE(next.QueueSetParameter(Row::Hidden, Parameter::FromFloat(100.0f), 3)) << i;
    marker.Open();
    EXPECT_EQ(Parameter::FromFloat(0.0f), next.GetParameter(Row::Gain));
    context.GetScheduler()->Stop();
}

TEST(QueuedChangesTest, PropertyRowsShareTheContextsValue)
{
    TestContext context;
    auto& shared = context.documents.GetProperties();
    BasicDocument first(&Profile(), &context.documents), second(&Profile(), &context.documents);
    first.SetParameter(Row::Shared, Parameter::FromEnum(2), 2);
    EXPECT_EQ(Parameter::FromEnum(2), second.GetParameter(Row::Shared));
    EXPECT_EQ(Parameter::FromEnum(2), shared.Get("Shared"));

    // A local context reads the shared value, and its own additions stay local.
    const auto local = context.CreateLocal(nullptr);
    auto* localDocuments = local->Find<CFW::DocView::DocumentContext>();
    ASSERT_NE(nullptr, localDocuments);
    EXPECT_EQ(&context.documents.GetCommandFactory(), &localDocuments->GetCommandFactory());
    EXPECT_EQ(context.GetScheduler(), local->GetScheduler());
    EXPECT_TRUE(localDocuments->GetProperties().Has("Shared"));
    localDocuments->GetProperties().Add("Own", Parameter::FromBool(true));
    EXPECT_FALSE(shared.Has("Own"));
    localDocuments->GetProperties().Set("Shared", Parameter::FromEnum(0));
    EXPECT_EQ(Parameter::FromEnum(0), first.GetParameter(Row::Shared)) << "a set on a shared key goes to the base";

    // Editing serialisable state marks the context.
    shared.Set(BasicDocument::editedProperty, Parameter::FromBool(false));
    first.SetParameter(Row::Hidden, Parameter::FromFloat(100.0f), 2);
    EXPECT_EQ(Parameter::FromBool(false), shared.Get(BasicDocument::editedProperty));
    first.SetParameter(Row::Gain, Parameter::FromFloat(1.0f), 2);
    EXPECT_EQ(Parameter::FromBool(true), shared.Get(BasicDocument::editedProperty));
}

TEST(QueuedChangesTest, PropertyTableErrors)
{
    CFW::DocViewUtils::BasicProperties properties;
    properties.Add("Key", Parameter::FromBool(true));
    EXPECT_THROW(properties.Add("Key", Parameter::FromBool(false)), CFW::DocView::AlreadyAddedError);
    try {
        properties.Get("Missing");
        FAIL();
    } catch (const CFW::DocView::NotAvailableError& error) {
        EXPECT_STREQ("Property not available", error.what());
    }
    int heard = 0;
    properties.Connect("Key", [&](Parameter) { ++heard; });
    properties.Set("Key", Parameter::FromBool(true));
    EXPECT_EQ(0, heard) << "an unchanged value tells nobody";
    properties.Set("Key", Parameter::FromBool(false));
    EXPECT_EQ(1, heard);
    properties.Remove("Key");
    EXPECT_THROW(properties.Remove("Key"), CFW::DocView::NotAvailableError);
}

}  // namespace
}  // namespace OV::Testing
