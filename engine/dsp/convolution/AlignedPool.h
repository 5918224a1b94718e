#pragma once

#include <cstddef>
#include <vector>

namespace AudioEngine::Convolution {

// Zeroed float arrays on 16-byte boundaries, freed all together. Each raw block is four floats
// longer than asked, so rounding its start up to the boundary never eats into the array.
// Set-up only: Allocate and Free allocate and free.
class AlignedPool {
public:
    AlignedPool() = default;
    AlignedPool(const AlignedPool&) = delete;
    AlignedPool& operator=(const AlignedPool&) = delete;
    ~AlignedPool() { Free(); }

    // `count` zeroed floats, valid until Free. Throws std::bad_alloc.
    float* Allocate(std::size_t count);
    void Free();

private:
    std::vector<void*> blocks;
};

}  // namespace AudioEngine::Convolution
