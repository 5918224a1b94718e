#pragma once

#include "product/automationrouter/MapStore.h"
#include "product/state/Serializable.h"

namespace OV::Comp::AutomationRouter {

// The automation map in a host program: a child element with the number of host slots in
// `Slots` and, for each slot with a target, `Slot<i>` with the target's path. Loading finds the
// targets by path; a path that names nothing leaves its slot empty, and a program without the
// child leaves the present map.
//
// Threads: as the program document's load and save, the worker or the main thread.
class AutomationHelperSerializer : public Products::VN4::State::Serializable {
public:
    // `store` outlives this; `elementName` is a literal.
    AutomationHelperSerializer(MapStore& store, const char* elementName);

    void Load(const TiXmlElement& element) override;
    void Save(TiXmlElement& element) override;

private:
    MapStore& store;
    const char* elementName;
};

}  // namespace OV::Comp::AutomationRouter
