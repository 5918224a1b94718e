#include "engine/dsp/convolution/LowPassKernel.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace AudioEngine::Convolution {

LowPassKernel::LowPassKernel(int taps, double cutoff, double sampleRate, int headLength)
{
    headOut = pool.Allocate(Limit);
    tailOut = pool.Allocate(Limit);
    Build(taps, cutoff, sampleRate, headLength);
}

void LowPassKernel::Build(int newTaps, double newCutoff, double newSampleRate, int newHeadLength)
{
    const std::vector<float> t = DesignTaps(newTaps, newCutoff, newSampleRate);
    auto newSplit = std::make_unique<SplitTaps>(t.data(), newTaps, newHeadLength);
    auto newHead = std::make_unique<DirectFir>(newSplit->GetHead(), newSplit->GetHeadLength());
    auto newTail = std::make_unique<Tail>(newSplit->GetTail());
    // The old tail goes before the partitions it reads.
    tail = std::move(newTail);
    head = std::move(newHead);
    split = std::move(newSplit);
    taps = newTaps;
    cutoff = newCutoff;
    sampleRate = newSampleRate;
    headLength = newHeadLength;
}

void LowPassKernel::Process(float* out, const float* in, int count)
{
    for (int done = 0; done < count; done += Chunk) {
        const int n = std::min(Chunk, count - done);
        head->Process(headOut, in + done, n);
        tail->Process(tailOut, in + done, n);
        for (int i = 0; i < n; ++i)
            out[done + i] = tailOut[i] + headOut[i];
    }
}

void LowPassKernel::Reset()
{
    head->Reset();
    tail->Reset();
}

std::vector<float> LowPassKernel::DesignTaps(int taps, double cutoff, double sampleRate)
{
    if (taps < 2 || taps % 2 != 0)
        throw std::invalid_argument("a low-pass kernel needs an even number of taps");
    const double pi = 3.14159265358979323846;
    const int m = taps / 2;
    const double nyquist = sampleRate * 0.5;
    const double w = cutoff * pi / nyquist;
    std::vector<double> t(static_cast<std::size_t>(taps));
    const auto at = [&t](int i) -> double& { return t[static_cast<std::size_t>(i)]; };
    at(0) = std::sin(-m * w) / (-m * pi);
    for (int k = 1 - m; k <= -1; ++k) {
        const double v = std::sin(k * w) / (k * pi);
        at(k + m) = v;
        at(taps - (k + m)) = v;
    }
    at(m) = cutoff / nyquist;
    for (int i = 0; i < taps; ++i)
        at(i) = (std::cos((i - m) * 2 * pi / taps) + 1) * at(i) * 0.5;
    return std::vector<float>(t.begin(), t.end());
}

}  // namespace AudioEngine::Convolution
