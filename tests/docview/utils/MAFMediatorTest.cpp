#include "docview/utils/BasicAudioMAF.h"
#include "docview/utils/BasicAudioProfile.h"
#include "docview/utils/BasicMAF.h"
#include "docview/utils/ChangeList.h"
#include "docview/utils/ExchangeRing.h"
#include "docview/utils/MAFMediator.h"
#include "docview/utils/MAFParamMediator.h"
#include "tests/docview/utils/MediationTestSetup.h"
#include "tests/support/AllocationCounter.h"
#include "tests/support/LockCounter.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <functional>
#include <map>
#include <mutex>
#include <sstream>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace OV::CFW::DocViewUtils {
namespace {

// Runs a script against a fresh ring. Tokens, each with the slot it must give ('-': must fail):
//   wN  a whole write           fN  a whole write that must fail when the ring is full
//   rN  a whole read            <N  begin a write and hold it   >  end it
//   (N  begin a read and hold it                                )  end it
void RunScript(const char* name, const std::string& script)
{
    ExchangeRing ring;
    std::istringstream tokens(script);
    std::string token;
    for (int step = 1; tokens >> token; ++step) {
        SCOPED_TRACE(std::string(name) + ", step " + std::to_string(step) + " '" + token + "'");
        const char op = token[0];
        if (op == '>')
            ring.EndWrite();
        else if (op == ')')
            ring.EndRead();
        if (op == '>' || op == ')')
            continue;
        int slot = -1;
        const bool done = op == 'w' || op == 'f' || op == '<' ? ring.BeginWrite(slot, op == 'f') : ring.BeginRead(slot);
        ASSERT_EQ(token[1] != '-', done);
        if (!done)
            continue;
        ASSERT_EQ(token[1] - '0', slot);
        if (op == 'w' || op == 'f')
            ring.EndWrite();
        else if (op == 'r')
            ring.EndRead();
    }
}

TEST(ExchangeRingTest, SlotsFollowTheHandOverRules)
{
    const struct { const char* name; const char* script; } cases[] = {
        {"nothing written yet", "r- r-"},
        {"one write, one read", "w0 r0 r-"},
        {"in step, around twice", "w0 r0 w1 r1 w2 r2 w0 r0 w1 r1 w2 r2 r-"},
        // While a finished slot waits, later writes reopen it: the reader gets one list.
        {"writer three ahead", "w0 w0 w0 w0 r0 r- w1 r1"},
        {"must-fail write while one waits", "w0 f- r0 f1 r1 r-"},
        // A read in progress keeps its slot; the writer works around it.
        {"writer around a held read", "w0 (0 w1 w1 w1 ) r1 r- w2 r2"},
        {"reader behind, then catching up", "w0 w0 r0 w1 w1 r1 r- w2 r2"},
        // Nesting: the inner level gives the held slot; only the outer end publishes.
        {"nested write is one slot", "<0 <0 w0 > r- > r0 r-"},
        {"nested read is one slot", "w0 w0 (0 (0 r0 ) ) r-"},
        // The reader cannot take a slot the writer has reopened; it comes at the next read.
        {"reopened slot waits", "w0 <0 r- > r0 r-"},
    };
    for (const auto& [name, script] : cases)
        RunScript(name, script);
}

// One writer and one reader thread over many rounds. Each write puts its sequence number into
// a few pairs of cells (which pairs depends on the number); the reader checks that both cells
// of a pair agree (it never sees a list half written), that a pair's numbers only rise (it
// never sees an older value after a newer one), and that it ends on the writer's last numbers.
TEST(ExchangeRingTest, WriterAndReaderThreadsHandOverWholeListsInOrder)
{
    constexpr int pairs = 4;
    constexpr std::uint32_t rounds = 500000;
    ExchangeRing ring;
    std::vector<ChangeList> lists(ExchangeRing::capacity, ChangeList(2 * pairs));
    std::atomic<bool> writing{true};
    std::atomic<long> readCount{0};

    std::thread writer([&] {
        for (std::uint32_t sequence = 1; sequence <= rounds; ++sequence) {
            const long readsBefore = readCount.load(std::memory_order_acquire);
            int slot;
            ring.BeginWrite(slot);
            for (int pair = 0; pair < pairs; ++pair) {
                for (int cell = 2 * pair; cell < 2 * pair + 2 && (sequence == rounds || sequence % (pair + 1) == 0); ++cell)
                    lists[static_cast<std::size_t>(slot)].Put(cell, DocView::Parameter{DocView::Parameter::Integer, sequence});
            }
            ring.EndWrite();
            // A writer that never pauses keeps the newest slot open and starves the reader,
            // so the writes are paced unevenly, and now and then wait for a read: the two
            // sides then meet in every order. Nothing here depends on time.
            for (volatile unsigned spin = 0; spin < (sequence * 2654435761u) % 97; ++spin) {}
            while (sequence % 256 == 0 && readCount.load(std::memory_order_acquire) == readsBefore)
                std::this_thread::yield();
        }
        writing.store(false, std::memory_order_release);
    });

    std::vector<std::uint32_t> seen(pairs, 0);
    long faults = 0;
    auto drain = [&] {
        int slot;
        if (!ring.BeginRead(slot))
            return false;
        std::uint32_t cells[2 * pairs] = {};
        int index;
        DocView::Parameter value;
        while (lists[static_cast<std::size_t>(slot)].Next(index, value))
            cells[index] = value.payload;
        for (int pair = 0; pair < pairs; ++pair) {
            const std::uint32_t first = cells[2 * pair], second = cells[2 * pair + 1];
            if (first == 0 && second == 0)
                continue;
            if ((first != second || first <= seen[static_cast<std::size_t>(pair)]) && ++faults <= 5)
                ADD_FAILURE() << "pair " << pair << ": " << first << "/" << second << " after " << seen[static_cast<std::size_t>(pair)];
            seen[static_cast<std::size_t>(pair)] = first;
        }
        ring.EndRead();
        readCount.fetch_add(1, std::memory_order_release);
        return true;
    };
    while (writing.load(std::memory_order_acquire))
        drain();
    writer.join();
    while (drain()) {}

    EXPECT_EQ(0, faults);
    EXPECT_EQ(std::vector<std::uint32_t>(pairs, rounds), seen);
}

using namespace TestDoubles;
using Row = MediatedDocumentProfile;
using Lines = std::vector<std::string>;

Lines Sorted(Lines lines) { std::sort(lines.begin(), lines.end()); return lines; }

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

// Each case starts with the first block, which carries the whole state once.
TEST(MAFMediatorTest, ChangesReachTheEngineOncePerBlockWithTheirLatestValues)
{
    struct Step { int row; Parameter value; Lines lines; };  // row -1: a block, expecting `lines`
    auto set = [](int row, Parameter value) { return Step{row, value, {}}; };
    auto block = [](Lines lines) { return Step{-1, {}, Sorted(std::move(lines))}; };
    using P = Parameter;
    const struct { const char* name; std::vector<Step> steps; } cases[] = {
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
    // Neither the transient row nor the free one.
    Lines whole = {"F Gain=0", "F GainCopy=0", "F Mode=20", "S Active=Off", "S Process=Normal"};
    for (int band = 0; band < Row::bands; ++band)
        whole.push_back(BandLine(band, static_cast<float>(band)));
    for (const auto& [name, steps] : cases) {
        Fixture fixture;
        EXPECT_EQ(Sorted(whole), fixture.Apply()) << name;
        for (std::size_t step = 0; step < steps.size(); ++step) {
            if (steps[step].row >= 0)
                fixture.Set(steps[step].row, steps[step].value);
            else
                EXPECT_EQ(steps[step].lines, fixture.Apply()) << name << ", step " << step + 1;
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
        std::map<std::string, float> latest = {{"Band0", 0}, {"Band1", 0}, {"Band2", 0}, {"Band3", 0}};
        int regressions = 0;
    };
    constexpr int changes = 20000, used = 4;  // the bands in `latest`
    auto Value = [](int i) { return 40.0f + static_cast<float>(i) / 100.0f; }; // above the defaults
    MediatedDocumentProfile rows;
    MediatedMAFProfile profile;
    ExchangeRing ring;
    BasicDocument first(&rows, nullptr), second(&rows, nullptr);
    MAFMediator firstMediator(profile, first, ring), secondMediator(profile, second, ring);
    LatestWrapper firstEngine, secondEngine;
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
        for (int band = 0; band < used; ++band)  // the last i with i % used == band
            EXPECT_EQ(Value(changes - (changes - band) % used), engine->latest["Band" + std::to_string(band)]) << band;
    }
}

using MakeCreator = std::function<std::unique_ptr<MAFParamMediator::Creator>()>;
using Bool = MAFParamMediatorBool::Creator;
using Enum = MAFParamMediatorEnum::Creator;
using Float = MAFParamMediatorFloat::Creator;
using Texts = std::vector<std::string>;
using Values = std::vector<float>;

struct Received : MAFParamMediator::Listener {
    void OnValue(int index, Parameter value) override { values.emplace_back(index, value); }
    std::vector<std::pair<int, Parameter>> values;
};

template <typename C, typename... Arguments>
MakeCreator Make(Arguments... arguments) { return [=] { return std::make_unique<C>(arguments...); }; }

TEST(MAFParamMediatorTest, DocumentValuesBecomeEngineValuesUnderTheirEngineNames)
{
    const struct { const char* name; MakeCreator make; const char* prefix; Parameter value; const char* expected; } cases[] = {
        {"bool on", Make<Bool>(0, "B"), "", Parameter::FromBool(true), "F B=1"},
        {"bool off, prefixed", Make<Bool>(0, "Gain_3L"), "Module", Parameter::FromBool(false), "F Gain_3L_Module=0"},
        {"bool values", Make<Bool>(0, "B", -1.0f, 5.0f), "", Parameter::FromBool(true), "F B=5"},
        {"bool texts", Make<Bool>(0, "B", std::string("Off"), std::string("On")), "", Parameter::FromBool(false), "S B=Off"},
        {"enum as integer, no name", Make<Enum>(0, ""), "LinearPhaseEQ_Module", Parameter::FromEnum(3), "F LinearPhaseEQ_Module=3"},
        {"bool row as integer", Make<Enum>(0, "E"), "A_B", Parameter::FromBool(true), "F E_A_B=1"},
        {"enum by values", Make<Enum>(0, "E", Values{10, 20, 40}), "", Parameter::FromEnum(1), "F E=20"},
        {"enum past the values", Make<Enum>(0, "E", Values{10, 20, 40}), "", Parameter::FromEnum(7), "F E=40"},
        {"enum by texts", Make<Enum>(0, "E", Texts{"Low", "High"}), "", Parameter::FromEnum(0), "S E=Low"},
        {"enum past the texts", Make<Enum>(0, "E", Texts{"Low", "High"}), "", Parameter::FromEnum(5), "S E=High"},
        {"float as is", Make<Float>(0, "X"), "", Parameter::FromFloat(-3.25f), "F X=-3.25"},
        // (10010 - 20) / 19980
        {"float normalised", [] { return std::make_unique<Float>(0, "X", *DataFilter::MakeNorm(20, 20000)); }, "",
         Parameter::FromFloat(10010), "F X=0.5"},
        // (2508.75 - 10) / 19990 = 0.125, whose cube root is 0.5
        {"float cube", [] { return std::make_unique<Float>(0, "X", *DataFilter::MakePowNorm(3, 10, 20000)); }, "",
         Parameter::FromFloat(2508.75f), "F X=0.5"},
    };
    for (const auto& [name, make, prefix, value, expected] : cases) {
        Received listener;
        RecordingWrapper wrapper;
        const auto mediator = make()->Create(listener);
        mediator->OnParameter(0, value); // not attached yet: nothing
        mediator->Attach(&wrapper, "Stale");
        mediator->Attach(&wrapper, prefix); // the last Attach names it
        mediator->OnParameter(0, value);
        mediator->Attach(nullptr, "");
        mediator->OnParameter(0, value); // detached: nothing
        EXPECT_EQ(Lines{expected}, wrapper.Log()) << name;
        EXPECT_TRUE(listener.values.empty()) << name;
    }
}

// Each case polls twice: the name is resolved once, and the same value is sent both times.
TEST(MAFParamMediatorTest, EngineReadingsBecomeDocumentValues)
{
    const Parameter none{99, 0};
    // expected `none`: nothing is sent
    const struct { const char* name; MakeCreator make; float engine; Parameter expected; float tolerance; } cases[] = {
        {"bool on", Make<Bool>(7, "V"), 1.0f, Parameter::FromBool(true), 0},
        {"bool near on", Make<Bool>(7, "V"), 0.999f, Parameter::FromBool(false), 0},
        {"bool custom on", Make<Bool>(7, "V", -1.0f, 5.0f), 5.0f, Parameter::FromBool(true), 0},
        {"bool custom, 1 is off", Make<Bool>(7, "V", -1.0f, 5.0f), 1.0f, Parameter::FromBool(false), 0},
        {"enum truncates", Make<Enum>(7, "V"), 2.7f, Parameter::FromEnum(2), 0},
        {"enum negative", Make<Enum>(7, "V"), -1.0f, none, 0},
        {"enum NaN", Make<Enum>(7, "V"), std::nanf(""), none, 0},
        {"enum by values", Make<Enum>(7, "V", Values{10, 20, 40}), 20.9f, Parameter::FromEnum(1), 0},
        {"enum not among values", Make<Enum>(7, "V", Values{10, 20, 40}), 30.0f, none, 0},
        {"float as is", Make<Float>(7, "V"), 0.25f, Parameter::FromFloat(0.25f), 0},
        // 10^(-6 / 20)
        {"float from decibels", [] { return std::make_unique<Float>(7, "V", *DataFilter::MakedB()); }, -6.0f,
         Parameter::FromFloat(0.501187f), 1e-6f},
    };
    for (const auto& [name, make, engine, expected, tolerance] : cases) {
        SCOPED_TRACE(name);
        Received listener;
        RecordingWrapper wrapper;
        wrapper.values["V_Module"] = engine;
        const auto mediator = make()->Create(listener);
        mediator->Poll(); // not attached: nothing
        mediator->Attach(&wrapper, "Module");
        mediator->Poll();
        mediator->Poll();
        EXPECT_EQ(1, wrapper.resolves);
        ASSERT_EQ(2u, wrapper.calls.size());
        EXPECT_EQ(&wrapper.values["V_Module"], wrapper.calls[1].handle); // the cached handle
        ASSERT_EQ(expected == none ? 0u : 2u, listener.values.size());
        for (const auto& [index, sent] : listener.values) {
            EXPECT_EQ(7, index);
            EXPECT_EQ(expected.type, sent.type);
            if (tolerance == 0)
                EXPECT_EQ(expected.payload, sent.payload);
            else
                EXPECT_NEAR(expected.AsFloat(), sent.AsFloat(), tolerance);
        }
    }
}

TEST(MAFParamMediatorTest, ProcessStateFollowsItsPriorities)
{
    enum Row { Disable = 4, Bypass = 5, Mute = 6 };
    const struct { const char* name; std::vector<std::pair<int, bool>> changes; Lines expected; } cases[] = {
        {"first state", {{Disable, false}, {Bypass, false}, {Mute, false}}, {"Normal", "Normal", "Normal"}},
        {"mute over bypass", {{Bypass, true}, {Mute, true}, {Mute, false}}, {"Bypass", "Mute", "Bypass"}},
        {"disabled hides both", {{Disable, true}, {Bypass, true}, {Mute, true}, {Mute, false}, {Disable, false}},
         {"Stop", "Bypass"}},
        {"disabled, then what the others want", {{Mute, true}, {Disable, true}, {Bypass, true}, {Disable, false}},
         {"Mute", "Stop", "Mute"}},
        {"muted hides bypass", {{Mute, true}, {Bypass, true}, {Bypass, false}, {Mute, false}}, {"Mute", "Normal"}},
        {"other rows do nothing", {{3, true}, {7, true}}, {}},
    };
    for (const auto& [name, changes, states] : cases) {
        Received listener;
        RecordingWrapper wrapper;
        const auto mediator = MAFParamMediatorProcess::Creator(Disable, Bypass, Mute).Create(listener);
        mediator->Attach(&wrapper, "Module");
        for (const auto& [row, on] : changes)
            mediator->OnParameter(row, Parameter::FromBool(on));
        Lines expected;
        for (const std::string& state : states)
            expected.push_back("S Process_Module=" + state);
        EXPECT_EQ(expected, wrapper.Log()) << name;
    }
}

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
    const auto count = [&](RecordingWrapper::Kind kind) {
        return std::count_if(wrapper.calls.begin(), wrapper.calls.end(), [kind](const auto& call) { return call.kind == kind; });
    };
    EXPECT_GT(count(RecordingWrapper::SetFloat), 300);
    EXPECT_GT(count(RecordingWrapper::SetString), 100);
    EXPECT_EQ(300, count(RecordingWrapper::Block));
    EXPECT_EQ(49.0f, document.GetParameter(Row::Level).AsFloat()); // 299 % 50, read in the last block
    EXPECT_TRUE(maf.IsAttached());
}

}  // namespace
}  // namespace OV::CFW::DocViewUtils
