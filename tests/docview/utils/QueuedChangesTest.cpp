// Changes queued from any thread run on the scheduler's worker against the document: in order,
// 200 at most in flight, and harmlessly after the document has gone.
#include "docview/utils/BasicComponentContext.h"
#include "docview/utils/BasicContexts.h"
#include "docview/utils/BasicDocument.h"
#include "tests/docview/utils/DocumentTestProfile.h"
#include "tests/support/AllocationCounter.h"

#include <condition_variable>
#include <mutex>

#include <gtest/gtest.h>

namespace OV::Testing {
namespace {

using CFW::DocViewUtils::BasicDocument;

// A component context with a document context under it.
class TestContext : public CFW::DocViewUtils::BasicComponentContext {
public:
    TestContext() : documents(this) { AddChild(&documents); }
    ~TestContext() override { GetScheduler()->Stop(); }
    CFW::DocViewUtils::BasicDocumentContext documents;
};

// Holds the worker inside a command until released.
class Gate : public CFW::DocView::Command {
public:
    void Execute() override
    {
        std::unique_lock<std::mutex> lock(mutex);
        entered = true;
        changed.notify_all();
        changed.wait(lock, [this] { return open; });
    }
    void WaitUntilHeld()
    {
        std::unique_lock<std::mutex> lock(mutex);
        changed.wait(lock, [this] { return entered; });
    }
    void Open()
    {
        std::lock_guard<std::mutex> lock(mutex);
        open = true;
        changed.notify_all();
    }

private:
    std::mutex mutex;
    std::condition_variable changed;
    bool entered = false;
    bool open = false;
};

const TestDocumentProfile& Profile()
{
    static const TestDocumentProfile profile;
    return profile;
}

TEST(QueuedChangesTest, TwoHundredWaitInOrderWhileTheWorkerIsBusy)
{
    TestContext context;
    BasicDocument document(&Profile(), &context.documents);
    std::vector<float> seen;
    std::mutex seenMutex;
    document.ConnectParameterChanged([&](CFW::DocView::Document&, int, Parameter value, int source) {
        EXPECT_EQ(CFW::DocView::SourceHost, source);
        std::lock_guard<std::mutex> lock(seenMutex);
        seen.push_back(value.AsFloat());
    });

    Gate gate;
    context.GetScheduler()->Enqueue(&gate);
    gate.WaitUntilHeld();
    {
        const AllocationCounter counter;
        for (int i = 0; i < 200; ++i)
            EXPECT_TRUE(document.QueueSetParameter(TestDocumentProfile::Gain, Parameter::FromFloat(-10.0f + 0.1f * static_cast<float>(i)), CFW::DocView::SourceHost));
        EXPECT_FALSE(document.QueueSetParameter(TestDocumentProfile::Gain, Parameter::FromFloat(5.0f), CFW::DocView::SourceHost));
        EXPECT_EQ(0, counter.Count()) << "queueing allocates nothing";
    }
    gate.Open();

    // A tempo change goes through the same queue, after the 200.
    std::mutex doneMutex;
    std::condition_variable done;
    bool tempoSeen = false;
    document.ConnectBPMChanged([&](CFW::DocView::Document&, float bpm, int) {
        std::lock_guard<std::mutex> lock(doneMutex);
        tempoSeen = bpm == 97.0f;
        done.notify_all();
    });
    ASSERT_TRUE(document.QueueSetBPM(97.0f, CFW::DocView::SourceHostTempo));
    std::unique_lock<std::mutex> lock(doneMutex);
    ASSERT_TRUE(done.wait_for(lock, std::chrono::seconds(30), [&] { return tempoSeen; }));
    lock.unlock();
    {
        std::lock_guard<std::mutex> seenLock(seenMutex);
        ASSERT_EQ(200u, seen.size());
        for (int i = 0; i < 200; ++i)
            EXPECT_FLOAT_EQ(-10.0f + 0.1f * static_cast<float>(i), seen[static_cast<std::size_t>(i)]);
    }
    EXPECT_TRUE(document.QueueSetParameter(TestDocumentProfile::Gain, Parameter::FromFloat(5.0f), 3)) << "the pool is full again";
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
            ASSERT_TRUE(document.QueueSetParameter(TestDocumentProfile::Gain, Parameter::FromFloat(1.0f), 3));
    }
    // Commands run in order: once a later one has run, the 200 have run against nothing.
    Gate marker;
    context.GetScheduler()->Enqueue(&marker);
    gate.Open();
    marker.WaitUntilHeld();
    BasicDocument next(&Profile(), &context.documents);
    for (int i = 0; i < 200; ++i)
        EXPECT_TRUE(next.QueueSetParameter(TestDocumentProfile::Hidden, Parameter::FromFloat(100.0f), 3)) << i;
    marker.Open();
    EXPECT_EQ(Parameter::FromFloat(0.0f), next.GetParameter(TestDocumentProfile::Gain));
    context.GetScheduler()->Stop();
}

TEST(QueuedChangesTest, PropertyRowsShareTheContextsValue)
{
    TestContext context;
    BasicDocument first(&Profile(), &context.documents);
    BasicDocument second(&Profile(), &context.documents);
    first.SetParameter(TestDocumentProfile::Shared, Parameter::FromEnum(2), 2);
    EXPECT_EQ(Parameter::FromEnum(2), second.GetParameter(TestDocumentProfile::Shared));
    EXPECT_EQ(Parameter::FromEnum(2), context.documents.GetProperties().Get("Shared"));

    // A local context reads the shared value, and its own additions stay local.
    const auto local = context.CreateLocal(nullptr);
    auto* localDocuments = local->Find<CFW::DocView::DocumentContext>();
    ASSERT_NE(nullptr, localDocuments);
    EXPECT_EQ(&context.documents.GetCommandFactory(), &localDocuments->GetCommandFactory());
    EXPECT_EQ(context.GetScheduler(), local->GetScheduler());
    EXPECT_TRUE(localDocuments->GetProperties().Has("Shared"));
    localDocuments->GetProperties().Add("Own", Parameter::FromBool(true));
    EXPECT_FALSE(context.documents.GetProperties().Has("Own"));
    localDocuments->GetProperties().Set("Shared", Parameter::FromEnum(0));
    EXPECT_EQ(Parameter::FromEnum(0), first.GetParameter(TestDocumentProfile::Shared)) << "a set on a shared key goes to the base";

    // Editing serialisable state marks the context.
    context.documents.GetProperties().Set(BasicDocument::editedProperty, Parameter::FromBool(false));
    first.SetParameter(TestDocumentProfile::Hidden, Parameter::FromFloat(100.0f), 2);
    EXPECT_EQ(Parameter::FromBool(false), context.documents.GetProperties().Get(BasicDocument::editedProperty));
    first.SetParameter(TestDocumentProfile::Gain, Parameter::FromFloat(1.0f), 2);
    EXPECT_EQ(Parameter::FromBool(true), context.documents.GetProperties().Get(BasicDocument::editedProperty));
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
