#pragma once

#include "docview/interfaces/Automation.h"
#include "docview/interfaces/Command.h"
#include "docview/interfaces/RoleContexts.h"
#include "product/automationrouter/Map.h"
#include "product/automationrouter/Publication.h"

#include <atomic>
#include <memory>
#include <mutex>
#include <vector>

namespace OV::Comp::AutomationRouter {

class Automation;

// Installs a map into the router on the command thread, then deletes itself. Without a map it
// rebuilds the connections on the present one.
class AssignMapToAutomation : public CFW::DocView::Command {
public:
    AssignMapToAutomation(Automation& automation, std::shared_ptr<const Map> map);
    void Execute() override;

private:
    Automation& automation;
    std::shared_ptr<const Map> map;
};

// The host-facing automation of a tree of components: host slot i goes to the target that the
// present map names for it, and each target's changes come back to the host under the slot
// that maps to them. A slot without a target (or before the first map) keeps what the host
// writes to it in a fallback, up to slot 1023. The map is replaced on the command thread while
// the host's threads read it without a lock.
//
// Threads: as DocView::Automation. Every host operation reads the map lock-free and without
// allocating; the queue writes, GetValue and GetNormalized stay fit for the audio thread when
// the targets' are. Notifications to the listener come on the thread that changed a target,
// and for a new listener or map on the command thread.
class Automation : public CFW::DocView::Automation, private CFW::DocView::Automation::Listener {
public:
    using Listener = CFW::DocView::Automation::Listener;

    // `profile` (not owned) gives the host's slots. The command thread is the scheduler of the
    // context's parent; without a context, installations run at once on the caller's thread.
    Automation(const CFW::DocView::AutomationProfile* profile, CFW::DocView::AutomationContext* context);
    // The scheduler must be stopped first, or be past every installation posted here. The
    // targets must still live: the connections leave them.
    ~Automation() override;

    // While the instance is built, before anything reads or posts: installs at once.
    void InstallNow(std::shared_ptr<const Map> map);
    // Main thread or worker; allocates: the map is installed on the command thread. Null
    // rebuilds the connections on the present map there.
    void PostInstall(std::shared_ptr<const Map> map);
    // The command thread: makes `map` the present one and rebuilds the connections, through
    // which every target tells its values. Null rebuilds on the present map.
    void Assign(const std::shared_ptr<const Map>& map);

    const CFW::DocView::AutomationProfile* GetProfile() const override { return profile; }
    // A new listener hears every mapped slot's value, as source 1, from the command thread.
    void SetListener(Listener* listener) override;
    Listener* GetListener() const override { return listener.load(); }
    // Empty for a slot without a target.
    void GetDisplay(std::string& text, int slot) override;
    void GetDisplayFor(std::string& text, int slot, float value) override;
    // Without a target the value itself; 0 before the first map.
    float ToNormalized(int slot, float plain) override;
    // Without a target the fallback.
    float GetValue(int slot) override;
    float GetNormalized(int slot) override;
    void SetValue(int slot, float plain) override;
    void SetNormalized(int slot, float normalised) override;
    // Without a target true, false past the fallback's end.
    bool QueueValue(int slot, float plain) override;
    bool QueueNormalized(int slot, float normalised) override;

private:
    friend class AssignMapToAutomation;

    // From the connections: on to the host side.
    void OnSlotChanged(int slot, float plain, float normalised, int source) override;
    // Calls `routed(target)` for a slot with a target, else `unrouted(hasMap)`, with the map
    // held for the length of the call.
    template <typename Routed, typename Unrouted>
    auto Route(int slot, Routed&& routed, Unrouted&& unrouted) const;
    void Retire(AssignMapToAutomation* command);

    const CFW::DocView::AutomationProfile* profile;
    CFW::DocView::AutomationContext* context;
    std::atomic<Listener*> listener{nullptr};
    std::shared_ptr<const Map> map;  // the present map; the command thread only
    std::unique_ptr<Publication> published;
    // Posted installations that have not run: they belong here until they do.
    std::mutex pendingMutex;
    std::vector<std::unique_ptr<AssignMapToAutomation>> pending;
};

}  // namespace OV::Comp::AutomationRouter
