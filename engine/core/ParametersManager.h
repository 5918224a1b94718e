#pragma once

#include "engine/core/ChangeSequence.h"

#include <string>
#include <vector>

namespace AudioEngine {

class ParameterHandler;

namespace ModuleHostDetails {

// The queue's settings that outlive a transaction.
class ParameterChanges {
public:
    virtual ~ParameterChanges() = default;
    virtual void SetResetOnCommit(bool reset) = 0;
    virtual bool GetResetOnCommit() const = 0;
};

}  // namespace ModuleHostDetails

// The queue of parameter changes into the tree: a ring of the latest 16384 changes, drained
// between internal blocks with ramps, and the record of an open transaction.
//
// Writers and the reader share one thread (the audio thread); there is no lock. Nothing here
// allocates on that thread, except when a transaction outgrows its capacity. Every pass that
// applies changes is marked in GetChanges, for readers on other threads.
class ParametersManager : public ModuleHostDetails::ParameterChanges {
public:
    static constexpr int ringSize = 16384;
    // Names up to this length are stored without allocating.
    static constexpr std::size_t nameCapacity = 64;

    struct Record {
        std::string name;
        float value = 0.0f;
    };

    // `target` is the root; `rampTime` in seconds is how long a plain parameter takes for its
    // whole range.
    ParametersManager(ParameterHandler& target, float rampTime);

    // Into the open transaction, or else into the ring. A full ring loses its oldest change. A
    // NaN value is dropped.
    void Enqueue(const std::string& name, float value);
    // Works through up to `count` queued changes, oldest first, for an internal block of
    // `seconds`. Nothing drains while a transaction is open.
    void Drain(int count, float seconds);
    int Occupancy() const { return count; }

    // Applies every queued change at once.
    void Flush();
    void OpenTransaction();
    // Forgets the transaction's records and closes it.
    void ClearTransaction();
    bool IsTransactionOpen() const { return transactionOpen; }
    int TransactionRecords() const { return transactionCount; }
    bool TransactionOverflowed() const { return transactionOverflowed; }
    void SetTransactionCapacity(int capacity);
    // Applies up to `budget` records of the transaction that have not been replayed; true when
    // all have been.
    bool Replay(int budget);

    void SetResetOnCommit(bool reset) override { resetOnCommit = reset; }
    bool GetResetOnCommit() const override { return resetOnCommit; }

    // The passes that change the tree's values: this queue's, and any other writer's that may
    // run while other threads read (a rate change, a reset).
    ChangeSequence& GetChanges() { return changes; }

private:
    void Apply(const Record& record);
    Record& Slot(int position) { return ring[static_cast<std::size_t>(position % ringSize)]; }

    float rampTime;
    std::vector<Record> ring;
    int readPosition = 0;
    int writePosition = 0;
    int count = 0;
    ParameterHandler* target;
    bool transactionOpen = false;
    bool transactionOverflowed = false;
    int transactionCapacity = 1;
    int transactionCount = 0;
    int replayPosition = 0;
    std::vector<Record> transaction;
    bool resetOnCommit = true;
    ChangeSequence changes;
};

}  // namespace AudioEngine
