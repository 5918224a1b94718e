#pragma once

#include "docview/utils/BasicAutomationProfile.h"

#include <string>

namespace OV::Comp::VN4ModuleBase {

// The host slots of a module of the family, each named alike in long and short form. The Add
// operations are for the concrete profile's constructor (set-up, allocates) and number the
// slots in call order; afterwards the profile is read-only: any thread.
class AutomationProfile : public CFW::DocViewUtils::BasicAutomationProfile {
protected:
    explicit AutomationProfile(std::string name);

    // A float row, shown with `precision` decimals and the unit, if any.
    void AddFloat(int row, const std::string& name, int precision, const std::string& unitText);
    // A bool row as a two-state switch.
    void AddSwitch(int row, const std::string& name, const std::string& offText, const std::string& onText);
};

}  // namespace OV::Comp::VN4ModuleBase
