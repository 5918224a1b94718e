#include "docview/utils/BasicAudioMAF.h"
#include "docview/utils/BasicAudioProfile.h"
#include "docview/utils/BasicMAF.h"
#include "tests/support/LockCounter.h"
#include "tests/docview/utils/MediationTestSetup.h"
#include "tests/docview/utils/RecordingWrapper.h"
#include "tests/support/AllocationCounter.h"

#include <mutex>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace OV::CFW::DocViewUtils {
namespace {

using namespace TestDoubles;
using Row = MediatedDocumentProfile;

class TestAudio : public BasicAudioMAF {
public:
    using BasicAudioMAF::BasicAudioMAF;
    using BasicAudioMAF::SetPollDue;
};

// Notes Update and Poll in the wrapper's log, between its blocks.
class NotingMAF : public DocView::MAF {
public:
    explicit NotingMAF(RecordingWrapper& wrapper) : wrapper(wrapper) {}
    const DocView::MAFProfile* GetProfile() const override { return nullptr; }
    void Attach(DocView::MAFWrapper*, const std::string&) override {}
    void Detach() override {}
    bool IsAttached() const override { return true; }
    void Update() override { wrapper.SetFloatParameter("Update", 0); }
    void Poll() override { wrapper.SetFloatParameter("Poll", 0); }

private:
    RecordingWrapper& wrapper;
};

TEST(BasicAudioMAFTest, EachBlockUpdatesThenPollsWhenDueThenProcesses)
{
    const BasicAudioProfile profile(2, 2);
    RecordingWrapper wrapper;
    NotingMAF maf(wrapper);
    TestAudio audio(&profile, &maf, &wrapper);
    audio.Process(nullptr, nullptr, 64, nullptr); // due at first
    audio.SetPollDue(false);
    audio.Process(nullptr, nullptr, 32, nullptr);
    audio.SetPollDue(true);
    audio.Process(nullptr, nullptr, 7, nullptr);
    EXPECT_EQ((std::vector<std::string>{"F Update=0", "F Poll=0", "B 64", "F Update=0", "B 32", "F Update=0", "F Poll=0", "B 7"}),
              wrapper.Log());
}

// The whole audio side of a document (a block's update, poll and engine run) over many blocks
// with changes of every kind in between, single and batched: no allocation and no lock.
TEST(BasicAudioMAFTest, AudioPathNeitherAllocatesNorLocks)
{
    if (Testing::LockCounter::IsAvailable()) {
        // The lock counter itself sees a lock.
        Testing::LockCounter counter;
        std::mutex mutex;
        std::lock_guard<std::mutex> held(mutex);
        ASSERT_EQ(1, counter.Count());
    }
    MediatedDocumentProfile rows;
    MediatedMAFProfile profile;
    TestMAFContext context;
    BatchDocument document(&rows, nullptr);
    BasicMAF maf(&profile, &context, &document);
    RecordingWrapper wrapper(100000);
    // Engine names longer than a string's inline buffer, resolved at the first poll.
    const std::string prefix = "LinearPhaseEQ_Module_With_A_Long_Name";
    wrapper.values["Level_" + prefix] = 12.5f;
    maf.Attach(&wrapper, prefix);
    const BasicAudioProfile audioProfile(2, 2);
    BasicAudioMAF audio(&audioProfile, &maf, &wrapper);

    long allocations = 0, locks = 0;
    for (int block = 0; block < 300; ++block) {
        const float value = static_cast<float>(block % 30) - 14.5f;
        if (block % 10 == 3) {
            document.Batch([&] {
                for (int band = 0; band < Row::bands; ++band)
                    document.SetParameter(Row::FirstBand + band, Parameter::FromFloat(value + 100.0f), DocView::SourceEditor);
            });
        } else {
            document.SetParameter(Row::Gain, Parameter::FromFloat(value), DocView::SourceEditor);
            document.SetParameter(Row::Mode, Parameter::FromEnum(static_cast<std::uint32_t>(block % 4)), DocView::SourceEditor);
            document.SetParameter(Row::Active, Parameter::FromBool(block % 2 == 0), DocView::SourceEditor);
            document.SetParameter(Row::Bypass, Parameter::FromBool(block % 3 == 0), DocView::SourceEditor);
        }
        wrapper.values["Level_" + prefix] = static_cast<float>(block % 50);
        const Testing::AllocationCounter allocationCounter;
        const Testing::LockCounter lockCounter;
        audio.Process(nullptr, nullptr, 64, nullptr);
        allocations += allocationCounter.Count();
        locks += lockCounter.Count();
    }
    EXPECT_EQ(0, allocations);
    EXPECT_EQ(0, locks);
    ASSERT_FALSE(wrapper.overflow);
    // Not vacuous: the changes reached the engine and the engine's level reached the document.
    int floats = 0, texts = 0, blocks = 0;
    for (const auto& call : wrapper.calls) {
        floats += call.kind == RecordingWrapper::SetFloat;
        texts += call.kind == RecordingWrapper::SetString;
        blocks += call.kind == RecordingWrapper::Block;
    }
    EXPECT_GT(floats, 300);
    EXPECT_GT(texts, 100);
    EXPECT_EQ(300, blocks);
    EXPECT_EQ(49.0f, document.GetParameter(Row::Level).AsFloat()); // 299 % 50, read in the last block
    EXPECT_TRUE(maf.IsAttached());
}

}  // namespace
}  // namespace OV::CFW::DocViewUtils
