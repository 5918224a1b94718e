#include "equaliser/VN4ModuleBaseAutomationProfile.h"

namespace OV::Comp::VN4ModuleBase {

using namespace CFW::DocViewUtils;

AutomationProfile::AutomationProfile(std::string name) : BasicAutomationProfile(std::move(name)) {}

void AutomationProfile::AddFloat(int row, const std::string& name, int precision, const std::string& unitText)
{
    AddCreator(std::make_unique<AutomationSlotMediatorFloat::Creator>(row, GetSlotCount(), name, name, precision, unitText));
}

void AutomationProfile::AddSwitch(int row, const std::string& name, const std::string& offText, const std::string& onText)
{
    AddCreator(std::make_unique<AutomationSlotMediatorBool::Creator>(row, GetSlotCount(), name, name, onText, offText));
}

}  // namespace OV::Comp::VN4ModuleBase
