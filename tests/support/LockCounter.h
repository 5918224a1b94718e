#pragma once

namespace OV::Testing {

// Counts the pthread mutex acquisitions of the calling thread (std::mutex, Boost's mutexes and
// signals all end there). ThreadSanitizer owns those functions, so under it nothing is counted
// and IsAvailable() is false.
class LockCounter {
public:
    LockCounter();
    LockCounter(const LockCounter&) = delete;
    LockCounter& operator=(const LockCounter&) = delete;

    // Acquisitions by this thread since construction.
    long Count() const;
    static bool IsAvailable();

private:
    long start;
};

}  // namespace OV::Testing
