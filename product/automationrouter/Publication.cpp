#include "product/automationrouter/Publication.h"

#include <pthread.h>

#include <thread>

namespace OV::Comp::AutomationRouter {

namespace {

// The calling thread's tag: its id, the address of its thread descriptor, which is aligned far
// beyond the two low bits the state takes; never 0.
std::uintptr_t ThreadTag(std::uintptr_t stateMask)
{
    return static_cast<std::uintptr_t>(pthread_self()) & ~stateMask;
}

}  // namespace

Publication::Publication() : fallback(std::make_unique<std::atomic<float>[]>(fallbackSize))
{
    for (std::atomic<std::uintptr_t>& word : readers)
        word.store(0);
    for (int i = 0; i < fallbackSize; ++i)
        fallback[i].store(0.0f);
}

int Publication::FindReader(std::uintptr_t tag) const
{
    for (;;) {
        for (int i = 0; i < readerCount; ++i) {
            if ((readers[i].load() & ~stateMask) == tag)
                return i;
        }
        for (int i = 0; i < readerCount; ++i) {
            std::uintptr_t expected = 0;
            if (readers[i].compare_exchange_strong(expected, tag))
                return i;
        }
        // Every word taken: reuse the word of a thread that is not reading now. Its owner, if
        // it reads again, finds the word gone and takes another.
        for (int i = 0; i < readerCount; ++i) {
            std::uintptr_t idle = readers[i].load();
            if ((idle & stateMask) == 0 && readers[i].compare_exchange_strong(idle, tag))
                return i;
        }
        std::this_thread::yield();  // more threads reading at this moment than words
    }
}

Publication::Reading Publication::Read() const
{
    const std::uintptr_t tag = ThreadTag(stateMask);
    for (;;) {
        const int reader = FindReader(tag);
        const std::uintptr_t word = readers[reader].load();
        if ((word & ~stateMask) != tag)
            continue;  // taken over meanwhile
        if ((word & stateMask) != 0)  // this thread is inside a reading already
            return Reading(*this, -1, buffers[(word & stateMask) - 1].get());
        const int buffer = current.load();
        std::uintptr_t idle = tag;
        if (!readers[reader].compare_exchange_strong(idle, tag | static_cast<std::uintptr_t>(buffer + 1)))
            continue;
        // Marked: if the buffer is still the current one, no writer will replace it now.
        if (current.load() == buffer)
            return Reading(*this, reader, buffers[buffer].get());
        readers[reader].store(tag);
    }
}

Publication::Reading::~Reading()
{
    if (reader >= 0)
        publication.readers[reader].fetch_and(~stateMask);
}

void Publication::Publish(std::shared_ptr<const Map> map)
{
    const std::lock_guard<std::mutex> lock(writer);
    const int next = 1 - current.load();
    const std::uintptr_t onNext = static_cast<std::uintptr_t>(next + 1);
    for (const std::atomic<std::uintptr_t>& word : readers) {
        while ((word.load() & stateMask) == onNext)
            std::this_thread::yield();  // a reading of the map before last: one call into a target
    }
    buffers[next] = std::move(map);
    current.store(next);
}

float Publication::GetFallback(int slot) const
{
    return slot >= 0 && slot < fallbackSize ? fallback[slot].load(std::memory_order_relaxed) : 0.0f;
}

bool Publication::SetFallback(int slot, float value)
{
    if (slot < 0 || slot >= fallbackSize)
        return false;
    fallback[slot].store(value, std::memory_order_relaxed);
    return true;
}

}  // namespace OV::Comp::AutomationRouter
