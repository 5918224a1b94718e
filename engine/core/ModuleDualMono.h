#pragma once

#include "engine/core/ModuleStructured.h"

namespace AudioEngine {

namespace ModuleDualMonoDetails {

// Each parameter of the left child becomes one name over both children.
struct LinkParameter {};

}  // namespace ModuleDualMonoDetails

// A stereo pair of mono modules "L" and "R": InL -> L.In -> L.Out -> OutL, the same for R.
template <typename T, typename LinkPolicy>
class ModuleDualMono : public ModuleStructured {
public:
    ModuleDualMono() : ModuleStructured(ModuleInfo{0, "ModuleDualMono", ""}) {}

protected:
    void CreateChildren() override
    {
        AddChild("L", std::make_unique<T>());
        AddChild("R", std::make_unique<T>());
    }
    void CreateInputs() override
    {
        AddInput("InL");
        AddInput("InR");
    }
    void CreateOutputs() override
    {
        AddOutputHierarchic("OutL", GetChild("L")->GetOutput("Out"));
        AddOutputHierarchic("OutR", GetChild("R")->GetOutput("Out"));
    }
    void CreateParameters() override
    {
        Module& left = *GetChild("L");
        Module& right = *GetChild("R");
        for (const auto& entry : left.GetParameters())
            AddParameter(std::make_unique<ParameterMultiLink>(std::vector<ParameterHandler*>{&left, &right}, entry.first));
    }
    void ConnectChildren() override
    {
        GetChild("L")->GetInput("In")->SetSource(GetInput("InL"));
        GetChild("R")->GetInput("In")->SetSource(GetInput("InR"));
    }
};

}  // namespace AudioEngine
