// The equaliser's bridge against a recording engine door: the bindings in order, what goes
// down, what comes up, and the coefficients read at idle, through the ring of chain
// coefficients between the MAF's idle and the editor's idle.
#include "docview/utils/BasicContexts.h"
#include "equaliser/MAF.h"
#include "tests/docview/utils/MediationTestSetup.h"

#include <algorithm>
#include <atomic>
#include <thread>
#include <tuple>

#include <gtest/gtest.h>

namespace OV::Testing {
namespace {

using CFW::DocView::Parameter;
using namespace CFW::DocViewUtils;
using namespace Comp::ModuleLinearPhaseEq;
using Lines = std::vector<std::string>;

std::vector<float> Filled(float value, std::size_t count = 30)
{
    return std::vector<float>(count, value);
}

// Also serves data blocks by name, and tells which were read.
class BlockWrapper : public TestDoubles::RecordingWrapper {
public:
    void ReadDataBlock(ResolvedName& name, std::vector<float>& out) override
    {
        blockReads.push_back(name.name);
        const auto found = blocks.find(name.name);
        out = found != blocks.end() ? found->second : std::vector<float>();
    }
    std::map<std::string, std::vector<float>> blocks;
    Lines blockReads;
};

struct Bridge {
    explicit Bridge(const std::string& prefix = "Module") { maf.Attach(&wrapper, prefix); }
    Lines Update() // what one Update sends to the engine, sorted
    {
        wrapper.Clear();
        maf.Update();
        Lines lines = wrapper.Log();
        std::sort(lines.begin(), lines.end());
        return lines;
    }
    void Set(int row, Parameter value, int source = CFW::DocView::SourceEditor) { document.SetParameter(row, value, source); }

