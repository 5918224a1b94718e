#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <vector>

namespace OV::Comp::ModuleLinearPhaseEq {

// The biquad coefficients one chain pair was running with, at its own (possibly oversampled)
// rate. A usable vector holds coefficientCount floats: six bands of b0, b1, b2, a1, a2 with a0
// taken as 1. A vector of any other length is to be skipped by the reader.
struct ChainCoeffRecord {
    static constexpr std::size_t coefficientCount = 30;

    std::vector<float> left;  // left or mid chain
    std::vector<float> right; // right or side chain
    float sampleRate = 0.0f;  // Hz
};

// Three records between one writer (the MAF's idle) and one reader (the editor's idle). Each
// side writes only its own index and reads the other's; neither locks nor waits. A full ring
// (two unread records) drops what is pushed, so the writer never touches the record the reader
// holds.
class CoefficientRing {
public:
    static constexpr std::uint32_t capacity = 3;

    CoefficientRing() = default;
    CoefficientRing(const CoefficientRing&) = delete;
    CoefficientRing& operator=(const CoefficientRing&) = delete;

    // Writer thread: false when full, the data then dropped. Copies into the record's storage,
    // allocating only when it is too small; an empty source frees it. No lock, no wait.
    bool Push(const std::vector<float>& left, const std::vector<float>& right, float sampleRate);

    // Reader thread: the oldest unread record, or null. Valid until Pop. No allocation, no lock.
    const ChainCoeffRecord* Peek() const;
    // Reader thread: done with the record Peek gave; nothing when empty. No allocation, no lock.
    void Pop();

    // Any thread: where each side stands.
    std::uint32_t GetWriteIndex() const { return writeIndex.load(std::memory_order_acquire); }
    std::uint32_t GetReadIndex() const { return readIndex.load(std::memory_order_acquire); }

private:
    static std::uint32_t Next(std::uint32_t index) { return index + 1 == capacity ? 0 : index + 1; }

    std::array<ChainCoeffRecord, capacity> records;
    std::atomic<std::uint32_t> writeIndex{0}; // the writer's
    std::atomic<std::uint32_t> readIndex{0};  // the reader's
};

}  // namespace OV::Comp::ModuleLinearPhaseEq
