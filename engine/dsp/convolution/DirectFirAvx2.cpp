// The FIR's packed accumulation 8 floats a step: generated for AVX2 and only reached where the
// processor has it. No FMA: each product is rounded before its sum, as in the 4-float steps.
#include "engine/dsp/convolution/DirectFir.h"

#include <immintrin.h>

#if defined(__clang__)
#pragma clang attribute push(__attribute__((target("avx2"))), apply_to = function)
#else
#pragma GCC target("avx2")
#endif

namespace AudioEngine::Convolution {

namespace {

// ring[k] += v * taps[k] for k < count, count a multiple of 8, both pointers 32-byte aligned.
void AddScaled8(float* ring, const float* taps, int count, float v)
{
    const __m256 scale = _mm256_set1_ps(v);
    for (int k = 0; k < count; k += 8)
        _mm256_store_ps(ring + k, _mm256_add_ps(_mm256_load_ps(ring + k), _mm256_mul_ps(scale, _mm256_load_ps(taps + k))));
}

// Eight consecutive samples whose ring indices share the aligned start, in sample order.
void AddScaledEight(float* ring, const float* const* copies, int count, const float* v)
{
    const __m256 v0 = _mm256_set1_ps(v[0]), v1 = _mm256_set1_ps(v[1]), v2 = _mm256_set1_ps(v[2]), v3 = _mm256_set1_ps(v[3]);
    const __m256 v4 = _mm256_set1_ps(v[4]), v5 = _mm256_set1_ps(v[5]), v6 = _mm256_set1_ps(v[6]), v7 = _mm256_set1_ps(v[7]);
    const float *c0 = copies[0], *c1 = copies[1], *c2 = copies[2], *c3 = copies[3];
    const float *c4 = copies[4], *c5 = copies[5], *c6 = copies[6], *c7 = copies[7];
    for (int k = 0; k < count; k += 8) {
        __m256 sum = _mm256_load_ps(ring + k);
        sum = _mm256_add_ps(sum, _mm256_mul_ps(v0, _mm256_load_ps(c0 + k)));
        sum = _mm256_add_ps(sum, _mm256_mul_ps(v1, _mm256_load_ps(c1 + k)));
        sum = _mm256_add_ps(sum, _mm256_mul_ps(v2, _mm256_load_ps(c2 + k)));
        sum = _mm256_add_ps(sum, _mm256_mul_ps(v3, _mm256_load_ps(c3 + k)));
        sum = _mm256_add_ps(sum, _mm256_mul_ps(v4, _mm256_load_ps(c4 + k)));
        sum = _mm256_add_ps(sum, _mm256_mul_ps(v5, _mm256_load_ps(c5 + k)));
        sum = _mm256_add_ps(sum, _mm256_mul_ps(v6, _mm256_load_ps(c6 + k)));
        sum = _mm256_add_ps(sum, _mm256_mul_ps(v7, _mm256_load_ps(c7 + k)));
        _mm256_store_ps(ring + k, sum);
    }
}

}  // namespace

extern const FirKernels firKernels8 = {8, &AddScaled8, &AddScaledEight};

}  // namespace AudioEngine::Convolution

#if defined(__clang__)
#pragma clang attribute pop
#endif
