#pragma once

#include "engine/dsp/convolution/AlignedPool.h"
#include "engine/dsp/convolution/TailPartitions.h"

#include <vector>

namespace AudioEngine::Convolution {

// Uniformly partitioned convolution of a tail in blocks of B samples, output late by B.
//
// Each block is transformed once; its product with partition p goes to the accumulator that is
// transformed back S * p blocks later, S = F / B - 1, which places it p * (F - B) samples on.
// A = S * (P - 1) + 1 accumulators make the round. The F samples of a transformed accumulator
// overlap-add into a ring of 2F, from which B leave per block.
class SegmentedConv {
public:
    // Added to every input sample so that silence never decays into denormals.
    static constexpr float Guard = 1e-29f;

    // Set-up only: allocates. The partitions must outlive the convolver.
    explicit SegmentedConv(const TailPartitions& partitions);
    SegmentedConv(const SegmentedConv&) = delete;
    SegmentedConv& operator=(const SegmentedConv&) = delete;
    virtual ~SegmentedConv() = default;

    // Audio thread: no allocation. One block of exactly GetBlockLength() samples.
    void ProcessBlock(float* out, const float* in);
    // Zeroes accumulators and the overlap ring; the round and the ring position stay.
    void Reset();

    int GetBlockLength() const { return blockLength; }
    int GetTransformLength() const { return transformLength; }
    int GetPartitionCount() const { return partitionCount; }
    int GetAccumulatorCount() const { return accumulatorCount; }
    int GetStride() const { return stride; }

private:
    AlignedPool pool;
    const TailPartitions& partitions;
    float* time = nullptr;                // F + 2 floats: a block in, its spectrum out
    std::vector<const float*> spectra;    // P, borrowed from the partitions
    std::vector<float*> accumulators;     // A spectra of F + 2 floats
    int blockLength = 0;
    int partitionCount = 0;
    int transformLength = 0;
    int accumulatorCount = 0;
    int stride = 0;
    int current = 0;
    const FftProvider& fft;
    float* overlap = nullptr; // 2F floats
    int position = 0;         // in the overlap ring, kept below 2F
};

}  // namespace AudioEngine::Convolution
