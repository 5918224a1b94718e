// The automation role over a document: what the host reads and sees for each kind of slot,
// host writes that reach the document once and never come back, and the echo guards, which
// must hold within one thread's calls and never across threads.
#include "docview/utils/BasicAutomation.h"
#include "tests/docview/utils/AutomationTestSetup.h"

#include <future>
#include <thread>

#include <gtest/gtest.h>

namespace OV::Testing {
namespace {

using CFW::DocView::SourceHost;
using CFW::DocView::SourceInternal;
using Row = SlotDocumentProfile;

struct Fixture {
    SpyDocument document;
    CFW::DocViewUtils::BasicAutomation automation{&Slots(), nullptr, &document};
    RecordingListener listener;
};

std::string Display(CFW::DocView::Automation& automation, int slot)
{
    std::string text = "stale";
    automation.GetDisplay(text, slot);
    return text;
}

std::string DisplayFor(CFW::DocView::Automation& automation, int slot, float normalised)
{
    std::string text = "stale";
    automation.GetDisplayFor(text, slot, normalised);
    return text;
}

TEST(BasicAutomationTest, EachKindOfSlotFollowsItsRowAndShowsIt)
{
    Fixture f;
    f.automation.SetListener(&f.listener);
    // The newcomer hears every slot once, in order, as an internal change. Q's default 2 lies
    // halfway between 0.2 and 20 on a log scale.
    const auto first = f.listener.Take();
    ASSERT_EQ(4u, first.size());
    const RecordingListener::Told defaults[] = {{0, 0.0f, 0.5f, 1}, {1, 2.0f, 0.5f, 1}, {2, 0.0f, 0.0f, 1}, {3, 50.0f, 0.5f, 1}};
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(defaults[i].slot, first[i].slot);
        EXPECT_FLOAT_EQ(defaults[i].plain, first[i].plain) << i;
        EXPECT_NEAR(defaults[i].normalised, first[i].normalised, 1e-6) << i;
        EXPECT_EQ(SourceInternal, first[i].source);
    }

