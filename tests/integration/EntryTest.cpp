// The library as a host meets it: its exports, reference-counted start-up, the plug-in table.
#include "platform/RegistryKey.h"
#include "tests/integration/InstanceRunner.h"
#include "tests/support/RunProgram.h"

#include <cstring>
#include <regex>
#include <set>
#include <sstream>

namespace OV::Testing {
namespace {

const char* const missingResPath
    = "Missing ResPath error: Please ensure this product has been installed properly\n";

using EntryTest = InstanceFixture;

TEST_F(EntryTest, ExportsExactlyTheTwoEntryFunctions)
{
    std::set<std::string> names;
    std::istringstream lines(RunProgram("/usr/bin/nm", {"-D", "--defined-only", BuiltLibraryPath()}).out);
    for (std::string line; std::getline(lines, line);)
        names.insert(line.substr(line.rfind(' ') + 1));
    EXPECT_EQ((std::set<std::string>{"HLA2Acquire", "HLA2Release"}), names);
}

TEST_F(EntryTest, WrongVersionIsRefusedSilently)
{
    const LibraryCopy copy;
    for (int version : {5, 7, 0, -6}) {
        int out = 1234;
        EXPECT_EQ(nullptr, copy.Library().Acquire(version, &out));
        EXPECT_EQ(1234, out);
    }
    int out = 0;
    EXPECT_NE(nullptr, copy.Library().Acquire(6, &out));
    EXPECT_EQ(6, out);
    copy.Library().Release();
}

TEST_F(EntryTest, AcquiresAreCountedAndAThirdStartsAfresh)
{
    // Without any resource path, every start-up tells of it once: a visible mark of start-ups.
    const LibraryCopy copy(false);
    HLA2PlugIn* first = nullptr;
    HLA2PlugIn* second = nullptr;
    EXPECT_EQ(missingResPath, CaptureStandardError([&] { first = copy.Acquire(); }));
    EXPECT_EQ("", CaptureStandardError([&] { second = copy.Acquire(); }));
    ASSERT_NE(nullptr, first);
    EXPECT_EQ(first, second);

    copy.Library().Release();
    TestHost host;
    HLA2Process* process = first->CreateProcess(first, host.Callbacks(), 0);
    ASSERT_NE(nullptr, process) << "one release of two keeps the plug-in running";
    first->DestroyProcess(first, process);
    copy.Library().Release();

    HLA2PlugIn* third = nullptr;
    EXPECT_EQ(missingResPath, CaptureStandardError([&] { third = copy.Acquire(); }));
    ASSERT_NE(nullptr, third);
    copy.Library().Release();
    EXPECT_EQ("", CaptureStandardError([&] { copy.Library().Release(); })) << "a surplus release does nothing";
}

// Indexed resource paths silence the plain one, and a fresh build finds its paths without set-up.
TEST_F(EntryTest, StartUpFindsItsResourcePathsSilently)
{
    for (const bool fresh : {true, false}) { // fresh first, before any path is written
        const LibraryCopy copy(fresh);
        const Platform::RegistryKey key("Varnel4 Lin Phase EQ", "Orvane Studio", 0);
        ASSERT_TRUE(fresh || key.WriteString("ResPath0", config.Path()));
        ASSERT_TRUE(fresh || key.WriteString("ResPath1", config.Path() + "/missing"));
        EXPECT_EQ("", CaptureStandardError([&] { ASSERT_NE(nullptr, copy.Acquire()); })) << fresh;
        copy.Library().Release();
    }
}

TEST_F(EntryTest, ThePlugInTableGivesItsVersionProcessesAndEditors)
{
    const LibraryCopy copy;
    HLA2PlugIn* plugIn = copy.Acquire();
    ASSERT_NE(nullptr, plugIn);
    // The strings come without terminators.
    char version[16], build[16];
    std::memset(version, '~', sizeof version);
    std::memset(build, '~', sizeof build);
    plugIn->GetVersionStrings(plugIn, version, build);
    EXPECT_EQ("3.1.2~", std::string(version, 6));
    EXPECT_TRUE(std::regex_match(std::string(build, 5), std::regex("[0-9][A-L][0-3][0-9]~"))) << std::string(build, 5);
    EXPECT_EQ(1, plugIn->GetProcessCount(plugIn));

    TestHost host;
    EXPECT_EQ(nullptr, plugIn->CreateProcess(plugIn, host.Callbacks(), 1));
    HLA2Process* process = plugIn->CreateProcess(plugIn, host.Callbacks(), 0);
    ASSERT_NE(nullptr, process);
    HLA2GUI* gui = plugIn->GetGUI(plugIn, process);
    ASSERT_NE(nullptr, gui);
    EXPECT_EQ(gui, plugIn->GetGUI(plugIn, process));
    EXPECT_EQ(process, gui->GetProcess(gui));
    int width = 0, height = 0;
    gui->GetSize(gui, &width, &height);
    EXPECT_EQ(100, width);
    EXPECT_EQ(100, height);
    EXPECT_EQ(0, gui->KeyPress(gui, 'a', 0, 0)) << "no focused widget: the host keeps the key";

    // A table the library never handed out is no process of its own.
    HLA2Process stranger = {};
    int object = 0;
    stranger.object = &object;
    EXPECT_EQ(nullptr, plugIn->GetGUI(plugIn, &stranger));
    EXPECT_EQ(nullptr, plugIn->GetGUI(plugIn, nullptr));

    HLA2PlugInAudio* audio = plugIn->GetPlugInAudio(plugIn);
    ASSERT_NE(nullptr, audio);
    EXPECT_EQ(audio, plugIn->GetPlugInAudio(plugIn));
    audio->NotifyAudioOn(audio);
    audio->NotifyAudioOff(audio);
    plugIn->DestroyProcess(plugIn, process);
    copy.Library().Release();
}

}  // namespace
}  // namespace OV::Testing
