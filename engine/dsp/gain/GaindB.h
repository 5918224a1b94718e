#pragma once

#include "engine/core/ModuleMono.h"
#include "engine/dsp/equaliser/FilterBiquad.h"

#include <cmath>
#include <limits>

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
        const float dB = gain->GetValue();
        if (dB != factorFor) { // worked out again only when the gain moves
            const double exponent = static_cast<double>(dB) * static_cast<double>(0.05f);
            factor = Biquad::FlushFloat(static_cast<float>(std::pow(10.0, exponent)));
            factorFor = dB;
        }
        const float g = factor;
        const float* in = input->GetBuffer();
        float* out = output->GetBuffer();
        const int count = GetBlockSize();
        const __m128 scale = _mm_set1_ps(g);
        int i = 0;
        for (; i + 4 <= count; i += 4)
            _mm_storeu_ps(out + i, _mm_mul_ps(scale, Biquad::FlushFloats(_mm_loadu_ps(in + i))));
        for (; i < count; ++i)
            out[i] = g * Biquad::FlushFloat(in[i]);
    }

private:
    ParameterBase* gain = nullptr;
    float factorFor = std::numeric_limits<float>::quiet_NaN(); // the gain, dB, `factor` is for
    float factor = 1.0f;
};

}  // namespace AudioEngine
