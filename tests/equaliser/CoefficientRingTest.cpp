// The ring of chain coefficients between the MAF's idle and the editor's idle.
#include "equaliser/CoefficientRing.h"

#include <atomic>
#include <thread>

#include <gtest/gtest.h>

namespace OV::Testing {
namespace {

using Comp::ModuleLinearPhaseEq::ChainCoeffRecord;
using Comp::ModuleLinearPhaseEq::CoefficientRing;

std::vector<float> Filled(float value, std::size_t count = 30)
{
    return std::vector<float>(count, value);
}

// Each step pushes a record of `push` (or pops, for 0), then checks the indices and the front.
TEST(CoefficientRingTest, HoldsTwoUnreadRecordsAndWraps)
{
    struct Step {
        float push;
        bool pushed;
        unsigned write, read;
        float front; // left[0] of what Peek gives, 0 for null
    };
    const Step steps[] = {
        {1, true, 1, 0, 1},  {2, true, 2, 0, 1},
        {3, false, 2, 0, 1}, // a third unread record is dropped, indices untouched
        {0, true, 2, 1, 2},  {4, true, 0, 1, 2}, {5, false, 0, 1, 2}, {0, true, 0, 2, 4},
        {0, true, 0, 0, 0},  // popping the last record wraps to 0
        {0, true, 0, 0, 0},  // popping an empty ring does nothing
        {6, true, 1, 0, 6},
    };
    CoefficientRing ring;
    EXPECT_EQ(nullptr, ring.Peek());
    for (const Step& step : steps) {
        SCOPED_TRACE(&step - steps);
        if (step.push != 0)
            EXPECT_EQ(step.pushed, ring.Push(Filled(step.push, step.push == 2 ? 29 : 30), Filled(-step.push), 1000 * step.push));
        else
            ring.Pop();
        EXPECT_EQ(step.write, ring.GetWriteIndex());
        EXPECT_EQ(step.read, ring.GetReadIndex());
        const ChainCoeffRecord* front = ring.Peek();
        ASSERT_EQ(step.front == 0, front == nullptr);
        if (front != nullptr) {
            // Record 2 has 29 coefficients: it travels like any other, for the reader to skip.
            EXPECT_EQ(Filled(step.front, step.front == 2 ? 29 : 30), front->left);
            EXPECT_EQ(Filled(-step.front), front->right);
            EXPECT_EQ(1000 * step.front, front->sampleRate);
        }
    }
}

TEST(CoefficientRingTest, RecordsKeepTheirStorageAndFreeItForEmptyData)
{
    CoefficientRing ring;
    ring.Push(Filled(1), Filled(1), 48000.0f);
    const float* storage = ring.Peek()->left.data();
    for (float value : {2.0f, 3.0f, 4.0f}) { // once round, back to record 0
        ring.Pop();
        ring.Push(Filled(value), Filled(value), 48000.0f);
    }
    ASSERT_EQ(0u, ring.GetReadIndex());
    EXPECT_EQ(Filled(4), ring.Peek()->left);
    EXPECT_EQ(storage, ring.Peek()->left.data()) << "the same size reuses the storage";

    ring.Pop();
    ring.Push({}, {}, 0.0f); // into record 1, which held 30 floats
    EXPECT_EQ(0u, ring.Peek()->left.capacity()) << "an empty source frees the storage";
    EXPECT_EQ(0u, ring.Peek()->right.capacity());
}

// A writer and a reader on their own threads: the reader sees every record, in order, whole.
TEST(CoefficientRingTest, OneWriterOneReaderSeeWholeRecordsInOrder)
{
    constexpr int records = 3000;
    CoefficientRing ring;
    std::atomic<bool> done{false};
    std::thread writer([&] {
        for (int id = 1; id <= records; ++id) {
            while (!ring.Push(Filled(static_cast<float>(id)), Filled(static_cast<float>(-id)), static_cast<float>(id)))
                std::this_thread::yield();
        }
        done = true;
    });
    int last = 0;
    bool whole = true;
    while (last < records) {
        const ChainCoeffRecord* record = ring.Peek();
        if (record == nullptr) {
            if (done && ring.Peek() == nullptr)
                break; // records went missing
            std::this_thread::yield();
            continue;
        }
        const int id = static_cast<int>(record->sampleRate);
        whole = whole && id == last + 1 && record->left == Filled(static_cast<float>(id)) &&
                record->right == Filled(static_cast<float>(-id));
        last = id;
        ring.Pop();
    }
    writer.join();
    EXPECT_EQ(records, last);
    EXPECT_TRUE(whole);
}

}  // namespace
}  // namespace OV::Testing
