// The stand-in automation: renumbered forwarding to a replaceable target, the last known values
// without one, and a target swapped while another thread writes and reads through it, which
// must never reach a target that has been replaced, nor allocate.
#include "docview/utils/BasicAutomation.h"
#include "docview/utils/FakeAutomation.h"
#include "tests/docview/utils/AutomationTestSetup.h"
#include "tests/support/AllocationCounter.h"

#include <atomic>
#include <thread>

#include <gtest/gtest.h>

namespace OV::Testing {
namespace {

using CFW::DocView::SourceHost;
using CFW::DocView::SourceInternal;
using CFW::DocViewUtils::FakeAutomation;
using Row = SlotDocumentProfile;

std::string Display(CFW::DocView::Automation& automation, int slot)
{
    std::string text = "stale";
    automation.GetDisplay(text, slot);
    return text;
}

TEST(FakeAutomationTest, ForwardsRenumberedAndKeepsTheLastValues)
{
    SpyDocument document;
    CFW::DocViewUtils::BasicAutomation real(&Slots(), nullptr, &document);
    // Own slot 0 is the target's switch (2), own slot 1 its gain (0).
    FakeAutomation fake(&Slots(), {2, 0});
    RecordingListener listener;

    // Without a target: nothing to show or convert, but writes are kept.
    EXPECT_EQ("", Display(fake, 0));
    EXPECT_FLOAT_EQ(3.0f, fake.ToNormalized(1, 3.0f));
    EXPECT_TRUE(fake.QueueValue(1, 4.0f));
    EXPECT_FLOAT_EQ(4.0f, fake.GetValue(1));
    EXPECT_TRUE(fake.QueueNormalized(0, 0.25f));
    EXPECT_FLOAT_EQ(0.25f, fake.GetValue(0)) << "without a converter the number is both halves";
    fake.SetListener(&listener);
    auto told = listener.Take();
    ASSERT_EQ(2u, told.size());
    EXPECT_FLOAT_EQ(0.25f, told[0].plain);
    EXPECT_FLOAT_EQ(4.0f, told[1].plain);
    EXPECT_FLOAT_EQ(4.0f, told[1].normalised);
    EXPECT_EQ(SourceInternal, told[1].source);

    // A target tells its values at once, under our numbers; its slots 1 and 3 are not ours.
    fake.SetTarget(&real);
    EXPECT_EQ(&fake, real.GetListener());
    told = listener.Take();
    ASSERT_EQ(2u, told.size());
    EXPECT_EQ(1, told[0].slot);
    EXPECT_FLOAT_EQ(0.5f, told[0].normalised);
    EXPECT_EQ(0, told[1].slot);
    EXPECT_FLOAT_EQ(0.0f, fake.GetValue(1)) << "the target's value replaces the kept one";
    EXPECT_EQ("0.00 dB", Display(fake, 1));
    EXPECT_FLOAT_EQ(0.75f, fake.ToNormalized(1, 7.5f));

    // Writes go to the target's slot; both halves come back converted.
    EXPECT_TRUE(fake.QueueNormalized(1, 0.75f));
    const auto queued = document.TakeQueued();
    ASSERT_EQ(1u, queued.size());
    EXPECT_EQ(Row::Gain, queued[0].index);
    EXPECT_FLOAT_EQ(7.5f, queued[0].value.AsFloat());
    EXPECT_EQ(SourceHost, queued[0].source);
    EXPECT_FLOAT_EQ(7.5f, fake.GetValue(1));
    EXPECT_FLOAT_EQ(0.75f, fake.GetNormalized(1));

    // Changes inside: only the mapped slots pass.
    document.SetParameter(Row::Q, Parameter::FromFloat(20.0f), SourceInternal);
    document.SetParameter(Row::Active, Parameter::FromBool(true), SourceInternal);
    told = listener.Take();
    ASSERT_EQ(1u, told.size());
    EXPECT_EQ(0, told[0].slot);
    EXPECT_FLOAT_EQ(0.5f, told[0].plain);

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
    std::atomic<long> calls{0};
    std::atomic<long> callsWhileReplaced{0};

private:
    void Touch()
    {
        ++calls;
        if (replaced.load())
            ++callsWhileReplaced;
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
        GuardedTarget& next = targets[swap % 2];
        GuardedTarget& previous = targets[1 - swap % 2];
        next.replaced = false;
        fake.SetTarget(&next);
        previous.replaced = true;  // from here on nobody may call it
        if (swap % 100 == 0)
            std::this_thread::yield();
    }
    fake.SetTarget(nullptr);
    targets[0].replaced = true;
    targets[1].replaced = true;
    stop = true;
    audio.join();
    EXPECT_EQ(0, targets[0].callsWhileReplaced.load());
    EXPECT_EQ(0, targets[1].callsWhileReplaced.load());
    EXPECT_GT(targets[0].calls.load() + targets[1].calls.load(), 0);
    EXPECT_EQ(0, allocations.load());
}

}  // namespace
}  // namespace OV::Testing
