#pragma once

#include "engine/core/ModuleStructured.h"
#include "engine/dsp/latency/DelayLine.h"

namespace AudioEngine {

// A stereo module M behind two delay lines, so that the host can be given a latency of its
// choosing: InL -> DelayL -> M.InL, InR -> DelayR -> M.InR, M.OutL -> OutL, M.OutR -> OutR.
template <typename M, int MaxDelay, int Flags>
class LatentModule : public ModuleStructured {
public:
    LatentModule() : ModuleStructured(ModuleInfo{0, "LatentModule", ""}) {}

    M& GetModule() const { return static_cast<M&>(*GetChild("Module")); }

protected:
    void CreateChildren() override
    {
        AddChild("DelayL", std::make_unique<DelayLine<MaxDelay, Flags>>());
        AddChild("DelayR", std::make_unique<DelayLine<MaxDelay, Flags>>());
        AddChild("Module", std::make_unique<M>());
    }
    void CreateInputs() override
    {
        AddInput("InL");
        AddInput("InR");
    }
    void CreateOutputs() override
    {
        AddOutputHierarchic("OutL", GetChild("Module")->GetOutput("OutL"));
        AddOutputHierarchic("OutR", GetChild("Module")->GetOutput("OutR"));
    }
    void CreateParameters() override
    {
        AddParameter(std::make_unique<ParameterMultiLink>(
            std::vector<ParameterHandler*>{GetChild("DelayL"), GetChild("DelayR")}, "DelaySamples"));
        LinkChildEntries(*GetChild("Module"));
    }
    void ConnectChildren() override
    {
        GetChild("DelayL")->GetInput("In")->SetSource(GetInput("InL"));
        GetChild("DelayR")->GetInput("In")->SetSource(GetInput("InR"));
        GetChild("Module")->GetInput("InL")->SetSource(GetChild("DelayL")->GetOutput("Out"));
        GetChild("Module")->GetInput("InR")->SetSource(GetChild("DelayR")->GetOutput("Out"));
    }
};

}  // namespace AudioEngine
