#include "engine/dsp/convolution/DirectFir.h"

#include <algorithm>
#include <cstring>
#include <stdexcept>

#include <xmmintrin.h>

namespace AudioEngine::Convolution {

// In DirectFirAvx2.cpp, compiled for that instruction set.
extern const FirKernels firKernels8;

namespace {

// ring[k] += v * taps[k] for k < count, count a multiple of 4, both pointers 16-byte aligned.
void AddScaled4(float* ring, const float* taps, int count, float v)
{
    const __m128 scale = _mm_set1_ps(v);
    for (int k = 0; k < count; k += 4)
        _mm_store_ps(ring + k, _mm_add_ps(_mm_load_ps(ring + k), _mm_mul_ps(scale, _mm_load_ps(taps + k))));
}

// Four consecutive samples whose ring indices share the aligned start.
void AddScaledFour(float* ring, const float* const* copies, int count, const float* v)
{
    const __m128 v0 = _mm_set1_ps(v[0]), v1 = _mm_set1_ps(v[1]), v2 = _mm_set1_ps(v[2]), v3 = _mm_set1_ps(v[3]);
    const float *c0 = copies[0], *c1 = copies[1], *c2 = copies[2], *c3 = copies[3];
    for (int k = 0; k < count; k += 4) {
        __m128 sum = _mm_load_ps(ring + k);
        sum = _mm_add_ps(sum, _mm_mul_ps(v0, _mm_load_ps(c0 + k)));
        sum = _mm_add_ps(sum, _mm_mul_ps(v1, _mm_load_ps(c1 + k)));
        sum = _mm_add_ps(sum, _mm_mul_ps(v2, _mm_load_ps(c2 + k)));
        sum = _mm_add_ps(sum, _mm_mul_ps(v3, _mm_load_ps(c3 + k)));
        _mm_store_ps(ring + k, sum);
    }
}

const FirKernels firKernels4 = {4, &AddScaled4, &AddScaledFour};

}  // namespace

bool DirectFir::Runs(Kernel kernel)
{
    return kernel != Kernel::Packed8 || __builtin_cpu_supports("avx2");
}

DirectFir::DirectFir(const float* taps, int count, Kernel kernel)
{
    if (count < 1)
        throw std::invalid_argument("DirectFir needs at least one tap");
    if (!Runs(kernel))
        throw std::invalid_argument("this processor cannot run that FIR kernel");
    if (kernel == Kernel::Packed)
        kernel = Runs(Kernel::Packed8) ? Kernel::Packed8 : Kernel::Packed4;
    packed = kernel == Kernel::Packed8 ? &firKernels8 : &firKernels4;
    width = packed->width;
    tapCount = count;
    copyLength = (count + 2 * (width - 1)) / width * width;
    const std::size_t alignment = sizeof(float) * static_cast<std::size_t>(width);
    for (int o = 0; o < width; ++o) {
        copies[o] = pool.Allocate(static_cast<std::size_t>(copyLength), alignment);
        std::memcpy(copies[o] + o, taps, sizeof(float) * static_cast<std::size_t>(count));
    }
    ringLength = count + maxBlock;
    ring = pool.Allocate(static_cast<std::size_t>(ringLength + width - 1), alignment);
    accumulate = kernel == Kernel::ScalarDouble ? &DirectFir::AccumulateScalar : &DirectFir::AccumulatePacked;
}

void DirectFir::Process(float* out, const float* in, int n)
{
    while (n > 0) {
        const int block = std::min(n, maxBlock);
        (this->*accumulate)(in, block);
        for (int i = 0; i < block; ++i) {
            int index = position + i;
            if (index >= ringLength)
                index -= ringLength;
            out[i] = ring[index];
            ring[index] = 0.0f;
        }
        position = (position + block) % ringLength;
        in += block;
        out += block;
        n -= block;
    }
}

void DirectFir::Reset()
{
    std::memset(ring, 0, sizeof(float) * static_cast<std::size_t>(ringLength + width - 1));
    position = 0;
}

void DirectFir::AccumulatePacked(const float* in, int n)
{
    float v[8];
    int i = 0;
    while (i < n) {
        int p = position + i;
        if (p >= ringLength)
            p -= ringLength;
        // A group of samples from an aligned index, all of whose taps land before the ring's end.
        if (p % width == 0 && i + width <= n && p + copyLength <= ringLength) {
            for (int s = 0; s < width; ++s)
                v[s] = in[i + s] + Guard;
            packed->addScaledGroup(ring + p, copies, copyLength, v);
            i += width;
        } else {
            AccumulatePackedOne(p, in[i] + Guard);
            ++i;
        }
    }
}

void DirectFir::AccumulatePackedOne(int p, float v)
{
    const int o = p % width;
    const int start = p - o;
    // Groups that start before the ring's end; the last may spill into the pad, which is never
    // read: what lands there is added again at the ring's start.
    const int groupsEnd = (ringLength + width - 1) / width * width;
    packed->addScaled(ring + start, copies[o], std::min(copyLength, groupsEnd - start), v);

    const int wrapped = ringLength - p; // the first tap that belongs at ring index 0
    if (wrapped < tapCount) {
        // The copy that puts tap `wrapped` on an aligned index of itself.
        const int c = (width - wrapped % width) % width;
        const int from = wrapped + c;
        packed->addScaled(ring, copies[c] + from, copyLength - from, v);
    }
}

void DirectFir::AccumulateScalar(const float* in, int n)
{
    const float* taps = copies[0];
    for (int i = 0; i < n; ++i) {
        const double v = in[i] + Guard;
        int p = position + i;
        if (p >= ringLength)
            p -= ringLength;
        const int first = std::min(tapCount, ringLength - p);
        for (int j = 0; j < first; ++j)
            ring[p + j] = static_cast<float>(ring[p + j] + v * taps[j]);
        for (int j = first; j < tapCount; ++j)
            ring[p + j - ringLength] = static_cast<float>(ring[p + j - ringLength] + v * taps[j]);
    }
}

}  // namespace AudioEngine::Convolution
