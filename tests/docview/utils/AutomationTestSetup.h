#pragma once

// A document with one row of each slot kind, the slots over it, a document that records what
// is queued instead of queueing it, a listener that records what it is told, and checks of both.
#include "docview/datafilter/FloatConverter.h"
#include "docview/datafilter/FloatRange.h"
#include "docview/utils/BasicAutomationProfile.h"
#include "docview/utils/BasicDocument.h"
#include "docview/utils/BasicDocumentProfile.h"

#include <functional>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace OV::Testing {

using CFW::DocView::Parameter;
using CFW::DocView::ParameterInfo;

class SlotDocumentProfile : public CFW::DocViewUtils::BasicDocumentProfile {
public:
    enum Row { Gain = 0, Q = 1, Active = 2, Mix = 3, Other = 4 };

    SlotDocumentProfile()
    {
        using namespace CFW::DataFilter;
        SetParameter(Gain, ParameterInfo::MakeFloat("Gain", 0.0f, *MakeRange(-15.0f, 15.0f), ParameterInfo::Serializable));
        SetParameter(Q, ParameterInfo::MakeFloat("Q", 2.0f, *MakeRange(0.2f, 20.0f), *MakeLogNorm(0.2f, 20.0f), 0));
        SetParameter(Active, ParameterInfo::MakeBool("Active", false, 0));
        SetParameter(Mix, ParameterInfo::MakeFloat("Mix", 50.0f, *MakeRange(0.0f, 100.0f), 0));
        SetParameter(Other, ParameterInfo::MakeFloat("Other", 1.0f, *MakeRange(0.0f, 10.0f), 0));
    }
};

// Slot i on row i, Other has none: two decimals and dB; the default "%f"; a switch; a "%" unit.
class SlotAutomationProfile : public CFW::DocViewUtils::BasicAutomationProfile {
public:
    SlotAutomationProfile() : BasicAutomationProfile("Slots")
    {
        using namespace CFW::DocViewUtils;
        using Row = SlotDocumentProfile;
        AddCreator(std::make_unique<AutomationSlotMediatorFloat::Creator>(Row::Gain, 0, "Gain", "G", 2, "dB"));
        AddCreator(std::make_unique<AutomationSlotMediatorFloat::Creator>(Row::Q, 1, "Q", "Q", -1, ""));
        AddCreator(std::make_unique<AutomationSlotMediatorBool::Creator>(Row::Active, 2, "Active", "A", "On", "Off"));
        AddCreator(std::make_unique<AutomationSlotMediatorFloat::Creator>(Row::Mix, 3, "Mix", "M", 1, "%"));
    }
};

inline const SlotDocumentProfile& SlotRows() { static const SlotDocumentProfile profile; return profile; }
inline const SlotAutomationProfile& Slots() { static const SlotAutomationProfile profile; return profile; }

// Queued changes are recorded, and refused while `refuse` is set; nothing reaches a scheduler.
class SpyDocument : public CFW::DocViewUtils::BasicDocument {
public:
    struct Queued { int index; Parameter value; int source; };

    SpyDocument() : BasicDocument(&SlotRows(), nullptr) {}

    bool QueueSetParameter(int index, Parameter value, int source) override
    {
        const std::lock_guard<std::mutex> lock(mutex);
        queued.push_back({index, value, source});
        return !refuse;
    }
    std::vector<Queued> TakeQueued()
    {
        const std::lock_guard<std::mutex> lock(mutex);
        return std::exchange(queued, {});
    }

    bool refuse = false;

private:
    std::mutex mutex;
    std::vector<Queued> queued;
};

// Records every notification; `onChange`, if set, runs inside the notification.
class RecordingListener : public CFW::DocView::Automation::Listener {
public:
    struct Told { int slot; float plain, normalised; int source; };

    void OnSlotChanged(int slot, float plain, float normalised, int source) override
    {
        {
            const std::lock_guard<std::mutex> lock(mutex);
            told.push_back({slot, plain, normalised, source});
        }
        if (onChange)
            onChange(slot);
    }
    std::vector<Told> Take()
    {
        const std::lock_guard<std::mutex> lock(mutex);
        return std::exchange(told, {});
    }

    std::function<void(int)> onChange;

private:
    std::mutex mutex;
    std::vector<Told> told;
};

// The display of a slot; a display that writes nothing leaves "stale".
inline std::string Display(CFW::DocView::Automation& automation, int slot)
{
    std::string text = "stale";
    automation.GetDisplay(text, slot);
    return text;
}

// `told` is exactly `expected`, in order.
inline void ExpectTold(const std::vector<RecordingListener::Told>& expected, const std::vector<RecordingListener::Told>& told)
{
    ASSERT_EQ(expected.size(), told.size());
    for (std::size_t i = 0; i < told.size(); ++i) {
        EXPECT_EQ(expected[i].slot, told[i].slot) << i;
        EXPECT_FLOAT_EQ(expected[i].plain, told[i].plain) << i;
        EXPECT_FLOAT_EQ(expected[i].normalised, told[i].normalised) << i;
        EXPECT_EQ(expected[i].source, told[i].source) << i;
    }
}

// `queued` is exactly `expected`, in order, values by bits.
inline void ExpectQueued(const std::vector<SpyDocument::Queued>& expected, const std::vector<SpyDocument::Queued>& queued)
{
    ASSERT_EQ(expected.size(), queued.size());
    for (std::size_t i = 0; i < queued.size(); ++i) {
        EXPECT_EQ(expected[i].index, queued[i].index) << i;
        EXPECT_EQ(expected[i].value, queued[i].value) << i;
        EXPECT_EQ(expected[i].source, queued[i].source) << i;
    }
}

}  // namespace OV::Testing
