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

    ScratchFolder config;
    ScratchFolder folders;
    std::vector<std::string> messages;
};

// Each start-up reads the paths anew. The indexed ones come first, the last searched first, and
// stop at the first gap; the plain one counts only without them; a missing path is told once.
TEST_F(PlugInTest, EachStartUpReadsTheResourcePathsAndAFailedOneLeavesNothing)
{
    const std::string at = folders.Path();
    for (const char* name : {"zero/x", "one/x", "three/x", "plain/x"})
        folders.Write(name, "");
    struct Case {
        std::vector<std::pair<const char*, std::string>> written;
        std::list<std::string> searched;
        std::vector<std::string> told;
    };
    const Case cases[] = {
        {{}, {}, {"Missing ResPath error: Please ensure this product has been installed properly"}},
        {{{"ResPath", at + "/plain"}}, {at + "/plain"}, {}},
        {{{"ResPath0", at + "/zero"}, {"ResPath1", at + "/one"}, {"ResPath3", at + "/three"}}, {at + "/one", at + "/zero"}, {}},
    };
    FakeConfig config;
    PlugIn plugIn(config);
    for (const auto& [written, searched, told] : cases) {
        for (const auto& [name, value] : written)
            SetPath(name, value);
        messages.clear();
        ASSERT_TRUE(plugIn.StartUp());
        EXPECT_EQ(searched, plugIn.GetResources()->getProvider().searchPathList());
        EXPECT_EQ(told, messages);
        plugIn.TearDown();
    }
    config.succeed = false;
    EXPECT_FALSE(plugIn.StartUp());
    EXPECT_EQ(nullptr, plugIn.GetResources());
    EXPECT_EQ(3, config.finalised) << "a failed start-up is not finalised";
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
