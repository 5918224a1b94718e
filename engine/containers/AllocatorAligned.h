#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <new>

namespace AudioEngine::AudioContainers {

struct AllocatorSampleTraits {
    using Sample = float;
};

// Zeroed sample blocks on a 16-byte boundary. The boundary is the next one strictly above the
// raw block, so even an aligned raw block moves up 16 bytes and its first bytes stay unused.
// Set-up only: allocates.
template <typename Traits>
class AllocatorAligned {
public:
    using Sample = typename Traits::Sample;

    AllocatorAligned() = default;
    AllocatorAligned(const AllocatorAligned&) = delete;
    AllocatorAligned& operator=(const AllocatorAligned&) = delete;
    ~AllocatorAligned() { Deallocate(reinterpret_cast<Sample*>(raw), 0); }

    Sample* Allocate(std::size_t count);
    // Frees the last block; a null pointer frees nothing.
    void Deallocate(Sample* pointer, std::size_t count);

private:
    void* raw = nullptr;
};

template <typename Traits>
typename AllocatorAligned<Traits>::Sample* AllocatorAligned<Traits>::Allocate(std::size_t count)
{
    raw = std::calloc(count * sizeof(Sample) + 16, 1);
    if (raw == nullptr)
        throw std::bad_alloc();
    const std::uintptr_t address = reinterpret_cast<std::uintptr_t>(raw);
    return reinterpret_cast<Sample*>(((address >> 4) + 1) << 4);
}

template <typename Traits>
void AllocatorAligned<Traits>::Deallocate(Sample* pointer, std::size_t)
{
    if (raw != nullptr && pointer != nullptr) {
        std::free(raw);
        raw = nullptr;
    }
}

}  // namespace AudioEngine::AudioContainers
