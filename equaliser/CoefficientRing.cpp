#include "equaliser/CoefficientRing.h"

namespace OV::Comp::ModuleLinearPhaseEq {

namespace {

// Keeps the target's storage when it is large enough; an empty source leaves it freed.
void CopyInto(std::vector<float>& target, const std::vector<float>& source)
{
    if (source.empty())
        std::vector<float>().swap(target);
    else
        target.assign(source.begin(), source.end());
}

}  // namespace

bool CoefficientRing::Push(const std::vector<float>& left, const std::vector<float>& right, float sampleRate)
{
    std::uint32_t write = writeIndex.load(std::memory_order_relaxed);
    const std::uint32_t next = Next(write);
    if (next == readIndex.load(std::memory_order_acquire))
        return false;
    ChainCoeffRecord& record = records[write];
    CopyInto(record.left, left);
    CopyInto(record.right, right);
    record.sampleRate = sampleRate;
    // The only writer of the index: the exchange cannot fail; it publishes the record.
    return writeIndex.compare_exchange_strong(write, next, std::memory_order_release, std::memory_order_relaxed);
}

const ChainCoeffRecord* CoefficientRing::Peek() const
{
    const std::uint32_t read = readIndex.load(std::memory_order_relaxed);
    if (read == writeIndex.load(std::memory_order_acquire))
        return nullptr;
    return &records[read];
}

void CoefficientRing::Pop()
{
    std::uint32_t read = readIndex.load(std::memory_order_relaxed);
    if (read == writeIndex.load(std::memory_order_acquire))
        return;
    readIndex.compare_exchange_strong(read, Next(read), std::memory_order_release, std::memory_order_relaxed);
}

}  // namespace OV::Comp::ModuleLinearPhaseEq
