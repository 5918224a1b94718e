#pragma once

#include "docview/interfaces/Automation.h"
#include "docview/utils/AutomationSlotMediator.h"

#include <memory>
#include <string>
#include <vector>

namespace OV::CFW::DocViewUtils {

// An automation role's declaration: its name and the creators of its slots, owned, slot i being
// the i-th creator. Filled in the concrete profile's constructor; read-only after that, from any
// thread. Slot indices are not checked by the queries.
class BasicAutomationProfile : public DocView::AutomationProfile {
public:
    explicit BasicAutomationProfile(std::string name);

    const std::string& GetName() const override { return name; }
    int GetSlotCount() const override { return static_cast<int>(creators.size()); }
    std::string GetSlotName(int slot) const override { return GetCreator(slot).GetName(); }
    std::string GetSlotShortName(int slot) const override { return GetCreator(slot).GetShortName(); }
    int GetSlotParameter(int slot) const override { return GetCreator(slot).GetParameter(); }
    const AutomationSlotMediator::Creator& GetCreator(int slot) const { return *creators[static_cast<std::size_t>(slot)]; }

protected:
    // Set-up only. Throws std::invalid_argument for null, or when the creator's slot is not the
    // next one.
    void AddCreator(std::unique_ptr<AutomationSlotMediator::Creator> creator);

private:
    std::string name;
    std::vector<std::unique_ptr<AutomationSlotMediator::Creator>> creators;
};

}  // namespace OV::CFW::DocViewUtils
