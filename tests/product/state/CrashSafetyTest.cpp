// Killed in the middle of writing: a process that saves a preset and writes registry values in
// a loop is killed at random moments, again and again. Every file it leaves is the old version
// or the new one, whole, and a scan lists the preset and nothing half-written.
#include "platform/RegistryKey.h"
#include "product/state/Directory.h"
#include "tests/product/state/StateTesting.h"

#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <random>
#include <thread>

#include <gtest/gtest.h>

namespace OV::Testing {
namespace {

const std::string valueA(300, 'a'), valueB(450, 'b'); // below the 512 bytes a read takes

// The child's whole life: saves and writes, alternating between two versions, until killed.
// After its first round it says so on `ready`, so that the kill always lands among the writes,
// however long the start took.
[[noreturn]] void WriteUntilKilled(const std::string& root, int ready)
{
    auto instance = MakeInstance(root);
    auto& document = instance->GetMainDocument();
    auto& presets = document.GetStateManager().GetPresetState();
    const Platform::RegistryKey key("Crash Test", "Orvane Studio", 1);
    for (int round = 0;; ++round) {
        SetPeak(document, 0, 1000.0f, round % 2 == 0 ? 3.0f : -3.0f);
        presets.SavePreset(root + "/Kill.vn4m");
        Settle(document);
        key.WriteString("Value", round % 2 == 0 ? valueA : valueB);
        key.WriteNumber("Round", static_cast<std::uint32_t>(round));
        if (round == 0 && write(ready, "r", 1) != 1)
            _exit(1);
    }
}

TEST(CrashSafetyTest, EveryFileIsTheOldOrTheNewVersionWhateverMomentTheProcessDies)
{
    ScratchFolder folder;
    const std::string root = folder.Path() + "/Presets";
    std::mt19937 random(1234);
    int presetsSeen = 0, valuesSeen = 0;
    constexpr int kills = 40;
    for (int kill = 0; kill < kills; ++kill) {
        int ready[2];
        ASSERT_EQ(0, pipe(ready));
        const pid_t child = fork();
        ASSERT_GE(child, 0);
        if (child == 0)
            WriteUntilKilled(root, ready[1]);
        close(ready[1]);
        char mark = 0;
        const bool started = read(ready[0], &mark, 1) == 1;
        close(ready[0]);
        if (started)
            std::this_thread::sleep_for(std::chrono::milliseconds(std::uniform_int_distribution<int>(0, 60)(random)));
        ASSERT_EQ(0, ::kill(child, SIGKILL));
        int status = 0;
        ASSERT_EQ(child, waitpid(child, &status, 0));
        ASSERT_TRUE(started && WIFSIGNALED(status)) << "the writer ended on its own, kill " << kill;

        const std::string preset = ReadFile(root + "/Kill.vn4m");
        if (!preset.empty()) {
            ++presetsSeen;
            TiXmlDocument document;
            document.Parse(preset.c_str());
            ASSERT_FALSE(document.Error()) << "kill " << kill << ": " << preset.substr(0, 80);
            const TiXmlElement* module = TiXmlHandle(&document).FirstChild("Preset").FirstChild("Slot").FirstChild("Module").ToElement();
            ASSERT_NE(nullptr, module) << "kill " << kill;
            const std::string gain = module->Attribute("LM_Band1Gain") != nullptr ? module->Attribute("LM_Band1Gain") : "";
            EXPECT_TRUE(gain == "3" || gain == "-3") << "kill " << kill << ": gain " << gain;
        }
        std::string value;
        if (Platform::RegistryKey("Crash Test", "Orvane Studio", 1).ReadString("Value", value)) {
            ++valuesSeen;
            EXPECT_TRUE(value == valueA || value == valueB) << "kill " << kill << ": " << value.size() << " characters";
        }
    }
    // Every kill came after a first whole round.
    EXPECT_EQ(kills, presetsSeen);
    EXPECT_EQ(kills, valuesSeen);
    // Temporary files are hidden: the scan lists the one preset.
    Products::VN4::State::Directory directory(root, "f8fd5639-da16-4332-86c3-e1e0e7272048");
    directory.Rescan();
    const auto tree = directory.GetTree();
    ASSERT_NE(nullptr, tree);
    ASSERT_EQ(1u, tree->files.size());
    EXPECT_EQ("Kill", tree->files.front()->GetName());
}

}  // namespace
}  // namespace OV::Testing
