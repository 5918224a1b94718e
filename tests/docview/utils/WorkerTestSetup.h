#pragma once

// A component context with its worker, and commands that hold the worker or wait for it.
#include "docview/interfaces/Command.h"
#include "docview/utils/BasicComponentContext.h"
#include "docview/utils/BasicContexts.h"

#include <chrono>
#include <future>
#include <mutex>

#include <gtest/gtest.h>

namespace OV::Testing {

class TestContext : public CFW::DocViewUtils::BasicComponentContext {
public:
    TestContext() : documents(this) { AddChild(&documents); }
    ~TestContext() override { GetScheduler()->Stop(); }
    CFW::DocViewUtils::BasicDocumentContext documents;
};

// Holds the worker from when it runs until Open.
struct Gate : CFW::DocView::Command {
    std::promise<void> open;
    std::shared_future<void> opened = open.get_future().share();
    std::once_flag once;
    void Execute() override { opened.wait(); }
    void Open()
    {
        std::call_once(once, [this] { open.set_value(); });
    }
};

// Waits until every command queued before it has run: commands run in order.
inline void Drain(TestContext& context)
{
    struct Marker : CFW::DocView::Command {
        std::promise<void> ran;
        void Execute() override { ran.set_value(); }
    } marker;
    std::future<void> done = marker.ran.get_future();
    context.GetScheduler()->Enqueue(&marker);
    ASSERT_EQ(std::future_status::ready, done.wait_for(std::chrono::seconds(30)));
}

}  // namespace OV::Testing
