#pragma once

#include "engine/core/ModuleBasic.h"
#include "engine/dsp/convolution/LowPassKernel.h"

namespace AudioEngine {

// A linear-phase FIR low pass of "ReferencePoints" taps (a power of two) at "Fcut" Hz; its
// delay is half its taps. A change of either rebuilds the filter, which allocates: set-up only.
class LinearPhaseLowPass : public ModuleBasic {
public:
    LinearPhaseLowPass();

    void SetParameter(const std::string& name, float value) override;
    // Rebuilds from the parameters at the running rate.
    void SampleRateChanged() override;
    void Reset() override { kernel.Reset(); }
    void BindPorts() override;

protected:
    void CreateInputs() override { AddInput("In"); }
    void CreateOutputsBuffered() override { AddOutputBuffered("Out"); }
    void CreateParameters() override;
    void ProcessBlock() override { kernel.Process(output->GetBuffer(), input->GetBuffer(), GetBlockSize()); }

    Convolution::LowPassKernel kernel;

private:
    int bandLimit = 256; // the last tap count seen
    AudioContainers::Input* input = nullptr;
    AudioContainers::Output* output = nullptr;
};

// The converters' filter: 256 taps at 20600 Hz whatever the parameters say; only the rate
// follows the environment.
class LinearPhaseLowPassVN4 : public LinearPhaseLowPass {
public:
    void SampleRateChanged() override;
};

}  // namespace AudioEngine
