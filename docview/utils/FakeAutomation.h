#pragma once

#include "docview/interfaces/Automation.h"
#include "docview/interfaces/Parameter.h"
#include "docview/thread/TripleSlotHold.h"

#include <atomic>
#include <memory>
#include <mutex>
#include <vector>

namespace OV::CFW::DocViewUtils {

// An automation role with nothing of its own: it offers a fixed set of slots and forwards them,
// renumbered, to a target automation that can be replaced at run time, or to none. It keeps the
// last known value of every slot, so that a reader sees the values from before a target left,
// and it stands in as the target's listener.
//
// Threads: as DocView::Automation; the target is reached without a lock, so the queue writes
// and the value reads stay fit for the audio thread. SetTarget: main thread or worker, never the
// audio thread (it waits until no reader uses the old target).
class FakeAutomation : public DocView::Automation, public DocView::Automation::Listener {
public:
    using Listener = DocView::Automation::Listener;

    // Slot i goes to the target's slot i. `profile` (not owned) gives the slots offered.
    explicit FakeAutomation(const DocView::AutomationProfile* profile);
    // Slot i goes to the target's slot `slotMap[i]`; the profile's count is the map's size.
    FakeAutomation(const DocView::AutomationProfile* profile, std::vector<int> slotMap);
    ~FakeAutomation() override;

    // Replaces the target (null for none): the old one loses this as its listener, the new one
    // gets it, and so tells every value at once. Returns when nobody uses the old one any more.
    void SetTarget(DocView::Automation* target);
    DocView::Automation* GetTarget() const;

    const DocView::AutomationProfile* GetProfile() const override { return profile; }
    // A new listener is told every last known value at once, in order, as source 1.
    void SetListener(Listener* listener) override;
    Listener* GetListener() const override { return listener.load(); }
    // Empty without a target.
    void GetDisplay(std::string& text, int slot) override;
    void GetDisplayFor(std::string& text, int slot, float value) override;
    // The value as it is without a target.
    float ToNormalized(int slot, float plain) override;
    // The last known values, with a target or without.
    float GetValue(int slot) override;
    float GetNormalized(int slot) override;
    // Stored first, then passed to the target; the target's view of both values is kept.
    // Without a target the number is kept as both the plain and the normalised value.
    void SetValue(int slot, float plain) override;
    void SetNormalized(int slot, float normalised) override;
    bool QueueValue(int slot, float plain) override;
    bool QueueNormalized(int slot, float normalised) override;

    // From the target: kept, and passed on under this role's slot number.
    void OnSlotChanged(int slot, float plain, float normalised, int source) override;

private:
    struct Value {
        std::atomic<float> plain{0.0f};
        std::atomic<float> normalised{0.0f};
    };

    bool Valid(int slot) const { return slot >= 0 && slot < static_cast<int>(slotMap.size()); }
    // Writes `value` as the plain or normalised half, then lets `write` take it to the target.
    template <typename Writer>
    bool Write(int slot, float value, bool normalised, Writer&& write);

    const DocView::AutomationProfile* profile;
    std::vector<int> slotMap;     // the target's slot for each of ours
    std::vector<int> reverseMap;  // ours for each of the target's, or -1
    std::atomic<Listener*> listener{nullptr};
    std::unique_ptr<Value[]> values;
    Thread::TripleSlotHold<DocView::Automation> target;
    std::mutex targetWriter;  // one SetTarget at a time
};

}  // namespace OV::CFW::DocViewUtils
