#pragma once

#include "engine/dsp/convolution/AlignedPool.h"
#include "engine/dsp/convolution/FftProvider.h"

#include <vector>

namespace AudioEngine::Convolution {

// The transform length F for blocks of `blockLength` samples and a tail of `tailLength` taps;
// 0 where there is none (block lengths other than 16, 32, 64, 128 and 256).
int TransformLength(int blockLength, int tailLength);
// Partitions of at most F - B taps each that hold the tail; one, all zeros, for an empty tail.
int PartitionCount(int tailLength, int blockLength, int transformLength);

// A FIR tail cut into partitions, each zero-padded to F and held as its spectrum (F + 2 floats,
// packed order of FftProvider), with the transform that made them and that the convolver uses.
class TailPartitions {
public:
    // Set-up only: allocates from `pool`, plans a transform. Throws std::invalid_argument for a
    // block length without a transform length.
    TailPartitions(AlignedPool& pool, const float* taps, int tailLength, int blockLength);
    TailPartitions(const TailPartitions&) = delete;
    TailPartitions& operator=(const TailPartitions&) = delete;

    int GetBlockLength() const { return blockLength; }
    int GetTransformLength() const { return transformLength; }
    int GetPartitionCount() const { return partitionCount; }
    const float* GetSpectrum(int partition) const { return spectra[static_cast<std::size_t>(partition)]; }
    const FftProvider& GetFft() const { return fft; }
    int GetTailLength() const { return tailLength; }

private:
    int blockLength = 0;
    int transformLength = 0;
    int partitionCount = 0;
    std::vector<float*> spectra; // from the pool
    FftProvider fft;
    int tailLength = 0;
};

}  // namespace AudioEngine::Convolution
