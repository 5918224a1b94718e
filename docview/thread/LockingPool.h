#pragma once

#include "docview/thread/LockingQueue.h"

#include <cstddef>
#include <memory>
#include <vector>

namespace OV::CFW::Thread {

// A fixed set of T, all made by the constructor and deleted by the destructor, handed out and
// taken back without allocation. T is default-constructible and has `next` (see LockingQueue)
// and `pool`, a pointer that accepts this pool's address: an item can then return itself, as a
// command does at the end of its Execute.
//
// Acquire, Release, TakeAll and IsEmpty: any thread, the audio thread included; they hold the
// mutex for a few pointer moves. Construction and destruction: one thread, with no item in use.
template <typename T, typename Mutex>
class LockingPool {
public:
    // Allocates all `capacity` items; nothing allocates afterwards.
    explicit LockingPool(std::size_t capacity)
    {
        items.reserve(capacity);
        for (std::size_t i = 0; i < capacity; ++i) {
            items.push_back(std::make_unique<T>());
            free.Push(items.back().get());
        }
        for (const std::unique_ptr<T>& item : items)
            item->pool = this;
    }
    LockingPool(const LockingPool&) = delete;
    LockingPool& operator=(const LockingPool&) = delete;
    // Deletes every item, whether free, queued somewhere else or never given back.
    virtual ~LockingPool() = default;

    // A free item, or null when all are out.
    virtual T* Acquire() { return free.Pop(); }
    // Gives an item of this pool back; null is ignored. An item must not be released twice.
    virtual void Release(T* item) { free.Push(item); }
    // Takes every free item out at once (see LockingQueue::TakeAll); they stay owned here.
    virtual T* TakeAll() { return free.TakeAll(); }
    virtual bool IsEmpty() const { return free.IsEmpty(); }
    virtual std::size_t GetCapacity() const { return items.size(); }

private:
    std::vector<std::unique_ptr<T>> items;
    LockingQueue<T, Mutex> free;
};

}  // namespace OV::CFW::Thread
