#pragma once

#include "engine/core/ModuleBasic.h"

namespace AudioEngine {

// A leaf of one channel: input "In", buffered output "Out", bound before the first block.
// Derived modules add their parameters and the sample work.
class ModuleMono : public ModuleBasic {
public:
    using ModuleBasic::ModuleBasic;

    void BindPorts() override
    {
        input = GetInput("In");
        output = GetOutput("Out");
    }

protected:
    void CreateInputs() override { AddInput("In"); }
    void CreateOutputsBuffered() override { AddOutputBuffered("Out"); }
    void CreateParameters() override {}

    AudioContainers::Input* input = nullptr;
    AudioContainers::Output* output = nullptr;
};

}  // namespace AudioEngine
