#pragma once

#include <array>
#include <atomic>
#include <mutex>

namespace OV::CFW::DocViewUtils {

// The lock-free hand-over of change lists between one writer side (the thread that changes
// documents) and one reader side (the audio thread). Slots 0, 1 and 2 name the lists; each user
// keeps one list per slot. The writer fills the slot that BeginWrite gives, the reader drains a
// finished slot at each block. While a finished slot waits for the reader, the writer does not
// start another: it reopens that one and adds to it, so the reader gets everything since its
// last read in one list, each value the latest. The third slot is the one being read.
//
// Both sides nest: an inner Begin gives the slot already held, and only the outermost End
// publishes (writer) or releases (reader) it. So a batch of changes is one slot, and every
// user of the ring reads the same slot within one outer read.
class ExchangeRing {
public:
    static constexpr int capacity = 3;

    ExchangeRing();
    ExchangeRing(const ExchangeRing&) = delete;
    ExchangeRing& operator=(const ExchangeRing&) = delete;

    // Writer side, one thread at a time (see WriterMutex): no allocation, no wait.
    // Gives the slot to fill: a fresh one, or the finished one the reader has not taken yet.
    // Fails only when a finished slot waits and `mustFail` is set.
    bool BeginWrite(int& slot, bool mustFail = false);
    // Publishes the slot at the outermost level.
    void EndWrite();

    // Reader side, the audio thread: no allocation, no lock, no wait.
    // Gives the oldest finished slot; false when there is none (or the writer holds it).
    bool BeginRead(int& slot);
    // Frees the slot at the outermost level.
    void EndRead();

    // Taken by the writers around Begin, fill and End whenever more than one thread may write
    // documents; a leaf lock, held only for that. Never taken by the reader.
    std::mutex& WriterMutex() { return writerMutex; }

private:
    enum State { Free = 0, Writing = 1, Reading = 2 };

    // The three entries and the indices that pass them between the sides. All changes of a
    // state and of an index go through compare-and-exchange.
    struct Ring {
        struct Entry {
            int slot;
            std::atomic<int> state{Free};
        };
        static int Next(int index) { return index + 1 == capacity ? 0 : index + 1; }
        static int Previous(int index) { return index == 0 ? capacity - 1 : index - 1; }

        std::array<Entry, ExchangeRing::capacity> entries;
        std::atomic<int> writeIndex{0}; // next entry to publish; written by the writer only
        std::atomic<int> readIndex{0};  // oldest finished entry; written by the reader only
        int stolenIndex = -1;           // the finished entry the writer reopened; writer only
    };

    Ring ring;
    int writeDepth = 0; // writer side only
    int writeSlot = -1;
    int readDepth = 0;  // reader side only
    int readSlot = -1;
    std::mutex writerMutex;
};

}  // namespace OV::CFW::DocViewUtils