    BasicMAFContext context{nullptr};
    Document document{&DocumentProfile::Instance(), nullptr};
    BlockWrapper wrapper;
    MAF maf{&MAFProfile::Instance(), &context, &document};
};

TEST(EqualiserMAFTest, BindingsInTheirOrder)
{
    enum Kind { Other, Index, Float, Bool };
    const std::tuple<int, Kind, int, const char*> cases[] = {
        {0, Index, 2, "ChannelMode"}, {1, Index, 49, "Active_0L"},  {2, Index, 48, "Mode_0L"},
        {3, Float, 46, "Gain_0L"},    {4, Float, 50, "F_0L"},       {5, Float, 47, "Q_LPHP_0L"},
        {6, Float, 51, "Q_Peaking_0L"}, {7, Float, 52, "Q_Shelving_0L"}, {8, Index, 92, "Active_0R"},
        {15, Index, 56, "Active_1L"}, {32, Float, 64, "F_2L"},     {84, Float, 130, "Q_Shelving_5R"},
        {85, Float, 88, "OutGainL"},  {86, Float, 131, "OutGainR"}, {87, Float, 178, "OutLevelL"},
        {88, Float, 179, "OutLevelR"}, {89, Bool, 175, "Linearize"},
    };
    const MAFProfile& profile = MAFProfile::Instance();
    EXPECT_EQ("LinearPhaseEQ", profile.GetName());
    ASSERT_EQ(90, profile.GetCreatorCount());
    for (const auto& [position, kind, row, name] : cases) {
        const MAFParamMediator::Creator* creator = &profile.GetCreator(position);
        // The kind, row and name, and whether the binding passes the engine's value as it is:
        // an index itself, a plain float, 0 and 1.
        std::tuple<Kind, int, std::string, bool> seen{Other, 0, "", false};
        if (const auto* index = dynamic_cast<const MAFParamMediatorEnum::Creator*>(creator))
            seen = {Index, index->row, index->name, index->values.empty() && index->texts.empty()};
        else if (const auto* plain = dynamic_cast<const MAFParamMediatorFloat::Creator*>(creator))
            seen = {Float, plain->row, plain->name, plain->converter->ToNormalized(1234.5f) == 1234.5f};
        else if (const auto* onOff = dynamic_cast<const MAFParamMediatorBool::Creator*>(creator))
            seen = {Bool, onOff->row, onOff->name, !onOff->usesText && onOff->offValue == 0.0f && onOff->onValue == 1.0f};
        EXPECT_EQ(std::make_tuple(kind, row, std::string(name), true), seen) << position;
    }
}

TEST(EqualiserMAFTest, FirstUpdateCarriesBothChannelsAndNothingElse)
{
    Bridge bridge;
    const Lines sent = bridge.Update();
    EXPECT_EQ(88u, sent.size()) << "84 band values, ChannelMode, two output gains, Linearize";
    for (const char* line : {"F ChannelMode_Module=0", "F Mode_0L_Module=1", "F Mode_5R_Module=3", "F F_4L_Module=7000",
                             "F Q_Peaking_5L_Module=0.25", "F Q_LPHP_3R_Module=0.7", "F Linearize_Module=0"})
        EXPECT_NE(sent.end(), std::find(sent.begin(), sent.end(), line)) << line;
    EXPECT_TRUE(std::none_of(sent.begin(), sent.end(),
                             [](const std::string& line) { return line.find("OutLevel") != std::string::npos; }));
    EXPECT_EQ(Lines{}, bridge.Update());
}

TEST(EqualiserMAFTest, EditsReachTheEngineParametersOfTheirChannels)
{
    // The row set, its value, and what the next Update sends.
    const std::tuple<int, Parameter, Lines> steps[] = {
        {53, Parameter::FromFloat(4.5f), {"F Gain_1L_Module=4.5"}},                          // LM_Band2Gain
        {21, Parameter::FromFloat(2000.0f), {"F F_2L_Module=2000", "F F_2R_Module=2000"}},    // Band3Hz, '='
        {126, Parameter::FromEnum(4), {"F Mode_5R_Module=4"}},                                // RS_Band6Mode
        {135, Parameter::FromBool(true), {"F Active_0L_Module=1", "F Active_0R_Module=1"}},   // Linked_Band1Active
        {174, Parameter::FromFloat(2.0f), {"F OutGainL_Module=2", "F OutGainR_Module=2"}},    // Linked_OutputLevel
        {111, Parameter::FromFloat(1.5f), {"F Q_LPHP_3R_Module=1.5"}},                        // RS_Band4Resonance
        {2, Parameter::FromEnum(1), {"F ChannelMode_Module=1"}},
        {175, Parameter::FromBool(true), {}},                                                 // not at Low
        {177, Parameter::FromEnum(2), {}},
        {175, Parameter::FromBool(true), {"F Linearize_Module=1"}},
        {177, Parameter::FromEnum(0), {"F Linearize_Module=0"}},
        {176, Parameter::FromEnum(0), {}},                                                    // Oversample: inert
    };
    Bridge bridge;
    bridge.Update();
    for (const auto& [row, value, sent] : steps) {
        bridge.Set(row, value);
        EXPECT_EQ(sent, bridge.Update()) << row << " = " << value.ToNumber();
    }
}

TEST(EqualiserMAFTest, MetersComeUpUnlessTheEngineIsStopped)
{
    Bridge bridge;
    bridge.wrapper.values["OutLevelL_Module"] = 0.5f;
    bridge.wrapper.values["OutLevelR_Module"] = 0.25f;
    bridge.maf.Attach(&bridge.wrapper, "Module"); // resolves against the values now set
    bridge.maf.Poll();
    EXPECT_EQ(0.5f, bridge.document.GetParameter(178).AsFloat());
    EXPECT_EQ(0.25f, bridge.document.GetParameter(179).AsFloat());
    bridge.Set(0, Parameter::FromBool(true), CFW::DocView::SourceInternal);
    bridge.wrapper.values["OutLevelL_Module"] = 0.75f;
    bridge.maf.Poll();
    EXPECT_EQ(0.5f, bridge.document.GetParameter(178).AsFloat());
}

TEST(EqualiserMAFTest, IdlePushesTheCoefficientsOfBothChains)
{
    Bridge bridge;
    bridge.wrapper.blocks["ChainCoeffsL_Module"] = Filled(0.5f);
    bridge.wrapper.blocks["ChainCoeffsR_Module"] = Filled(-0.5f);
    bridge.wrapper.values["SampleRate_Module"] = 96000.0f;
    bridge.maf.Attach(&bridge.wrapper, "Module");
    for (int i = 0; i < 3; ++i) // the third finds the ring full
        bridge.maf.Idle();
    const Lines& reads = bridge.wrapper.blockReads;
    EXPECT_EQ((Lines{"ChainCoeffsL_Module", "ChainCoeffsR_Module"}), Lines(reads.begin(), reads.begin() + 2));
    const ChainCoeffRecord* record = bridge.document.PeekCoefficients();
    ASSERT_NE(nullptr, record);
    EXPECT_EQ(std::make_tuple(Filled(0.5f), Filled(-0.5f), 96000.0f), std::tie(record->left, record->right, record->sampleRate));
    EXPECT_EQ(2u, bridge.document.GetCoefficientRing().GetWriteIndex());

    bridge.document.PopCoefficients();
    bridge.document.PopCoefficients();
    bridge.maf.Detach();
    bridge.maf.Idle();
    EXPECT_EQ(nullptr, bridge.document.PeekCoefficients()) << "detached: nothing read";

    bridge.maf.Attach(&bridge.wrapper, ""); // no blocks under these names
    bridge.maf.Idle();
    EXPECT_EQ("ChainCoeffsR", reads.back());
    record = bridge.document.PeekCoefficients();
    ASSERT_NE(nullptr, record);
    EXPECT_TRUE(record->left.empty());
    EXPECT_EQ(0.0f, record->sampleRate);
}

// Each step pushes a record of `push` (or pops, for 0), then checks the indices and the front.
TEST(CoefficientRingTest, HoldsTwoUnreadRecordsAndWraps)
{
    // What is pushed (0: a pop), whether it went in, the write and read indices after, and
    // left[0] of what Peek gives (0 for null).
    const std::tuple<float, bool, unsigned, unsigned, float> steps[] = {
        {1, true, 1, 0, 1},  {2, true, 2, 0, 1},
        {3, false, 2, 0, 1}, // a third unread record is dropped, indices untouched
        {0, true, 2, 1, 2},  {4, true, 0, 1, 2}, {5, false, 0, 1, 2}, {0, true, 0, 2, 4},
        {0, true, 0, 0, 0},  // popping the last record wraps to 0
        {0, true, 0, 0, 0},  // popping an empty ring does nothing
        {6, true, 1, 0, 6},
    };
    CoefficientRing ring;
    EXPECT_EQ(nullptr, ring.Peek());
    int step = 0;
    for (const auto& [push, pushed, write, read, first] : steps) {
        SCOPED_TRACE(step++);
        if (push != 0)
            EXPECT_EQ(pushed, ring.Push(Filled(push, push == 2 ? 29 : 30), Filled(-push), 1000 * push));
        else
            ring.Pop();
        EXPECT_EQ(std::make_pair(write, read), std::make_pair(ring.GetWriteIndex(), ring.GetReadIndex()));
        const ChainCoeffRecord* front = ring.Peek();
        ASSERT_EQ(first == 0, front == nullptr);
        if (front != nullptr) {
            // Record 2 has 29 coefficients: it travels like any other, for the reader to skip.
            EXPECT_EQ(Filled(first, first == 2 ? 29 : 30), front->left);
            EXPECT_EQ(Filled(-first), front->right);
            EXPECT_EQ(1000 * first, front->sampleRate);
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
