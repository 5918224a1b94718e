#pragma once

#include "engine/containers/AllocatorAligned.h"

namespace AudioEngine::AudioContainers {

// One channel of 32-bit samples, 16-byte aligned and zeroed when allocated. Set-up only:
// Allocate and copying allocate.
class Buffer {
public:
    Buffer() = default;
    explicit Buffer(unsigned count) { Allocate(count); }
    // A copy has the same size and fresh zeroed samples; none are copied.
    Buffer(const Buffer& other) { Allocate(other.count); }
    Buffer& operator=(const Buffer&) = delete;
    ~Buffer() { Free(); }

    // Nothing for 0; otherwise a new zeroed block replaces the old.
    void Allocate(unsigned count);
    void Free();

    float* Data() const { return data; }
    unsigned Size() const { return count; }

private:
    AllocatorAligned<AllocatorSampleTraits> allocator;
    float* data = nullptr;
    unsigned count = 0;
};

// A ring of samples. A cursor is a plain signed index that wraps once on reads and moves.
class BufferCircular {
public:
    BufferCircular() = default;
    BufferCircular(const BufferCircular&) = delete;
    BufferCircular& operator=(const BufferCircular&) = delete;
    ~BufferCircular() { allocator.Deallocate(data, capacity); }

    // Set-up only: a new zeroed block of n samples (none for 0).
    void Resize(int n);
    int Capacity() const { return capacity; }
    float* Data() const { return data; }

    float& At(int index) const { return data[Wrap(index)]; }
    // One wrap: valid for -capacity <= index < 2 * capacity.
    int Wrap(int index) const
    {
        return index >= capacity ? index - capacity : index < 0 ? index + capacity : index;
    }
    int Advance(int index, int step) const { return Wrap(index + step); }

private:
    int capacity = 0;
    AllocatorAligned<AllocatorSampleTraits> allocator;
    float* data = nullptr;
};

}  // namespace AudioEngine::AudioContainers
