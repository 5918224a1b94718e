#pragma once

#include "engine/dsp/equaliser/FilterBiquad.h"

#include <array>
#include <vector>

namespace AudioEngine::AudioAlgorithm {

// Band types, as the values of a band's mode.
enum BandType { HiPass = 0, LowShelving = 1, Peaking = 2, HiShelving = 3, LowPass = 4 };

// One band's settings and the coefficients designed from them.
struct FilterBand {
    bool active = false;
    int type = Peaking;
    float gain = 0.0f;      // dB
    float frequency = 0.0f; // Hz
    float qPeaking = 0.7f;
    float qShelving = 0.7f;
    float qLowHighPass = 0.7f;
    std::vector<float> coefficients = std::vector<float>(30, 0.0f); // b0, b1, b2, a1, a2 used
};

template <typename Filter, int Bands>
class LinearPhaseEqFilterChain;

// A cascade of six biquads, one per band. An inactive band costs nothing and its state stands
// still. With `linearized` set, every design is made for a signal that passes the section
// twice: peak and shelf gains are halved and shelf slopes doubled (high and low pass are not
// compensated).
template <>
class LinearPhaseEqFilterChain<Biquad, 6>
    : public AlgorithmBase<LinearPhaseEqFilterChain<Biquad, 6>, 1, 1, AlgorithmTraitsDetails::Full32bit> {
public:
    static constexpr int bandCount = 6;

    LinearPhaseEqFilterChain();

    // Clears every section's state and designs every band again from its fields.
    void Reset() override;
    // Audio thread. `in` and `out` may be the same buffer.
    void Process(const float* in, float* out, int count);
    // Two channels' chains over the same count, scheduled together; the same results as each
    // chain's Process. Audio thread.
    static void ProcessPair(LinearPhaseEqFilterChain& left, LinearPhaseEqFilterChain& right, const float* inL,
                            const float* inR, float* outL, float* outR, int count);
    // Writes the band's coefficients into its section and into its coefficient vector.
    void Design(int band);

    // The five coefficients of each band, band after band: 30 floats.
    void CopyCoefficients(float* target) const;
    // The sections that run, in band order, into `running`; none when bypassed.
    int RunningSections(Biquad** running);

    std::array<Biquad, bandCount> sections;
    bool linearized = true;
    bool bypass = false;
    std::array<FilterBand, bandCount> bands;
};

using EqChain = LinearPhaseEqFilterChain<Biquad, 6>;

}  // namespace AudioEngine::AudioAlgorithm
