#pragma once

#include "engine/dsp/convolution/AlignedPool.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace dsp::Domain::Adapters {

// Lets a processor of fixed blocks take blocks of any length, at a delay of exactly one block.
// Inner provides GetBlockLength(), ProcessBlock(out, in) over that many samples, and Reset().
//
// It starts with a full input block of zeros, so the first call runs Inner on silence and every
// sample comes out exactly B samples after it went in.
template <typename Inner>
class AnySizeAdapter2 : public Inner {
public:
    // Set-up only: allocates; the arguments make the Inner.
    template <typename... Args>
    explicit AnySizeAdapter2(Args&&... args)
        : Inner(std::forward<Args>(args)...), blockLength(Inner::GetBlockLength()),
          input(pool.Allocate(static_cast<std::size_t>(blockLength))),
          output(pool.Allocate(static_cast<std::size_t>(blockLength))), fill(blockLength)
    {
    }

    // Audio thread: no allocation. out may be in.
    void Process(float* out, const float* in, int n);
    // Zeroes both blocks and Inner's state; the fill position and the count available stay.
    void Reset();

private:
    static void Move(float* to, const float* from, int count)
    {
        std::memmove(to, from, sizeof(float) * static_cast<std::size_t>(count));
    }

    AudioEngine::Convolution::AlignedPool pool;
    int blockLength;
    float* input;
    float* output;
    int fill;          // samples in the input block
    int available = 0; // samples of the output block not yet taken; fill + available == B
};

template <typename Inner>
void AnySizeAdapter2<Inner>::Process(float* out, const float* in, int n)
{
    // Samples in and out move in step, and each stretch is read from `in` before the same
    // stretch of `out` is written, so the block may be processed in place.
    int done = 0;
    while (done < n) {
        const int take = std::min(n - done, blockLength - fill);
        Move(input + fill, in + done, take);
        fill += take;
        const int give = std::min(n - done, available);
        Move(out + done, output + (blockLength - available), give);
        available -= give;
        done += give;
        if (fill == blockLength) {
            Inner::ProcessBlock(output, input);
            available = blockLength;
            fill = 0;
        }
    }
}

template <typename Inner>
void AnySizeAdapter2<Inner>::Reset()
{
    std::fill(input, input + blockLength, 0.0f);
    std::fill(output, output + blockLength, 0.0f);
    Inner::Reset();
}

}  // namespace dsp::Domain::Adapters
