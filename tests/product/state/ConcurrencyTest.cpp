// Everything a host and a user do to one instance, all at once: automation and audio on an audio
// thread, preset loads and saves, program changes and chunk retrieval on the main thread. Run
// under ThreadSanitizer as well; what is checked here is that it ends, and ends in the state of
// the last operations.
#include "docview/interfaces/Audio.h"
#include "docview/interfaces/Automation.h"
#include "docview/interfaces/Programs.h"
#include "equaliser/DocumentProfile.h"
#include "tests/product/state/StateTesting.h"
#include "tests/support/AllocationCounter.h"
#include "tests/support/LockCounter.h"
#include "tests/support/ScratchFolder.h"

#include <tinyxml.h>

#include <array>
#include <atomic>
#include <chrono>
#include <thread>

#include <gtest/gtest.h>

namespace OV::Testing {
namespace {

using namespace CFW::DocView;
using Rows = Comp::ModuleLinearPhaseEq::DocumentProfile;

constexpr int slotCount = 37;

// Counts what the host would be told.
class CountingHost : public Automation::Listener {
public:
    void OnSlotChanged(int, float, float, int) override { ++told; }
    std::atomic<int> told{0};
};

TEST(ConcurrencyTest, AutomationPresetsProgramsAndChunksAllAtOnce)
{
    ScratchFolder folder;
    const std::string root = folder.Path() + "/Presets";
    folder.Write("Presets/Warm.vn4m", PresetText(3.0f));
    folder.Write("Presets/Cold.vn4m", PresetText(-3.0f));
    MessageRecorder messages;
    auto instance = MakeInstance(root);
    auto& document = instance->GetMainDocument();
    auto& presets = document.GetStateManager().GetPresetState();
    presets.Rescan();
    auto* automation = FindInterface<Automation>(*instance);
    auto* audio = FindInterface<Audio>(*instance);
    auto* programs = FindInterface<Programs>(*instance);
    ASSERT_TRUE(automation != nullptr && audio != nullptr && programs != nullptr);
    CountingHost host;
    automation->SetListener(&host);
    audio->SetSampleRate(48000.0f);
    audio->SetBlockSize(128);

    // The audio thread moves every slot in turn between blocks.
    std::atomic<bool> stop{false};
    std::thread audioThread([&] {
        std::vector<float> left(128, 0.25f), right(128, -0.25f), outLeft(128), outRight(128);
        float* in[2] = {left.data(), right.data()};
        float* out[2] = {outLeft.data(), outRight.data()};
        for (int round = 0; !stop.load(); ++round) {
            const int slot = round % slotCount;
            automation->QueueNormalized(slot, static_cast<float>((round * 7) % 101) / 100.0f);
            automation->GetValue((slot + 1) % slotCount);
            audio->Process(in, out, 128, nullptr);
        }
    });

    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(3);
    for (int round = 0; std::chrono::steady_clock::now() < end; ++round) {
        switch (round % 5) {
        case 0: presets.LoadPreset(root + (round % 2 == 0 ? "/Warm.vn4m" : "/Cold.vn4m")); break;
        case 1: presets.SavePreset(root + "/Saved.vn4m"); break;
        case 2: programs->SetCurrent(round % programs->GetProfile()->GetProgramCount()); break;
        case 3: {
            TiXmlElement chunk("Program");
            programs->SaveProgram(programs->GetCurrent(), chunk);
            break;
        }
        default: presets.LoadNext(); break;
        }
    }
    stop = true;
    audioThread.join();

    // Last, once the queue has room again: each slot moved across the middle (a switch flips),
    // and a preset loaded. Each is then the state.
    Settle(document);
    std::array<float, slotCount> last{};
    std::thread([&] {
        for (int slot = 0; slot < slotCount; ++slot) {
            last[std::size_t(slot)] = automation->GetNormalized(slot) >= 0.5f ? 0.25f : 0.75f;
            EXPECT_TRUE(automation->QueueNormalized(slot, last[std::size_t(slot)])) << slot;
        }
    }).join();
    presets.LoadPreset(root + "/Cold.vn4m");
    Settle(document);

    Document& eq = Equaliser(document);
    for (int slot = 0; slot < slotCount; ++slot) {
        const Parameter value = eq.GetParameter(automation->GetProfile()->GetSlotParameter(slot));
        if (value.type == Parameter::Bool)
            EXPECT_EQ(last[std::size_t(slot)] >= 0.5f, value.AsBool()) << slot;
        else
            EXPECT_NEAR(last[std::size_t(slot)], automation->ToNormalized(slot, value.AsFloat()), 1e-5) << slot;
    }
    for (int set : {Rows::LeftMid, Rows::RightSide})
        EXPECT_FLOAT_EQ(-3.0f, eq.GetParameter(Rows::BandRow(set, 0, Rows::Gain)).AsFloat());
    EXPECT_EQ("Cold", document.GetStateManager().GetDisplayName());
    TiXmlElement chunk("Program");
    programs->SaveProgram(programs->GetCurrent(), chunk);
    const TiXmlElement* module = chunk.FirstChildElement("Slot0")->FirstChildElement("Module");
    ASSERT_NE(nullptr, module);
    EXPECT_STREQ("-3", module->Attribute("LM_Band1Gain"));
    EXPECT_GE(host.told.load(), slotCount);
    EXPECT_TRUE(messages.Messages().empty());
    automation->SetListener(nullptr);
}

TEST(ConcurrencyTest, HostAutomationOnTheAudioThreadNeitherAllocatesNorLocksMore)
{
    ScratchFolder folder;
    auto instance = MakeInstance(folder.Path() + "/Presets");
    auto* automation = FindInterface<Automation>(*instance);
    auto* audio = FindInterface<Audio>(*instance);
    audio->SetSampleRate(48000.0f);
    audio->SetBlockSize(64);
    std::vector<float> left(64, 0.25f), right(64, 0.25f), outLeft(64), outRight(64);
    float* in[2] = {left.data(), right.data()};
    float* out[2] = {outLeft.data(), outRight.data()};
    audio->Process(in, out, 64, nullptr);

    // Reads and blocks take no lock. A queued write takes the pool's and the queue's mutexes and
    // the one inside the condition variable that wakes the worker.
    constexpr int rounds = 2000;
    long allocations = 0, writeLocks = 0, otherLocks = 0;
    std::thread audioThread([&] {
        const AllocationCounter counter;
        for (int round = 0; round < rounds; ++round) {
            const int slot = round % slotCount;
            const LockCounter writes;
            automation->QueueNormalized(slot, static_cast<float>(round % 11) / 10.0f);
            automation->QueueValue((slot + 5) % slotCount, static_cast<float>(round % 7));
            writeLocks += writes.Count();
            const LockCounter others;
            automation->GetValue(slot);
            automation->GetNormalized(slot);
            audio->Process(in, out, 64, nullptr);
            otherLocks += others.Count();
        }
        allocations = counter.Count();
    });
    audioThread.join();
    EXPECT_EQ(0, allocations);
    if (LockCounter::IsAvailable()) {
        EXPECT_EQ(0, otherLocks);
        EXPECT_LE(writeLocks, 3 * 2 * rounds);
    }
}

}  // namespace
}  // namespace OV::Testing
