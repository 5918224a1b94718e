#include "product/automationrouter/MapStore.h"

#include <mutex>

namespace OV::Comp::AutomationRouter {

MapStore::MapStore(Automation& target, std::shared_ptr<const TargetTree> root) : target(target), root(std::move(root)) {}

std::shared_ptr<const Map> MapStore::GetNewest() const
{
    const std::shared_lock<std::shared_mutex> reading(lock);
    return newest;
}

void MapStore::Install(std::shared_ptr<const Map> map)
{
    const std::unique_lock<std::shared_mutex> writing(lock);
    newest = map;
    // Posted under the lock, so installations run in the order the newest map changed.
    target.PostInstall(std::move(map));
}

void MapStore::InstallNow(std::shared_ptr<const Map> map)
{
    {
        const std::unique_lock<std::shared_mutex> writing(lock);
        newest = map;
    }
    target.InstallNow(std::move(map));
}

}  // namespace OV::Comp::AutomationRouter
