#pragma once

#include "docview/interfaces/Automation.h"
#include "docview/utils/AutomationSlotMediator.h"
#include "docview/utils/BasicAutomationProfile.h"

#include <atomic>
#include <memory>
#include <thread>
#include <vector>

#include <boost/signals2/connection.hpp>

namespace OV::CFW::DocViewUtils {

// The automation role's work: the slots of a profile over one document. Host writes go into
// the document with source 3; the document's changes come back as slot changes for the
// listener, except the echo of the host's own direct writes and what a listener writes back
// while it is being told.
//
// Threads: as DocView::Automation. The echo guards belong to the thread inside the guarded
// call, so that a write from the audio thread is never lost to a change the worker is reporting
// at that moment, nor the other way round.
class AutomationMediator {
public:
    // Allocates the slots; connects to the document's changes. `document` outlives this.
    AutomationMediator(const BasicAutomationProfile& profile, DocView::Document& document);
    ~AutomationMediator();
    AutomationMediator(const AutomationMediator&) = delete;
    AutomationMediator& operator=(const AutomationMediator&) = delete;

    // Main thread or worker. A new listener is told every slot at once, in order, as source 1.
    void SetListener(DocView::Automation::Listener* listener);
    DocView::Automation::Listener* GetListener() const { return listener.load(); }
    // Slots out of range give an empty text, 0, or do nothing.
    void GetDisplay(std::string& text, int slot) const;
    void GetDisplayFor(std::string& text, int slot, float normalised) const;
    float ToNormalized(int slot, float plain) const;
    float GetValue(int slot) const;
    float GetNormalized(int slot) const;
    void SetValue(int slot, float plain) { FromHost(slot, plain, false, false); }
    void SetNormalized(int slot, float normalised) { FromHost(slot, normalised, true, false); }
    bool QueueValue(int slot, float plain) { return FromHost(slot, plain, false, true); }
    bool QueueNormalized(int slot, float normalised) { return FromHost(slot, normalised, true, true); }

private:
    const AutomationSlotMediator* Find(int slot) const;
    bool FromHost(int slot, float value, bool normalised, bool queued);
    void OnParameterChanged(int row, DocView::Parameter value, int source);

    DocView::Document& document;
    std::vector<AutomationSlotMediator*> byRow;                  // null for rows without a slot
    std::vector<std::unique_ptr<AutomationSlotMediator>> slots;  // index = slot
    std::atomic<DocView::Automation::Listener*> listener{nullptr};
    std::atomic<std::thread::id> settingFromHost{};      // the thread inside a direct host write
    std::atomic<std::thread::id> settingFromDocument{};  // the thread telling the listener
    boost::signals2::scoped_connection parameterChanged;
};

}  // namespace OV::CFW::DocViewUtils
