#pragma once

namespace AudioEngine::AudioAlgorithm {

namespace AlgorithmTraitsDetails {
// 32-bit samples with 64-bit coefficients and state.
struct MixedWithCoeffs64bit {};
// Everything 32-bit.
struct Full32bit {};
}  // namespace AlgorithmTraitsDetails

// Base of the sample algorithms: a sample rate and a way to clear signal state.
template <typename Derived, int Inputs, int Outputs, typename Traits>
class AlgorithmBase {
public:
    virtual void Reset() = 0;
    virtual ~AlgorithmBase() = default;

    float GetSampleRate() const { return sampleRate; }
    void SetSampleRate(float rate) { sampleRate = rate; }

private:
    float sampleRate = 44100.0f;
};

}  // namespace AudioEngine::AudioAlgorithm
