#include "engine/dsp/convolution/SegmentedConv.h"

#include <algorithm>
#include <cstring>

namespace AudioEngine::Convolution {
namespace {

void Zero(float* data, int count) { std::memset(data, 0, sizeof(float) * static_cast<std::size_t>(count)); }

void AddInto(float* __restrict target, const float* __restrict source, int count)
{
    for (int i = 0; i < count; ++i)
        target[i] += source[i];
}

}  // namespace

SegmentedConv::SegmentedConv(const TailPartitions& partitions)
    : partitions(partitions), blockLength(partitions.GetBlockLength()),
      partitionCount(partitions.GetPartitionCount()), transformLength(partitions.GetTransformLength()),
      fft(partitions.GetFft())
{
    const std::size_t spectrumLength = static_cast<std::size_t>(transformLength) + 2;
    time = pool.Allocate(spectrumLength);
    for (int p = 0; p < partitionCount; ++p)
        spectra.push_back(partitions.GetSpectrum(p));
    stride = transformLength / blockLength - 1;
    accumulatorCount = stride * (partitionCount - 1) + 1;
    for (int a = 0; a < accumulatorCount; ++a)
        accumulators.push_back(pool.Allocate(spectrumLength));
    overlap = pool.Allocate(2 * static_cast<std::size_t>(transformLength));
}

void SegmentedConv::ProcessBlock(float* out, const float* in)
{
    const int n = blockLength;
    const int spectrumLength = transformLength + 2;
    Zero(time + n, spectrumLength - n);
    for (int i = 0; i < n; ++i)
        time[i] = in[i] + Guard;
    fft.Forward(time);

    for (int p = 0; p < partitionCount; ++p) {
        float* acc = accumulators[static_cast<std::size_t>((stride * p + current) % accumulatorCount)];
        const float* h = spectra[static_cast<std::size_t>(p)];
        // The first pair as two reals, the rest complex.
        acc[0] += time[0] * h[0];
        acc[1] += time[1] * h[1];
        for (int k = 2; k < spectrumLength; k += 2) {
            const float xr = time[k], xi = time[k + 1], hr = h[k], hi = h[k + 1];
            acc[k] += xr * hr - xi * hi;
            acc[k + 1] += xr * hi + xi * hr;
        }
    }

    float* acc = accumulators[static_cast<std::size_t>(current)];
    fft.Backward(acc);
    // Into the overlap ring at `position`, and n samples out of it, zeroed as they leave: each
    // in at most two stretches, before and after the ring's end.
    const int ringLength = 2 * transformLength;
    const int added = std::min(transformLength, ringLength - position);
    AddInto(overlap + position, acc, added);
    AddInto(overlap, acc + added, transformLength - added);
    const int taken = std::min(n, ringLength - position);
    std::copy(overlap + position, overlap + position + taken, out);
    Zero(overlap + position, taken);
    std::copy(overlap, overlap + n - taken, out + taken);
    Zero(overlap, n - taken);
    Zero(acc, spectrumLength);
    position = (position + n) % ringLength;
    current = (current + 1) % accumulatorCount;
}

void SegmentedConv::Reset()
{
    const int spectrumLength = transformLength + 2;
    Zero(time, spectrumLength);
    for (float* acc : accumulators)
        Zero(acc, spectrumLength);
    Zero(overlap, 2 * transformLength);
}

}  // namespace AudioEngine::Convolution
