// Two whole instances sharing one preset folder, each under an audio thread, a host thread
// that moves and reads every slot, and a thread that switches and reads programs, takes chunks,
// and saves, loads, steps and deletes presets; all at once for a while (VARNEL4_SOAK_SECONDS,
// 4 by default). A watchdog fails the run if any thread stops moving. At the end each instance
// holds exactly what it was last told.
#include "docview/interfaces/Audio.h"
#include "docview/interfaces/Automation.h"
#include "docview/interfaces/Programs.h"
#include "tests/product/state/StateTesting.h"

#include <array>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <thread>

#include <gtest/gtest.h>

namespace OV::Testing {
namespace {

using CFW::DocView::Audio;
using CFW::DocView::Automation;
using CFW::DocView::FindInterface;
using CFW::DocView::Parameter;
using CFW::DocView::Programs;
using namespace std::chrono_literals;

constexpr int slotCount = 37;
constexpr int block = 128;

// One instance and its three threads; each thread counts its rounds for the watchdog.
class Soaked {
public:
    Soaked(const std::string& root, int seed)
        : root(root), seed(seed), instance(MakeInstance(root)), automation(FindInterface<Automation>(*instance)),
          audio(FindInterface<Audio>(*instance)), programs(FindInterface<Programs>(*instance))
    {
        audio->SetSampleRate(48000.0f);
        audio->SetBlockSize(block);
    }

    void Start(const std::atomic<bool>& stop)
    {
        threads.emplace_back([this, &stop] {
            std::vector<float> left(block, 0.25f), right(block, -0.25f), outLeft(block), outRight(block);
            float* in[2] = {left.data(), right.data()};
            float* out[2] = {outLeft.data(), outRight.data()};
            for (int round = 0; !stop; ++round) {
                audio->Process(in, out, block, nullptr);
                // Host automation can also arrive on the audio thread.
                automation->QueueNormalized((round + seed) % slotCount, static_cast<float>(round % 100) / 100.0f);
                rounds[0]++;
            }
        });
        threads.emplace_back([this, &stop] {
            std::string text;
            for (int round = 0; !stop; ++round) {
                const int slot = (round * 7 + seed) % slotCount;
                // As the exports do: host writes are queued for the document's worker.
                if (round % 2 == 0)
                    automation->QueueNormalized(slot, static_cast<float>((round * 13) % 101) / 100.0f);
                else
                    automation->QueueValue(slot, automation->GetValue(slot));
                automation->GetDisplay(text, slot);
                automation->GetDisplayFor(text, (slot + 1) % slotCount, 0.5f);
                rounds[1]++;
            }
        });
        threads.emplace_back([this, &stop] {
            auto& presets = instance->GetMainDocument().GetStateManager().GetPresetState();
            const std::string mine = root + "/Soak" + std::to_string(seed) + ".vn4m";
            for (int round = 0; !stop; ++round) {
                switch (round % 8) {
                case 0: programs->SetCurrent((round / 8 + seed) % programs->GetProfile()->GetProgramCount()); break;
                case 1: {
                    TiXmlElement chunk("Program");
                    programs->SaveProgram(programs->GetCurrent(), chunk);
                    programs->LoadProgram((programs->GetCurrent() + 1) % programs->GetProfile()->GetProgramCount(), chunk);
                    break;
                }
                case 2: presets.SavePreset(mine); break;
                case 3: presets.LoadPreset(mine); break;
                case 4: presets.LoadNext(); break;
                case 5: presets.Rescan(); break;
                case 6: presets.Delete(mine); break;
                default: {
                    TiXmlElement bank("Bank");
                    programs->SaveBank(bank);
                    break;
                }
                }
                rounds[2]++;
            }
        });
    }

    void Join()
    {
        for (std::thread& thread : threads)
            thread.join();
        threads.clear();
    }

    // The thread that has not moved since the last look, or -1. The watchdog's thread only.
    int Stalled()
    {
        for (int t = 0; t < 3; ++t) {
            const long now = rounds[std::size_t(t)].load();
            if (now == seen[std::size_t(t)])
                return t;
            seen[std::size_t(t)] = now;
        }
        return -1;
    }

