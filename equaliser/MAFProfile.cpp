#include "equaliser/MAFProfile.h"

#include "equaliser/DocumentProfile.h"

#include <string>

namespace OV::Comp::ModuleLinearPhaseEq {

using Rows = DocumentProfile;

MAFProfile& MAFProfile::Instance()
{
    static MAFProfile profile;
    return profile;
}

MAFProfile::MAFProfile() : VN4ModuleBase::MAFProfile("LinearPhaseEQ")
{
    AddIndex(Rows::ChannelMode, "ChannelMode");
    for (int band = 0; band < Rows::bandCount; ++band) {
        for (int channel = 0; channel < 2; ++channel) {
            const int set = channel == 0 ? Rows::LeftMid : Rows::RightSide;
            const std::string suffix = "_" + std::to_string(band) + (channel == 0 ? "L" : "R");
            AddIndex(Rows::BandRow(set, band, Rows::Active), "Active" + suffix);
            AddIndex(Rows::BandRow(set, band, Rows::Mode), "Mode" + suffix);
            AddFloat(Rows::BandRow(set, band, Rows::Gain), "Gain" + suffix);
            AddFloat(Rows::BandRow(set, band, Rows::Hz), "F" + suffix);
            AddFloat(Rows::BandRow(set, band, Rows::Resonance), "Q_LPHP" + suffix);
            AddFloat(Rows::BandRow(set, band, Rows::QPeaking), "Q_Peaking" + suffix);
            AddFloat(Rows::BandRow(set, band, Rows::QShelving), "Q_Shelving" + suffix);
        }
    }
    AddFloat(Rows::OutputLevel + Rows::setSize * Rows::LeftMid, "OutGainL");
    AddFloat(Rows::OutputLevel + Rows::setSize * Rows::RightSide, "OutGainR");
    AddFloat(Rows::OutputMeterL, "OutLevelL");
    AddFloat(Rows::OutputMeterR, "OutLevelR");
    AddBool(Rows::LinearPhase, "Linearize");
}

}  // namespace OV::Comp::ModuleLinearPhaseEq
