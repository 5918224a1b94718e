#pragma once

#include "equaliser/VN4ModuleBaseDocumentProfile.h"

namespace OV::Comp::ModuleLinearPhaseEq {

// The equaliser's 180 rows. Six bands of seven parameters and an output level make a set of
// 43 rows; there are four sets: the one on view (rows 3 to 45), left or mid (46 to 88), right
// or side (89 to 131), and the linked one the host automates (132 to 174). A row plus 43, 86,
// 129 is the same parameter in sets 1, 2, 3.
//
// A process-wide singleton, built on first use (main thread); read-only after: any thread.
class DocumentProfile : public VN4ModuleBase::DocumentProfile {
public:
    // Sets, as `CurrentChannel` and the row arithmetic count them.
    enum Set { Current = 0, LeftMid = 1, RightSide = 2, Linked = 3 };
    // A band parameter's offset within its band.
    enum BandParameter { Gain = 3, Resonance = 4, Mode = 5, Active = 6, Hz = 7, QPeaking = 8, QShelving = 9 };
    enum Row {
        CurrentChannel = 1, // "L|M", "=", "R|S"
        ChannelMode = 2,    // "L/R", "M/S"
        FirstChannelRow = 3,
        OutputLevel = 45,
        LastChannelRow = 45,
        LinkedOutputLevel = 174,
        LinearPhase = 175,
        Oversample = 176,   // inert
        LatencyLevel = 177, // "Low", "Mid", "High"; the preference "Main.LatencyLevel"
        OutputMeterL = 178,
        OutputMeterR = 179,
    };
    enum ChannelView { ViewLeftMid = 0, ViewBoth = 1, ViewRightSide = 2 };
    enum Latency { LatencyLow = 0, LatencyMid = 1, LatencyHigh = 2 };

    static constexpr int bandCount = 6;
    static constexpr int setSize = 43;
    static constexpr int parameterCount = 180;

    static DocumentProfile& Instance();

    // The row of band `band` (0 to 5), parameter `parameter`, in set `set`.
    static constexpr int BandRow(int set, int band, int parameter) { return setSize * set + 7 * band + parameter; }

private:
    DocumentProfile();
};

}  // namespace OV::Comp::ModuleLinearPhaseEq
