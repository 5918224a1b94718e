#include "engine/dsp/convolution/AlignedPool.h"

#include <cstdint>
#include <cstdlib>
#include <new>

namespace AudioEngine::Convolution {

float* AlignedPool::Allocate(std::size_t count, std::size_t alignment)
{
    blocks.push_back(nullptr); // the list grows first, so a failed push cannot leak the block
    void* raw = std::calloc(count + alignment / sizeof(float), sizeof(float));
    if (raw == nullptr) {
        blocks.pop_back();
        throw std::bad_alloc();
    }
    blocks.back() = raw;
    const std::uintptr_t address = reinterpret_cast<std::uintptr_t>(raw);
    const std::uintptr_t mask = static_cast<std::uintptr_t>(alignment) - 1;
    return reinterpret_cast<float*>((address + mask) & ~mask);
}

void AlignedPool::Free()
{
    for (void* block : blocks)
        std::free(block);
    blocks.clear();
}

}  // namespace AudioEngine::Convolution
