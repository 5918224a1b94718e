#include "product/automationrouter/Map.h"

#include <algorithm>

namespace OV::Comp::AutomationRouter {

Map::Map(int size) : entries(static_cast<std::size_t>(std::max(size, 0))) {}

void Map::Assign(int slot, std::shared_ptr<Target> target)
{
    if (slot >= 0 && slot < GetSize())
        entries[static_cast<std::size_t>(slot)] = std::move(target);
}

}  // namespace OV::Comp::AutomationRouter
