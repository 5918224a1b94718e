#include "engine/dsp/rate/LinearPhaseLowPass.h"

#include <cmath>

namespace AudioEngine {

namespace {

constexpr int defaultTaps = 256;
constexpr float defaultCutoff = 20600.0f;

}  // namespace

LinearPhaseLowPass::LinearPhaseLowPass()
    : ModuleBasic(ModuleInfo{18, "LinearPhaseLowPass", "LinearPhase LP filter"}),
      kernel(defaultTaps, defaultCutoff, 44100.0)
{
}

void LinearPhaseLowPass::CreateParameters()
{
    AddParameter(std::make_unique<Parameter>("ReferencePoints", "", 128.0f, 4096.0f, static_cast<float>(defaultTaps),
                                             ParameterBase::Step));
    AddParameter(std::make_unique<Parameter>("Fcut", "", 20.0f, 96000.0f, defaultCutoff, ParameterBase::Step));
}

void LinearPhaseLowPass::BindPorts()
{
    input = GetInput("In");
    output = GetOutput("Out");
}

void LinearPhaseLowPass::SetParameter(const std::string& name, float value)
{
    ModuleBasic::SetParameter(name, value);
    const float cutoff = GetParameter("Fcut")->GetValue();
    if (name == "ReferencePoints") {
        const int taps = 1 << static_cast<int>(std::log2(GetParameter(name)->GetValue()));
        if (taps != bandLimit) {
            bandLimit = taps;
            kernel.Build(taps, cutoff, kernel.GetSampleRate());
        }
    } else if (name == "Fcut") {
        kernel.Build(bandLimit, cutoff, kernel.GetSampleRate());
    }
}

void LinearPhaseLowPass::SampleRateChanged()
{
    kernel.Build(bandLimit, GetParameter("Fcut")->GetValue(), GetSampleRate());
}

void LinearPhaseLowPassVN4::SampleRateChanged()
{
    kernel.Build(defaultTaps, defaultCutoff, GetSampleRate());
}

}  // namespace AudioEngine
