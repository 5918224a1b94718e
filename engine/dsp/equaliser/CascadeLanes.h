#pragma once

// Shared by the cascade kernels only.
#include "engine/dsp/equaliser/FilterBiquad.h"

#include <algorithm>

namespace AudioEngine::AudioAlgorithm::CascadeDetails {

constexpr int maxSections = 6;

// A section's output to the next is its result rounded to float and flushed. That float is kept
// exactly when |y| >= FLT_MIN - 2^-150 (NaN too): below, it rounds to a subnormal or zero (the
// midpoint rounds up to FLT_MIN, whose mantissa is even). Testing y itself lets the test run
// beside the conversion. The double flush of y changes only values whose float is zero, so the
// output need not wait for it either.
constexpr double floatKeep = 0x1p-126 - 0x1p-150;
constexpr int laneCount = 2 * maxSections;

// The sections of two channels as lanes: lane 2 * j + c is section j of channel c, so that one
// register of two doubles holds a section of both channels, and one of four holds two
// sections of both. A channel with fewer sections than the other has ghost lanes: zero
// coefficients and state, whose results nothing reads.
//
//   lane:      0    1    2    3    4    5   ...
//   section:   0L   0R   1L   1R   2L   2R  ...
//
// Only the lanes a kernel loads are written: sections below `extent`.
struct alignas(32) Lanes {
    double x1[laneCount], x2[laneCount], y1[laneCount], y2[laneCount];
    double b0[laneCount], b1[laneCount], b2[laneCount], a1[laneCount], a2[laneCount];

    // The channel's sections, and ghosts up to `extent`.
    void Load(Biquad* const* sections, int count, int channel, int extent)
    {
        for (int j = 0; j < count; ++j) {
            const Biquad& s = *sections[j];
            const int l = 2 * j + channel;
            x1[l] = s.x1, x2[l] = s.x2, y1[l] = s.y1, y2[l] = s.y2;
            b0[l] = s.b0, b1[l] = s.b1, b2[l] = s.b2, a1[l] = s.a1, a2[l] = s.a2;
        }
        for (int j = count; j < extent; ++j) {
            const int l = 2 * j + channel;
            x1[l] = x2[l] = y1[l] = y2[l] = b0[l] = b1[l] = b2[l] = a1[l] = a2[l] = 0.0;
        }
    }
    void Store(Biquad* const* sections, int count, int channel) const
    {
        for (int j = 0; j < count; ++j) {
            Biquad& s = *sections[j];
            const int l = 2 * j + channel;
            s.x1 = x1[l], s.x2 = x2[l], s.y1 = y1[l], s.y2 = y2[l];
        }
    }

};

// Two channels' cascades over a block are scheduled as a pipeline: at step i, section j of a
// channel works on sample i - j, so the sections of a step do not wait on one another. In the
// steps where some section has no sample (the first and last sections - 1), that section's
// lanes keep their state. Outputs of channel c come from its last section, count - 1 steps
// late; a ghost lane runs like the others and nothing reads it.

// Whether section j works at step i.
inline bool Busy(int j, int i, int frames)
{
    return i - j >= 0 && i - j < frames;
}

}  // namespace AudioEngine::AudioAlgorithm::CascadeDetails
