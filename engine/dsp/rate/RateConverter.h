#pragma once

#include "engine/core/ModuleStructured.h"

namespace AudioEngine {

// A rate stage: a padder or decimator with its low-pass filter, in the default chain. It tells
// its children block sizes divided by its factor.
template <typename Rate, typename Filter>
class RateConverterStage : public ModuleStructured {
public:
    RateConverterStage() : ModuleStructured(ModuleInfo{0, "RateConverterStage", ""}) {}

    void SetFactor(unsigned value) { factor = value; }
    int GetMaxBlockSize() const override { return parent->GetMaxBlockSize() / static_cast<int>(factor); }
    int GetBlockSize() const override { return parent->GetBlockSize() / static_cast<int>(factor); }

protected:
    void CreateInputs() override { AddInput("In"); }
    void CreateOutputs() override { AddOutputHierarchic("Out"); }

private:
    unsigned factor = 1;
};

// Up: zero padding, then the filter at the high rate.
template <typename Rate, typename Filter>
class RateConverterStageUp : public RateConverterStage<Rate, Filter> {
public:
    static constexpr bool isUp = true;

protected:
    void CreateChildren() override
    {
        this->AddChild("Stage", std::make_unique<Rate>());
        this->AddChild("Filter", std::make_unique<Filter>());
    }
};

// Down: the filter at the high rate, then decimation.
template <typename Rate, typename Filter>
class RateConverterStageDown : public RateConverterStage<Rate, Filter> {
public:
    static constexpr bool isUp = false;

protected:
    void CreateChildren() override
    {
        this->AddChild("Filter", std::make_unique<Filter>());
        this->AddChild("Stage", std::make_unique<Rate>());
    }
};

// N stages named "0" to "N - 1"; ports "In" and "Out" taken from the stages.
template <typename Stage, int N>
class RateConverterChain : public ModuleStructured {
public:
    RateConverterChain() : ModuleStructured(ModuleInfo{0, "RateConverterChain", ""}) {}

protected:
    void CreateChildren() override
    {
        for (int i = 0; i < N; ++i) {
            auto stage = std::make_unique<Stage>();
            stage->SetFactor(Stage::isUp ? 1u << (N - i - 1) : 1u << i);
            AddChild(std::to_string(i), std::move(stage));
        }
    }
    void CreateInputs() override { AddInput("In"); }
    void CreateOutputs() override { AddOutputHierarchic("Out"); }
};

}  // namespace AudioEngine
