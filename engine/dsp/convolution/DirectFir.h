#pragma once

#include "engine/dsp/convolution/AlignedPool.h"

namespace AudioEngine::Convolution {

// The packed accumulation of a direct FIR at one vector width: `addScaled` adds v * taps into
// the ring; `addScaledGroup` adds `width` consecutive samples, each with its own tap copy, into
// one aligned stretch of the ring, loading and storing it once. Every ring slot still receives
// its additions in sample order, so every width gives the same result to the bit.
struct FirKernels {
    int width; // floats a step; pointers and counts are aligned to it
    void (*addScaled)(float* ring, const float* taps, int count, float v);
    void (*addScaledGroup)(float* ring, const float* const* copies, int count, const float* v);
};

// A FIR computed directly, in scatter form: each input sample v adds v * taps into a ring of
// future outputs, and outputs leave the ring zeroed. No delay of its own.
//
// Ring (ringLength = taps + MaxBlock floats, width - 1 more for a group running past the end):
//
//   | read here (position) ... n outputs ... | v * taps land from position + i on ... | pad |
//
// The packed kernels add in aligned groups of `width` floats. Tap copy o starts o floats later
// (o zeros in front), so a sample at ring index p uses copy p % width from the aligned index
// p - p % width.
class DirectFir {
public:
    enum class Kernel {
        Packed,       // single precision, the widest steps this processor runs
        Packed4,      // single precision, 4 floats a step
        Packed8,      // single precision, 8 floats a step (AVX2)
        ScalarDouble, // one tap at a time, each addition made in double
    };
    static constexpr int MaxBlock = 4096;
    // Added to every input sample so that silence never decays into denormals.
    static constexpr float Guard = 1e-18f;

    // Whether this processor runs `kernel`.
    static bool Runs(Kernel kernel);

    // Set-up only: allocates. count >= 1; `kernel` one this processor runs.
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
    const FirKernels* packed = nullptr;
    int width = 4;
    float* copies[8] = {};
    int copyLength = 0; // floats of each copy, a multiple of the width that holds taps + width - 1
    int maxBlock = MaxBlock;
    int tapCount = 0;
    int ringLength = 0;
    float* ring = nullptr;
    int position = 0;
    Accumulate accumulate = &DirectFir::AccumulatePacked;
};

}  // namespace AudioEngine::Convolution