    struct Case {
        int row;
        Parameter value;      // set in the document from inside
        float plain;          // what the host reads back
        float normalised;
        const char* display;
        float probe;          // a normalised value to show
        const char* probeText;
    };
    const Case cases[] = {
        {Row::Gain, Parameter::FromFloat(7.5f), 7.5f, 0.75f, "7.50 dB", 0.25f, "-7.50 dB"},
        {Row::Q, Parameter::FromFloat(20.0f), 20.0f, 1.0f, "20.000000", 0.5f, "2.000000"},
        // A switch turned on from inside reads back as 0.5.
        {Row::Active, Parameter::FromBool(true), 0.5f, 0.5f, "On", 0.49f, "Off"},
        {Row::Mix, Parameter::FromFloat(12.5f), 12.5f, 0.125f, "12.5 %", 1.0f, "100.0 %"},
        {Row::Active, Parameter::FromBool(false), 0.0f, 0.0f, "Off", 0.5f, "On"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.display);
        f.document.SetParameter(c.row, c.value, SourceInternal);
        const auto told = f.listener.Take();
        ASSERT_EQ(1u, told.size());
        EXPECT_EQ(c.row, told[0].slot);
        EXPECT_FLOAT_EQ(c.plain, told[0].plain);
        EXPECT_NEAR(c.normalised, told[0].normalised, 1e-6);
        EXPECT_EQ(SourceInternal, told[0].source);
        EXPECT_FLOAT_EQ(c.plain, f.automation.GetValue(c.row));
        EXPECT_NEAR(c.normalised, f.automation.GetNormalized(c.row), 1e-6);
        EXPECT_EQ(c.display, Display(f.automation, c.row));
        EXPECT_EQ(c.probeText, DisplayFor(f.automation, c.row, c.probe));
    }
    // A row without a slot, and a value the row already has, tell nothing.
    f.document.SetParameter(Row::Other, Parameter::FromFloat(3.0f), SourceInternal);
    f.document.SetParameter(Row::Mix, Parameter::FromFloat(12.5f), SourceInternal);
    EXPECT_TRUE(f.listener.Take().empty());
}

TEST(BasicAutomationTest, HostWritesReachTheDocumentOnceAndAreNotEchoed)
{
    Fixture f;
    f.automation.SetListener(&f.listener);
    f.listener.Take();

    struct Step {
        const char* what;
        std::function<bool(CFW::DocView::Automation&)> write;
        int queuedRow;       // -1: nothing queued
        Parameter queued;
        int slot;            // then read back
        float readBack;
        const char* display;
    };
    const Step steps[] = {
        {"the present value does nothing", [](auto& a) { return a.QueueValue(0, 0.0f); }, -1, {}, 0, 0.0f, "0.00 dB"},
        {"a queued write shows at once", [](auto& a) { return a.QueueNormalized(0, 0.75f); }, Row::Gain,
         Parameter::FromFloat(7.5f), 0, 7.5f, "7.50 dB"},
        {"a switch at 0.5 is on", [](auto& a) { return a.QueueValue(2, 0.5f); }, Row::Active, Parameter::FromBool(true), 2,
         0.5f, "On"},
        {"still on: nothing to tell", [](auto& a) { return a.QueueValue(2, 1.0f); }, -1, {}, 2, 1.0f, "On"},
        {"below 0.5 is off", [](auto& a) { return a.QueueNormalized(2, 0.49f); }, Row::Active, Parameter::FromBool(false), 2,
         0.49f, "Off"},
        {"a direct write", [](auto& a) { a.SetValue(3, 25.0f); return true; }, -1, {}, 3, 25.0f, "25.0 %"},
        {"a direct normalised write", [](auto& a) { a.SetNormalized(1, 1.0f); return true; }, -1, {}, 1, 20.0f, "20.000000"},
    };
    for (const Step& step : steps) {
        SCOPED_TRACE(step.what);
        EXPECT_TRUE(step.write(f.automation));
        const auto queued = f.document.TakeQueued();
        if (step.queuedRow < 0) {
            EXPECT_TRUE(queued.empty());
        } else {
            ASSERT_EQ(1u, queued.size());
            EXPECT_EQ(step.queuedRow, queued[0].index);
            EXPECT_EQ(step.queued, queued[0].value);
            EXPECT_EQ(SourceHost, queued[0].source);
        }
        EXPECT_FLOAT_EQ(step.readBack, f.automation.GetValue(step.slot));
        EXPECT_EQ(step.display, Display(f.automation, step.slot));
    }
    // Direct writes are in the document; queued ones wait for the scheduler.
    EXPECT_FLOAT_EQ(25.0f, f.document.GetParameter(Row::Mix).AsFloat());
    EXPECT_FLOAT_EQ(20.0f, f.document.GetParameter(Row::Q).AsFloat());
    EXPECT_FLOAT_EQ(0.0f, f.document.GetParameter(Row::Gain).AsFloat());
    EXPECT_TRUE(f.listener.Take().empty()) << "the host never hears its own writes";

    // A refused write leaves the slot showing the new value.
    f.document.refuse = true;
    EXPECT_FALSE(f.automation.QueueValue(0, -3.0f));
    EXPECT_FLOAT_EQ(-3.0f, f.automation.GetValue(0));
}

TEST(BasicAutomationTest, WriteBackWhileToldIsIgnoredOnlyOnTheTellingThread)
{
    Fixture f;
    f.automation.SetListener(&f.listener);
    f.listener.Take();

    // The listener writes back what it is being told: already in the document.
    f.listener.onChange = [&](int) { f.automation.QueueValue(3, 80.0f); };
    f.document.SetParameter(Row::Gain, Parameter::FromFloat(5.0f), SourceInternal);
    EXPECT_TRUE(f.document.TakeQueued().empty());
    EXPECT_FLOAT_EQ(50.0f, f.automation.GetValue(3));

    // While the worker is inside a notification, a write from another thread still goes.
    std::promise<void> entered, release;
    std::shared_future<void> released = release.get_future().share();
    f.listener.onChange = [&](int) {
        entered.set_value();
        released.wait();
    };
    std::thread worker([&] { f.document.SetParameter(Row::Gain, Parameter::FromFloat(6.0f), SourceInternal); });
    entered.get_future().wait();
    EXPECT_TRUE(f.automation.QueueValue(3, 80.0f));
    release.set_value();
    worker.join();
    const auto queued = f.document.TakeQueued();
    ASSERT_EQ(1u, queued.size());
    EXPECT_EQ(Row::Mix, queued[0].index);
    EXPECT_FLOAT_EQ(80.0f, queued[0].value.AsFloat());
}

}  // namespace
}  // namespace OV::Testing
