#pragma once

#include "equaliser/VN4ModuleBaseAutomationProfile.h"

namespace OV::Comp::ModuleLinearPhaseEq {

// The equaliser's 37 host slots, all on the linked set, whose changes reach both channels. For
// band N = 1 to 6 in order: "Band N Gain", "Band N LP/HP Resonance", "Band N Active" (a switch,
// "Off"/"On"), "Band N Freq", "Band N Q (Peaking)", "Band N Q (Shelving)"; then "OutputLevel".
// Floats show two decimals and no unit. A band's mode is not automatable.
//
// A process-wide singleton, built on first use (main thread); read-only after: any thread.
class AutomationProfile : public VN4ModuleBase::AutomationProfile {
public:
    static AutomationProfile& Instance();

private:
    AutomationProfile();
};

}  // namespace OV::Comp::ModuleLinearPhaseEq
