#pragma once

#include "engine/core/ModuleMono.h"

namespace AudioEngine::MultiRate {

// Up by Factor: each input sample, times Factor to keep the level, then Factor - 1 zeros. Its
// block size is the high rate's.
template <int Factor>
class ZeroPadder : public ModuleMono {
public:
    ZeroPadder() : ModuleMono(ModuleInfo{18, "ZeroPadder", ""}) {}

protected:
    void ProcessBlock() override
    {
        const float* in = input->GetBuffer();
        float* out = output->GetBuffer();
        const int count = GetBlockSize() / Factor;
        for (int i = 0; i < count; ++i) {
            out[Factor * i] = in[i] * static_cast<float>(Factor);
            for (int k = 1; k < Factor; ++k)
                out[Factor * i + k] = 0.0f;
        }
    }
};

// Down by Factor: every Factor-th sample; the filter before it ran at the high rate.
template <int Factor>
class Decimator : public ModuleMono {
public:
    Decimator() : ModuleMono(ModuleInfo{0, "Decimator", ""}) {}

protected:
    void ProcessBlock() override
    {
        const float* in = input->GetBuffer();
        float* out = output->GetBuffer();
        const int count = GetBlockSize() / Factor;
        for (int i = 0; i < count; ++i)
            out[i] = in[Factor * i];
    }
};

}  // namespace AudioEngine::MultiRate
