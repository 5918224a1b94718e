#pragma once

#include "engine/core/ModuleBasic.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace AudioEngine::Application::KD2 {

// A leaf module with a "Process" switch: its own work, a plain copy, silence, muted input, or
// nothing at all (the outputs keep what they held).
template <typename T>
class ModuleKD2 : public T {
public:
    enum ProcessState { Normal = 0, Bypass = 1, Mute = 2, MuteIn = 3, Stop = 4 };

    void SetParameter(const std::string& name, float value) override
    {
        T::SetParameter(name, value);
        if (name != "Process")
            return;
        switch (static_cast<int>(this->GetParameter(name)->GetValue())) {
        case Normal:
            this->SetProcessEntry(&ModuleKD2::ProcessNormal);
            break;
        case Bypass:
            this->SetProcessEntry(&ModuleKD2::ProcessBypass);
            break;
        case Mute:
            this->SetProcessEntry(&ModuleKD2::ProcessMute);
            break;
        case MuteIn:
            this->SetProcessEntry(&ModuleKD2::ProcessMuteIn);
            break;
        default:
            this->SetProcessEntry(&ModuleKD2::ProcessStop);
            break;
        }
    }

    // One input pairs with every output; otherwise "OutX" pairs with "InX". Keeps its storage,
    // so a re-bind allocates nothing.
    void BindPorts() override
    {
        T::BindPorts();
        pairs.clear();
        for (const auto& [outputName, output] : this->GetOutputs()) {
            AudioContainers::Input* input = nullptr;
            if (this->GetInputs().Size() == 1)
                input = this->GetInputs().begin()->second.get();
            else if (outputName.compare(0, 3, "Out") == 0)
                input = this->GetInput("In" + outputName.substr(3));
            if (input != nullptr)
                pairs.emplace_back(input, output.get());
        }
    }

protected:
    void CreateParameters() override
    {
        T::CreateParameters();
        this->AddParameter(std::make_unique<Parameter>(
            "Process", "", std::vector<std::string>{"Normal", "Bypass", "Mute", "MuteIn", "Stop"}, "Normal", 0));
    }
    void FinishSetup() override
    {
        T::FinishSetup();
        SetParameter("Process", this->GetParameter("Process")->GetValue());
    }

private:
    void ProcessNormal() { this->ProcessBlock(); }
    void ProcessBypass()
    {
        const int count = this->GetBlockSize();
        for (const auto& [input, output] : pairs) {
            const float* in = input->GetBuffer();
            std::copy(in, in + count, output->GetBuffer());
        }
    }
    void ProcessMute()
    {
        const int count = this->GetBlockSize();
        for (const auto& pair : pairs)
            std::fill(pair.second->GetBuffer(), pair.second->GetBuffer() + count, 0.0f);
    }
    void ProcessMuteIn()
    {
        const int count = this->GetBlockSize();
        for (const auto& pair : pairs)
            std::fill(pair.first->GetBuffer(), pair.first->GetBuffer() + count, 0.0f);
        this->ProcessBlock();
    }
    void ProcessStop() {}

    std::vector<std::pair<AudioContainers::Input*, AudioContainers::Output*>> pairs;
};

}  // namespace AudioEngine::Application::KD2
