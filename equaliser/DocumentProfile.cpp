#include "equaliser/DocumentProfile.h"

#include "docview/datafilter/FloatConverter.h"
#include "docview/datafilter/FloatRange.h"

#include <string>

namespace OV::Comp::ModuleLinearPhaseEq {

using CFW::DataFilter::MakeRange;
using CFW::DocView::ParameterInfo;

namespace {

struct SetDeclaration {
    const char* prefix;
    std::uint32_t flags;
};

// The view and the linked set are derived from the channels: neither saved nor reset.
constexpr SetDeclaration sets[4] = {
    {"", ParameterInfo::NoDefault},
    {"LM_", ParameterInfo::Serializable},
    {"RS_", ParameterInfo::Serializable},
    {"Linked_", ParameterInfo::NoDefault},
};

struct BandDefaults {
    std::uint32_t mode;
    float hz;
    float q; // both Q_Peaking and Q_Shelving
};

// Band 6 sits at 3000 Hz as a high shelf with Q 0.25, as intended.
constexpr BandDefaults bandDefaults[DocumentProfile::bandCount] = {
    {1, 130.0f, 1.0f}, {2, 250.0f, 0.7f}, {2, 1000.0f, 0.7f}, {2, 3000.0f, 0.7f}, {2, 7000.0f, 0.7f}, {3, 3000.0f, 0.25f},
};

const std::vector<std::string> modeNames = {"HighPass", "LowShelf", "Peaking", "HighShelf", "LowPass"};

}  // namespace

DocumentProfile& DocumentProfile::Instance()
{
    static DocumentProfile profile;
    return profile;
}

DocumentProfile::DocumentProfile() : VN4ModuleBase::DocumentProfile(FirstChannelRow, LastChannelRow)
{
    const auto hzConverter = CFW::DataFilter::MakePowNorm(3.0f, 10.0f, 20000.0f);
    const auto qPeakingConverter = CFW::DataFilter::MakeLogNorm(0.2f, 20.0f);
    const auto qShelvingConverter = CFW::DataFilter::MakeLogNorm(0.2f, 3.0f);
    const auto gainRange = MakeRange(-15.0f, 15.0f);
    const auto resonanceRange = MakeRange(0.3f, 2.0f);
    const auto hzRange = MakeRange(10.0f, 20000.0f);
    const auto qPeakingRange = MakeRange(0.2f, 20.0f);
    const auto qShelvingRange = MakeRange(0.2f, 3.0f);

    SetParameter(CurrentChannel, ParameterInfo::MakeEnum("CurrentChannel", {"L|M", "=", "R|S"}, ViewBoth,
                                                         ParameterInfo::Serializable));
    SetParameter(ChannelMode, ParameterInfo::MakeEnum("ChannelMode", {"L/R", "M/S"}, 0, ParameterInfo::Serializable));

    for (int set = Current; set <= Linked; ++set) {
        const std::string prefix = sets[set].prefix;
        const std::uint32_t flags = sets[set].flags;
        for (int band = 0; band < bandCount; ++band) {
            const std::string name = prefix + "Band" + std::to_string(band + 1);
            const BandDefaults& defaults = bandDefaults[band];
            SetParameter(BandRow(set, band, Gain), ParameterInfo::MakeFloat(name + "Gain", 0.0f, *gainRange, flags));
            SetParameter(BandRow(set, band, Resonance),
                         ParameterInfo::MakeFloat(name + "Resonance", 0.7f, *resonanceRange, flags));
            SetParameter(BandRow(set, band, Mode), ParameterInfo::MakeEnum(name + "Mode", modeNames, defaults.mode, flags));
            SetParameter(BandRow(set, band, Active), ParameterInfo::MakeBool(name + "Active", false, flags));
            SetParameter(BandRow(set, band, Hz),
                         ParameterInfo::MakeFloat(name + "Hz", defaults.hz, *hzRange, *hzConverter, flags));
            SetParameter(BandRow(set, band, QPeaking),
                         ParameterInfo::MakeFloat(name + "Q_Peaking", defaults.q, *qPeakingRange, *qPeakingConverter, flags));
            SetParameter(BandRow(set, band, QShelving), ParameterInfo::MakeFloat(name + "Q_Shelving", defaults.q,
                                                                                 *qShelvingRange, *qShelvingConverter, flags));
        }
        SetParameter(OutputLevel + setSize * set, ParameterInfo::MakeFloat(prefix + "OutputLevel", 0.0f, *gainRange, flags));
    }

    SetParameter(LinearPhase, ParameterInfo::MakeBool("LinearPhase", true, ParameterInfo::Serializable));
    SetParameter(Oversample, ParameterInfo::MakeEnum("Oversample", {"Off", "2x"}, 1, 0));
    SetParameter(LatencyLevel, ParameterInfo::MakeEnum("Main.LatencyLevel", {"Low", "Mid", "High"}, LatencyLow,
                                                       ParameterInfo::Preference));
    const auto meterRange = MakeRange(0.0f, 100000.0f);
    const auto meterConverter = CFW::DataFilter::MakedB();
    SetParameter(OutputMeterL, ParameterInfo::MakeFloat("OutputMeterL", 0.0f, *meterRange, *meterConverter, ParameterInfo::Transient));
    SetParameter(OutputMeterR, ParameterInfo::MakeFloat("OutputMeterR", 0.0f, *meterRange, *meterConverter, ParameterInfo::Transient));
}

}  // namespace OV::Comp::ModuleLinearPhaseEq
