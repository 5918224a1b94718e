#pragma once

#include "engine/core/ModuleMono.h"
#include "engine/dsp/equaliser/FilterBiquad.h"

#include <cmath>

namespace AudioEngine {

namespace GaindBDetails {

// "Gain" in dB over the descriptor's range.
template <typename GainDescriptor>
class Parameter : public AudioEngine::Parameter {
public:
    Parameter()
        : AudioEngine::Parameter("Gain", "", GainDescriptor::minimum, GainDescriptor::maximum,
                                 GainDescriptor::defaultValue, GainDescriptor::flags)
    {
    }
};

}  // namespace GaindBDetails

// A gain in dB, constant over a block.
template <typename GainDescriptor>
class GaindB : public ModuleMono {
public:
    GaindB() : ModuleMono(ModuleInfo{0, "GaindB", ""}) {}

    void BindPorts() override
    {
        ModuleMono::BindPorts();
        gain = GetParameter("Gain");
    }

protected:
    void CreateParameters() override { AddParameter(std::make_unique<GaindBDetails::Parameter<GainDescriptor>>()); }

    // out = g * in, with g = 10^(Gain * 0.05) once per block; denormals in and out become +0.
    void ProcessBlock() override
    {
        using AudioAlgorithm::Biquad;
        const double exponent = static_cast<double>(gain->GetValue()) * static_cast<double>(0.05f);
        const float g = Biquad::FlushFloat(static_cast<float>(std::pow(10.0, exponent)));
        const float* in = input->GetBuffer();
        float* out = output->GetBuffer();
        const int count = GetBlockSize();
        for (int i = 0; i < count; ++i)
            out[i] = g * Biquad::FlushFloat(in[i]);
    }

private:
    ParameterBase* gain = nullptr;
};

}  // namespace AudioEngine
