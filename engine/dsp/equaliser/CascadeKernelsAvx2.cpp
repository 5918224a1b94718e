// The functions below are generated for AVX2 and only reached where the processor has it; what
// the headers above define stays generic, so no copy of it needs AVX2. No FMA: products and
// sums stay separate roundings, as in the plain form.
#include "engine/dsp/equaliser/CascadeKernels.h"

#include "engine/dsp/equaliser/CascadeLanes.h"

#include <cfloat>
#include <type_traits>

#include <immintrin.h>

#if defined(__clang__)
#pragma clang attribute push(__attribute__((target("avx2"))), apply_to = function)
#else
#pragma GCC target("avx2")
#endif

namespace AudioEngine::AudioAlgorithm {

namespace {

using CascadeDetails::Lanes;

// Two sections of both channels: lanes section 2g left, right, section 2g + 1 left, right.
struct QuadRegisters {
    __m256d x1, x2, y1, y2, b0, b1, b2, a1, a2;
};

// Biquad::Tick in four lanes: the same operations in the same order. The output, as the double
// of its flushed float, is worked out from the unflushed result (see floatKeep).
inline __m256d TickQuad(QuadRegisters& s, __m256d x)
{
    __m256d y = _mm256_add_pd(_mm256_mul_pd(x, s.b0), _mm256_mul_pd(s.b1, s.x1));
    y = _mm256_sub_pd(y, _mm256_mul_pd(s.y1, s.a1));
    y = _mm256_add_pd(y, _mm256_mul_pd(s.b2, s.x2));
    y = _mm256_sub_pd(y, _mm256_mul_pd(s.a2, s.y2));
    const __m256d magnitude = _mm256_and_pd(y, _mm256_castsi256_pd(_mm256_set1_epi64x(0x7fffffffffffffffll)));
    const __m256d keepDouble = _mm256_cmp_pd(magnitude, _mm256_set1_pd(DBL_MIN), _CMP_NLT_US);
    const __m256d keepFloat = _mm256_cmp_pd(magnitude, _mm256_set1_pd(CascadeDetails::floatKeep), _CMP_NLT_US);
    s.x2 = s.x1;
    s.x1 = x;
    s.y2 = s.y1;
    s.y1 = _mm256_and_pd(y, keepDouble);
    return _mm256_and_pd(_mm256_cvtps_pd(_mm256_cvtpd_ps(y)), keepFloat);
}

// Keeps `previous` in the lanes that `busy` does not mark.
inline void KeepIdle(QuadRegisters& s, const QuadRegisters& previous, __m256d& carried, __m256d before, __m256d busy)
{
    s.x1 = _mm256_blendv_pd(previous.x1, s.x1, busy);
    s.x2 = _mm256_blendv_pd(previous.x2, s.x2, busy);
    s.y1 = _mm256_blendv_pd(previous.y1, s.y1, busy);
    s.y2 = _mm256_blendv_pd(previous.y2, s.y2, busy);
    carried = _mm256_blendv_pd(before, carried, busy);
}

// G groups of two sections; a group's input is the upper half of the group before it (its
// second section) and its own lower half (its first section), both from the step before. With
// `Equal` counts of sections, both channels' outputs sit in one half of the last group;
// otherwise they are read one by one.
template <int K, bool Equal>
void Avx2StereoK(Lanes& lanes, const int counts[2], const float* inL, const float* inR, float* outL, float* outR, int frames)
{
    constexpr int G = (K + 1) / 2;
    QuadRegisters s[G];
    __m256d carried[G];
    for (int g = 0; g < G; ++g) {
        const int l = 4 * g;
        s[g] = {_mm256_load_pd(lanes.x1 + l), _mm256_load_pd(lanes.x2 + l), _mm256_load_pd(lanes.y1 + l),
                _mm256_load_pd(lanes.y2 + l), _mm256_load_pd(lanes.b0 + l), _mm256_load_pd(lanes.b1 + l),
                _mm256_load_pd(lanes.b2 + l), _mm256_load_pd(lanes.a1 + l), _mm256_load_pd(lanes.a2 + l)};
        carried[g] = _mm256_setzero_pd();
    }
    const auto step = [&](int i, auto masked) __attribute__((always_inline)) {
        constexpr bool edge = decltype(masked)::value;
        const __m128d input = !edge || i < frames ? _mm_cvtps_pd(_mm_unpacklo_ps(_mm_load_ss(inL + i), _mm_load_ss(inR + i)))
                                                  : _mm_setzero_pd();
#pragma GCC unroll 8
        for (int g = G - 1; g >= 0; --g) {
            const __m256d x = g > 0 ? _mm256_permute2f128_pd(carried[g - 1], carried[g], 0x21)
                                    : _mm256_insertf128_pd(_mm256_castpd128_pd256(input), _mm256_castpd256_pd128(carried[0]), 1);
            if constexpr (edge) {
                const bool firstBusy = CascadeDetails::Busy(2 * g, i, frames);
                const bool secondBusy = CascadeDetails::Busy(2 * g + 1, i, frames);
                if (!firstBusy && !secondBusy)
                    continue;
                const QuadRegisters previous = s[g];
                const __m256d before = carried[g];
                carried[g] = TickQuad(s[g], x);
                const long long first = firstBusy ? -1 : 0;
                const long long second = secondBusy ? -1 : 0;
                KeepIdle(s[g], previous, carried[g], before, _mm256_castsi256_pd(_mm256_set_epi64x(second, second, first, first)));
            } else {
                carried[g] = TickQuad(s[g], x);
            }
        }
        const int sampleL = i - (counts[0] - 1);
        const int sampleR = i - (counts[1] - 1);
        if constexpr (Equal) {
            if (!edge || (sampleL >= 0 && sampleL < frames)) {
                const __m128d pair = (K - 1) % 2 == 0 ? _mm256_castpd256_pd128(carried[G - 1]) : _mm256_extractf128_pd(carried[G - 1], 1);
                const __m128 last = _mm_cvtpd_ps(pair);
                outL[sampleL] = _mm_cvtss_f32(last);
                outR[sampleL] = _mm_cvtss_f32(_mm_shuffle_ps(last, last, 1));
            }
        } else {
            alignas(32) double spill[4 * G];
            for (int g = 0; g < G; ++g)
                _mm256_store_pd(spill + 4 * g, carried[g]);
            if (!edge || (sampleL >= 0 && sampleL < frames))
                outL[sampleL] = static_cast<float>(spill[2 * (counts[0] - 1)]);
            if (!edge || (sampleR >= 0 && sampleR < frames))
                outR[sampleR] = static_cast<float>(spill[2 * (counts[1] - 1) + 1]);
        }
    };
    const int fill = std::min(K - 1, frames);
    int i = 0;
    for (; i < fill; ++i)
        step(i, std::true_type());
    for (; i < frames; ++i)
        step(i, std::false_type());
    for (; i < frames + K - 1; ++i)
        step(i, std::true_type());
    for (int g = 0; g < G; ++g) {
        const int l = 4 * g;
        _mm256_store_pd(lanes.x1 + l, s[g].x1);
        _mm256_store_pd(lanes.x2 + l, s[g].x2);
        _mm256_store_pd(lanes.y1 + l, s[g].y1);
        _mm256_store_pd(lanes.y2 + l, s[g].y2);
    }
}

template <int K>
void Avx2StereoK(Lanes& lanes, const int counts[2], const float* inL, const float* inR, float* outL, float* outR, int frames)
{
    if (counts[0] == counts[1])
        Avx2StereoK<K, true>(lanes, counts, inL, inR, outL, outR, frames);
    else
        Avx2StereoK<K, false>(lanes, counts, inL, inR, outL, outR, frames);
}

void Avx2Stereo(Biquad* const* left, int countL, Biquad* const* right, int countR, const float* inL,
                const float* inR, float* outL, float* outR, int frames)
{
    Lanes lanes;
    const int extent = (std::max(countL, countR) + 1) / 2 * 2;
    lanes.Load(left, countL, 0, extent);
    lanes.Load(right, countR, 1, extent);
    const int counts[2] = {countL, countR};
    switch (std::max(countL, countR)) {
    case 1: Avx2StereoK<1>(lanes, counts, inL, inR, outL, outR, frames); break;
    case 2: Avx2StereoK<2>(lanes, counts, inL, inR, outL, outR, frames); break;
    case 3: Avx2StereoK<3>(lanes, counts, inL, inR, outL, outR, frames); break;
    case 4: Avx2StereoK<4>(lanes, counts, inL, inR, outL, outR, frames); break;
    case 5: Avx2StereoK<5>(lanes, counts, inL, inR, outL, outR, frames); break;
    default: Avx2StereoK<6>(lanes, counts, inL, inR, outL, outR, frames); break;
    }
    lanes.Store(left, countL, 0);
    lanes.Store(right, countR, 1);
}

const CascadeKernels avx2 = {"AVX2", sse2Cascade.mono, &Avx2Stereo};

}  // namespace

namespace CascadeDetails {
const CascadeKernels* avx2Cascade = &avx2;
}  // namespace CascadeDetails

}  // namespace AudioEngine::AudioAlgorithm

#if defined(__clang__)
#pragma clang attribute pop
#endif
