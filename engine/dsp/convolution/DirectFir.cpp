#include "engine/dsp/convolution/DirectFir.h"

#include <algorithm>
#include <cstring>
#include <stdexcept>

#if defined(__SSE__)
#include <xmmintrin.h>
#endif

namespace AudioEngine::Convolution {
namespace {

// ring[k] += v * taps[k] for k < count, count a multiple of 4, both pointers 16-byte aligned.
inline void AddScaled(float* ring, const float* taps, int count, float v)
{
#if defined(__SSE__)
    const __m128 scale = _mm_set1_ps(v);
    for (int k = 0; k < count; k += 4)
        _mm_store_ps(ring + k, _mm_add_ps(_mm_load_ps(ring + k), _mm_mul_ps(scale, _mm_load_ps(taps + k))));
#else
    for (int k = 0; k < count; ++k)
        ring[k] = ring[k] + v * taps[k];
#endif
}

// Four consecutive samples whose ring indices share the aligned start: the ring is loaded and
// stored once, and every slot still receives its additions in sample order, so the result is
// the same to the bit as four AddScaled calls.
inline void AddScaledFour(float* ring, const float* const* copies, int count, const float* v)
{
#if defined(__SSE__)
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
#else
    for (int s = 0; s < 4; ++s)
        AddScaled(ring, copies[s], count, v[s]);
#endif
}

}  // namespace

DirectFir::DirectFir(const float* taps, int count, Kernel kernel)
{
    if (count < 1)
        throw std::invalid_argument("DirectFir needs at least one tap");
    tapCount = count;
    copyLength = (count + 3 + 3) / 4 * 4;
    for (int o = 0; o < 4; ++o) {
        copies[o] = pool.Allocate(static_cast<std::size_t>(copyLength));
        std::memcpy(copies[o] + o, taps, sizeof(float) * static_cast<std::size_t>(count));
    }
    ringLength = count + maxBlock;
    ring = pool.Allocate(static_cast<std::size_t>(ringLength) + 3);
    accumulate = kernel == Kernel::Packed ? &DirectFir::AccumulatePacked : &DirectFir::AccumulateScalar;
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
    std::memset(ring, 0, sizeof(float) * (static_cast<std::size_t>(ringLength) + 3));
    position = 0;
}

void DirectFir::AccumulatePacked(const float* in, int n)
{
    int i = 0;
    while (i < n) {
        int p = position + i;
        if (p >= ringLength)
            p -= ringLength;
        // Four samples from an aligned index, all of whose taps land before the ring's end.
        if ((p & 3) == 0 && i + 4 <= n && p + copyLength <= ringLength) {
            const float v[4] = {in[i] + Guard, in[i + 1] + Guard, in[i + 2] + Guard, in[i + 3] + Guard};
            AddScaledFour(ring + p, copies, copyLength, v);
            i += 4;
        } else {
            AccumulatePackedOne(p, in[i] + Guard);
            ++i;
        }
    }
}

void DirectFir::AccumulatePackedOne(int p, float v)
{
    const int o = p & 3;
    const int start = p - o;
    // Groups that start before the ring's end; the last may spill into the pad, which is never
    // read: what lands there is added again at the ring's start.
    const int groupsEnd = (ringLength + 3) & ~3;
    AddScaled(ring + start, copies[o], std::min(copyLength, groupsEnd - start), v);

    const int wrapped = ringLength - p; // the first tap that belongs at ring index 0
    if (wrapped < tapCount) {
        // The copy that puts tap `wrapped` on an aligned index of itself.
        const int c = (4 - (wrapped & 3)) & 3;
        const int from = wrapped + c;
        AddScaled(ring, copies[c] + from, copyLength - from, v);
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
