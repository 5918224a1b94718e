// The preset state of whole in-process instances: files saved and loaded on the worker, the
// arrows, the current preset's kind and name, snapshots for the memories, host programs, failed
// saves, and the factory presets.
#include "equaliser/DocumentProfile.h"
#include "equaliser/VN4ModuleBaseDocument.h"
#include "product/state/ProgramDocument.h"
#include "tests/product/state/StateTesting.h"
#include "tests/support/ScratchFolder.h"

#include <tinyxml.h>

#include <atomic>

#include <boost/filesystem.hpp>
#include <gtest/gtest.h>

namespace OV::Testing {
namespace {

using Products::VN4::MainDocumentSingleModule;
using Products::VN4::State::ManagerSingleModule;
using Rows = Comp::ModuleLinearPhaseEq::DocumentProfile;
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

    float Gain(int band = 0, int set = Rows::LeftMid)
    {
        return Equaliser(Document()).GetParameter(Rows::BandRow(set, band, Rows::Gain)).AsFloat();
    }

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
    Presets().SavePreset(Path("Mine/Warm.vn4m"));
    Settle(Document());

    const std::string file = ReadFile(Path("Mine/Warm.vn4m"));
    EXPECT_EQ(file.substr(0, file.find('\n')), "<?xml version=\"1.0\" ?>");
    EXPECT_EQ(WithoutGuids(file.substr(file.find('\n') + 1)), saved);
    const auto tree = Presets().GetTree();
    ASSERT_EQ(tree->files.size(), 1u);
    EXPECT_EQ(Presets().GetSelectedIndex(), 0);
    EXPECT_EQ(Manager().GetKind(), ManagerSingleModule::PresetFile);
    EXPECT_EQ(Manager().GetDisplayName(), "Warm");
    EXPECT_EQ(stateChanges.load(), 1);

    Manager().LoadDefaults(false);
    Settle(Document());
    ASSERT_NE(ModuleText(Document()), saved);
    Presets().Rescan();
    Presets().LoadPreset(Path("Mine/Warm.vn4m"));
    Settle(Document());
    EXPECT_EQ(ModuleText(Document()), saved);
    EXPECT_EQ(stateChanges.load(), 2);

