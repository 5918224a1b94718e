#pragma once

#include <atomic>
#include <thread>

namespace OV::CFW::Thread {

// A pointer that one thread replaces while others, the audio thread among them, keep reading it
// without a lock. Three slots each hold a handle and a count of its readers; `newest` names the
// slot to read. A reader raises the newest slot's count and checks that the slot is still the
// newest before it touches the handle. A writer fills a slot that is neither the newest nor
// read, publishes it, and then waits until the slot it replaced has no reader left: once
// Replace returns, nobody uses the old handle any more.
//
// Read: any thread; no allocation, no lock, no waiting (a retry when a write overlaps). Replace:
// one writer at a time (the caller serialises them), never the audio thread: it may wait.
template <typename T>
class TripleSlotHold {
public:
    // The handle that was newest when the reading began, held until the reading ends.
    class Reading {
    public:
        Reading(T* handle, std::atomic<int>* count) : handle(handle), count(count) {}
        Reading(const Reading&) = delete;
        Reading& operator=(const Reading&) = delete;
        ~Reading() { count->fetch_sub(1); }

        T* Get() const { return handle; }

    private:
        T* handle;
        std::atomic<int>* count;
    };

    TripleSlotHold()
    {
        for (int i = 0; i < slotCount; ++i) {
            handles[i].store(nullptr);
            counts[i].store(0);
        }
    }
    TripleSlotHold(const TripleSlotHold&) = delete;
    TripleSlotHold& operator=(const TripleSlotHold&) = delete;

    Reading Read() const
    {
        for (;;) {
            const int slot = newest.load();
            counts[slot].fetch_add(1);
            if (newest.load() == slot)
                return Reading(handles[slot].load(), &counts[slot]);
            counts[slot].fetch_sub(1);
        }
    }

    // Publishes `handle`; returns once no reader holds the one it replaced.
    void Replace(T* handle)
    {
        const int old = newest.load();
        int fresh = -1;
        while (fresh < 0) {
            for (int i = 0; i < slotCount && fresh < 0; ++i) {
                if (i != old && counts[i].load() == 0)
                    fresh = i;
            }
            if (fresh < 0)
                std::this_thread::yield();  // a reader is just retrying on a stale slot
        }
        handles[fresh].store(handle);
        newest.store(fresh);
        while (counts[old].load() != 0)
            std::this_thread::yield();
    }

    // Writer's side: the handle last published.
    T* Peek() const { return handles[newest.load()].load(); }

private:
    static constexpr int slotCount = 3;

    std::atomic<T*> handles[slotCount];
    mutable std::atomic<int> counts[slotCount];
    std::atomic<int> newest{0};
};

}  // namespace OV::CFW::Thread