    // Settles, then sets every slot and loads a preset last; both must be the state.
    void ExpectLastWordsHold(const std::string& preset, float gain)
    {
        auto& document = instance->GetMainDocument();
        Settle(document);
        std::array<float, slotCount> last{};
        for (int slot = 0; slot < slotCount; ++slot) {
            last[std::size_t(slot)] = automation->GetNormalized(slot) >= 0.5f ? 0.25f : 0.75f;
            EXPECT_TRUE(automation->QueueNormalized(slot, last[std::size_t(slot)])) << slot;
        }
        Settle(document);
        auto& eq = Equaliser(document);
        for (int slot = 0; slot < slotCount; ++slot) {
            const Parameter value = eq.GetParameter(automation->GetProfile()->GetSlotParameter(slot));
            if (value.type == Parameter::Bool)
                EXPECT_EQ(last[std::size_t(slot)] >= 0.5f, value.AsBool()) << "instance " << seed << ", slot " << slot;
            else
                EXPECT_NEAR(last[std::size_t(slot)], automation->ToNormalized(slot, value.AsFloat()), 1e-5) << "instance " << seed << ", slot " << slot;
        }
        document.GetStateManager().GetPresetState().LoadPreset(preset);
        Settle(document);
        for (int set : {Rows::LeftMid, Rows::RightSide})
            EXPECT_FLOAT_EQ(gain, eq.GetParameter(Rows::BandRow(set, 0, Rows::Gain)).AsFloat()) << "instance " << seed;
    }

private:
    std::string root;
    int seed;
    std::unique_ptr<Products::VN4::MainComponentSingleModule> instance;
    Automation* automation;
    Audio* audio;
    Programs* programs;
    std::vector<std::thread> threads;
    std::array<std::atomic<long>, 3> rounds{};
    std::array<long, 3> seen{-1, -1, -1};
};

TEST(SoakTest, TwoInstancesUnderEveryKindOfTrafficAtOnce)
{
    ScratchFolder folder;
    const std::string root = folder.Path() + "/Presets";
    folder.Write("Presets/Fixed.vn4m", PresetText(-4.5f));
    MessageRecorder messages;
    const char* given = std::getenv("VARNEL4_SOAK_SECONDS");
    const auto duration = std::chrono::seconds(given != nullptr ? std::atoi(given) : 4);
    Soaked first(root, 0), second(root, 1);
    std::atomic<bool> stop{false}, joined{false};
    first.Start(stop);
    second.Start(stop);

    // Every thread moves within each 10 s while it runs, and all have ended 10 s after being
    // told to: a deadlock ends the run here, with the thread that hangs.
    std::thread watchdog([&] {
        first.Stalled(); // the first look
        second.Stalled();
        auto lastLook = std::chrono::steady_clock::now();
        auto stoppedAt = std::chrono::steady_clock::time_point::max();
        while (!joined) {
            std::this_thread::sleep_for(50ms);
            const auto now = std::chrono::steady_clock::now();
            if (stop && stoppedAt == std::chrono::steady_clock::time_point::max())
                stoppedAt = now;
            if (now - stoppedAt > 10s) {
                std::fprintf(stderr, "soak: the threads have not ended 10 s after being told to\n");
                std::abort();
            }
            if (stop || now - lastLook < 10s)
                continue;
            lastLook = now;
            for (Soaked* soaked : {&first, &second}) {
                if (const int stalled = soaked->Stalled(); stalled >= 0) {
                    std::fprintf(stderr, "soak: thread %d of instance %d has not moved for 10 s\n", stalled, soaked == &first ? 0 : 1);
                    std::abort();
                }
            }
        }
    });
    std::this_thread::sleep_for(duration);
    stop = true;
    first.Join();
    second.Join();
    joined = true;
    watchdog.join();

    first.ExpectLastWordsHold(root + "/Fixed.vn4m", -4.5f);
    second.ExpectLastWordsHold(root + "/Fixed.vn4m", -4.5f);
    // Deleting a preset the other instance has just saved, or saving one it has just deleted,
    // is fine; nothing else may have been told the user.
    for (const std::string& message : messages.Messages())
        EXPECT_NE(std::string::npos, message.find("Soak")) << message;
}

}  // namespace
}  // namespace OV::Testing
