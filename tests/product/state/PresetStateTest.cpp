// The preset state of whole in-process instances: files saved and loaded on the worker, the
// arrows, the current preset's kind and name, snapshots for the memories, host programs, failed
// saves, and the factory presets.
#include "docview/interfaces/Audio.h"
#include "docview/interfaces/Automation.h"
#include "docview/interfaces/Programs.h"
#include "equaliser/VN4ModuleBaseDocument.h"
#include "product/state/ProgramDocument.h"
#include "tests/product/state/StateTesting.h"
#include "tests/support/AllocationCounter.h"
#include "tests/support/LockCounter.h"

#include <array>
#include <atomic>
#include <chrono>
#include <functional>
#include <thread>

#include <boost/filesystem.hpp>
#include <gtest/gtest.h>

namespace OV::Testing {
namespace {

using CFW::DocView::Audio;
using CFW::DocView::Automation;
using CFW::DocView::FindInterface;
using CFW::DocView::Parameter;
using CFW::DocView::Programs;
using Products::VN4::State::ManagerSingleModule;
namespace fs = boost::filesystem;

class PresetStateTest : public testing::Test {
public:
    void SetUp() override
    {
        instance = MakeInstance(root);
        changes = Manager().ConnectStateChanged([this] { ++stateChanges; });
    }

    MainDocumentSingleModule& Document() { return instance->GetMainDocument(); }
    ManagerSingleModule& Manager() { return Document().GetStateManager(); }
    auto& Presets() { return Manager().GetPresetState(); }
    std::string Path(const std::string& relative) const { return root + "/" + relative; }
    // Each waits for the worker to have done it.
    void Load(const std::string& relative) { Presets().LoadPreset(Path(relative)); Settle(Document()); }
    void Save(const std::string& path) { Presets().SavePreset(path); Settle(Document()); }
    void Restore(const std::shared_ptr<ManagerSingleModule::Snapshot>& snapshot) { Manager().RestoreSnapshot(snapshot); Settle(Document()); }
    float Gain(int band = 0, int set = Rows::LeftMid) { return Equaliser(Document()).GetParameter(Rows::BandRow(set, band, Rows::Gain)).AsFloat(); }

    // Writes test presets whose first band's gain tells them apart, then rescans.
    void WritePresets(const std::vector<std::pair<std::string, float>>& presets)
    {
        for (const auto& [name, gain] : presets)
            folder.Write("Presets/" + name, PresetText(gain));
        Presets().Rescan();
    }

