#pragma once

#include "equaliser/VN4ModuleBaseMAFProfile.h"

namespace OV::Comp::ModuleLinearPhaseEq {

// The equaliser's engine bindings, on the engine module "LinearPhaseEQ". Only the two channel
// sets go down: the engine's "L" is always set 1 and its "R" set 2, in "L/R" and "M/S" alike.
// In order: `ChannelMode`; for band i = 0 to 5 and channel L, R: Active, Mode, Gain, F, Q_LPHP,
// Q_Peaking, Q_Shelving, named as "Gain_0L"; then OutGainL, OutGainR, the meters OutLevelL and
// OutLevelR (read from the engine into the transient rows), and Linearize.
//
// A process-wide singleton, built on first use (main thread); read-only after: any thread.
class MAFProfile : public VN4ModuleBase::MAFProfile {
public:
    static MAFProfile& Instance();

private:
    MAFProfile();
};

}  // namespace OV::Comp::ModuleLinearPhaseEq
