#pragma once

#include "engine/dsp/convolution/AlignedPool.h"

namespace AudioEngine::Convolution {

// A FIR computed directly, in scatter form: each input sample v adds v * taps into a ring of
// future outputs, and outputs leave the ring zeroed. No delay of its own.
//
// Ring (ringLength = taps + MaxBlock floats, 3 more for a group of 4 running past the end):
//
//   | read here (position) ... n outputs ... | v * taps land from position + i on ... | pad |
//
// The packed kernel adds in aligned groups of 4 floats. Tap copy o starts o floats later (o zeros
// in front), so a sample at ring index p uses copy p % 4 from the aligned index p - p % 4.
class DirectFir {
public:
    enum class Kernel {
        Packed,       // single precision, 4 floats a step
        ScalarDouble, // one tap at a time, each addition made in double
    };
    static constexpr int MaxBlock = 4096;
    // Added to every input sample so that silence never decays into denormals.
    static constexpr float Guard = 1e-18f;

    // Set-up only: allocates. count >= 1.
    DirectFir(const float* taps, int count, Kernel kernel = Kernel::Packed);
    DirectFir(const DirectFir&) = delete;
    DirectFir& operator=(const DirectFir&) = delete;

    // Audio thread: no allocation. Longer blocks than MaxBlock run in pieces; out may be in.
    void Process(float* out, const float* in, int n);
    // Zeroes the ring and its position.
    void Reset();

    int GetTapCount() const { return tapCount; }

private:
    using Accumulate = void (DirectFir::*)(const float* in, int n);

    void AccumulatePacked(const float* in, int n);
    void AccumulatePackedOne(int p, float v);
    void AccumulateScalar(const float* in, int n);

    AlignedPool pool;
    float* copies[4] = {};
    int copyLength = 0; // floats of each copy, a multiple of 4 that holds taps + 3
    int maxBlock = MaxBlock;
    int tapCount = 0;
    int ringLength = 0;
    float* ring = nullptr;
    int position = 0;
    Accumulate accumulate = &DirectFir::AccumulatePacked;
};

}  // namespace AudioEngine::Convolution
