// The editor table as a host drives it, on a real X server: the child window inside the host's
// window, its life across open and close, and host-delivered mouse and keys.
#include "docview/interfaces/GUI.h"
#include "shell/framework/GUI.h"
#include "shell/framework/Process.h"
#include "tests/shell/FakeRoles.h"
#include "tests/support/TestHost.h"
#include "tests/support/XHostWindow.h"
#include "widgets/gui/Root.h"
#include "widgets/gui/WidgetSignals.h"

#include <chrono>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

namespace OV::Testing {
namespace {

using CFW::GUI::Widget;
using CFW::HLAFramework::Process;

// Takes every event it is given, and records it as text.
class Recorder : public Widget {
public:
    Recorder(Widget& parent, std::vector<std::string>& log) : Widget(parent, {0, 0, parent.getSize().x, parent.getSize().y})
    {
        auto& signals = *getSignals();
        keepConnection(signals.mouseDown.connect([&log](Widget*, const Point& p, int button, int modifiers) {
            log.push_back("down " + std::to_string(p.x) + "," + std::to_string(p.y) + " " + std::to_string(button) + " " +
                          std::to_string(modifiers));
        }));
        keepConnection(signals.mouseUp.connect([&log](Widget*, const Point& p, int button, int) {
            log.push_back("up " + std::to_string(p.x) + "," + std::to_string(p.y) + " " + std::to_string(button));
        }));
        keepConnection(signals.mouseMoved.connect([&log](Widget*, const Point& p, int) {
            log.push_back("move " + std::to_string(p.x) + "," + std::to_string(p.y));
        }));
        keepConnection(signals.keyDown.connect([&log](Widget*, CFW::Graphics::KeyboardButton::Code code, char c, int) {
            log.push_back("key " + std::to_string(code) + (c != 0 ? std::string(" ") + c : std::string()));
        }));
    }
};

// The editor role: a layout of 320 x 200 holding one Recorder.
class FakeGUI : public CFW::DocView::GUI {
public:
    const CFW::DocView::GUIProfile* GetProfile() const override { return nullptr; }
    CFW::BasicPoint<int> GetDefaultSize() override { return {320, 200}; }
    void Open(Widget* root) override
    {
        ++opens;
        rootSize = root->getSize();
        recorder = new Recorder(*root, log);
    }
    void Close() override { ++closes, recorder = nullptr; }
    void Update() override { ++updates; }

    int opens = 0, closes = 0, updates = 0;
    CFW::BasicPoint<int> rootSize;
    Recorder* recorder = nullptr;
    std::vector<std::string> log;
};

struct Fixture {
    TestHost host;
    FakeGUI* role = new FakeGUI;
    Process process{host.Callbacks(), new FakeComponent({role}), 0, 2, 2};
    CFW::HLAFramework::GUI editor{&process};
    HLA2GUI* gui = HLA2::GUI::ToTable(&editor);
};

TEST(EditorTest, ChildWindowLivesFromOpenToClose)
{
    XHostWindow host;
    {
        // Without an editor role: an empty editor of 100 x 100.
        TestHost testHost;
        Process roleless{testHost.Callbacks(), new FakeComponent({}), 0, 2, 2};
        CFW::HLAFramework::GUI gui(&roleless);
        int width = 0, height = 0;
        gui.GetSize(&width, &height);
        EXPECT_EQ(100, width);
        EXPECT_EQ(100, height);
        gui.Open(host.Handle());
        ASSERT_EQ(1u, host.Children().size());
        EXPECT_EQ(100, host.Children()[0].width);
        gui.Idle();
        gui.Close();
        EXPECT_TRUE(host.Children().empty());
    }

    Fixture f;
    int width = 0, height = 0;
    f.gui->GetSize(f.gui, &width, &height);
    EXPECT_EQ(320, width);
    EXPECT_EQ(200, height);
    f.gui->SetPosition(f.gui, 10, 20);
    for (int round = 1; round <= 20; ++round) {
        f.gui->Open(f.gui, host.Handle());
        const auto children = host.Children();
        ASSERT_EQ(1u, children.size());
        EXPECT_EQ(10, children[0].x);
        EXPECT_EQ(20, children[0].y);
        EXPECT_EQ(320, children[0].width);
        EXPECT_EQ(200, children[0].height);
        EXPECT_EQ(round, f.role->opens);
        EXPECT_EQ(320, f.role->rootSize.x);
        EXPECT_EQ(200, f.role->rootSize.y);
        const int updates = f.role->updates;
        f.gui->Idle(f.gui);
        EXPECT_EQ(updates + 1, f.role->updates);
        f.gui->Close(f.gui);
        EXPECT_EQ(round, f.role->closes);
        EXPECT_TRUE(host.Children().empty());
    }
}

TEST(EditorTest, TheTickAndIdleBothUpdateTheEditor)
{
    XHostWindow host;
    Fixture f;
    f.gui->Open(f.gui, host.Handle());
    // The tick comes from the window's pump once 40 ms have passed, so an idle after 50 ms
    // updates twice: once itself and once through the tick.
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    const int before = f.role->updates;
    f.gui->Idle(f.gui);
    EXPECT_EQ(before + 2, f.role->updates);
    f.gui->Close(f.gui);
}

TEST(EditorTest, HostMouseAndKeysReachTheWidgetsOnlyWhenTheHostDeliversThem)
{
    XHostWindow host;
    Fixture f;
    f.gui->Open(f.gui, host.Handle());
    auto& log = f.role->log;

    f.gui->MouseDown(f.gui, 5, 6, HLA2_BUTTON_LEFT, 0);
    EXPECT_EQ(0, f.gui->KeyPress(f.gui, 'a', 0, 0));
    EXPECT_TRUE(log.empty());

    f.gui->SetHostDeliversMouse(f.gui, 1);
    f.gui->SetHostDeliversKeys(f.gui, 1);
    f.gui->MouseMove(f.gui, 30, 40, 0);
    f.gui->MouseDown(f.gui, 31, 41, HLA2_BUTTON_RIGHT, HLA2_MODIFIER_SHIFT);
    f.gui->MouseUp(f.gui, 32, 42, HLA2_BUTTON_RIGHT, 0);
    // No widget has the focus: the host keeps its keys.
    EXPECT_EQ(0, f.gui->KeyPress(f.gui, 'a', 0, 0));
    f.role->recorder->grabFocus();
    EXPECT_NE(0, f.gui->KeyPress(f.gui, 'a', 0, 0));
    EXPECT_NE(0, f.gui->KeyPress(f.gui, 13, 0, 0));
    EXPECT_NE(0, f.gui->KeyPress(f.gui, HLA2_KEY_END, 0, 0));
    f.gui->SetHostDeliversKeys(f.gui, 0);
    EXPECT_EQ(0, f.gui->KeyPress(f.gui, 'b', 0, 0));
    const std::vector<std::string> expected = {"move 30,40", "down 31,41 4 16", "up 32,42 4", "key 0 a", "key 5", "key 13"};
    EXPECT_EQ(expected, log);
    f.gui->Close(f.gui);
}

TEST(EditorTest, AHostThatDestroysItsWindowFirstLeavesACleanClose)
{
    Fixture f;
    for (int round = 0; round < 3; ++round) {
        XHostWindow host;
        f.gui->Open(f.gui, host.Handle());
        host.Destroy();
        f.gui->Idle(f.gui); // the editor's window learns that it is gone
        f.gui->Close(f.gui);
    }
    EXPECT_EQ(3, f.role->closes);
}

}  // namespace
}  // namespace OV::Testing
