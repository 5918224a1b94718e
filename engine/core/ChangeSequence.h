#pragma once

#include <atomic>
#include <thread>

namespace AudioEngine {

// Lets other threads read engine values as they stood between two changes, without the writer
// ever waiting: a sequence lock. The one writer at a time marks each pass that changes values
// with a Pass; a reader runs its reads between two looks at the count and tries again when a
// pass overlapped them. The values so read are atomics, loaded relaxed, so that an overlapped
// read is a discarded one, never a data race.
class ChangeSequence {
public:
    // The writer's pass, from construction to destruction; passes do not nest. Writer: no
    // allocation, no lock, no wait.
    class Pass {
    public:
        explicit Pass(ChangeSequence& sequence) : count(sequence.count)
        {
            count.store(count.load(std::memory_order_relaxed) + 1, std::memory_order_relaxed);
            std::atomic_thread_fence(std::memory_order_release);
        }
        ~Pass() { count.store(count.load(std::memory_order_relaxed) + 1, std::memory_order_release); }
        Pass(const Pass&) = delete;
        Pass& operator=(const Pass&) = delete;

    private:
        std::atomic<unsigned>& count;
    };

    // Reader: runs `read` until no pass overlaps it, at most `attempts` times, yielding the
    // processor between attempts; false when every attempt met a pass, and what `read` got is
    // then to be dropped. Never holds the writer up.
    template <typename Read>
    bool ReadStable(Read&& read, int attempts = 8) const
    {
        for (int attempt = 0; attempt < attempts; ++attempt) {
            if (attempt > 0)
                std::this_thread::yield();
            const unsigned before = count.load(std::memory_order_acquire);
            if ((before & 1u) != 0)
                continue;
            read();
            std::atomic_thread_fence(std::memory_order_acquire);
            if (count.load(std::memory_order_relaxed) == before)
                return true;
        }
        return false;
    }

private:
    std::atomic<unsigned> count{0}; // odd during a pass
};

}  // namespace AudioEngine
