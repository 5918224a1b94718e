#pragma once

#include "engine/core/ModuleMono.h"
#include "engine/dsp/equaliser/ReversedBlockFilter.h"

namespace AudioEngine::VN4 {

// One channel of the equaliser: six bands, minimum phase, or linear phase through the
// reversed-block filter (with a latency of ReversedBlockFilter::latency samples).
class LinearizedFilterChain : public ModuleMono {
public:
    LinearizedFilterChain();

    // Stores, then reacts: designs, resets and clears as the name asks, and publishes the
    // coefficients in "ChainCoeffs". Audio thread, between blocks.
    void SetParameter(const std::string& name, float value) override;
    void SampleRateChanged() override;
    void Reset() override;
    // The block of both channels of an equaliser, their cascades scheduled together where
    // their modes agree; the same results as each one's Process. Audio thread.
    static void ProcessPair(LinearizedFilterChain& left, LinearizedFilterChain& right);

    // The chain that designs the bands and runs the minimum-phase path; its coefficients are
    // those published.
    const AudioAlgorithm::EqChain& GetChainA() const { return chainA; }

protected:
    void CreateParameters() override;
    void ProcessBlock() override;

private:
    // Applies `update` to the band in both chains.
    template <typename Update>
    void ForBand(int band, Update&& update);
    void PublishCoefficients();

    // Six bands of b0, b1, b2, a1, a2.
    static constexpr std::size_t coefficientCount = 30;

    DataBlock* chainCoeffs = nullptr;
    AudioAlgorithm::EqChain chainA;
    AudioAlgorithm::EqChain chainB;
    AudioAlgorithm::ReversedBlockFilter reversedBlock;
    bool linearize = true;
};

}  // namespace AudioEngine::VN4
