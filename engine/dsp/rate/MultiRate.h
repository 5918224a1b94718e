#pragma once

#include "engine/core/ModuleBasic.h"

namespace AudioEngine::MultiRate {

// Up by Factor: each input sample, times Factor to keep the level, then Factor - 1 zeros. Its
// block size is the high rate's.
template <int Factor>
class ZeroPadder : public ModuleBasic {
public:
    ZeroPadder() : ModuleBasic(ModuleInfo{18, "ZeroPadder", ""}) {}

    void BindPorts() override
    {
        input = GetInput("In");
        output = GetOutput("Out");
    }

protected:
    void CreateInputs() override { AddInput("In"); }
    void CreateOutputsBuffered() override { AddOutputBuffered("Out"); }
    void CreateParameters() override {}
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

private:
    AudioContainers::Input* input = nullptr;
    AudioContainers::Output* output = nullptr;
};

// Down by Factor: every Factor-th sample; the filter before it ran at the high rate.
template <int Factor>
class Decimator : public ModuleBasic {
public:
    Decimator() : ModuleBasic(ModuleInfo{0, "Decimator", ""}) {}

    void BindPorts() override
    {
        input = GetInput("In");
        output = GetOutput("Out");
    }

protected:
    void CreateInputs() override { AddInput("In"); }
    void CreateOutputsBuffered() override { AddOutputBuffered("Out"); }
    void CreateParameters() override {}
    void ProcessBlock() override
    {
        const float* in = input->GetBuffer();
        float* out = output->GetBuffer();
        const int count = GetBlockSize() / Factor;
        for (int i = 0; i < count; ++i)
            out[i] = in[Factor * i];
    }

private:
    AudioContainers::Input* input = nullptr;
    AudioContainers::Output* output = nullptr;
};

}  // namespace AudioEngine::MultiRate