    ScratchFolder folder;
    std::string root = folder.Path() + "/Presets";
    MessageRecorder messages;
    std::unique_ptr<Products::VN4::MainComponentSingleModule> instance;
    std::atomic<int> stateChanges{0};
    boost::signals2::scoped_connection changes;
};

TEST_F(PresetStateTest, SavedPresetIsListedSelectedAndLoadsBackTheSameState)
{
    SetPeak(Document(), 2, 500.0f, 4.0f);
    SetPeak(Document(), 5, 9000.0f, -2.5f);
    const std::string saved = ModuleText(Document());
    fs::create_directories(Path("Mine"));  // the save dialog makes the folder
    Save(Path("Mine/Warm.vn4m"));

    const std::string file = ReadFile(Path("Mine/Warm.vn4m"));
    EXPECT_EQ(file.substr(0, file.find('\n')), "<?xml version=\"1.0\" ?>");
    EXPECT_EQ(WithoutGuids(file.substr(file.find('\n') + 1)), saved);
    ASSERT_EQ(Presets().GetTree()->files.size(), 1u);
    EXPECT_EQ(Presets().GetSelectedIndex(), 0);
    EXPECT_EQ(Manager().GetKind(), ManagerSingleModule::PresetFile);
    EXPECT_EQ(Manager().GetDisplayName(), "Warm");
    EXPECT_EQ(stateChanges.load(), 1);

    Manager().LoadDefaults(false);
    Settle(Document());
    ASSERT_NE(ModuleText(Document()), saved);
    Presets().Rescan();
    Load("Mine/Warm.vn4m");
    EXPECT_EQ(ModuleText(Document()), saved);
    EXPECT_EQ(stateChanges.load(), 2);

    // Saving over the selected file writes it again; nothing else is listed.
    SetPeak(Document(), 2, 500.0f, -4.0f);
    Save(Path("Mine/Warm.vn4m"));
    EXPECT_EQ(WithoutGuids(ReadFile(Path("Mine/Warm.vn4m")).substr(file.find('\n') + 1)), ModuleText(Document()));
    EXPECT_EQ(Presets().GetTree()->files.size(), 1u);
    EXPECT_TRUE(messages.Messages().empty());
}

TEST_F(PresetStateTest, ArrowsLoadTheFilesInMenuOrder)
{
    WritePresets({{"b.vn4m", 2.0f}, {"A.vn4m", 1.0f}, {"c.vn4m", 3.0f}, {"d.vn4m", 4.0f}});
    const std::function<void()> next = [this] { Presets().LoadNext(); }, previous = [this] { Presets().LoadPrevious(); };
    // The move, then the gain of both channels and the count of state changes.
    const struct { std::function<void()> move; float gain; int changes; } steps[] = {
        {next, 1.0f, 1},  // nothing selected: the first
        {next, 2.0f, 2},
        {previous, 1.0f, 3},
        {previous, 1.0f, 3},  // at the first: stays
        {[this] { Presets().LoadPreset(Path("d.vn4m")); }, 4.0f, 4},
        {next, 4.0f, 4},  // at the last: stays
        {[this] { Presets().LoadPreset(Path("none.vn4m")); }, 4.0f, 4},
    };
    int step = 0;
    for (const auto& [move, gain, changes] : steps) {
        SCOPED_TRACE(step++);
        move();
        Settle(Document());
        EXPECT_EQ(Gain(), gain);
        EXPECT_EQ(Gain(0, Rows::RightSide), gain);
        EXPECT_EQ(stateChanges.load(), changes);
    }
    EXPECT_EQ(Presets().GetSelectedIndex(), -1);  // the unknown path selected nothing
}

TEST_F(PresetStateTest, UnreadableFileKeepsTheStateButBecomesTheCurrentPreset)
{
    folder.Write("Presets/NoFormat.vn4m",
                 "<Preset><Slot Model=\"f8fd5639-da16-4332-86c3-e1e0e7272048\"><Module LM_Band1Gain=\"9\" /></Slot></Preset>");
    WritePresets({{"Good.vn4m", 5.0f}});
    Load("Good.vn4m");
    folder.Write("Presets/Good.vn4m", "<Preset><Slot");  // spoiled after the scan

    for (const char* name : {"NoFormat", "Good"}) {
        const int before = stateChanges.load();
        Load(std::string(name) + ".vn4m");
        EXPECT_EQ(Gain(), 5.0f) << name;
        EXPECT_EQ(Manager().GetDisplayName(), name);
        EXPECT_EQ(stateChanges.load(), before + 1) << name;
    }
}

TEST_F(PresetStateTest, SnapshotsGiveBackTheStateAndPresetOfTheirTime)
{
    WritePresets({{"One.vn4m", 1.0f}, {"Two.vn4m", 2.0f}});
    Load("One.vn4m");
    const std::string one = ModuleText(Document());

    // Taken and restored through the queue, with edits queued between: they are undone.
    auto snapshot = Manager().TakeSnapshot();
    Equaliser(Document()).QueueSetParameter(Rows::BandRow(Rows::LeftMid, 0, Rows::Gain),
                                            Parameter::FromFloat(-7.0f), CFW::DocView::SourceEditor);
    Load("Two.vn4m");  // the name follows whichever came last: the load's signal, or the restore
    Restore(snapshot);
    EXPECT_EQ(ModuleText(Document()), one);
    EXPECT_EQ(Manager().GetKind(), ManagerSingleModule::PresetFile);
    EXPECT_EQ(Manager().GetDisplayName(), "One");
    EXPECT_EQ(Presets().GetSelected()->GetName(), "One");

    // The preset of a snapshot deleted since: nothing selected, the snapshot's name kept.
    Presets().Delete(Path("One.vn4m"));
    Load("Two.vn4m");
    Restore(snapshot);
    EXPECT_EQ(Presets().GetSelectedIndex(), -1);
    EXPECT_EQ(Manager().GetDisplayName(), "One");
    EXPECT_EQ(Gain(), 1.0f);

    // A snapshot of nothing loaded takes the kind back to nothing.
    auto fresh = MakeInstance(folder.Path() + "/Other");
    auto empty = fresh->GetMainDocument().GetStateManager().TakeSnapshot();
    Settle(fresh->GetMainDocument());
    Restore(empty);
    EXPECT_EQ(Manager().GetKind(), ManagerSingleModule::Nothing);
    EXPECT_EQ(Manager().GetDisplayName(), "");
    EXPECT_EQ(Gain(), 0.0f);
}

TEST_F(PresetStateTest, MemoriesHoldWholeStatesAndAnEmptyOneStartsFromDefaults)
{
    auto& memories = Document().GetMemories();
    for (const auto& memory : memories)
        EXPECT_EQ(memory, nullptr);
    SetPeak(Document(), 1, 200.0f, 6.0f);
    const std::string a = ModuleText(Document());

    // A to B: A keeps its state, B (empty) starts from the defaults, the letter stays B.
    memories[0] = Manager().TakeSnapshot();
    Document().SetParameter(Products::VN4::MainDocumentProfile::CurrentABCD, Parameter::FromEnum(1), CFW::DocView::SourceEditor);
    Manager().LoadDefaults(false);
    Settle(Document());
    EXPECT_EQ(Gain(1), 0.0f);
    EXPECT_EQ(Document().GetParameter(Products::VN4::MainDocumentProfile::CurrentABCD).AsEnum(), 1u);

    // B to A: back to A's state.
    SetPeak(Document(), 3, 2000.0f, -3.0f);
    const std::string b = ModuleText(Document());
    memories[1] = Manager().TakeSnapshot();
    Restore(memories[0]);
    EXPECT_EQ(ModuleText(Document()), a);
    Restore(memories[1]);
    EXPECT_EQ(ModuleText(Document()), b);
}

// Only the reset button toggles with undo; every other reset lands on the defaults, however
// often it runs and whatever the button did before.
TEST_F(PresetStateTest, ResetsOtherThanTheButtonAlwaysGiveTheDefaults)
{
    const std::string defaults = ModuleText(Document());
    // Each loads a state that resets the module; none stands for the empty memory's defaults.
    const std::pair<const char*, const char*> cases[] = {
        {"an empty memory", nullptr},
        {"a preset without a module",
         "<Preset Format=\"vn4m\"><Slot Model=\"f8fd5639-da16-4332-86c3-e1e0e7272048\"/></Preset>"},
        {"a preset without a slot", "<Preset Format=\"vn4m\"/>"},
        {"a program with only its first slot",
         "<Preset Format=\"vn4p\"><Slot0 Model=\"f8fd5639-da16-4332-86c3-e1e0e7272048\">"
         "<Module LM_Band1Gain=\"3\"/></Slot0></Preset>"},
    };
    auto& button = dynamic_cast<Comp::VN4ModuleBase::Document&>(Equaliser(Document()));
    for (const auto& [what, text] : cases) {
        SCOPED_TRACE(what);
        for (const bool pressedBefore : {false, true}) {
            SetPeak(Document(), 1, 200.0f, 6.0f);
            if (pressedBefore) {
                button.PressReset();  // remembers the peak
                SetPeak(Document(), 2, 300.0f, -6.0f);
                button.PressReset();  // an edit between: resets again, and remembers the second peak
            }
            for (int run = 0; run < 3; ++run) {
                if (text == nullptr) {
                    Manager().LoadDefaults(false);
                    Settle(Document());
                } else {
                    TiXmlDocument xml;
                    xml.Parse(text);
                    Document().Load(*xml.RootElement());
                }
                EXPECT_TRUE(ModuleText(Document()) == defaults) << "run " << run << (pressedBefore ? " after the button" : "");
            }
        }
    }

    // The button still toggles: the first press resets, the second brings the state back.
    SetPeak(Document(), 1, 200.0f, 6.0f);
    const std::string edited = ModuleText(Document());
    button.PressReset();
    EXPECT_TRUE(ModuleText(Document()) == defaults);
    button.PressReset();
    EXPECT_TRUE(ModuleText(Document()) == edited);
}

TEST_F(PresetStateTest, HostProgramsCarryThePresetName)
{
    WritePresets({{"Bright.vn4m", 2.0f}});
    Load("Bright.vn4m");

    auto& program = Document().GetProgramDocument();
    TiXmlElement saved("Preset");
    program.Save(saved);
    EXPECT_STREQ(saved.Attribute("PresetName"), "Bright");
    EXPECT_STREQ(saved.Attribute("Format"), "vn4p");

    const int before = stateChanges.load();
    saved.SetAttribute("PresetName", "From the host");
    program.Load(saved);
    EXPECT_EQ(Manager().GetKind(), ManagerSingleModule::HostProgram);
    EXPECT_EQ(Manager().GetDisplayName(), "From the host");
    EXPECT_EQ(stateChanges.load(), before + 1);

    saved.RemoveAttribute("PresetName");
    program.Load(saved);
    EXPECT_EQ(Manager().GetDisplayName(), "");
    TiXmlElement again("Preset");
    program.Save(again);
    EXPECT_STREQ(again.Attribute("PresetName"), "");

    // A preset file never carries the name.
    Save(Path("Bright.vn4m"));
    EXPECT_EQ(ReadFile(Path("Bright.vn4m")).find("PresetName"), std::string::npos);
}

TEST_F(PresetStateTest, FailedSaveIsReportedAndKeepsTheEarlierFile)
{
    Save(Path("Keep.vn4m"));
    const std::string earlier = ReadFile(Path("Keep.vn4m"));
    const int before = stateChanges.load();

    SetPeak(Document(), 0, 100.0f, 3.0f);
    {
        const FileSizeLimit limit(1000);  // a full disk, for this process
        Save(Path("Keep.vn4m"));
    }
    Save(Path("Missing/New.vn4m"));

    EXPECT_EQ(ReadFile(Path("Keep.vn4m")), earlier);
    EXPECT_FALSE(fs::exists(Path("Missing")));
    EXPECT_EQ(std::distance(fs::directory_iterator(root), {}), 1);  // no temporary left
    const std::vector<std::string> shown = messages.Messages();
    ASSERT_EQ(shown.size(), 2u);
    EXPECT_EQ(shown[0].rfind("Save preset error: ", 0), 0u) << shown[0];
    EXPECT_NE(shown[0].find("Keep.vn4m"), std::string::npos) << shown[0];
    EXPECT_NE(shown[1].find("Missing/New.vn4m"), std::string::npos) << shown[1];
    EXPECT_EQ(stateChanges.load(), before);

    // Written, then the folders cannot be read again: the save stands and says no error.
    const std::string elsewhere = folder.Path() + "/Elsewhere.vn4m";
    fs::rename(root, root + ".moved");
    fs::create_symlink(root + ".nowhere", root);
    Save(elsewhere);
    EXPECT_TRUE(fs::exists(elsewhere));
    EXPECT_EQ(messages.Messages().size(), 2u) << messages.Messages().back();
    EXPECT_EQ(stateChanges.load(), before + 1);
}

TEST(FactoryPresetTest, SeededOnFirstUseOnlyAndAllListed)
{
    const MessageRecorder messages;
    ScratchFolder folder;
    const std::string root = folder.Path() + "/Presets";
    std::size_t shipped = 0;
    for (fs::recursive_directory_iterator entry(VARNEL4_FACTORY_PRESETS), end; entry != end; ++entry)
        shipped += fs::is_regular_file(entry->path()) ? 1 : 0;
    ASSERT_GE(shipped, 12u);
    {
        auto instance = MakeInstance(root, VARNEL4_FACTORY_PRESETS);
        const auto tree = instance->GetMainDocument().GetStateManager().GetPresetState().GetTree();
        EXPECT_EQ(tree->files.size(), shipped);
        for (const auto& folderNode : tree->root->GetChildren())
            EXPECT_TRUE(folderNode->IsFolder()) << folderNode->GetName();  // all in folders by use
    }
    fs::remove(root + "/Vocals/Air.vn4m");
    auto again = MakeInstance(root, VARNEL4_FACTORY_PRESETS);
    EXPECT_EQ(again->GetMainDocument().GetStateManager().GetPresetState().GetTree()->files.size(), shipped - 1);
    EXPECT_TRUE(messages.Messages().empty());
}

// Everything a host and a user do to one instance, all at once: automation and audio on an audio
// thread, preset loads and saves, program changes and chunk retrieval on the main thread. Run
// under ThreadSanitizer as well; what is checked here is that it ends, and ends in the state of
// the last operations.
constexpr int slotCount = 37;

// Counts what the host would be told.
class CountingHost : public Automation::Listener {
public:
    void OnSlotChanged(int, float, float, int) override { ++told; }
    std::atomic<int> told{0};
};

class ConcurrencyTest : public PresetStateTest {};

TEST_F(ConcurrencyTest, AutomationPresetsProgramsAndChunksAllAtOnce)
{
    WritePresets({{"Warm.vn4m", 3.0f}, {"Cold.vn4m", -3.0f}});
    auto& document = Document();
    auto& presets = Presets();
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

    auto& eq = Equaliser(document);
    for (int slot = 0; slot < slotCount; ++slot) {
        const Parameter value = eq.GetParameter(automation->GetProfile()->GetSlotParameter(slot));
        if (value.type == Parameter::Bool)
            EXPECT_EQ(last[std::size_t(slot)] >= 0.5f, value.AsBool()) << slot;
        else
            EXPECT_NEAR(last[std::size_t(slot)], automation->ToNormalized(slot, value.AsFloat()), 1e-5) << slot;
    }
    for (int set : {Rows::LeftMid, Rows::RightSide})
        EXPECT_FLOAT_EQ(-3.0f, eq.GetParameter(Rows::BandRow(set, 0, Rows::Gain)).AsFloat());
    EXPECT_EQ("Cold", Manager().GetDisplayName());
    TiXmlElement chunk("Program");
    programs->SaveProgram(programs->GetCurrent(), chunk);
    const TiXmlElement* module = chunk.FirstChildElement("Slot0")->FirstChildElement("Module");
    ASSERT_NE(nullptr, module);
    EXPECT_STREQ("-3", module->Attribute("LM_Band1Gain"));
    EXPECT_GE(host.told.load(), slotCount);
    EXPECT_TRUE(messages.Messages().empty());
    automation->SetListener(nullptr);
}

TEST_F(ConcurrencyTest, HostAutomationOnTheAudioThreadNeitherAllocatesNorLocksMore)
{
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
