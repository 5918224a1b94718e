#include "equaliser/ComponentProfile.h"

#include "equaliser/AutomationProfile.h"
#include "equaliser/DocumentProfile.h"
#include "equaliser/MAFProfile.h"

namespace OV::Comp::ModuleLinearPhaseEq {

namespace {

// {F8FD5639-DA16-4332-86C3-E1E0E7272048}
const Platform::Guid componentId = {
    0xF8FD5639, 0xDA16, 0x4332, {0x86, 0xC3, 0xE1, 0xE0, 0xE7, 0x27, 0x20, 0x48}};

}  // namespace

ComponentProfile& ComponentProfile::Instance()
{
    static ComponentProfile profile;
    return profile;
}

ComponentProfile::ComponentProfile() : BasicComponentProfile(componentId, "Linear Phase EQ")
{
    AddInterfaceProfile(&DocumentProfile::Instance());
    // The editor's profile goes here.
    AddInterfaceProfile(&AutomationProfile::Instance());
    AddInterfaceProfile(&MAFProfile::Instance());
}

}  // namespace OV::Comp::ModuleLinearPhaseEq
