#pragma once

#include <cstddef>
#include <mutex>

namespace OV::CFW::Thread {

// An intrusive first-in first-out queue of T, linked through T's `next`; it never allocates.
// An item is in at most one queue at a time. `next` may be declared in a base of T (as
// `DocView::Command::next` is): every item of a LockingQueue<T> is a T, so it is cast back.
//
// Any thread. Every operation holds `mutex` for a few pointer moves only, so the audio thread
// may call them when Mutex is a plain mutex.
template <typename T, typename Mutex>
class LockingQueue {
public:
    LockingQueue() = default;
    LockingQueue(const LockingQueue&) = delete;
    LockingQueue& operator=(const LockingQueue&) = delete;
    // Items still queued are not touched: they belong to whoever made them.
    virtual ~LockingQueue() = default;

    // Appends `item`; null is ignored.
    virtual void Push(T* item)
    {
        if (item == nullptr)
            return;
        std::lock_guard<Mutex> lock(mutex);
        item->next = nullptr;
        if (tail != nullptr)
            tail->next = item;
        else
            head = item;
        tail = item;
        ++count;
    }

    // The oldest item, or null when empty.
    virtual T* Pop()
    {
        std::lock_guard<Mutex> lock(mutex);
        T* item = head;
        if (item == nullptr)
            return nullptr;
        head = static_cast<T*>(item->next);
        if (head == nullptr)
            tail = nullptr;
        --count;
        item->next = nullptr;
        return item;
    }

    // Empties the queue in one step and returns its old head; the items follow in `next` order
    // and the last one's `next` is null. Null when empty.
    virtual T* TakeAll()
    {
        std::lock_guard<Mutex> lock(mutex);
        T* first = head;
        head = nullptr;
        tail = nullptr;
        count = 0;
        return first;
    }

    virtual bool IsEmpty() const
    {
        std::lock_guard<Mutex> lock(mutex);
        return head == nullptr;
    }

    virtual std::size_t GetCount() const
    {
        std::lock_guard<Mutex> lock(mutex);
        return count;
    }

private:
    mutable Mutex mutex;
    T* head = nullptr;
    T* tail = nullptr;
    std::size_t count = 0;
};

}  // namespace OV::CFW::Thread
