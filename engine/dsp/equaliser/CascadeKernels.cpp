#include "engine/dsp/equaliser/CascadeKernels.h"

#include "engine/dsp/equaliser/CascadeLanes.h"

#include <algorithm>
#include <cfloat>
#include <type_traits>

#include <emmintrin.h>

namespace AudioEngine::AudioAlgorithm {

namespace CascadeDetails {
// In CascadeKernelsAvx2.cpp, compiled for that instruction set; null where it is not built.
extern const CascadeKernels* avx2Cascade;
}  // namespace CascadeDetails

namespace {

using CascadeDetails::Lanes;

void PlainMono(Biquad* const* sections, int count, const float* in, float* out, int frames)
{
    if (in != out)
        std::copy(in, in + frames, out);
    for (int j = 0; j < count; ++j)
        sections[j]->Process(out, out, frames);
}

void PlainStereo(Biquad* const* left, int countL, Biquad* const* right, int countR, const float* inL,
                 const float* inR, float* outL, float* outR, int frames)
{
    PlainMono(left, countL, inL, outL, frames);
    PlainMono(right, countR, inR, outR, frames);
}

// The sections of one channel a sample apart: in each step section j takes what section j - 1
// gave in the step before, so the sections' recursions run side by side.
template <int K>
void PipelinedMono(Biquad* const* sections, const float* in, float* out, int count)
{
    Biquad lane[K];
    for (int j = 0; j < K; ++j)
        lane[j] = *sections[j];
    float carried[K] = {}; // carried[j]: what section j produced in the last step

    const auto step = [&](int i) {
        // From the last section back, so that each reads its predecessor's previous output.
        for (int j = K - 1; j > 0; --j) {
            if (i - j >= 0 && i - j < count)
                carried[j] = lane[j].Tick(carried[j - 1]);
        }
        if (i < count)
            carried[0] = lane[0].Tick(in[i]);
        if (i - (K - 1) >= 0)
            out[i - (K - 1)] = carried[K - 1];
    };

    const int fill = std::min(K - 1, count);
    int i = 0;
    for (; i < fill; ++i)
        step(i);
    for (; i < count; ++i) {
        for (int j = K - 1; j > 0; --j)
            carried[j] = lane[j].Tick(carried[j - 1]);
        carried[0] = lane[0].Tick(in[i]);
        out[i - (K - 1)] = carried[K - 1];
    }
    for (; i < count + K - 1; ++i)
        step(i);

    for (int j = 0; j < K; ++j)
        *sections[j] = lane[j];
}

void Sse2Mono(Biquad* const* sections, int count, const float* in, float* out, int frames)
{
    switch (count) {
    case 1: return PipelinedMono<1>(sections, in, out, frames);
    case 2: return PipelinedMono<2>(sections, in, out, frames);
    case 3: return PipelinedMono<3>(sections, in, out, frames);
    case 4: return PipelinedMono<4>(sections, in, out, frames);
    case 5: return PipelinedMono<5>(sections, in, out, frames);
    default: return PipelinedMono<6>(sections, in, out, frames);
    }
}

// Both channels' section j in one register: lane 0 left, lane 1 right.
struct PairRegisters {
    __m128d x1, x2, y1, y2, b0, b1, b2, a1, a2;
};

// Biquad::Tick in both lanes: the same operations in the same order. The output, as the double
// of its flushed float, is worked out from the unflushed result (see floatKeep).
inline __m128d TickPair(PairRegisters& s, __m128d x)
{
    __m128d y = _mm_add_pd(_mm_mul_pd(x, s.b0), _mm_mul_pd(s.b1, s.x1));
    y = _mm_sub_pd(y, _mm_mul_pd(s.y1, s.a1));
    y = _mm_add_pd(y, _mm_mul_pd(s.b2, s.x2));
    y = _mm_sub_pd(y, _mm_mul_pd(s.a2, s.y2));
    const __m128d magnitude = _mm_and_pd(y, _mm_castsi128_pd(_mm_set1_epi64x(0x7fffffffffffffffll)));
    s.x2 = s.x1;
    s.x1 = x;
    s.y2 = s.y1;
    s.y1 = _mm_and_pd(y, _mm_cmpnlt_pd(magnitude, _mm_set1_pd(DBL_MIN)));
    return _mm_and_pd(_mm_cvtps_pd(_mm_cvtpd_ps(y)), _mm_cmpnlt_pd(magnitude, _mm_set1_pd(CascadeDetails::floatKeep)));
}

// Both channels' last outputs as floats: the lanes that `Equal` (the same count of sections
// in both) puts in one register, else read one by one.
template <int K, bool Equal>
void Sse2StereoK(Lanes& lanes, const int counts[2], const float* inL, const float* inR, float* outL, float* outR, int frames)
{
    PairRegisters s[K];
    __m128d carried[K];
    for (int j = 0; j < K; ++j) {
        const int l = 2 * j;
        s[j] = {_mm_load_pd(lanes.x1 + l), _mm_load_pd(lanes.x2 + l), _mm_load_pd(lanes.y1 + l),
                _mm_load_pd(lanes.y2 + l), _mm_load_pd(lanes.b0 + l), _mm_load_pd(lanes.b1 + l),
                _mm_load_pd(lanes.b2 + l), _mm_load_pd(lanes.a1 + l), _mm_load_pd(lanes.a2 + l)};
        carried[j] = _mm_setzero_pd();
    }
    const auto step = [&](int i, auto masked) __attribute__((always_inline)) {
        constexpr bool edge = decltype(masked)::value;
        const __m128d input = !edge || i < frames ? _mm_cvtps_pd(_mm_unpacklo_ps(_mm_load_ss(inL + i), _mm_load_ss(inR + i)))
                                                  : _mm_setzero_pd();
#pragma GCC unroll 8
        for (int j = K - 1; j >= 0; --j) {
            const __m128d x = j == 0 ? input : carried[j - 1];
            if constexpr (edge) {
                if (CascadeDetails::Busy(j, i, frames))
                    carried[j] = TickPair(s[j], x);
            } else {
                carried[j] = TickPair(s[j], x);
            }
        }
        const int sampleL = i - (counts[0] - 1);
        const int sampleR = i - (counts[1] - 1);
        if constexpr (Equal) {
            if (!edge || (sampleL >= 0 && sampleL < frames)) {
                const __m128 last = _mm_cvtpd_ps(carried[K - 1]);
                outL[sampleL] = _mm_cvtss_f32(last);
                outR[sampleL] = _mm_cvtss_f32(_mm_shuffle_ps(last, last, 1));
            }
        } else {
            alignas(16) double spill[2 * K];
            for (int j = 0; j < K; ++j)
                _mm_store_pd(spill + 2 * j, carried[j]);
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
    for (int j = 0; j < K; ++j) {
        const int l = 2 * j;
        _mm_store_pd(lanes.x1 + l, s[j].x1);
        _mm_store_pd(lanes.x2 + l, s[j].x2);
        _mm_store_pd(lanes.y1 + l, s[j].y1);
        _mm_store_pd(lanes.y2 + l, s[j].y2);
    }
}

template <int K>
void Sse2StereoK(Lanes& lanes, const int counts[2], const float* inL, const float* inR, float* outL, float* outR, int frames)
{
    if (counts[0] == counts[1])
        Sse2StereoK<K, true>(lanes, counts, inL, inR, outL, outR, frames);
    else
        Sse2StereoK<K, false>(lanes, counts, inL, inR, outL, outR, frames);
}

void Sse2Stereo(Biquad* const* left, int countL, Biquad* const* right, int countR, const float* inL,
                const float* inR, float* outL, float* outR, int frames)
{
    Lanes lanes;
    const int extent = std::max(countL, countR);
    lanes.Load(left, countL, 0, extent);
    lanes.Load(right, countR, 1, extent);
    const int counts[2] = {countL, countR};
    switch (std::max(countL, countR)) {
    case 1: Sse2StereoK<1>(lanes, counts, inL, inR, outL, outR, frames); break;
    case 2: Sse2StereoK<2>(lanes, counts, inL, inR, outL, outR, frames); break;
    case 3: Sse2StereoK<3>(lanes, counts, inL, inR, outL, outR, frames); break;
    case 4: Sse2StereoK<4>(lanes, counts, inL, inR, outL, outR, frames); break;
    case 5: Sse2StereoK<5>(lanes, counts, inL, inR, outL, outR, frames); break;
    default: Sse2StereoK<6>(lanes, counts, inL, inR, outL, outR, frames); break;
    }
    lanes.Store(left, countL, 0);
    lanes.Store(right, countR, 1);
}

}  // namespace

const CascadeKernels plainCascade = {"plain", &PlainMono, &PlainStereo};
const CascadeKernels sse2Cascade = {"SSE2", &Sse2Mono, &Sse2Stereo};

const std::vector<const CascadeKernels*>& RunnableCascadeKernels()
{
    static const std::vector<const CascadeKernels*> kernels = [] {
        std::vector<const CascadeKernels*> runnable = {&plainCascade, &sse2Cascade};
        if (CascadeDetails::avx2Cascade != nullptr && __builtin_cpu_supports("avx2"))
            runnable.push_back(CascadeDetails::avx2Cascade);
        return runnable;
    }();
    return kernels;
}

const CascadeKernels& Cascade()
{
    static const CascadeKernels& fastest = *RunnableCascadeKernels().back();
    return fastest;
}

}  // namespace AudioEngine::AudioAlgorithm
