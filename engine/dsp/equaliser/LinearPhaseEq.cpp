#include "engine/dsp/equaliser/LinearPhaseEq.h"

#include "engine/dsp/gain/GaindB.h"
#include "engine/dsp/gain/ModuleKD2.h"

namespace AudioEngine::VN4 {

using OutputGain = Application::KD2::ModuleKD2<GaindB<LinearPhaseEq::GainDescriptor>>;

LinearPhaseEq::LinearPhaseEq() : ModuleStructured(ModuleInfo{0, "LinearPhaseEq", ""}) {}

void LinearPhaseEq::CreateChildren()
{
    AddChild("ChainL", std::make_unique<LinearizedFilterChain>());
    AddChild("ChainR", std::make_unique<LinearizedFilterChain>());
    AddChild("OutputGainL", std::make_unique<OutputGain>());
    AddChild("OutputGainR", std::make_unique<OutputGain>());
    AddChild("OutputMeterL", std::make_unique<PeakMeter>());
    AddChild("OutputMeterR", std::make_unique<PeakMeter>());
    chainL = static_cast<LinearizedFilterChain*>(GetChild("ChainL"));
    chainR = static_cast<LinearizedFilterChain*>(GetChild("ChainR"));
    gainL = GetChild("OutputGainL");
    gainR = GetChild("OutputGainR");
    meterL = static_cast<PeakMeter*>(GetChild("OutputMeterL"));
    meterR = static_cast<PeakMeter*>(GetChild("OutputMeterR"));
}

void LinearPhaseEq::Process()
{
    LinearizedFilterChain::ProcessPair(*chainL, *chainR);
    gainL->Process();
    gainR->Process();
    PeakMeter::ProcessPair(*meterL, *meterR);
}

void LinearPhaseEq::CreateInputs()
{
    AddInput("InL");
    AddInput("InR");
}

void LinearPhaseEq::CreateOutputs()
{
    AddOutputHierarchic("OutL", GetChild("OutputGainL")->GetOutput("Out"));
    AddOutputHierarchic("OutR", GetChild("OutputGainR")->GetOutput("Out"));
}

void LinearPhaseEq::ConnectChildren()
{
    const auto connect = [this](const char* child, const char* input, AudioContainers::Port* source) {
        GetChild(child)->GetInput(input)->SetSource(source);
    };
    connect("ChainL", "In", GetInput("InL"));
    connect("ChainR", "In", GetInput("InR"));
    connect("OutputGainL", "In", GetChild("ChainL")->GetOutput("Out"));
    connect("OutputGainR", "In", GetChild("ChainR")->GetOutput("Out"));
    connect("OutputMeterL", "In", GetChild("OutputGainL")->GetOutput("Out"));
    connect("OutputMeterR", "In", GetChild("OutputGainR")->GetOutput("Out"));
}

void LinearPhaseEq::CreateParameters()
{
    Module& chainL = *GetChild("ChainL");
    Module& chainR = *GetChild("ChainR");
    Module& gainL = *GetChild("OutputGainL");
    Module& gainR = *GetChild("OutputGainR");
    for (const auto& entry : chainL.GetParameters()) {
        const std::string& name = entry.first;
        if (name == "Linearize") {
            AddParameter(std::make_unique<ParameterMultiLink>(std::vector<ParameterHandler*>{&chainL, &chainR}, name));
        } else if (name == "Process") {
            AddParameter(std::make_unique<ParameterMultiLink>(
                std::vector<ParameterHandler*>{&chainL, &chainR, &gainL, &gainR}, name));
        } else {
            AddParameter(std::make_unique<ParameterLinked>(chainL, name, name + "L"));
            AddParameter(std::make_unique<ParameterLinked>(chainR, name, name + "R"));
        }
    }
    AddDataBlock(std::make_unique<DataBlockLinked>(chainL, "ChainCoeffs", "ChainCoeffsL"));
    AddDataBlock(std::make_unique<DataBlockLinked>(chainR, "ChainCoeffs", "ChainCoeffsR"));
    AddParameter(std::make_unique<Parameter>("SampleRate", "", 0.0f, 192000.0f, 48000.0f,
                                             ParameterBase::OutputOnly | ParameterBase::Step));
    AddParameter(std::make_unique<ParameterLinked>(gainL, "Gain", "OutGainL"));
    AddParameter(std::make_unique<ParameterLinked>(gainR, "Gain", "OutGainR"));
    AddParameter(std::make_unique<ParameterLinked>(*GetChild("OutputMeterL"), "Level", "OutLevelL"));
    AddParameter(std::make_unique<ParameterLinked>(*GetChild("OutputMeterR"), "Level", "OutLevelR"));
}

void LinearPhaseEq::SampleRateChanged()
{
    ModuleStructured::SampleRateChanged();
    GetParameter("SampleRate")->SetValue(GetSampleRate());
}

}  // namespace AudioEngine::VN4
