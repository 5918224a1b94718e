#include "equaliser/AutomationProfile.h"

#include "equaliser/DocumentProfile.h"

#include <string>

namespace OV::Comp::ModuleLinearPhaseEq {

using Rows = DocumentProfile;

namespace {

constexpr int precision = 2;
const std::string noUnit;

}  // namespace

AutomationProfile& AutomationProfile::Instance()
{
    static AutomationProfile profile;
    return profile;
}

AutomationProfile::AutomationProfile() : VN4ModuleBase::AutomationProfile("Linear Phase EQ")
{
    for (int band = 0; band < Rows::bandCount; ++band) {
        const std::string prefix = "Band " + std::to_string(band + 1) + " ";
        AddFloat(Rows::BandRow(Rows::Linked, band, Rows::Gain), prefix + "Gain", precision, noUnit);
        AddFloat(Rows::BandRow(Rows::Linked, band, Rows::Resonance), prefix + "LP/HP Resonance", precision, noUnit);
        AddSwitch(Rows::BandRow(Rows::Linked, band, Rows::Active), prefix + "Active", "Off", "On");
        AddFloat(Rows::BandRow(Rows::Linked, band, Rows::Hz), prefix + "Freq", precision, noUnit);
        AddFloat(Rows::BandRow(Rows::Linked, band, Rows::QPeaking), prefix + "Q (Peaking)", precision, noUnit);
        AddFloat(Rows::BandRow(Rows::Linked, band, Rows::QShelving), prefix + "Q (Shelving)", precision, noUnit);
    }
    AddFloat(Rows::LinkedOutputLevel, "OutputLevel", precision, noUnit);
}

}  // namespace OV::Comp::ModuleLinearPhaseEq
