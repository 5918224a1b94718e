#pragma once

#include "engine/core/ModuleStructured.h"

namespace AudioEngine {

// Tells its one child "Module" a rate and block size 2^ratio times the real ones, so that the
// child runs oversampled without knowing. With ratio 0 it is transparent.
template <typename T, int Ratio>
class ModuleDeceived : public ModuleStructured {
public:
    ModuleDeceived() : ModuleStructured(ModuleInfo{0, "ModuleDeceived", ""}) {}

    void SetParameter(const std::string& name, float value) override
    {
        ModuleStructured::SetParameter(name, value);
        if (name == "DeceiveRatio")
            ratio = static_cast<int>(GetParameter(name)->GetValue());
    }

    int GetMaxBlockSize() const override { return parent->GetMaxBlockSize() << ratio; }
    int GetBlockSize() const override { return parent->GetBlockSize() << ratio; }
    float GetSampleRate() const override { return parent->GetSampleRate() * static_cast<float>(1 << ratio); }

    T& GetModule() const { return static_cast<T&>(*GetChild("Module")); }

protected:
    void CreateChildren() override { AddChild("Module", std::make_unique<T>()); }
    void CreateInputs() override
    {
        for (const auto& entry : GetModule().GetInputs())
            AddInput(entry.first, entry.second->GetDescription());
    }
    void CreateOutputs() override
    {
        for (const auto& entry : GetModule().GetOutputs())
            AddOutputHierarchic(entry.first, entry.second.get());
    }
    void CreateParameters() override
    {
        LinkChildEntries(GetModule());
        AddParameter(std::make_unique<Parameter>("DeceiveRatio", "", 0.0f, static_cast<float>(Ratio),
                                                 static_cast<float>(Ratio), ParameterBase::Step));
    }

private:
    int ratio = Ratio;
};

}  // namespace AudioEngine
