#pragma once

#include "engine/core/ModuleMono.h"

namespace AudioEngine {

// A delay of "DelaySamples" (0 to MaxDelay) samples. A change jumps: no crossfade.
template <int MaxDelay, int Flags>
class DelayLine : public ModuleMono {
public:
    DelayLine() : ModuleMono(ModuleInfo{18, "DelayLine", "Delay line"}) {}

    void SetParameter(const std::string& name, float value) override
    {
        ModuleMono::SetParameter(name, value);
        if (name == "DelaySamples")
            ApplyDelay();
    }
    void Reset() override { std::fill(ring.Data(), ring.Data() + ring.Capacity(), 0.0f); }
protected:
    void CreateParameters() override
    {
        delay = &AddParameter(std::make_unique<Parameter>("DelaySamples", "", 0.0f, static_cast<float>(MaxDelay), 0.0f,
                                                          ParameterBase::Step));
    }
    void FinishSetup() override
    {
        ModuleMono::FinishSetup();
        AllocateDelay();
    }
    // Per sample: write, then read, so a delay of 0 passes the sample just written.
    void ProcessBlock() override
    {
        const float* in = input->GetBuffer();
        float* out = output->GetBuffer();
        const int count = GetBlockSize();
        float* samples = ring.Data();
        const int capacity = ring.Capacity();
        for (int i = 0; i < count; ++i) {
            samples[write] = in[i];
            out[i] = samples[read];
            if (++write == capacity)
                write = 0;
            if (++read == capacity)
                read = 0;
        }
    }

private:
    // Set-up only.
    void AllocateDelay()
    {
        ring.Resize(MaxDelay + 1);
        read = write = 0;
        ApplyDelay();
    }
    // The write cursor goes `DelaySamples` ahead of the read cursor.
    void ApplyDelay()
    {
        const int samples = static_cast<int>(delay->GetValue());
        write = ring.Wrap(write + read - write + samples);
    }

    AudioContainers::BufferCircular ring;
    int read = 0;
    int write = 0;
    ParameterBase* delay = nullptr;
};

}  // namespace AudioEngine
