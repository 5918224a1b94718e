#pragma once

#include "engine/core/ModuleMono.h"

#include <algorithm>

namespace AudioEngine {

// Passes its input on: a copy, or in place a shared output over the input.
class Bypass : public ModuleMono {
public:
    Bypass() : ModuleMono(ModuleInfo{19, "Bypass", ""}) {}

protected:
    void CreateOutputsInPlace() override { AddOutputShared("Out", "In"); }
    void ProcessBlock() override
    {
        const float* in = input->GetBuffer();
        float* out = output->GetBuffer();
        if (in != out)
            std::copy(in, in + GetBlockSize(), out);
    }
};

}  // namespace AudioEngine