    // Saving over the selected file writes it again; nothing else is listed.
    SetPeak(Document(), 2, 500.0f, -4.0f);
    Presets().SavePreset(Path("Mine/Warm.vn4m"));
    Settle(Document());
    EXPECT_EQ(WithoutGuids(ReadFile(Path("Mine/Warm.vn4m")).substr(file.find('\n') + 1)), ModuleText(Document()));
    EXPECT_EQ(Presets().GetTree()->files.size(), 1u);
    EXPECT_TRUE(messages.Messages().empty());
}

TEST_F(PresetStateTest, ArrowsLoadTheFilesInMenuOrder)
{
    WritePresets({{"b.vn4m", 2.0f}, {"A.vn4m", 1.0f}, {"c.vn4m", 3.0f}, {"d.vn4m", 4.0f}});

    const std::vector<std::pair<void (*)(PresetStateTest&), float>> steps = {
        {[](PresetStateTest& t) { t.Presets().LoadNext(); }, 1.0f},  // nothing selected: the first
        {[](PresetStateTest& t) { t.Presets().LoadNext(); }, 2.0f},
        {[](PresetStateTest& t) { t.Presets().LoadPrevious(); }, 1.0f},
        {[](PresetStateTest& t) { t.Presets().LoadPrevious(); }, 1.0f},  // at the first: stays
        {[](PresetStateTest& t) { t.Presets().LoadPreset(t.Path("d.vn4m")); }, 4.0f},
        {[](PresetStateTest& t) { t.Presets().LoadNext(); }, 4.0f},  // at the last: stays
        {[](PresetStateTest& t) { t.Presets().LoadPreset(t.Path("none.vn4m")); }, 4.0f},
    };
    const int expectedChanges[] = {1, 2, 3, 3, 4, 4, 4};
    for (std::size_t i = 0; i < steps.size(); ++i) {
        steps[i].first(*this);
        Settle(Document());
        EXPECT_EQ(Gain(), steps[i].second) << "step " << i;
        EXPECT_EQ(Gain(0, Rows::RightSide), steps[i].second) << "step " << i;
        EXPECT_EQ(stateChanges.load(), expectedChanges[i]) << "step " << i;
    }
    EXPECT_EQ(Presets().GetSelectedIndex(), -1);  // the unknown path selected nothing

    // Deleted outside the program: skipped both ways.
    Presets().LoadPreset(Path("d.vn4m"));
    fs::remove(Path("c.vn4m"));
    fs::remove(Path("b.vn4m"));
    Presets().LoadPrevious();
    Settle(Document());
    EXPECT_EQ(Gain(), 1.0f);
    EXPECT_EQ(Manager().GetDisplayName(), "A");
}

TEST_F(PresetStateTest, UnreadableFileKeepsTheStateButBecomesTheCurrentPreset)
{
    folder.Write("Presets/NoFormat.vn4m",
                 "<Preset><Slot Model=\"f8fd5639-da16-4332-86c3-e1e0e7272048\"><Module LM_Band1Gain=\"9\" /></Slot></Preset>");
    WritePresets({{"Good.vn4m", 5.0f}});
    Presets().LoadPreset(Path("Good.vn4m"));
    Settle(Document());
    folder.Write("Presets/Good.vn4m", "<Preset><Slot");  // spoiled after the scan

    for (const char* name : {"NoFormat", "Good"}) {
        const int before = stateChanges.load();
        Presets().LoadPreset(Path(std::string(name) + ".vn4m"));
        Settle(Document());
        EXPECT_EQ(Gain(), 5.0f) << name;
        EXPECT_EQ(Manager().GetDisplayName(), name);
        EXPECT_EQ(stateChanges.load(), before + 1) << name;
    }
}

TEST_F(PresetStateTest, SnapshotsGiveBackTheStateAndPresetOfTheirTime)
{
    WritePresets({{"One.vn4m", 1.0f}, {"Two.vn4m", 2.0f}});
    Presets().LoadPreset(Path("One.vn4m"));
    Settle(Document());
    const std::string one = ModuleText(Document());

    // Taken and restored through the queue, with edits queued between: they are undone.
    auto snapshot = Manager().TakeSnapshot();
    Equaliser(Document()).QueueSetParameter(Rows::BandRow(Rows::LeftMid, 0, Rows::Gain),
                                            CFW::DocView::Parameter::FromFloat(-7.0f), CFW::DocView::SourceEditor);
    Presets().LoadPreset(Path("Two.vn4m"));
    Settle(Document());  // the name follows whichever came last: the load's signal, or the restore
    Manager().RestoreSnapshot(snapshot);
    Settle(Document());
    EXPECT_EQ(ModuleText(Document()), one);
    EXPECT_EQ(Manager().GetKind(), ManagerSingleModule::PresetFile);
    EXPECT_EQ(Manager().GetDisplayName(), "One");
    EXPECT_EQ(Presets().GetSelected()->GetName(), "One");

    // The preset of a snapshot deleted since: nothing selected, the snapshot's name kept.
    Presets().Delete(Path("One.vn4m"));
    Presets().LoadPreset(Path("Two.vn4m"));
    Settle(Document());
    Manager().RestoreSnapshot(snapshot);
    Settle(Document());
    EXPECT_EQ(Presets().GetSelectedIndex(), -1);
    EXPECT_EQ(Manager().GetDisplayName(), "One");
    EXPECT_EQ(Gain(), 1.0f);

    // A snapshot of nothing loaded takes the kind back to nothing.
    auto fresh = MakeInstance(folder.Path() + "/Other");
    auto empty = fresh->GetMainDocument().GetStateManager().TakeSnapshot();
    Settle(fresh->GetMainDocument());
    Manager().RestoreSnapshot(empty);
    Settle(Document());
    EXPECT_EQ(Manager().GetKind(), ManagerSingleModule::Nothing);
    EXPECT_EQ(Manager().GetDisplayName(), "");
    EXPECT_EQ(Gain(), 0.0f);
}

TEST_F(PresetStateTest, MemoriesHoldWholeStatesAndAnEmptyOneStartsFromDefaults)
{
    using CFW::DocView::Parameter;
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
    Manager().RestoreSnapshot(memories[0]);
    Settle(Document());
    EXPECT_EQ(ModuleText(Document()), a);
    Manager().RestoreSnapshot(memories[1]);
    Settle(Document());
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
    Presets().LoadPreset(Path("Bright.vn4m"));
    Settle(Document());

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
    Presets().SavePreset(Path("Bright.vn4m"));
    Settle(Document());
    EXPECT_EQ(ReadFile(Path("Bright.vn4m")).find("PresetName"), std::string::npos);
}

TEST_F(PresetStateTest, FailedSaveIsReportedAndKeepsTheEarlierFile)
{
    Presets().SavePreset(Path("Keep.vn4m"));
    Settle(Document());
    const std::string earlier = ReadFile(Path("Keep.vn4m"));
    const int before = stateChanges.load();

    SetPeak(Document(), 0, 100.0f, 3.0f);
    {
        const FileSizeLimit limit(1000);  // a full disk, for this process
        Presets().SavePreset(Path("Keep.vn4m"));
        Settle(Document());
    }
    Presets().SavePreset(Path("Missing/New.vn4m"));
    Settle(Document());

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
    Presets().SavePreset(elsewhere);
    Settle(Document());
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

}  // namespace
}  // namespace OV::Testing
