#pragma once

#include "engine/core/ModuleStructured.h"
#include "engine/dsp/equaliser/MidSide.h"
#include "engine/dsp/latency/LatencyInfo.h"
#include "engine/dsp/latency/LatentModule.h"
#include "engine/dsp/rate/ModuleOversampled.h"

namespace AudioEngine::VN4 {

// The root of the engine: one stereo effect behind a latency pad, with a global oversampling
// switch.
//   InL/InR -> DelayL/DelayR -> Up -> mid-side encode -> chains -> gains (meters tap) ->
//   mid-side decode -> Down -> OutL/OutR
// Every name of the effect is exported as "<name>_Module"; "GlobalOversample" and
// "PadLatency" are the root's own.
class ModuleEngineSingle : public ModuleStructured {
public:
    using Effect = LatentModule<ModuleOversampled<MidSide<LinearPhaseEq>, 1, 1>, 40000, 0>;

    ModuleEngineSingle();

    // After the link has run: the oversampling decision on "GlobalOversample", the latency pad
    // on it, on "PadLatency" and on names beginning "Process" or "Linearize".
    void SetParameter(const std::string& name, float value) override;
    void SampleRateChanged() override;

    Effect& GetEffect() const { return static_cast<Effect&>(*GetChild("Module")); }

protected:
    void CreateChildren() override;
    void CreateInputs() override;
    void CreateOutputs() override;
    void CreateParameters() override;

private:
    // At rates above 48 kHz oversampling is off whatever the switch says.
    void DecideOversampling();
    // Sets the pad so that the latency is at least "PadLatency".
    void UpdateLatency();

    ParameterBase* globalOversample = nullptr;
    ParameterBase* padLatency = nullptr;
};

// The product's latency figures for its effect.
const LatencyInfo& EffectLatency();

}  // namespace AudioEngine::VN4
