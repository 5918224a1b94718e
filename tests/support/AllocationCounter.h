#pragma once

namespace OV::Testing {

// Counts heap allocations made by the calling thread: every operator new, and every malloc,
// calloc and realloc where no sanitizer owns those.
class AllocationCounter {
public:
    AllocationCounter();
    ~AllocationCounter();
    AllocationCounter(const AllocationCounter&) = delete;
    AllocationCounter& operator=(const AllocationCounter&) = delete;

    // Allocations by this thread since construction.
    long Count() const;

private:
    long start;
};

}  // namespace OV::Testing
