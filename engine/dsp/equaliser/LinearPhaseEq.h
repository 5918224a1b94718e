#pragma once

#include "engine/core/ModuleStructured.h"
#include "engine/dsp/equaliser/LinearizedFilterChain.h"
#include "engine/dsp/meter/Meter.h"

namespace AudioEngine::VN4 {

// The stereo equaliser: a filter chain, an output gain and a meter per channel.
//   InL -> ChainL -> OutputGainL -> OutL (OutputMeterL taps OutputGainL)
//   InR -> ChainR -> OutputGainR -> OutR (OutputMeterR taps OutputGainR)
// Exports each band setting X of the chains as XL and XR; "Linearize" and "Process" drive both
// channels.
class LinearPhaseEq : public ModuleStructured {
public:
    // The output gain's range: -15 to 15 dB, no flags, so the queue glides it.
    struct GainDescriptor {
        static constexpr float minimum = -15.0f;
        static constexpr float maximum = 15.0f;
        static constexpr float defaultValue = 0.0f;
        static constexpr unsigned flags = 0;
    };

    LinearPhaseEq();

    // Both chains in one pass, the gains, then both meters in one pass.
    void Process() override;
    // Forwards, then publishes the running rate as "SampleRate".
    void SampleRateChanged() override;

protected:
    void CreateChildren() override;
    void CreateInputs() override;
    void CreateOutputs() override;
    void CreateParameters() override;
    void ConnectChildren() override;

private:
    LinearizedFilterChain* chainL = nullptr;
    LinearizedFilterChain* chainR = nullptr;
    Module* gainL = nullptr;
    Module* gainR = nullptr;
    PeakMeter* meterL = nullptr;
    PeakMeter* meterR = nullptr;
};

}  // namespace AudioEngine::VN4
