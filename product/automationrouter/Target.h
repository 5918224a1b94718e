#pragma once

#include <cstdint>
#include <string>

namespace OV::CFW::DocView {
class Automation;
}

namespace OV::Comp::AutomationRouter {

// One automatable parameter somewhere in the component tree: a slot of a component's
// automation role. Immutable once made: any thread.
struct Target {
    CFW::DocView::Automation* automation;  // not owned; outlives every map that names it
    std::int32_t index;                    // the slot within `automation`
    std::string group;                     // "Module" in this product
    std::string name;
    std::string shortName;
};

}  // namespace OV::Comp::AutomationRouter
