#include "docview/utils/ExchangeRing.h"

namespace OV::CFW::DocViewUtils {

namespace {

// A change of a state or an index. Acquire pairs with the other side's release, so whoever
// takes an entry sees everything done to its list before it was handed over.
bool Change(std::atomic<int>& value, int from, int to)
{
    return value.compare_exchange_strong(from, to, std::memory_order_acq_rel, std::memory_order_relaxed);
}

}  // namespace

ExchangeRing::ExchangeRing()
{
    for (int i = 0; i < capacity; ++i)
        ring.entries[static_cast<std::size_t>(i)].slot = i;
}

bool ExchangeRing::BeginWrite(int& slot, bool mustFail)
{
    if (writeDepth != 0) {
        ++writeDepth;
        slot = writeSlot;
        return true;
    }
    const int write = ring.writeIndex.load(std::memory_order_relaxed);
    int taken = write;
    if (write != ring.readIndex.load(std::memory_order_acquire)) {
        // A finished entry waits: reopen the newest and add to it, so that the reader finds
        // everything since its last read in one list, each value the latest.
        if (mustFail)
            return false;
        const int newest = Ring::Previous(write);
        std::atomic<int>& state = ring.entries[static_cast<std::size_t>(newest)].state;
        if (Change(state, Free, Writing)) {
            // The reader may have read it and moved on since readIndex was loaded: then it
            // has gone past, and reopening it would hide this write until the next round.
            // Holding it now keeps readIndex from passing it, so the check is final.
            if (ring.readIndex.load(std::memory_order_acquire) == write) {
                Change(state, Writing, Free);
            } else {
                ring.stolenIndex = newest;
                taken = newest;
            }
        }
        // If the reader holds it, it has moved on too, and the entry at writeIndex may be
        // published without running into it.
    }
    if (taken == write)
        Change(ring.entries[static_cast<std::size_t>(write)].state, Free, Writing);
    writeDepth = 1;
    writeSlot = ring.entries[static_cast<std::size_t>(taken)].slot;
    slot = writeSlot;
    return true;
}

void ExchangeRing::EndWrite()
{
    if (--writeDepth != 0)
        return;
    if (ring.stolenIndex >= 0) {
        Change(ring.entries[static_cast<std::size_t>(ring.stolenIndex)].state, Writing, Free);
        ring.stolenIndex = -1;
    } else {
        const int write = ring.writeIndex.load(std::memory_order_relaxed);
        Change(ring.entries[static_cast<std::size_t>(write)].state, Writing, Free);
        Change(ring.writeIndex, write, Ring::Next(write));
    }
    writeSlot = -1;
}

bool ExchangeRing::BeginRead(int& slot)
{
    if (readDepth != 0) {
        ++readDepth;
        slot = readSlot;
        return true;
    }
    const int read = ring.readIndex.load(std::memory_order_relaxed);
    if (read == ring.writeIndex.load(std::memory_order_acquire))
        return false;
    if (!Change(ring.entries[static_cast<std::size_t>(read)].state, Free, Reading))
        return false; // the writer has reopened it; it is there at the next block
    readDepth = 1;
    readSlot = ring.entries[static_cast<std::size_t>(read)].slot;
    slot = readSlot;
    return true;
}

void ExchangeRing::EndRead()
{
    if (--readDepth != 0)
        return;
    // The index moves before the entry is freed: a writer that reopens a free entry then
    // also sees that it has been read (see BeginWrite).
    const int read = ring.readIndex.load(std::memory_order_relaxed);
    Change(ring.readIndex, read, Ring::Next(read));
    Change(ring.entries[static_cast<std::size_t>(read)].state, Reading, Free);
    readSlot = -1;
}

}  // namespace OV::CFW::DocViewUtils
