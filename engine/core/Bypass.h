#pragma once

#include "engine/core/ModuleBasic.h"

#include <algorithm>

namespace AudioEngine {

// Passes its input on: a copy, or in place a shared output over the input.
class Bypass : public ModuleBasic {
public:
    Bypass() : ModuleBasic(ModuleInfo{19, "Bypass", ""}) {}

    void BindPorts() override
    {
        input = GetInput("In");
        output = GetOutput("Out");
    }

protected:
    void CreateInputs() override { AddInput("In"); }
    void CreateOutputsBuffered() override { AddOutputBuffered("Out"); }
    void CreateOutputsInPlace() override { AddOutputShared("Out", "In"); }
    void CreateParameters() override {}
    void ProcessBlock() override
    {
        const float* in = input->GetBuffer();
        float* out = output->GetBuffer();
        if (in != out)
            std::copy(in, in + GetBlockSize(), out);
    }

private:
    AudioContainers::Input* input = nullptr;
    AudioContainers::Output* output = nullptr;
};

}  // namespace AudioEngine
