#pragma once

// A small document table for the framework's tests, a component context with its worker, and
// commands that hold the worker or wait for it.
#include "docview/datafilter/FloatRange.h"
#include "docview/interfaces/Command.h"
#include "docview/utils/BasicComponentContext.h"
#include "docview/utils/BasicContexts.h"
#include "docview/utils/BasicDocumentProfile.h"

#include <chrono>
#include <future>
#include <mutex>

#include <gtest/gtest.h>

namespace OV::Testing {

using CFW::DocView::Parameter;
using CFW::DocView::ParameterInfo;

class TestDocumentProfile : public CFW::DocViewUtils::BasicDocumentProfile {
public:
    enum Row { Gain = 0, Mode = 1, Active = 2, Meter = 3, Kept = 4, Hidden = 5, Shared = 6, Level = 7 };

    TestDocumentProfile()
    {
        using CFW::DataFilter::MakeRange;
        // Declared out of order, with a gap at 8 and rows up to 9.
        SetParameter(Mode, ParameterInfo::MakeEnum("Mode", {"HighPass", "Peaking", "LowPass"}, 1, ParameterInfo::Serializable));
        SetParameter(Gain, ParameterInfo::MakeFloat("Gain", 0.0f, *MakeRange(-15.0f, 15.0f), ParameterInfo::Serializable));
        SetParameter(Active, ParameterInfo::MakeBool("Active", true, ParameterInfo::Serializable));
        SetParameter(Meter, ParameterInfo::MakeFloat("Meter", 0.0f, *MakeRange(0.0f, 100.0f), ParameterInfo::Transient));
        SetParameter(Kept, ParameterInfo::MakeFloat("Kept", 3.0f, *MakeRange(0.0f, 10.0f),
                                                    ParameterInfo::Serializable | ParameterInfo::NoDefault));
        SetParameter(Hidden, ParameterInfo::MakeFloat("Hidden", 440.0f, *MakeRange(20.0f, 20000.0f), 0));
        SetParameter(Shared, ParameterInfo::MakeEnum("Shared", {"One", "Two", "Three"}, 0, ParameterInfo::Property));
        SetParameter(Level, ParameterInfo::MakeEnum("Test.Level", {"Low", "Mid", "High"}, 0, ParameterInfo::Preference));
        SetParameter(9, ParameterInfo::MakeBool("Last", false, 0));
    }
};

inline const TestDocumentProfile& Profile() { static const TestDocumentProfile profile; return profile; }

class TestContext : public CFW::DocViewUtils::BasicComponentContext {
public:
    TestContext() : documents(this) { AddChild(&documents); }
    ~TestContext() override { GetScheduler()->Stop(); }
    CFW::DocViewUtils::BasicDocumentContext documents;
};

// Holds the worker from when it runs until Open.
struct Gate : CFW::DocView::Command {
    std::promise<void> open, entered;
    std::shared_future<void> opened = open.get_future().share(), held = entered.get_future().share();
    std::once_flag once;
    void Execute() override
    {
        entered.set_value();
        opened.wait();
    }
    void WaitUntilHeld() const { ASSERT_EQ(std::future_status::ready, held.wait_for(std::chrono::seconds(60))); }
    void Open() { std::call_once(once, [this] { open.set_value(); }); }
};

// Waits until every command queued before it has run: commands run in order.
inline void Drain(CFW::DocView::Scheduler* scheduler)
{
    struct Marker : CFW::DocView::Command {
        std::promise<void> ran;
        void Execute() override { ran.set_value(); }
    } marker;
    std::future<void> done = marker.ran.get_future();
    scheduler->Enqueue(&marker);
    ASSERT_EQ(std::future_status::ready, done.wait_for(std::chrono::seconds(30)));
}
inline void Drain(TestContext& context) { Drain(context.GetScheduler()); }

}  // namespace OV::Testing
