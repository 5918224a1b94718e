// Replaces the global allocation functions of the test binary so that a test can prove that a
// stretch of code allocates nothing. Under a sanitizer the C allocator is its own and only
// operator new is counted.
#include "tests/support/AllocationCounter.h"

#include <cstdlib>
#include <new>

namespace {

thread_local long allocations = 0;

void* CountedNew(std::size_t size)
{
    ++allocations;
    if (void* block = std::malloc(size == 0 ? 1 : size))
        return block;
    throw std::bad_alloc();
}

void* CountedAlignedNew(std::size_t size, std::align_val_t alignment)
{
    ++allocations;
    const std::size_t align = static_cast<std::size_t>(alignment);
    if (void* block = std::aligned_alloc(align, (size + align - 1) / align * align))
        return block;
    throw std::bad_alloc();
}

}  // namespace

void* operator new(std::size_t size) { return CountedNew(size); }
void* operator new[](std::size_t size) { return CountedNew(size); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept
{
    try {
        return CountedNew(size);
    } catch (...) {
        return nullptr;
    }
}
void* operator new[](std::size_t size, const std::nothrow_t& tag) noexcept { return operator new(size, tag); }
void* operator new(std::size_t size, std::align_val_t alignment) { return CountedAlignedNew(size, alignment); }
void* operator new[](std::size_t size, std::align_val_t alignment) { return CountedAlignedNew(size, alignment); }
void operator delete(void* block) noexcept { std::free(block); }
void operator delete[](void* block) noexcept { std::free(block); }
void operator delete(void* block, std::size_t) noexcept { std::free(block); }
void operator delete[](void* block, std::size_t) noexcept { std::free(block); }
void operator delete(void* block, std::align_val_t) noexcept { std::free(block); }
void operator delete[](void* block, std::align_val_t) noexcept { std::free(block); }
void operator delete(void* block, std::size_t, std::align_val_t) noexcept { std::free(block); }
void operator delete[](void* block, std::size_t, std::align_val_t) noexcept { std::free(block); }

#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
extern "C" {
void* __libc_malloc(std::size_t);
void* __libc_calloc(std::size_t, std::size_t);
void* __libc_realloc(void*, std::size_t);

void* malloc(std::size_t size)
{
    ++allocations;
    return __libc_malloc(size);
}

void* calloc(std::size_t count, std::size_t size)
{
    ++allocations;
    return __libc_calloc(count, size);
}

void* realloc(void* block, std::size_t size)
{
    ++allocations;
    return __libc_realloc(block, size);
}
}
#endif

namespace OV::Testing {

AllocationCounter::AllocationCounter() : start(allocations) {}

AllocationCounter::~AllocationCounter() = default;

long AllocationCounter::Count() const
{
    return allocations - start;
}

}  // namespace OV::Testing
