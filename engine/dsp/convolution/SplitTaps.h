#pragma once

#include "engine/dsp/convolution/AlignedPool.h"
#include "engine/dsp/convolution/TailPartitions.h"

#include <memory>

namespace AudioEngine::Convolution {

// A FIR split into a head of the first h taps, computed directly, and a tail of the rest, held
// in partitions of blocks of h samples: the tail path is late by exactly h, where its taps begin.
class SplitTaps {
public:
    // Set-up only: allocates. h is a block length that TransformLength knows.
    SplitTaps(const float* taps, int count, int headLength);
    SplitTaps(const SplitTaps&) = delete;
    SplitTaps& operator=(const SplitTaps&) = delete;

    const float* GetHead() const { return head; }
    int GetHeadLength() const { return headLength; }
    const TailPartitions& GetTail() const { return *tail; }
    int GetLength() const { return length; }

private:
    AlignedPool pool;
    float* head = nullptr;
    int headLength = 0; // taps in the head: h, or all of them when there are fewer
    std::unique_ptr<TailPartitions> tail;
    int length = 0;
};

}  // namespace AudioEngine::Convolution
