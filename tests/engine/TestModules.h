#pragma once

// Small modules for the engine's tests.
#include "engine/core/ModuleBasic.h"
#include "engine/core/ModuleStructured.h"
#include "tests/engine/dsp/EngineRunner.h"

#include <array>
#include <cstring>

namespace OV::Testing {

using AudioEngine::ModuleInfo;
using AudioEngine::Parameter;
using AudioEngine::ParameterBase;

// Stereo: OutL = InL * Scale, OutR = InR * Scale. Remembers the sizes of the blocks it ran,
// the parameter writes it saw and its resets, in fixed arrays so that running allocates
// nothing.
class StereoScale : public AudioEngine::ModuleBasic {
public:
    static constexpr int logSize = 4096;

    StereoScale() : ModuleBasic(ModuleInfo{0, "StereoScale", "test"}) {}

    void SetParameter(const std::string& name, float value) override
    {
        ModuleBasic::SetParameter(name, value);
        if (writes < logSize) {
            std::strncpy(writeNames[static_cast<std::size_t>(writes)].data(), name.c_str(), 31);
            writeValues[static_cast<std::size_t>(writes)] = value;
        }
        ++writes;
    }
    void Reset() override { ++resets; }

    std::string WriteName(int index) const { return writeNames[static_cast<std::size_t>(index)].data(); }
    std::vector<int> Blocks(int from = 0) const { return {blocks.begin() + from, blocks.begin() + std::min(blockCount, logSize)}; }

    std::array<int, logSize> blocks{};
    int blockCount = 0;
    std::array<std::array<char, 32>, logSize> writeNames{};
    std::array<float, logSize> writeValues{};
    int writes = 0;
    int resets = 0;

protected:
    void CreateInputs() override { AddInput("InL"); AddInput("InR"); }
    void CreateOutputsBuffered() override { AddOutputBuffered("OutL"); AddOutputBuffered("OutR"); }
    void CreateParameters() override
    {
        AddParameter(std::make_unique<Parameter>("Scale", "", -4.0f, 4.0f, 1.0f, ParameterBase::Step));
        AddParameter(std::make_unique<Parameter>("Gain", "", -15.0f, 15.0f, 0.0f, 0u));
        AddParameter(std::make_unique<Parameter>("Mode", "", std::vector<std::string>{"A", "B", "C"}, "A", 0u));
        AddParameter(std::make_unique<Parameter>("Level", "", 0.0f, 10.0f, 0.0f, ParameterBase::OutputOnly));
        AddParameter(std::make_unique<Parameter>("Fence", "", 0.0f, 10.0f, 0.0f,
                                                 ParameterBase::Barrier | ParameterBase::Step));
    }
    void BindPorts() override
    {
        inL = GetInput("InL");
        inR = GetInput("InR");
        outL = GetOutput("OutL");
        outR = GetOutput("OutR");
        scale = GetParameter("Scale");
    }
    void ProcessBlock() override
    {
        const int n = GetBlockSize();
        if (blockCount < logSize)
            blocks[static_cast<std::size_t>(blockCount)] = n;
        ++blockCount;
        const float s = scale->GetValue();
        const float *l = inL->GetBuffer(), *r = inR->GetBuffer();
        float *ol = outL->GetBuffer(), *orr = outR->GetBuffer();
        for (int i = 0; i < n; ++i) {
            ol[i] = l[i] * s;
            orr[i] = r[i] * s;
        }
    }

    AudioEngine::AudioContainers::Input* inL = nullptr;
    AudioEngine::AudioContainers::Input* inR = nullptr;
    AudioEngine::AudioContainers::Output* outL = nullptr;
    AudioEngine::AudioContainers::Output* outR = nullptr;
    ParameterBase* scale = nullptr;
};

using StereoScaleTraits = RootTraits<StereoScale>;
using ScaleRunner = EngineRunner<StereoScale>;

}  // namespace OV::Testing
