#include "engine/dsp/convolution/AlignedPool.h"

#include <cstdint>
#include <cstdlib>
#include <new>

namespace AudioEngine::Convolution {

float* AlignedPool::Allocate(std::size_t count)
{
    blocks.push_back(nullptr); // the list grows first, so a failed push cannot leak the block
    void* raw = std::calloc(count + 4, sizeof(float));
    if (raw == nullptr) {
        blocks.pop_back();
        throw std::bad_alloc();
    }
    blocks.back() = raw;
    const std::uintptr_t address = reinterpret_cast<std::uintptr_t>(raw);
    return reinterpret_cast<float*>((address + 15) & ~static_cast<std::uintptr_t>(15));
}

void AlignedPool::Free()
{
    for (void* block : blocks)
        std::free(block);
    blocks.clear();
}

}  // namespace AudioEngine::Convolution
