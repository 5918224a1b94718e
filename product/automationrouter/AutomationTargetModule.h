#pragma once

#include "product/automationrouter/TargetTree.h"

#include <string>

namespace OV::Comp::AutomationRouter {

// What a hosting component offers the router: its automatable parameters, as subtrees of the
// router's target tree. Main thread, while the instance is built.
class AutomationTargetModule {
public:
    // Adds this component's targets under `node`; a non-empty `path` ends every target's path.
    virtual void AddTargets(TargetTreeNode& node, const std::string& path) = 0;
    virtual ~AutomationTargetModule() = default;
};

}  // namespace OV::Comp::AutomationRouter
