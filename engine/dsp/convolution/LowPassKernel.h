#pragma once

#include "engine/dsp/convolution/AlignedPool.h"
#include "engine/dsp/convolution/AnySizeAdapter2.h"
#include "engine/dsp/convolution/DirectFir.h"
#include "engine/dsp/convolution/SegmentedConv.h"
#include "engine/dsp/convolution/SplitTaps.h"

#include <memory>
#include <vector>

namespace AudioEngine::Convolution {

// A linear-phase low-pass FIR: a Hann-windowed sinc of T taps peaking at T / 2, run as a direct
// head of h taps plus a partitioned tail, which together add no delay beyond the filter's own.
class LowPassKernel {
public:
    static constexpr int DefaultHeadLength = 128;
    static constexpr int Chunk = 64;   // samples per pass through head and tail
    static constexpr int Limit = 4096; // length of each scratch array

    // Set-up only: allocates and plans. taps even and at least 2; cutoff and sampleRate in Hz;
    // headLength 16, 32, 64, 128 or 256. Throws std::invalid_argument otherwise.
    LowPassKernel(int taps, double cutoff, double sampleRate, int headLength = DefaultHeadLength);
    LowPassKernel(const LowPassKernel&) = delete;
    LowPassKernel& operator=(const LowPassKernel&) = delete;

    // Set-up only: replaces the filter with a new one, from silence. Same arguments.
    void Build(int taps, double cutoff, double sampleRate, int headLength = DefaultHeadLength);

    // Audio thread: no allocation, no lock. Any count; out may be in.
    void Process(float* out, const float* in, int count);
    // Audio thread: silence in every stage. No allocation.
    void Reset();

    // Samples at the running rate: where the impulse response peaks.
    int GetLatency() const { return taps / 2; }
    int GetTapCount() const { return taps; }
    double GetCutoff() const { return cutoff; }
    double GetSampleRate() const { return sampleRate; }
    int GetHeadLength() const { return headLength; }

    // The T taps: t[i] = sinc at i - T / 2 for the cut-off, times a Hann window of period T.
    // t[0] stands alone (its mirror would be t[T]); the window makes it zero.
    static std::vector<float> DesignTaps(int taps, double cutoff, double sampleRate);

private:
    using Tail = dsp::Domain::Adapters::AnySizeAdapter2<SegmentedConv>;

    std::unique_ptr<SplitTaps> split;
    std::unique_ptr<DirectFir> head;
    std::unique_ptr<Tail> tail;
    AlignedPool pool;
    float* headOut = nullptr; // Limit floats each
    float* tailOut = nullptr;
    int taps = 0;
    double cutoff = 0.0;     // Hz
    double sampleRate = 0.0; // Hz
    int headLength = DefaultHeadLength;
};

}  // namespace AudioEngine::Convolution
