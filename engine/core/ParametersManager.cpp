#include "engine/core/ParametersManager.h"

#include "engine/core/Handler.h"

#include <cmath>

namespace AudioEngine {

namespace {

std::vector<ParametersManager::Record> MakeRecords(int size)
{
    std::vector<ParametersManager::Record> records(static_cast<std::size_t>(size));
    for (ParametersManager::Record& record : records)
        record.name.reserve(ParametersManager::nameCapacity);
    return records;
}

}  // namespace

ParametersManager::ParametersManager(ParameterHandler& handler, float ramp)
    : rampTime(ramp), ring(MakeRecords(ringSize)), target(&handler), transaction(MakeRecords(1))
{
}

void ParametersManager::Enqueue(const std::string& name, float value)
{
    if (std::isnan(value))
        return;
    if (transactionOpen) {
        if (transactionCount == transactionCapacity) {
            // Rare growth on the audio path: flagged, not refused.
            SetTransactionCapacity(std::max(static_cast<int>(transactionCapacity * 1.4), transactionCapacity + 1));
            transactionOverflowed = true;
        }
        Record& record = transaction[static_cast<std::size_t>(transactionCount++)];
        record.name.assign(name);
        record.value = value;
        return;
    }
    Record& record = Slot(writePosition);
    record.name.assign(name);
    record.value = value;
    writePosition = (writePosition + 1) % ringSize;
    if (count == ringSize)
        readPosition = (readPosition + 1) % ringSize;
    else
        ++count;
}

void ParametersManager::Apply(const Record& record)
{
    const ParameterBase* parameter = target->GetParameter(record.name);
    if (parameter != nullptr && (parameter->GetFlags() & ParameterBase::OutputOnly) == 0)
        target->SetParameter(record.name, record.value);
}

void ParametersManager::Drain(int limit, float seconds)
{
    if (transactionOpen || count == 0)
        return;
    const ChangeSequence::Pass pass(changes);
    const int examined = std::min(limit, count);
    int kept = 0; // records that stay queued, compacted at the front of the ring
    for (int i = 0; i < examined; ++i) {
        Record& record = Slot(readPosition + i);
        ParameterBase* parameter = target->GetParameter(record.name);
        bool keep = false;
        if (parameter == nullptr || (parameter->GetFlags() & ParameterBase::OutputOnly) != 0) {
            // dropped
        } else if ((parameter->GetFlags() & ParameterBase::Barrier) != 0) {
            for (int k = 0; k < kept; ++k)
                Apply(Slot(readPosition + k));
            kept = 0;
            target->SetParameter(record.name, record.value);
        } else if (!parameter->GetStates().empty()) {
            // The states' indices, compared without an integer conversion that a far value
            // would make undefined.
            if (std::trunc(record.value) != std::trunc(parameter->GetValue()))
                target->SetParameter(record.name, record.value);
        } else if ((parameter->GetFlags() & ParameterBase::Step) != 0) {
            target->SetParameter(record.name, record.value);
        } else {
            const float current = parameter->GetValue();
            const float step = (parameter->GetMax() - parameter->GetMin()) * (seconds / rampTime);
            if (step >= std::fabs(record.value - current)) {
                target->SetParameter(record.name, record.value);
            } else {
                target->SetParameter(record.name, record.value > current ? current + step : current - step);
                keep = true;
            }
        }
        if (keep) {
            if (i != kept)
                std::swap(Slot(readPosition + kept), record);
            ++kept;
        }
    }
    // Records not examined move down behind the kept ones.
    const int unexamined = count - examined;
    for (int i = 0; i < unexamined && kept != examined; ++i)
        std::swap(Slot(readPosition + kept + i), Slot(readPosition + examined + i));
    count = kept + unexamined;
    writePosition = (readPosition + count) % ringSize;
}

void ParametersManager::Flush()
{
    const ChangeSequence::Pass pass(changes);
    for (int i = 0; i < count; ++i)
        Apply(Slot(readPosition + i));
    readPosition = writePosition;
    count = 0;
}

void ParametersManager::OpenTransaction()
{
    transactionOpen = true;
    transactionCount = 0;
    replayPosition = 0;
}

void ParametersManager::ClearTransaction()
{
    transactionOpen = false;
    transactionOverflowed = false;
    transactionCount = 0;
    replayPosition = 0;
}

void ParametersManager::SetTransactionCapacity(int capacity)
{
    transactionCapacity = std::max(capacity, 1);
    const std::size_t size = static_cast<std::size_t>(transactionCapacity);
    while (transaction.size() < size) {
        transaction.emplace_back();
        transaction.back().name.reserve(nameCapacity);
    }
}

bool ParametersManager::Replay(int budget)
{
    const ChangeSequence::Pass pass(changes);
    for (; replayPosition < transactionCount && budget > 0; ++replayPosition, --budget)
        Apply(transaction[static_cast<std::size_t>(replayPosition)]);
    return replayPosition >= transactionCount;
}

}  // namespace AudioEngine
