#pragma once

#include "product/automationrouter/Connection.h"
#include "product/automationrouter/Map.h"

#include <atomic>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>

namespace OV::Comp::AutomationRouter {

// What the router's readers see: the present map in one of two buffers, read by the host's
// threads (main, audio, the scheduler's worker) without a lock while the command thread
// publishes the next one into the other buffer. Each reading thread has a word of its own, a
// small dense index into `readers`: it records the buffer the thread is on, and a writer never
// replaces a buffer a reader is on. Besides, the router's connections and the fallback values
// of slots without a target.
class Publication {
public:
    static constexpr int fallbackSize = 1024;
    // More threads than this may read, as long as no more than this read at the same moment.
    static constexpr int readerCount = 16;

    // The map a thread is on (null before the first map) until the reading ends. A reading
    // inside a reading on the same thread shares the outer one's buffer.
    class Reading {
    public:
        Reading(const Publication& publication, int reader, const Map* map)
            : publication(publication), reader(reader), map(map)
        {
        }
        Reading(const Reading&) = delete;
        Reading& operator=(const Reading&) = delete;
        ~Reading();

        const Map* Get() const { return map; }

    private:
        const Publication& publication;
        int reader;  // -1 for an inner reading, which leaves the word to the outer one
        const Map* map;
    };

    Publication();
    Publication(const Publication&) = delete;
    Publication& operator=(const Publication&) = delete;

    // Any thread, the audio thread included: no allocation, no lock, no waiting.
    Reading Read() const;
    // The command thread (or the thread building the instance, before any reader). Waits while
    // a reader is still on the buffer it reuses; frees the map published two times before.
    void Publish(std::shared_ptr<const Map> map);

    // Any thread: a slot past the end reads 0 and is not written.
    float GetFallback(int slot) const;
    bool SetFallback(int slot, float value);

    // Target automation to its connection. The command thread only.
    std::map<CFW::DocView::Automation*, std::shared_ptr<Connection>> connections;

private:
    // A reader word: the thread's tag (its id, whose two low bits are clear) or 0 for a free
    // word, and in the two low bits 0 (idle) or 1 + the buffer it is on.
    static constexpr std::uintptr_t stateMask = 3;

    int FindReader(std::uintptr_t tag) const;

    std::shared_ptr<const Map> buffers[2];
    std::atomic<int> current{0};
    mutable std::atomic<std::uintptr_t> readers[readerCount];
    std::unique_ptr<std::atomic<float>[]> fallback;
    std::mutex writer;  // one Publish at a time
};

}  // namespace OV::Comp::AutomationRouter
