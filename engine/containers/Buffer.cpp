#include "engine/containers/Buffer.h"

namespace AudioEngine::AudioContainers {

void Buffer::Allocate(unsigned newCount)
{
    if (newCount == 0)
        return;
    Free();
    data = allocator.Allocate(newCount);
    count = newCount;
}

void Buffer::Free()
{
    allocator.Deallocate(data, count);
    data = nullptr;
    count = 0;
}

void BufferCircular::Resize(int n)
{
    allocator.Deallocate(data, capacity);
    data = nullptr;
    capacity = n > 0 ? n : 0;
    if (capacity > 0)
        data = allocator.Allocate(static_cast<std::size_t>(capacity));
}

}  // namespace AudioEngine::AudioContainers
