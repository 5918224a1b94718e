#pragma once

#include "engine/dsp/equaliser/AlgorithmBase.h"

#include <cfloat>

#include <emmintrin.h>

namespace AudioEngine::AudioAlgorithm {

template <typename Traits>
class FilterBiquad;

// One second-order section in double precision over float samples. Denormals never survive a
// sample: a result whose exponent field is zero becomes +0, in double before it is stored and
// again in float at the output.
template <>
class FilterBiquad<AlgorithmTraitsDetails::MixedWithCoeffs64bit>
    : public AlgorithmBase<FilterBiquad<AlgorithmTraitsDetails::MixedWithCoeffs64bit>, 1, 1,
                           AlgorithmTraitsDetails::MixedWithCoeffs64bit> {
public:
    void Reset() override { x1 = x2 = y1 = y2 = 0.0; }

    void SetCoefficients(double newB0, double newB1, double newB2, double newA1, double newA2)
    {
        b0 = newB0;
        b1 = newB1;
        b2 = newB2;
        a1 = newA1;
        a2 = newA2;
    }

    // Audio thread. `in` and `out` may be the same buffer.
    void Process(const float* in, float* out, int count)
    {
        for (int i = 0; i < count; ++i)
            out[i] = Tick(in[i]);
    }

    // One sample, in exactly this order of terms.
    float Tick(float sample)
    {
        const double x = sample;
        const double y = FlushDouble(x * b0 + b1 * x1 - y1 * a1 + b2 * x2 - a2 * y2);
        x2 = x1;
        x1 = x;
        y2 = y1;
        y1 = y;
        return FlushFloat(static_cast<float>(y));
    }

    // +0 for a value whose exponent field is zero (zero or denormal), else the value. Branch
    // free: the bit pattern masked by the test |value| >= the smallest normal, which fails for
    // exactly those values (and passes NaN and infinities). The value is broadcast rather than
    // set alone in its register, which compilers do through an integer register.
    static double FlushDouble(double value)
    {
        const __m128d v = _mm_set1_pd(value);
        const __m128d magnitude = _mm_and_pd(v, _mm_castsi128_pd(_mm_set1_epi64x(0x7fffffffffffffffll)));
        const __m128d keep = _mm_cmpnlt_sd(magnitude, _mm_set_sd(DBL_MIN));
        return _mm_cvtsd_f64(_mm_and_pd(v, keep));
    }
    // FlushFloat on four floats at once.
    static __m128 FlushFloats(__m128 v)
    {
        const __m128 magnitude = _mm_and_ps(v, _mm_castsi128_ps(_mm_set1_epi32(0x7fffffff)));
        return _mm_and_ps(v, _mm_cmpnlt_ps(magnitude, _mm_set1_ps(FLT_MIN)));
    }
    static float FlushFloat(float value)
    {
        const __m128 v = _mm_set1_ps(value);
        const __m128 magnitude = _mm_and_ps(v, _mm_castsi128_ps(_mm_set1_epi32(0x7fffffff)));
        const __m128 keep = _mm_cmpnlt_ss(magnitude, _mm_set_ss(FLT_MIN));
        return _mm_cvtss_f32(_mm_and_ps(v, keep));
    }

    double x1 = 0.0, x2 = 0.0, y1 = 0.0, y2 = 0.0;
    double b0 = 1.0, b1 = 0.0, b2 = 0.0, a1 = 0.0, a2 = 0.0;
};

using Biquad = FilterBiquad<AlgorithmTraitsDetails::MixedWithCoeffs64bit>;

}  // namespace AudioEngine::AudioAlgorithm
