#pragma once

#include "engine/core/ModuleStructured.h"
#include "engine/dsp/equaliser/LinearizedFilterChain.h"

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

    // Forwards, then publishes the running rate as "SampleRate".
    void SampleRateChanged() override;

protected:
    void CreateChildren() override;
    void CreateInputs() override;
    void CreateOutputs() override;
    void CreateParameters() override;
    void ConnectChildren() override;
};

}  // namespace AudioEngine::VN4
