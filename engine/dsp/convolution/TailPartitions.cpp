#include "engine/dsp/convolution/TailPartitions.h"

#include <algorithm>
#include <cstring>
#include <stdexcept>
#include <string>

namespace AudioEngine::Convolution {

int TransformLength(int blockLength, int tailLength)
{
    switch (blockLength) {
    case 16:
        return tailLength < 1025 ? 64 : 128;
    case 32:
        return tailLength < 2049 ? 128 : 256;
    case 64:
        return tailLength < 513 ? 128 : 256;
    case 128:
        return 256;
    case 256:
        return 512;
    default:
        return 0;
    }
}

int PartitionCount(int tailLength, int blockLength, int transformLength)
{
    // C++ division truncates toward zero, so an empty tail still gets one partition.
    return (tailLength - 1) / (transformLength - blockLength) + 1;
}

TailPartitions::TailPartitions(AlignedPool& pool, const float* taps, int tailLength, int blockLength)
    : blockLength(blockLength), transformLength(TransformLength(blockLength, tailLength)),
      tailLength(std::max(tailLength, 0))
{
    if (transformLength == 0)
        throw std::invalid_argument("no transform length for a block of " + std::to_string(blockLength));
    partitionCount = PartitionCount(this->tailLength, blockLength, transformLength);
    fft.Create(transformLength);
    const int span = transformLength - blockLength; // taps per partition
    for (int p = 0; p < partitionCount; ++p) {
        float* spectrum = pool.Allocate(static_cast<std::size_t>(transformLength) + 2);
        const int first = p * span;
        const int count = std::min(span, this->tailLength - first);
        if (count > 0)
            std::memcpy(spectrum, taps + first, sizeof(float) * static_cast<std::size_t>(count));
        fft.Forward(spectrum);
        spectra.push_back(spectrum);
    }
}

}  // namespace AudioEngine::Convolution
