#pragma once

#include <cstddef>
#include <vector>

namespace AudioEngine::Convolution {

// Zeroed float arrays on 16-byte (or wider) boundaries, freed all together. Each raw block is as
// much longer than asked as the boundary is wide, so rounding its start up to the boundary never
// eats into the array.
// Set-up only: Allocate and Free allocate and free.
class AlignedPool {
public:
    AlignedPool() = default;
    AlignedPool(const AlignedPool&) = delete;
    AlignedPool& operator=(const AlignedPool&) = delete;
    ~AlignedPool() { Free(); }

    // `count` zeroed floats on a boundary of `alignment` bytes (a power of two, at least 16),
    // valid until Free. Throws std::bad_alloc.
    float* Allocate(std::size_t count, std::size_t alignment = 16);
    void Free();

private:
    std::vector<void*> blocks;
};

}  // namespace AudioEngine::Convolution
