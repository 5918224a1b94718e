#pragma once

#include "engine/dsp/equaliser/LinearPhaseEq.h"

namespace AudioEngine::VN4 {

// Runs the equaliser on left/right ("Stereo") or on mid/side ("MS"): in place, the inputs are
// encoded to M = (L + R) / 2, S = (L - R) / 2 before, and the outputs decoded to L = M + S,
// R = M - S after. The inputs written to belong to the node before; nothing reads them again.
template <typename Effect>
class MidSide : public Effect {
public:
    enum Mode { Stereo = 0, MS = 1 };

    void SetParameter(const std::string& name, float value) override
    {
        Effect::SetParameter(name, value);
        if (name != "ChannelMode")
            return;
        const int mode = static_cast<int>(this->GetParameter(name)->GetValue());
        if (mode != Stereo && mode != MS)
            return;
        midSide = mode == MS;
        Effect::Reset();
    }

    void Process() override
    {
        if (!midSide) {
            Effect::Process();
            return;
        }
        const int count = this->GetBlockSize();
        float* left = inL->GetBuffer();
        float* right = inR->GetBuffer();
        for (int i = 0; i < count; ++i) {
            const float l = left[i];
            const float r = right[i];
            left[i] = (l + r) * 0.5f;
            right[i] = (l - r) * 0.5f;
        }
        Effect::Process();
        float* mid = outL->GetBuffer();
        float* side = outR->GetBuffer();
        for (int i = 0; i < count; ++i) {
            const float m = mid[i];
            const float s = side[i];
            mid[i] = m + s;
            side[i] = m - s;
        }
    }

    void BindPorts() override
    {
        Effect::BindPorts();
        inL = this->GetInput("InL");
        inR = this->GetInput("InR");
        outL = this->GetOutput("OutL");
        outR = this->GetOutput("OutR");
    }

protected:
    void CreateParameters() override
    {
        Effect::CreateParameters();
        this->AddParameter(std::make_unique<Parameter>("ChannelMode", "", std::vector<std::string>{"Stereo", "MS"},
                                                       "Stereo", ParameterBase::Step));
    }
    void FinishSetup() override
    {
        Effect::FinishSetup();
        SetParameter("ChannelMode", this->GetParameter("ChannelMode")->GetValue());
    }

private:
    bool midSide = false;
    AudioContainers::Input* inL = nullptr;
    AudioContainers::Input* inR = nullptr;
    AudioContainers::Output* outL = nullptr;
    AudioContainers::Output* outR = nullptr;
};

}  // namespace AudioEngine::VN4
