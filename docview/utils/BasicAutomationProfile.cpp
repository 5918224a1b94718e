#include "docview/utils/BasicAutomationProfile.h"

#include <stdexcept>

namespace OV::CFW::DocViewUtils {

BasicAutomationProfile::BasicAutomationProfile(std::string name) : name(std::move(name)) {}

void BasicAutomationProfile::AddCreator(std::unique_ptr<AutomationSlotMediator::Creator> creator)
{
    if (creator == nullptr)
        throw std::invalid_argument("Null pointer in 'push_back()'");
    // Hosts keep automation by slot number: the numbers are dense and in declaration order.
    if (creator->GetSlot() != GetSlotCount())
        throw std::invalid_argument("Automation slot " + std::to_string(creator->GetSlot()) + " declared as slot "
                                    + std::to_string(GetSlotCount()));
    creators.push_back(std::move(creator));
}

}  // namespace OV::CFW::DocViewUtils
