#pragma once

#include "docview/interfaces/Automation.h"

#include <cstdint>
#include <vector>

namespace OV::Comp::AutomationRouter {

// The router's ear on one target automation: the target's slot changes come back under the
// host slot that maps to them; a slot no host slot maps to is dropped. Made and destroyed on
// the command thread; OnSlotChanged runs on whichever thread changed the target.
class Connection final : public CFW::DocView::Automation::Listener {
public:
    // `slotOf[i]` is the host slot of the target's slot i, or -1. Registers as the target's
    // listener, so the target tells its values at once. `router` (may be null) hears them.
    Connection(CFW::DocView::Automation& target, CFW::DocView::Automation::Listener* router, std::vector<std::int32_t> slotOf);
    // Unregisters from the target.
    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    void OnSlotChanged(int slot, float plain, float normalised, int source) override;

private:
    CFW::DocView::Automation& target;
    CFW::DocView::Automation::Listener* router;
    const std::vector<std::int32_t> slotOf;  // stable for the connection's life
};

}  // namespace OV::Comp::AutomationRouter
