// The automation role over a document: what the host reads and sees for each kind of slot,
// host writes that reach the document once and never come back, and the echo guards, which
// must hold within one thread's calls and never across threads.
#include "docview/utils/BasicAutomation.h"
#include "docview/utils/FakeAutomation.h"
#include "tests/docview/utils/AutomationTestSetup.h"
#include "tests/support/AllocationCounter.h"

#include <atomic>
#include <future>
#include <thread>

#include <gtest/gtest.h>

namespace OV::Testing {
namespace {

using CFW::DocView::SourceHost;
using CFW::DocView::SourceInternal;
using CFW::DocViewUtils::FakeAutomation;
using Row = SlotDocumentProfile;

// The listener is set, and what it heard then kept in `first`.
struct Fixture {
    Fixture()
    {
        automation.SetListener(&listener);
        first = listener.Take();
    }
    SpyDocument document;
    CFW::DocViewUtils::BasicAutomation automation{&Slots(), nullptr, &document};
    RecordingListener listener;
    std::vector<RecordingListener::Told> first;
};

TEST(BasicAutomationTest, EachKindOfSlotFollowsItsRowAndShowsIt)
{
    Fixture f;
    // The newcomer hears every slot once, in order, as an internal change. Q's default 2 lies
    // halfway between 0.2 and 20 on a log scale.
    ExpectTold({{0, 0.0f, 0.5f, SourceInternal}, {1, 2.0f, 0.5f, SourceInternal}, {2, 0.0f, 0.0f, SourceInternal},
                {3, 50.0f, 0.5f, SourceInternal}}, f.first);

    // Set in the document from inside; what the host reads back; a normalised value to show.
    const struct { int row; Parameter value; float plain, normalised; const char* display; float probe; const char* probeText; } cases[] = {
        {Row::Gain, Parameter::FromFloat(7.5f), 7.5f, 0.75f, "7.50 dB", 0.25f, "-7.50 dB"},
        {Row::Q, Parameter::FromFloat(20.0f), 20.0f, 1.0f, "20.000000", 0.5f, "2.000000"},
        // A switch turned on from inside reads back as 0.5.
        {Row::Active, Parameter::FromBool(true), 0.5f, 0.5f, "On", 0.49f, "Off"},
        {Row::Mix, Parameter::FromFloat(12.5f), 12.5f, 0.125f, "12.5 %", 1.0f, "100.0 %"},
        {Row::Active, Parameter::FromBool(false), 0.0f, 0.0f, "Off", 0.5f, "On"},
    };
    for (const auto& [row, value, plain, normalised, display, probe, probeText] : cases) {
        SCOPED_TRACE(display);
        f.document.SetParameter(row, value, SourceInternal);
        ExpectTold({{row, plain, normalised, SourceInternal}}, f.listener.Take());
        EXPECT_FLOAT_EQ(plain, f.automation.GetValue(row));
        EXPECT_NEAR(normalised, f.automation.GetNormalized(row), 1e-6);
        EXPECT_EQ(display, Display(f.automation, row));
        std::string text = "stale";
        f.automation.GetDisplayFor(text, row, probe);
        EXPECT_EQ(probeText, text);
    }
    // A row without a slot, and a value the row already has, tell nothing.
    f.document.SetParameter(Row::Other, Parameter::FromFloat(3.0f), SourceInternal);
    f.document.SetParameter(Row::Mix, Parameter::FromFloat(12.5f), SourceInternal);
    EXPECT_TRUE(f.listener.Take().empty());
}

TEST(BasicAutomationTest, HostWritesReachTheDocumentOnceAndAreNotEchoed)
{
    Fixture f;
    using A = CFW::DocView::Automation;
    // Each write, what it queues, and the slot it then reads back and shows.
    const struct { const char* what; std::function<bool(A&)> write; std::vector<SpyDocument::Queued> queued; int slot; float readBack; const char* display; } steps[] = {
        {"the present value does nothing", [](A& a) { return a.QueueValue(0, 0.0f); }, {}, 0, 0.0f, "0.00 dB"},
        {"a queued write shows at once", [](A& a) { return a.QueueNormalized(0, 0.75f); },
         {{Row::Gain, Parameter::FromFloat(7.5f), SourceHost}}, 0, 7.5f, "7.50 dB"},
        {"a switch at 0.5 is on", [](A& a) { return a.QueueValue(2, 0.5f); }, {{Row::Active, Parameter::FromBool(true), SourceHost}}, 2,
         0.5f, "On"},
        {"still on: nothing to tell", [](A& a) { return a.QueueValue(2, 1.0f); }, {}, 2, 1.0f, "On"},
        {"below 0.5 is off", [](A& a) { return a.QueueNormalized(2, 0.49f); }, {{Row::Active, Parameter::FromBool(false), SourceHost}},
         2, 0.49f, "Off"},
        {"a direct write", [](A& a) { a.SetValue(3, 25.0f); return true; }, {}, 3, 25.0f, "25.0 %"},
        {"a direct normalised write", [](A& a) { a.SetNormalized(1, 1.0f); return true; }, {}, 1, 20.0f, "20.000000"},
    };
    for (const auto& [what, write, queued, slot, readBack, display] : steps) {
        SCOPED_TRACE(what);
        EXPECT_TRUE(write(f.automation));
        ExpectQueued(queued, f.document.TakeQueued());
        EXPECT_FLOAT_EQ(readBack, f.automation.GetValue(slot));
        EXPECT_EQ(display, Display(f.automation, slot));
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
    ExpectQueued({{Row::Mix, Parameter::FromFloat(80.0f), SourceHost}}, f.document.TakeQueued());
}

// The stand-in automation: renumbered forwarding to a replaceable target, the last known values
// without one, and a target swapped while another thread writes and reads through it, which
// must never reach a target that has been replaced, nor allocate.
TEST(FakeAutomationTest, ForwardsRenumberedAndKeepsTheLastValues)
{
    SpyDocument document;
    CFW::DocViewUtils::BasicAutomation real(&Slots(), nullptr, &document);
    // Own slot 0 is the target's switch (2), own slot 1 its gain (0).
    FakeAutomation fake(&Slots(), {2, 0});
    RecordingListener listener;

    // Without a target: nothing to show or convert, but writes are kept; without a converter
    // the number is both halves.
    EXPECT_EQ("", Display(fake, 0));
    EXPECT_FLOAT_EQ(3.0f, fake.ToNormalized(1, 3.0f));
    EXPECT_TRUE(fake.QueueValue(1, 4.0f));
    EXPECT_TRUE(fake.QueueNormalized(0, 0.25f));
    EXPECT_FLOAT_EQ(4.0f, fake.GetValue(1));
    EXPECT_FLOAT_EQ(0.25f, fake.GetValue(0));
    fake.SetListener(&listener);
    ExpectTold({{0, 0.25f, 0.25f, SourceInternal}, {1, 4.0f, 4.0f, SourceInternal}}, listener.Take());

    // A target tells its values at once, under our numbers; its slots 1 and 3 are not ours.
    fake.SetTarget(&real);
    EXPECT_EQ(&fake, real.GetListener());
    ExpectTold({{1, 0.0f, 0.5f, SourceInternal}, {0, 0.0f, 0.0f, SourceInternal}}, listener.Take());
    EXPECT_FLOAT_EQ(0.0f, fake.GetValue(1)) << "the target's value replaces the kept one";
    EXPECT_EQ("0.00 dB", Display(fake, 1));
    EXPECT_FLOAT_EQ(0.75f, fake.ToNormalized(1, 7.5f));

    // Writes go to the target's slot; both halves come back converted.
    EXPECT_TRUE(fake.QueueNormalized(1, 0.75f));
    ExpectQueued({{Row::Gain, Parameter::FromFloat(7.5f), SourceHost}}, document.TakeQueued());
    EXPECT_FLOAT_EQ(7.5f, fake.GetValue(1));
    EXPECT_FLOAT_EQ(0.75f, fake.GetNormalized(1));

    // Changes inside: only the mapped slots pass.
    document.SetParameter(Row::Q, Parameter::FromFloat(20.0f), SourceInternal);
    document.SetParameter(Row::Active, Parameter::FromBool(true), SourceInternal);
    ExpectTold({{0, 0.5f, 0.5f, SourceInternal}}, listener.Take());

    // Without the target again: the last values stay readable.
    fake.SetTarget(nullptr);
    EXPECT_EQ(nullptr, real.GetListener());
    EXPECT_FLOAT_EQ(0.5f, fake.GetValue(0));
    EXPECT_FLOAT_EQ(7.5f, fake.GetValue(1));
    EXPECT_EQ("", Display(fake, 1));
}

// A target that counts the calls it gets, and the calls it gets after it was replaced.
class GuardedTarget : public CFW::DocView::Automation {
public:
    const CFW::DocView::AutomationProfile* GetProfile() const override { return &Slots(); }
    void SetListener(Listener*) override {}
    Listener* GetListener() const override { return nullptr; }
    void GetDisplay(std::string&, int) override { Touch(); }
    void GetDisplayFor(std::string&, int, float) override { Touch(); }
    float ToNormalized(int, float plain) override { return Touch(), plain; }
    float GetValue(int) override { return Touch(), 0.0f; }
    float GetNormalized(int) override { return Touch(), 0.0f; }
    void SetValue(int, float) override { Touch(); }
    void SetNormalized(int, float) override { Touch(); }
    bool QueueValue(int, float) override { return Touch(), true; }
    bool QueueNormalized(int, float) override { return Touch(), true; }

    std::atomic<bool> replaced{true};
    std::atomic<long> calls{0}, callsWhileReplaced{0};

private:
    void Touch()
    {
        ++calls;
        callsWhileReplaced += replaced.load() ? 1 : 0;
    }
};

TEST(FakeAutomationTest, ASwappedTargetIsNeverReachedAfterTheSwap)
{
    FakeAutomation fake(&Slots());
    GuardedTarget targets[2];
    std::atomic<bool> stop{false};
    std::atomic<long> rounds{0};
    std::atomic<long> allocations{-1};
    std::thread audio([&] {
        const AllocationCounter counter;
        while (!stop.load()) {
            fake.QueueNormalized(1, 0.25f);
            fake.ToNormalized(2, 0.5f);
            fake.GetValue(1);
            ++rounds;
        }
        allocations = counter.Count();
    });
    // Swaps go on until the other thread has gone round often enough during them.
    for (int swap = 0; swap < 2000 || rounds.load() < 20000; ++swap) {
        targets[swap % 2].replaced = false;
        fake.SetTarget(&targets[swap % 2]);
        targets[1 - swap % 2].replaced = true;  // from here on nobody may call it
        if (swap % 100 == 0)
            std::this_thread::yield();
    }
    fake.SetTarget(nullptr);
    for (GuardedTarget& target : targets)
        target.replaced = true;
    stop = true;
    audio.join();
    EXPECT_EQ(0, targets[0].callsWhileReplaced.load());
    EXPECT_EQ(0, targets[1].callsWhileReplaced.load());
    EXPECT_GT(targets[0].calls.load() + targets[1].calls.load(), 0);
    EXPECT_EQ(0, allocations.load());
}

}  // namespace
}  // namespace OV::Testing
