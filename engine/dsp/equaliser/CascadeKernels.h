#pragma once

#include "engine/dsp/equaliser/FilterBiquad.h"

#include <vector>

namespace AudioEngine::AudioAlgorithm {

// The work of a cascade over a block: the active sections of one channel, in order, or of two
// channels at once. Every kernel gives, bit for bit, what Biquad::Process of each section over
// the whole block in turn gives, and leaves the sections' states as that would; kernels differ
// only in how they schedule the work. `in` and `out` of a channel may be the same buffer.
//
// Audio thread: no allocation, no lock.
struct CascadeKernels {
    const char* name;
    // `count` sections, at least one.
    void (*mono)(Biquad* const* sections, int count, const float* in, float* out, int frames);
    // Two channels of `countL` and `countR` sections, each at least one.
    void (*stereo)(Biquad* const* left, int countL, Biquad* const* right, int countR, const float* inL,
                   const float* inR, float* outL, float* outR, int frames);
};

// One section after another over the whole block: the plain form, kept as the oracle.
extern const CascadeKernels plainCascade;
// The sections side by side, a sample apart, each channel's pair of doubles in one SSE2
// register.
extern const CascadeKernels sse2Cascade;

// The kernels this processor can run, the plain ones first.
const std::vector<const CascadeKernels*>& RunnableCascadeKernels();
// The fastest of them; chosen once, on first use.
const CascadeKernels& Cascade();

}  // namespace AudioEngine::AudioAlgorithm
