#pragma once

#include "engine/dsp/equaliser/LinearPhaseEqFilterChain.h"

#include <vector>

namespace AudioEngine::AudioAlgorithm {

// Linear phase from a minimum-phase cascade: each block of N samples runs backward through
// chain A, then forward through chain B, so that the phases cancel.
//
// Within each block of N input samples (positions 0..N):
//   [0, H)   chain A filters the previous input block backward, at 8 times the pace, into accB
//   [H, L)   chain A rings out on N zeros; the ring-out lands on the block filtered before,
//            which is then finished in outWrite (written from its end)
//   [0, L)   chain B plays the last L samples of the finished block before that (outRead)
//   [L, N)   chain B plays the first N - L samples of the block just finished (outWrite)
// Input sample i of block k leaves at sample L + i of block k + 2: a latency of 2N + L.
class ReversedBlockFilter {
public:
    static constexpr int N = 16384;
    static constexpr float ratio = 0.25f;
    static constexpr int L = static_cast<int>(N * ratio);
    static constexpr int H = L / 2;
    static constexpr float speed = 8.0f; // floor(2 / ratio)
    static constexpr int latency = 2 * N + L;

    ReversedBlockFilter(EqChain& reversed, EqChain& forward);

    // Audio thread. `out` and `in` may be the same buffer.
    void Process(float* out, const float* in, int count);
    // Two channels' filters at once, their cascades scheduled together when their positions
    // agree (as they do for the two channels of one equaliser); the same results as each
    // filter's Process. Audio thread.
    static void ProcessPair(ReversedBlockFilter& left, ReversedBlockFilter& right, float* outL, float* outR,
                            const float* inL, const float* inR, int count);
    // Zeroes every buffer and puts the reversed pass where a silent history would have left it
    // at the current position, so the block phases stay aligned.
    void Clear();

private:
    template <int C>
    static void Run(ReversedBlockFilter* const (&filters)[C], float* const (&out)[C], const float* const (&in)[C],
                    int count);

    EqChain& chainA;
    EqChain& chainB;
    std::vector<float> scratch;
    int revPos = 0;
    int addPos = 0;
    int pos = 0;
    std::vector<float> inWrite, inRead, accA, accB, outWrite, outRead;
    const std::vector<float> zero;
    bool fade = false;                // a tapered cut of the ring-out; nothing sets it
    const std::vector<float> window;  // (cos(i * pi / N) + 1) / 2
};

}  // namespace AudioEngine::AudioAlgorithm
