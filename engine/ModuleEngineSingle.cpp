#include "engine/ModuleEngineSingle.h"

namespace AudioEngine::VN4 {

namespace {

const std::string oversample = "Oversample";
const std::string delaySamples = "DelaySamples";

bool Starts(const std::string& name, const char* prefix)
{
    return name.compare(0, std::char_traits<char>::length(prefix), prefix) == 0;
}

}  // namespace

const LatencyInfo& EffectLatency()
{
    static const LatencyInfoLinearPhaseEq latency(true, 0);
    return latency;
}

ModuleEngineSingle::ModuleEngineSingle() : ModuleStructured(ModuleInfo{0, "VN4", "VN4 DSP ModuleEngineSingle"}) {}

void ModuleEngineSingle::CreateChildren()
{
    AddChild("Module", std::make_unique<Effect>());
}

void ModuleEngineSingle::CreateInputs()
{
    AddInput("InL");
    AddInput("InR");
}

void ModuleEngineSingle::CreateOutputs()
{
    AddOutputHierarchic("OutL", GetChild("Module")->GetOutput("OutL"));
    AddOutputHierarchic("OutR", GetChild("Module")->GetOutput("OutR"));
}

void ModuleEngineSingle::CreateParameters()
{
    ModuleStructured::CreateParameters();
    globalOversample = &AddParameter(std::make_unique<Parameter>(
        "GlobalOversample", "", std::vector<std::string>{"Off", "2X"}, "Off", 0));
    padLatency = &AddParameter(std::make_unique<Parameter>("PadLatency", "", 0.0f, 40000.0f, 0.0f, ParameterBase::Step));
}

void ModuleEngineSingle::SetParameter(const std::string& name, float value)
{
    ModuleStructured::SetParameter(name, value);
    if (name == "GlobalOversample") {
        DecideOversampling();
        UpdateLatency();
    } else if (name == "PadLatency" || Starts(name, "Process") || Starts(name, "Linearize")) {
        UpdateLatency();
    }
}

void ModuleEngineSingle::SampleRateChanged()
{
    ModuleStructured::SampleRateChanged();
    DecideOversampling();
    UpdateLatency();
}

void ModuleEngineSingle::DecideOversampling()
{
    float ratio = globalOversample->GetValue();
    if (GetSampleRate() > 48000.0f)
        ratio = 0.0f;
    Module& effect = *GetChild("Module");
    if (effect.GetParameter(oversample) != nullptr)
        effect.SetParameter(oversample, ratio);
}

void ModuleEngineSingle::UpdateLatency()
{
    Module& effect = *GetChild("Module");
    const LatencyInfo& info = EffectLatency();
    unsigned latency = info.GetLatency(effect);
    if (GetSampleRate() <= 48000.0f && globalOversample->GetValue() != 0.0f && info.HalvesUnderOversampling())
        latency = ((latency + 1) >> 1) + 128;
    const unsigned pad = static_cast<unsigned>(padLatency->GetValue() + 0.5f);
    const unsigned delay = pad > latency ? pad - latency : 0u;
    effect.SetParameter(delaySamples, static_cast<float>(delay));
}

}  // namespace AudioEngine::VN4
