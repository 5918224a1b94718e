#pragma once

#include "product/automationrouter/Target.h"

#include <memory>
#include <vector>

namespace OV::Comp::AutomationRouter {

// Host slot to target: one entry per slot, each a target or empty. Filled by whoever makes it,
// then shared read-only: from then on any thread, the audio thread included.
class Map {
public:
    // `size` empty entries; a negative size is taken as 0.
    explicit Map(int size);

    int GetSize() const { return static_cast<int>(entries.size()); }
    // Set-up only; a slot outside the map is ignored.
    void Assign(int slot, std::shared_ptr<Target> target);
    // Null for an empty entry and for a slot outside the map. No allocation.
    const Target* GetTarget(int slot) const
    {
        return slot >= 0 && slot < GetSize() ? entries[static_cast<std::size_t>(slot)].get() : nullptr;
    }

private:
    std::vector<std::shared_ptr<Target>> entries;
};

}  // namespace OV::Comp::AutomationRouter
