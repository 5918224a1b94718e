#include "docview/utils/MAFMediator.h"
#include "tests/docview/utils/MediationTestSetup.h"
#include "tests/docview/utils/RecordingWrapper.h"

#include <algorithm>
#include <atomic>
#include <map>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

namespace OV::CFW::DocViewUtils {
namespace {

using namespace TestDoubles;
using Row = MediatedDocumentProfile;
using Lines = std::vector<std::string>;

Lines Sorted(Lines lines)
{
    std::sort(lines.begin(), lines.end());
    return lines;
}

std::string BandLine(int band, float value)
{
    char line[64];
    std::snprintf(line, sizeof line, "F Band%d=%g", band, static_cast<double>(value));
    return line;
}

struct Fixture {
    Fixture() : document(&rows, nullptr), mediator(profile, document, ring) { mediator.Attach(&wrapper, ""); }
    // One block's worth of changes, as the engine saw them, in name order.
    Lines Apply()
    {
        wrapper.Clear();
        mediator.Apply();
        return Sorted(wrapper.Log());
    }
    void Set(int row, Parameter value) { document.SetParameter(row, value, DocView::SourceEditor); }

    MediatedDocumentProfile rows;
    MediatedMAFProfile profile;
    ExchangeRing ring;
    RecordingWrapper wrapper;
    BatchDocument document;
    MAFMediator mediator;
};

TEST(MAFMediatorTest, FirstApplyCarriesTheWholeStateOnce)
{
    Fixture fixture;
    Lines expected = {"F Gain=0", "F GainCopy=0", "F Mode=20", "S Active=Off", "S Process=Normal"};
    for (int band = 0; band < Row::bands; ++band)
        expected.push_back(BandLine(band, static_cast<float>(band)));
    EXPECT_EQ(Sorted(expected), fixture.Apply()); // neither the transient row nor the free one
    EXPECT_EQ(Lines{}, fixture.Apply());
}

TEST(MAFMediatorTest, ChangesReachTheEngineOncePerBlockWithTheirLatestValues)
{
    struct Step {
        int row; // -1: a block, expecting `lines`
        Parameter value;
        Lines lines;
    };
    auto set = [](int row, Parameter value) { return Step{row, value, {}}; };
    auto block = [](Lines lines) { return Step{-1, {}, Sorted(std::move(lines))}; };
    using P = Parameter;
    const struct {
        const char* name;
        std::vector<Step> steps;
    } cases[] = {
        // Changes while the reader has not read gather in one slot, each with its latest value.
        {"two changes while a block behind", {set(Row::FirstBand, P::FromFloat(1)), set(Row::Gain, P::FromFloat(3)),
                                              set(Row::Gain, P::FromFloat(-5)),
                                              block({"F Band0=1", "F Gain=-5", "F GainCopy=-5"}), block({})}},
        {"two changes between two blocks", {set(Row::Gain, P::FromFloat(3)), set(Row::Gain, P::FromFloat(-5)),
                                            block({"F Gain=-5", "F GainCopy=-5"}), block({})}},
        {"writer many writes ahead", {set(Row::FirstBand, P::FromFloat(50)), set(Row::FirstBand + 1, P::FromFloat(60)),
                                      set(Row::FirstBand, P::FromFloat(70)), set(Row::FirstBand + 1, P::FromFloat(80)),
                                      set(Row::Mode, P::FromEnum(0)), block({"F Band0=70", "F Band1=80", "F Mode=10"}),
                                      block({})}},
        {"no change, no traffic", {set(Row::Gain, P::FromFloat(0)), set(Row::Free, P::FromFloat(0.5f)), block({})}},
        {"enum and bool forms", {set(Row::Mode, P::FromEnum(999)), block({"F Mode=30"}), set(Row::Active, P::FromBool(true)),
                                 block({"S Active=On"}), set(Row::Bypass, P::FromBool(true)), block({"S Process=Bypass"})}},
    };
    for (const auto& test : cases) {
        Fixture fixture;
        fixture.Apply();
        int step = 0;
        for (const Step& s : test.steps) {
            ++step;
            if (s.row >= 0)
                fixture.Set(s.row, s.value);
            else
                EXPECT_EQ(s.lines, fixture.Apply()) << test.name << ", step " << step;
        }
    }
}

TEST(MAFMediatorTest, BatchArrivesInOneBlock)
{
    Fixture fixture;
    fixture.Apply();
    Lines expected;
    fixture.document.Batch([&] {
        for (int band = 0; band < Row::bands; ++band) {
            fixture.Set(Row::FirstBand + band, Parameter::FromFloat(500.0f + static_cast<float>(band)));
            expected.push_back(BandLine(band, 500.0f + static_cast<float>(band)));
            if (band == 20) {
                EXPECT_EQ(Lines{}, fixture.Apply()); // half a batch is not given out
            }
        }
    });
    EXPECT_EQ(Sorted(expected), fixture.Apply());
    EXPECT_EQ(Lines{}, fixture.Apply());
}

// An output read once after each Attach, at the next Apply.
class EventProbe : public MAFParamMediator {
public:
    struct Creator : MAFParamMediator::Creator {
        explicit Creator(int* polls) : polls(polls) {}
        std::unique_ptr<MAFParamMediator> Create(Listener&) const override { return std::make_unique<EventProbe>(polls); }
        int* polls;
    };
    explicit EventProbe(int* polls) : polls(polls) {}
    void Attach(DocView::MAFWrapper*, const std::string&) override {}
    int GetParameterCount() const override { return 1; }
    int GetParameter(int) const override { return Row::Gain; }
    void OnParameter(int, Parameter) override { ADD_FAILURE() << "an event output got a change"; }
    void Poll() override { ++*polls; }
    bool IsEvent() const override { return true; }

private:
    int* polls;
};

TEST(MAFMediatorTest, EventOutputsAreReadOnceAfterEachAttach)
{
    int polls = 0;
    MediatedDocumentProfile rows;
    MediatedMAFProfile profile;
    profile.AddCreator(std::make_unique<EventProbe::Creator>(&polls));
    ExchangeRing ring;
    RecordingWrapper wrapper;
    BasicDocument document(&rows, nullptr);
    MAFMediator mediator(profile, document, ring);
    mediator.Apply();
    EXPECT_EQ(0, polls); // not attached yet
    mediator.Attach(&wrapper, "");
    for (int i = 0; i < 3; ++i) {
        document.SetParameter(Row::Gain, Parameter::FromFloat(static_cast<float>(i + 1)), DocView::SourceEditor);
        mediator.Apply();
    }
    EXPECT_EQ(1, polls);
    mediator.Attach(&wrapper, "Other");
    mediator.Apply();
    mediator.Poll(); // Poll is for transient rows only
    EXPECT_EQ(2, polls);
}

// Several documents share one ring, and two threads change them at once (the scheduler and a
// direct change on the main thread), while the audio thread reads each block in one outer read.
// Every engine parameter sees its values rise and ends on the last one.
TEST(MAFMediatorTest, TwoWritersOnOneRingReachTheEngineInOrder)
{
    // Records only the newest value of each engine name, in place.
    struct LatestWrapper : RecordingWrapper {
        void SetFloatParameter(const std::string& name, float value) override
        {
            const auto found = latest.find(name);
            if (found == latest.end())
                return;
            if (value < found->second)
                ++regressions;
            found->second = value;
        }
        std::map<std::string, float> latest;
        int regressions = 0;
    };
    constexpr int changes = 20000;
    constexpr int used = 4;
    auto Value = [](int i) { return 40.0f + static_cast<float>(i) / 100.0f; }; // above the defaults
    MediatedDocumentProfile rows;
    MediatedMAFProfile profile;
    ExchangeRing ring;
    BasicDocument first(&rows, nullptr), second(&rows, nullptr);
    MAFMediator firstMediator(profile, first, ring), secondMediator(profile, second, ring);
    LatestWrapper firstEngine, secondEngine;
    for (int band = 0; band < used; ++band) {
        firstEngine.latest["Band" + std::to_string(band)] = 0;
        secondEngine.latest["Band" + std::to_string(band)] = 0;
    }
    firstMediator.Attach(&firstEngine, "");
    secondMediator.Attach(&secondEngine, "");

    std::atomic<int> running{2};
    auto write = [&](DocView::Document& document) {
        for (int i = 1; i <= changes; ++i)
            document.SetParameter(Row::FirstBand + i % used, Parameter::FromFloat(Value(i)), DocView::SourceEditor);
        running.fetch_sub(1);
    };
    std::thread audio([&] {
        // As the main MAF does: no slot, no update this block.
        auto block = [&] {
            int slot;
            if (!ring.BeginRead(slot))
                return;
            firstMediator.Apply();
            secondMediator.Apply();
            ring.EndRead();
        };
        while (running.load() != 0)
            block();
        for (int i = 0; i < ExchangeRing::capacity; ++i)
            block();
    });
    std::thread scheduler(write, std::ref(first));
    write(second);
    scheduler.join();
    audio.join();

    for (LatestWrapper* engine : {&firstEngine, &secondEngine}) {
        EXPECT_EQ(0, engine->regressions);
        for (int band = 0; band < used; ++band) {
            const int last = changes - (changes - band) % used; // the last i with i % used == band
            EXPECT_EQ(Value(last), engine->latest["Band" + std::to_string(band)]) << band;
        }
    }
}

}  // namespace
}  // namespace OV::CFW::DocViewUtils
