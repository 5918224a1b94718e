#pragma once

#include "engine/core/ModuleMono.h"

#include <algorithm>

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
    // Per sample: write, then read, so a delay of 0 passes the sample just written. Done in
    // stretches that write, then read, many samples: the same as sample by sample as long as no
    // stretch writes a slot before it is read, so a stretch ends where the writes would reach the
    // read cursor (only a delay within a block of the ring's size makes that short).
    void ProcessBlock() override
    {
        const float* in = input->GetBuffer();
        float* out = output->GetBuffer();
        float* samples = ring.Data();
        const int capacity = ring.Capacity();
        const int ahead = write >= read ? write - read : write + capacity - read;
        for (int done = 0, count = GetBlockSize(); done < count;) {
            const int n = std::min(count - done, capacity - ahead);
            Copy(in + done, n, samples, write, capacity);
            for (int left = n, at = read, to = done; left > 0;) {
                const int stretch = std::min(left, capacity - at);
                std::copy(samples + at, samples + at + stretch, out + to);
                at = at + stretch == capacity ? 0 : at + stretch;
                to += stretch;
                left -= stretch;
            }
            write = ring.Wrap(write + n);
            read = ring.Wrap(read + n);
            done += n;
        }
    }

private:
    // `n` samples into the ring from `at` on, wrapping.
    static void Copy(const float* from, int n, float* samples, int at, int capacity)
    {
        const int first = std::min(n, capacity - at);
        std::copy(from, from + first, samples + at);
        std::copy(from + first, from + n, samples);
    }

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
