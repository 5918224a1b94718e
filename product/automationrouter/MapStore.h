#pragma once

#include "product/automationrouter/Automation.h"
#include "product/automationrouter/Map.h"
#include "product/automationrouter/TargetTree.h"

#include <memory>
#include <shared_mutex>

namespace OV::Comp::AutomationRouter {

// The newest map of one instance, beside the tree that saved maps are read against, and the
// router that installs it. The lock is held for a moment, never on the audio thread.
class MapStore {
public:
    // `target` outlives the store.
    MapStore(Automation& target, std::shared_ptr<const TargetTree> root);

    const TargetTree& GetRoot() const { return *root; }
    // Any thread but the audio thread: a reference to the newest map, or null before the first.
    std::shared_ptr<const Map> GetNewest() const;
    // Main thread or worker; allocates: the newest map from now on, installed on the command
    // thread in the order of these calls.
    void Install(std::shared_ptr<const Map> map);
    // While the instance is built: the newest map, installed at once.
    void InstallNow(std::shared_ptr<const Map> map);

private:
    Automation& target;
    const std::shared_ptr<const TargetTree> root;
    std::shared_ptr<const Map> newest;
    mutable std::shared_mutex lock;  // guards `newest`
};

}  // namespace OV::Comp::AutomationRouter
