#include "product/automationrouter/Connection.h"

namespace OV::Comp::AutomationRouter {

Connection::Connection(CFW::DocView::Automation& target, CFW::DocView::Automation::Listener* router,
                       std::vector<std::int32_t> slotOf)
    : target(target), router(router), slotOf(std::move(slotOf))
{
    // Last: registering makes the target tell every value through this at once.
    target.SetListener(this);
}

Connection::~Connection()
{
    if (target.GetListener() == this)
        target.SetListener(nullptr);
}

void Connection::OnSlotChanged(int slot, float plain, float normalised, int source)
{
    if (slot < 0 || slot >= static_cast<int>(slotOf.size()) || router == nullptr)
        return;
    const std::int32_t hostSlot = slotOf[static_cast<std::size_t>(slot)];
    if (hostSlot != -1)
        router->OnSlotChanged(hostSlot, plain, normalised, source);
}

}  // namespace OV::Comp::AutomationRouter
