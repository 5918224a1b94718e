// Start-up and tear-down of the plug-in object over a product configuration of the test's own.
#include "graphics/res/ResourceSet.h"
#include "platform/Messages.h"
#include "platform/RegistryKey.h"
#include "shell/framework/GUI.h"
#include "shell/framework/PlugIn.h"
#include "shell/framework/Process.h"
#include "tests/support/ScratchFolder.h"

#include <cstdlib>

#include <gtest/gtest.h>

namespace OV::Testing {
namespace {

using CFW::HLAFramework::PlugIn;

struct FakeConfig : CFW::HLAFramework::HLAConfig {
    bool Initialise() override { return ++initialised, succeed; }
    void Finalise() override { ++finalised; }
    const char* GetProductName() const override { return "Test Product"; }
    void GetVersionStrings(std::string& version, std::string& build) const override
    {
        version = "1.2.3";
        build = "6K22";
    }
    int GetProcessCount() const override { return 1; }
    HLA2::Process* CreateProcess(HLA2Host* host, int) override
    {
        return new CFW::HLAFramework::Process(host, nullptr, 0, 2, 2);
    }
    HLA2::GUI* CreateGUI(HLA2::Process* process, void*) override { return new CFW::HLAFramework::GUI(process); }

    bool succeed = true;
    int initialised = 0;
    int finalised = 0;
};

class PlugInTest : public testing::Test {
protected:
    void SetUp() override
    {
        setenv("XDG_CONFIG_HOME", config.Path().c_str(), 1);
        Platform::SetMessageHandler([this](const std::string& text, const std::string& caption, int) {
            messages.push_back(caption + ": " + text);
            return true;
        });
    }
    void TearDown() override { Platform::SetMessageHandler(nullptr); }

    void SetPath(const std::string& name, const std::string& value)
    {
        ASSERT_TRUE(Platform::RegistryKey("Test Product", "Orvane Studio", 0).WriteString(name, value));
    }

    std::list<std::string> SearchPaths(PlugIn& plugIn)
    {
        return plugIn.GetResources()->getProvider().searchPathList();
    }

    ScratchFolder config;
    ScratchFolder folders;
    std::vector<std::string> messages;
};

TEST_F(PlugInTest, IndexedResourcePathsComeFirstAndTheLastIsSearchedFirst)
{
    SetPath("ResPath0", folders.Path() + "/zero");
    SetPath("ResPath1", folders.Path() + "/one");
    SetPath("ResPath3", folders.Path() + "/three");
    SetPath("ResPath", folders.Path() + "/plain");
    for (const char* name : {"zero/x", "one/x", "three/x", "plain/x"})
        folders.Write(name, "");

    FakeConfig config;
    PlugIn plugIn(config);
    ASSERT_TRUE(plugIn.StartUp());
    EXPECT_EQ((std::list<std::string>{folders.Path() + "/one", folders.Path() + "/zero"}), SearchPaths(plugIn))
        << "the indices stop at the first gap, and the plain path is not read";
    EXPECT_TRUE(messages.empty());
    plugIn.TearDown();
    EXPECT_EQ(1, config.finalised);
}

TEST_F(PlugInTest, MissingResourcePathIsToldOnceAndStartUpGoesOn)
{
    FakeConfig config;
    PlugIn plugIn(config);
    ASSERT_TRUE(plugIn.StartUp());
    EXPECT_EQ(std::vector<std::string>{"Missing ResPath error: Please ensure this product has been installed properly"},
              messages);
    EXPECT_TRUE(SearchPaths(plugIn).empty());
    plugIn.TearDown();

    SetPath("ResPath", folders.Path());
    messages.clear();
    ASSERT_TRUE(plugIn.StartUp());
    EXPECT_TRUE(messages.empty());
    EXPECT_EQ(std::list<std::string>{folders.Path()}, SearchPaths(plugIn));
    plugIn.TearDown();
}

TEST_F(PlugInTest, FailedInitialiseLeavesNothingBehind)
{
    SetPath("ResPath", folders.Path());
    FakeConfig config;
    config.succeed = false;
    PlugIn plugIn(config);
    EXPECT_FALSE(plugIn.StartUp());
    EXPECT_EQ(nullptr, plugIn.GetResources());
    EXPECT_EQ(0, config.finalised);
}

TEST_F(PlugInTest, ProcessesAndEditorsAreKeptInTheMap)
{
    SetPath("ResPath", folders.Path());
    FakeConfig config;
    PlugIn plugIn(config);
    ASSERT_TRUE(plugIn.StartUp());
    HLA2::Process* first = plugIn.CreateProcess(nullptr, 0);
    HLA2::Process* second = plugIn.CreateProcess(nullptr, 0);
    ASSERT_NE(nullptr, first);
    EXPECT_EQ(nullptr, plugIn.CreateProcess(nullptr, 1));

    HLA2::GUI* gui = plugIn.GetGUI(first);
    ASSERT_NE(nullptr, gui);
    EXPECT_EQ(gui, plugIn.GetGUI(first));
    EXPECT_NE(gui, plugIn.GetGUI(second));
    EXPECT_EQ(first, gui->GetProcess());

    plugIn.DestroyProcess(first);
    EXPECT_EQ(nullptr, plugIn.GetGUI(first)) << "a destroyed process is unknown";
    plugIn.DestroyProcess(first);
    // The host left `second` behind: tear-down deletes it (the sanitizers see it freed).
    plugIn.TearDown();
    EXPECT_EQ(nullptr, plugIn.GetGUI(second));
}

}  // namespace
}  // namespace OV::Testing
