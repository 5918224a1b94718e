#pragma once

#include "engine/containers/Buffer.h"
#include "engine/containers/Port.h"
#include "engine/core/Environment.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <memory>
#include <vector>

namespace AudioEngine {

namespace EnvironmentHostDetails {

// The tree's source for one host channel: a window on the input pad, set every block.
class HostOutput : public AudioContainers::Output {
public:
    HostOutput() : Output("HostOutput", "") {}
    bool IsTransparent() const override { return false; }
    float* GetBuffer() const override { return buffer; }
    void SetBuffer(float* samples) { buffer = samples; }

private:
    float* buffer = nullptr;
};

}  // namespace EnvironmentHostDetails

// Turns host blocks of any length into internal blocks of at most MaxBlock samples in multiples
// of Granule. The input pad keeps Granule samples back, a fixed latency of Granule samples.
//
//   input pad:  [ processed next block (B) | kept back (Granule) ]  <- host samples enter at P
//   output pad: [ held for the host (O) | tree output of this block (B) ] -> host takes T
template <int MaxBlock, int Granule>
class EnvironmentHost : public Environment {
public:
    static constexpr int maxChannels = 4;
    static constexpr int padSize = 2 * MaxBlock;

    EnvironmentHost() : inputPads(maxChannels, AudioContainers::Buffer(padSize)), outputPads(inputPads) {}

    int GetTransactionState() const override { return 0; }
    void SetTransactionState(int) override {}
    int GetMaxBlockSize() const override { return MaxBlock; }
    int GetBlockSize() const override { return block; }

    // Audio thread: any count, 0 and above MaxBlock included. `in` and `out` hold the tree's
    // input and output counts of channels and may be the same buffers.
    virtual void ProcessHostBlock(float** in, float** out, int count);

    // The pads' content and positions back to the start: Granule samples of silence pending.
    void ClearPads();

protected:
    virtual int GetInputCount() const = 0;
    virtual int GetOutputCount() const = 0;
    virtual float* GetOutputBuffer(int index) const = 0;
    // The tree over one internal block of GetBlockSize() samples.
    virtual void RunBlock() = 0;
    // One internal block; false when the tree's outputs are to be replaced by silence.
    virtual bool InternalBlock()
    {
        RunBlock();
        return true;
    }
    // Host input samples entering the pad; `index` is their position in the host block.
    virtual void ShapeInput(float*, int, int) {}

    std::vector<std::unique_ptr<EnvironmentHostDetails::HostOutput>> hostOutputs; // one per tree input

private:
    std::vector<AudioContainers::Buffer> inputPads;
    std::vector<AudioContainers::Buffer> outputPads;
    int block = 0;
    int pending = Granule; // P: samples in the input pad not yet processed
    int held = 0;          // O: tree output in the output pad not yet given to the host
};

template <int MaxBlock, int Granule>
void EnvironmentHost<MaxBlock, Granule>::ClearPads()
{
    for (AudioContainers::Buffer& pad : inputPads)
        std::fill(pad.Data(), pad.Data() + padSize, 0.0f);
    for (AudioContainers::Buffer& pad : outputPads)
        std::fill(pad.Data(), pad.Data() + padSize, 0.0f);
    pending = Granule;
    held = 0;
}

template <int MaxBlock, int Granule>
void EnvironmentHost<MaxBlock, Granule>::ProcessHostBlock(float** in, float** out, int count)
{
    const int inputs = std::min(GetInputCount(), maxChannels);
    const int outputs = std::min(GetOutputCount(), maxChannels);
    for (int done = 0; done < count;) {
        const int remaining = count - done;
        int take;   // T: host samples taken in and given out
        int length; // B: samples the tree runs
        if (pending + remaining < Granule) {
            // Too few samples for a block: the held output covers them.
            take = remaining;
            length = 0;
        } else {
            int k = (pending + remaining) / Granule - 1;
            if (Granule * k > MaxBlock)
                k = MaxBlock / Granule;
            length = Granule * k;
            take = length - pending + Granule;
            if (take == 0) {
                take = remaining;
                length = Granule;
            }
        }

        for (int c = 0; c < inputs; ++c) {
            float* pad = inputPads[c].Data();
            // A NaN or an infinity from the host would stay in every filter's state for good:
            // it enters as silence.
            const float* from = in[c] + done;
            for (int i = 0; i < take; ++i)
                pad[pending + i] = std::isfinite(from[i]) ? from[i] : 0.0f;
            ShapeInput(pad + pending, take, done);
            hostOutputs[static_cast<std::size_t>(c)]->SetBuffer(pad);
        }
        block = length;
        pending += take;

        const bool sounding = length > 0 && InternalBlock();

        pending -= length;
        for (int c = 0; c < inputs; ++c) {
            float* pad = inputPads[c].Data();
            std::memmove(pad, pad + length, sizeof(float) * static_cast<std::size_t>(pending));
        }
        for (int c = 0; c < outputs; ++c) {
            float* pad = outputPads[c].Data();
            const float* produced = sounding ? GetOutputBuffer(c) : nullptr;
            if (produced != nullptr)
                std::memcpy(pad + held, produced, sizeof(float) * static_cast<std::size_t>(length));
            else
                std::fill(pad + held, pad + held + length, 0.0f);
            std::memcpy(out[c] + done, pad, sizeof(float) * static_cast<std::size_t>(take));
            std::memmove(pad, pad + take, sizeof(float) * static_cast<std::size_t>(held + length - take));
        }
        held += length - take;
        done += take;
    }
}

}  // namespace AudioEngine
