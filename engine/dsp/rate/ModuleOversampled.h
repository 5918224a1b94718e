#pragma once

#include "engine/core/Bypass.h"
#include "engine/core/ModuleDeceived.h"
#include "engine/core/ModuleDualMono.h"
#include "engine/core/ModuleSelector.h"
#include "engine/dsp/rate/LinearPhaseLowPass.h"
#include "engine/dsp/rate/MultiRate.h"
#include "engine/dsp/rate/RateConverter.h"

namespace AudioEngine {

namespace Oversample::Details {

// The two ways through one converter position: "0" passes at the host rate, "1" converts by 2.
// Up and Down differ only in the direction of the conversion.
template <int A, int B, int Up, int D>
class ResamplerSet : public ModuleSelectorDetails::ModuleCreators {
    using Pass = ModuleDeceived<ModuleDualMono<Bypass, ModuleDualMonoDetails::LinkParameter>, 1>;
    using Stage = std::conditional_t<Up != 0,
                                     RateConverterStageUp<MultiRate::ZeroPadder<2>, LinearPhaseLowPassVN4>,
                                     RateConverterStageDown<MultiRate::Decimator<2>, LinearPhaseLowPassVN4>>;
    using Convert = ModuleDeceived<ModuleDualMono<RateConverterChain<Stage, 1>, ModuleDualMonoDetails::LinkParameter>, 1>;

public:
    ResamplerSet()
    {
        Add("0", std::make_unique<ModuleSelectorDetails::ModuleCreator<Pass>>());
        Add("1", std::make_unique<ModuleSelectorDetails::ModuleCreator<Convert>>());
    }
};

}  // namespace Oversample::Details

// Runs M at twice the host rate when "Oversample" is 1: up-conversion, M deceived about its
// rate and block, down-conversion. At 0 all three pass at the host rate.
template <typename M, int A, int B>
class ModuleOversampled : public ModuleStructured {
    using Up = ModuleSelector<Oversample::Details::ResamplerSet<1, 1, 1, 1>>;
    using Down = ModuleSelector<Oversample::Details::ResamplerSet<1, 1, 0, 1>>;
    using Deceived = ModuleDeceived<M, 1>;

public:
    ModuleOversampled() : ModuleStructured(ModuleInfo{0, "ModuleOversampled", ""}) {}

    // Audio thread. A change of "Oversample" switches both converters, tells all three the
    // ratio, and lets the module redesign at its new apparent rate.
    void SetParameter(const std::string& name, float value) override
    {
        ModuleStructured::SetParameter(name, value);
        if (name != "Oversample")
            return;
        const float ratio = GetParameter(name)->GetValue();
        up->SetParameter("Ratio", ratio);
        up->SetParameter("DeceiveRatio", ratio);
        module->SetParameter("DeceiveRatio", ratio);
        down->SetParameter("Ratio", ratio);
        down->SetParameter("DeceiveRatio", ratio);
        module->SampleRateChanged();
    }

    void ApplyDefaults() override
    {
        up = GetChild("Up");
        module = GetChild("Module");
        down = GetChild("Down");
        ModuleStructured::ApplyDefaults();
        SetParameter("Oversample", GetParameter("Oversample")->GetDefault());
    }

    M& GetModule() const { return static_cast<Deceived&>(*GetChild("Module")).GetModule(); }

protected:
    void CreateChildren() override
    {
        AddChild("Up", std::make_unique<Up>());
        AddChild("Module", std::make_unique<Deceived>());
        AddChild("Down", std::make_unique<Down>());
    }
    void CreateInputs() override
    {
        for (const auto& entry : GetChild("Module")->GetInputs())
            AddInput(entry.first, entry.second->GetDescription());
    }
    void CreateOutputs() override
    {
        for (const auto& entry : GetChild("Module")->GetOutputs())
            AddOutputHierarchic(entry.first);
    }
    void CreateParameters() override
    {
        AddParameter(std::make_unique<Parameter>("Oversample", "", 0.0f, 1.0f, 0.0f, ParameterBase::Step));
        Module& inner = *GetChild("Module");
        for (const auto& entry : inner.GetParameters())
            AddParameter(std::make_unique<ParameterLinked>(inner, entry.first, entry.first));
        for (const auto& entry : inner.GetDataBlocks())
            AddDataBlock(std::make_unique<DataBlockLinked>(inner, entry.first, entry.first));
    }

private:
    Module* up = nullptr;
    Module* module = nullptr;
    Module* down = nullptr;
};

}  // namespace AudioEngine
