#pragma once

#include "engine/core/EnvironmentHost.h"

namespace AudioEngine {

// Adds the transaction states around changes that must land between two blocks as one:
//   0 running; 1 fading out; 2 muted; 3 flushing (the tree runs on silence, muted);
//   4 fading in. Fades and the flush last FadeMs milliseconds.
// The owner moves 0 to 1 or 2 (commit) and 2 to 3 (after the replay); this class does the rest.
template <int MaxBlock, int Granule, int FadeMs>
class EnvironmentHostTransactional : public EnvironmentHost<MaxBlock, Granule> {
    using Base = EnvironmentHost<MaxBlock, Granule>;

public:
    enum State { Running = 0, FadingOut = 1, Muted = 2, Flushing = 3, FadingIn = 4 };

    int GetTransactionState() const override { return state; }
    void SetTransactionState(int newState) override { state = newState; }

    void ProcessHostBlock(float** in, float** out, int count) override;

protected:
    bool InternalBlock() override;
    // Zeroes the input while flushing; ramps it up while fading in.
    void ShapeInput(float* samples, int count, int index) override;
    // Gain change per sample for a fade.
    float FadeStep() const { return 1000.0f / (this->GetSampleRate() * static_cast<float>(FadeMs)); }

    float fadeOutGain = 1.0f;
    float fadeInGain = 0.0f;
    float elapsed = 0.0f; // seconds muted or flushing
    int state = Running;

private:
    float FadeInAt(int index) const
    {
        return std::min(1.0f, rampStart + static_cast<float>(index - rampOrigin) * FadeStep());
    }

    int rampOrigin = -1; // host index where this host block's fade-in began, -1 for none
    float rampStart = 0.0f;
};

template <int MaxBlock, int Granule, int FadeMs>
void EnvironmentHostTransactional<MaxBlock, Granule, FadeMs>::ProcessHostBlock(float** in, float** out, int count)
{
    rampOrigin = state == FadingIn ? 0 : -1;
    rampStart = fadeInGain;
    const int startState = state;
    Base::ProcessHostBlock(in, out, count);
    const int outputs = std::min(this->GetOutputCount(), Base::maxChannels);
    const float step = FadeStep();

    if (startState == FadingOut) {
        for (int c = 0; c < outputs; ++c) {
            for (int i = 0; i < count; ++i)
                out[c][i] *= std::max(0.0f, fadeOutGain - static_cast<float>(i) * step);
        }
        fadeOutGain -= static_cast<float>(count) * step;
        if (fadeOutGain <= 0.0f) {
            fadeOutGain = 1.0f;
            elapsed = 0.0f;
            state = Muted;
        }
    }
    if (rampOrigin >= 0) {
        for (int c = 0; c < outputs; ++c) {
            for (int i = rampOrigin; i < count; ++i)
                out[c][i] *= FadeInAt(i);
        }
        fadeInGain = FadeInAt(count);
        if (fadeInGain >= 1.0f) {
            fadeInGain = 0.0f;
            state = Running;
        }
    }
}

template <int MaxBlock, int Granule, int FadeMs>
bool EnvironmentHostTransactional<MaxBlock, Granule, FadeMs>::InternalBlock()
{
    bool sounding = true;
    switch (state) {
    case Muted:
        sounding = false;
        break;
    case Flushing:
        this->RunBlock();
        sounding = false;
        break;
    default:
        this->RunBlock();
        break;
    }
    if (state == Muted || state == Flushing)
        elapsed += static_cast<float>(this->GetBlockSize()) / this->GetSampleRate();
    if (elapsed >= static_cast<float>(FadeMs) / 1000.0f) {
        elapsed = 0.0f;
        state = FadingIn;
    }
    return sounding;
}

template <int MaxBlock, int Granule, int FadeMs>
void EnvironmentHostTransactional<MaxBlock, Granule, FadeMs>::ShapeInput(float* samples, int count, int index)
{
    if (state == Flushing) {
        std::fill(samples, samples + count, 0.0f);
    } else if (state == FadingIn) {
        if (rampOrigin < 0) {
            rampOrigin = index;
            rampStart = fadeInGain;
        }
        for (int i = 0; i < count; ++i)
            samples[i] *= FadeInAt(index + i);
    }
}

}  // namespace AudioEngine
