// The host's automation through the library's exports: the 37 slots as the host sees them, a
// slot moved from the audio thread and heard on both channels, and what the host is told.
#include "tests/engine/dsp/EqOracle.h"
#include "tests/integration/InstanceRunner.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <thread>
#include <tuple>

namespace OV::Testing {
namespace {

constexpr int slotCount = 37;
const std::string equaliserId = "f8fd5639-da16-4332-86c3-e1e0e7272048";

struct Slot {
    std::string name;
    float plain;       // default
    double normalised; // worked out from the row's range and mapping
    std::string display;
};

// The slots in host order with their defaults.
std::vector<Slot> ExpectedSlots()
{
    const double hz[] = {130, 250, 1000, 3000, 7000, 3000};
    const double q[] = {1, 0.7, 0.7, 0.7, 0.7, 0.25};
    const char* hzText[] = {"130.00", "250.00", "1000.00", "3000.00", "7000.00", "3000.00"};
    const char* qText[] = {"1.00", "0.70", "0.70", "0.70", "0.70", "0.25"};
    std::vector<Slot> slots;
    for (int b = 0; b < 6; ++b) {
        const std::string band = "Band " + std::to_string(b + 1) + " ";
        slots.push_back({band + "Gain", 0.0f, 0.5, "0.00"});
        slots.push_back({band + "LP/HP Resonance", 0.7f, 0.4 / 1.7, "0.70"});
        slots.push_back({band + "Active", 0.0f, 0.0, "Off"});
        slots.push_back({band + "Freq", float(hz[b]), std::cbrt((hz[b] - 10.0) / 19990.0), hzText[b]});
        slots.push_back({band + "Q (Peaking)", float(q[b]), std::log10(q[b] / 0.2) / 2.0, qText[b]});
        slots.push_back({band + "Q (Shelving)", float(q[b]), std::log10(q[b] / 0.2) / std::log10(15.0), qText[b]});
    }
    slots.push_back({"OutputLevel", 0.0f, 0.5, "0.00"});
    return slots;
}

std::string Text(void (*get)(HLA2Process*, int, char*, int), HLA2Process* process, int slot)
{
    char text[64] = "stale";
    get(process, slot, text, sizeof text);
    return text;
}

// Waits (up to 10 s) until the host has been told `count` changes in all.
std::vector<TestHost::Notification> AwaitNotifications(TestHost& host, std::size_t count)
{
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (host.Notifications().size() < count && std::chrono::steady_clock::now() < deadline)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    return host.Notifications();
}

using AutomationTest = InstanceFixture;

TEST_F(AutomationTest, TheHostSeesTheSlotsAndIsToldTheirValues)
{
    const LibraryCopy copy;
    InstanceRunner runner(copy);
    HLA2Process* p = runner.Process();
    const std::vector<Slot> expected = ExpectedSlots();
    ASSERT_EQ(slotCount, p->GetParameterCount(p));

    // Started, the host hears every slot once, from inside.
    const auto told = AwaitNotifications(runner.Host(), slotCount);
    ASSERT_EQ(std::size_t(slotCount), told.size());
    for (int i = 0; i < slotCount; ++i) {
        const Slot& slot = expected[std::size_t(i)];
        SCOPED_TRACE(slot.name);
        EXPECT_EQ(slot.name, Text(p->GetParameterName, p, i));
        EXPECT_EQ(slot.display, Text(p->GetParameterDisplay, p, i));
        EXPECT_FLOAT_EQ(slot.plain, p->GetParameterValue(p, i));
        EXPECT_NEAR(slot.normalised, p->GetParameterNormalized(p, i), 1e-6);
        EXPECT_EQ(i, told[std::size_t(i)].slot);
        EXPECT_FLOAT_EQ(slot.plain, told[std::size_t(i)].plain);
        EXPECT_NEAR(slot.normalised, told[std::size_t(i)].normalised, 1e-6);
    }

    // Texts and conversions of values other than the present one: slot, normalised, text, plain.
    const std::tuple<int, float, const char*, float> probes[] = {
        {0, 0.25f, "-7.50", -7.5f}, {2, 0.5f, "On", 0.5f}, {2, 0.49f, "Off", 0.49f},
        {3, 0.5f, "2508.75", 2508.75f}, {4, 0.5f, "2.00", 2.0f}, {1, 1.0f, "2.00", 2.0f}};
    for (const auto& [slot, normalised, display, plain] : probes) {
        char text[64];
        p->GetParameterDisplayFor(p, slot, normalised, text, sizeof text);
        EXPECT_STREQ(display, text) << slot;
        EXPECT_NEAR(normalised, p->ToNormalized(p, slot, plain), 1e-6) << slot;
    }

    // Past the 37, slots have no target: up to 1023 they keep what the host writes, with an
    // empty display and the identity for ToNormalized; from 1024 on they read 0.
    for (const int slot : {slotCount, 500, 1023, 1024, 5000}) {
        SCOPED_TRACE(slot);
        p->SetParameterValue(p, slot, 0.25f);
        EXPECT_EQ(slot < 1024 ? 0.25f : 0.0f, p->GetParameterValue(p, slot));
        p->SetParameterNormalized(p, slot, 0.5f);
        EXPECT_EQ(slot < 1024 ? 0.5f : 0.0f, p->GetParameterNormalized(p, slot));
        EXPECT_EQ(0.7f, p->ToNormalized(p, slot, 0.7f));
        EXPECT_EQ("", Text(p->GetParameterDisplay, p, slot));
        char text[8] = "#######";
        p->GetParameterDisplayFor(p, slot, 0.5f, text, sizeof text);
        EXPECT_STREQ("", text);
    }

    // The program carries the map: slot i on the equaliser's i-th target, by name.
    const std::string program = runner.GetProgramChunk();
    TiXmlDocument parsed;
    parsed.Parse(program.c_str());
    auto map = AttributesOf(parsed.RootElement()->FirstChildElement("Automation"));
    EXPECT_EQ("37", map["Slots"]);
    for (int i = 0; i < slotCount; ++i)
        EXPECT_EQ(equaliserId + ":" + expected[std::size_t(i)].name, map["Slot" + std::to_string(i)]);

    // A program whose map swaps the first two slots: the host is told every slot anew, and slot
    // 0 now moves band 1's resonance.
    const std::string resonance = equaliserId + ":Band 1 LP/HP Resonance", gain = equaliserId + ":Band 1 Gain";
    runner.SetProgramChunk(Edited(program, {{"Slot0", resonance.c_str()}, {"Slot1", gain.c_str()}}, "Automation"));
    const auto retold = AwaitNotifications(runner.Host(), 2 * slotCount);
    ASSERT_EQ(std::size_t(2 * slotCount), retold.size());
    EXPECT_EQ("0.70", Text(p->GetParameterDisplay, p, 0));
    EXPECT_EQ("0.00", Text(p->GetParameterDisplay, p, 1));
    const auto slot0 = std::find_if(retold.begin() + slotCount, retold.end(), [](const auto& n) { return n.slot == 0; });
    ASSERT_NE(retold.end(), slot0);
    EXPECT_FLOAT_EQ(0.7f, slot0->plain);
}

TEST_F(AutomationTest, ASlotMovedFromTheAudioThreadIsHeardOnBothChannels)
{
    const LibraryCopy copy;
    InstanceRunner runner(copy, 48000.0f, 256);
    HLA2Process* p = runner.Process();
    AwaitNotifications(runner.Host(), slotCount);

    // Band 3 (a peaking band at 1000 Hz, Q 0.7) on, at +12 dB, set while blocks run; the audio
    // thread goes on until its output has grown by that much on both channels.
    constexpr int active = 14, gain = 12;
    std::vector<float> tone(256);
    for (std::size_t i = 0; i < tone.size(); ++i)
        tone[i] = 0.1f * float(std::sin(2.0 * M_PI * 1000.0 * double(i) / 48000.0));
    bool heard = false;
    std::thread audio([&] {
        runner.Run(tone, tone);
        EXPECT_EQ(1, p->SetParameterNormalized(p, active, 1.0f));
        EXPECT_EQ(1, p->SetParameterNormalized(p, gain, 0.9f));
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
        for (int grown = 0; grown < 20 && std::chrono::steady_clock::now() < deadline;) {
            const auto out = runner.Run(tone, tone);
            const auto peak = [](const std::vector<float>& x) { return std::fabs(*std::max_element(x.begin(), x.end())); };
            grown = peak(out[0]) > 0.35f && peak(out[1]) > 0.35f ? grown + 1 : 0;
            heard = grown == 20;
            std::this_thread::sleep_for(std::chrono::microseconds(500));
        }
    });
    audio.join();
    ASSERT_TRUE(heard);

    // The host reads back what it wrote, and was told nothing of it.
    EXPECT_FLOAT_EQ(12.0f, p->GetParameterValue(p, gain));
    EXPECT_EQ("12.00", Text(p->GetParameterDisplay, p, gain));
    EXPECT_FLOAT_EQ(1.0f, p->GetParameterValue(p, active));
    EXPECT_EQ("On", Text(p->GetParameterDisplay, p, active));
    EXPECT_EQ(std::size_t(slotCount), runner.Host().Notifications().size());

    // Both channels follow the band's design.
    const Section peak = OracleSection(OraclePeak, 12.0, 1000.0, 0.7, 48000.0);
    runner.RunSilence(8192);
    for (const auto& channel : runner.Run(Impulse(8192, 0.25f), Impulse(8192, 0.25f))) {
        for (double f : TestFrequencies(20))
            EXPECT_NEAR(Db(0.25 * SectionMagnitude(peak, f, 48000.0)), Db(MeasuredMagnitude(Response(channel), f, 48000.0)), 0.01) << f;
    }
}

}  // namespace
}  // namespace OV::Testing
