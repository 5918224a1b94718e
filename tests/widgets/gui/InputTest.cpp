// Input: which widget the manager picks for a point, and where moves, clicks, wheel and keys
// go with hover, mouse grab and focus, against positions worked out from the widgets' rects.
#include "Tree.h"

#include "graphics/BitMask.h"

#include <functional>
#include <sstream>

#include <gtest/gtest.h>

namespace OV::Testing {
namespace {

using namespace CFW::GUI;
using CFW::BasicPoint;
using CFW::Graphics::KeyboardButton::Character;

// 8 × 8, the left half opaque: a top-down 32-bit TGA file.
std::string HalfMask()
{
    std::string file(18, '\0');
    file[2] = 2;
    file[12] = file[14] = 8;
    file[16] = 32;
    file[17] = 32 | 8;
    for (int i = 0; i < 64; ++i)
        file += std::string{'\x10', '\x20', '\x30', i % 8 < 4 ? '\xff' : '\0'};
    return file;
}

TEST(WidgetInput, PickingTopMostFirstAndThroughMasks)
{
    Tree tree;
    tree.add("low", {0, 0, 100, 100});
    tree.add("high", {50, 50, 100, 100});
    Widget& p = tree.add("P", {0, 100, 100, 100});
    tree.add("T", p, {10, 10, 30, 30}).setTopMost(true);
    tree.add("U", p, {0, 0, 100, 100});
    tree.add("right", {200, 0, 50, 110});
    tree.add("disabled", {200, 0, 50, 50}).disable();
    tree.add("hidden", {200, 60, 50, 50}).hide();
    tree.add("under", {160, 160, 30, 30});
    std::istringstream file(HalfMask());
    CFW::Graphics::BitMask mask(file);
    mask.build(128);
    tree.add("M", {170, 170, 8, 8}).setMask(&mask);
    tree.add("wide", {200, 200, 16, 8}).setMask(&mask); // the mask covers its left half only
    tree.take();

    struct Case {
        BasicPoint<int> point;
        const char* target;
    };
    const Case cases[] = {
        {{75, 75}, "high 25,25"},   {{25, 25}, "low 25,25"},     {{20, 120}, "T 10,10"},
        {{50, 150}, "U 50,50"},     {{75, 110}, "U 75,10"},      {{210, 10}, "right 10,10"},
        {{210, 70}, "right 10,70"}, {{171, 171}, "M 1,1"},       {{175, 171}, "under 15,11"},
        {{201, 201}, "wide 1,1"},   {{212, 202}, "root 212,202"}, {{255, 0}, "root 255,0"},
    };
    for (const Case& c : cases) {
        tree.window.mouseDown(c.point, 1, 0);
        EXPECT_EQ(std::vector<std::string>{std::string("down ") + c.target + " 1 0"}, tree.take());
    }
}

TEST(WidgetInput, EventsFollowHoverGrabAndFocus)
{
    Tree tree;
    Widget& panel = tree.add("panel", tree.root, {0, 0, 200, 200}, true);
    Widget& knob = tree.add("knob", panel, {0, 0, 100, 100}, true);
    Widget& image = tree.add("image", panel, {50, 50, 100, 100});
    Widget& edit = tree.add("edit", {0, 210, 100, 40});
    Widget& other = tree.add("other", {110, 210, 100, 40});
    auto& w = tree.window;
    tree.take();

    struct Step {
        const char* what;
        std::function<void()> action;
        std::vector<std::string> lines;
    };
    const Step steps[] = {
        {"no focus, no key", [&] { w.keyDown(Character, 'x', 0); }, {}},
        {"focus grabs the keyboard", [&] { edit.grabFocus(); }, {"focusGained edit", "grabs 1"}},
        {"keys go to the focus", [&] { w.keyDown(Character, 'x', 16); w.keyUp(Character, 'x', 0); },
         {"keyDown edit 0 x 16", "keyUp edit 0 x 0"}},
        {"focus moves", [&] { other.grabFocus(); }, {"focusLost edit", "focusGained other", "grabs 1"}},
        {"the window takes the keyboard back", [&] { w.keyboardLost(); }, {"focusLost other", "releases 1"}},
        {"and keys are dropped again", [&] { w.keyDown(Character, 'x', 0); }, {}},
        {"release", [&] { edit.grabFocus(); edit.releaseFocus(); }, {"focusGained edit", "focusLost edit", "grabs 1", "releases 1"}},
        {"not focusable", [&] { other.setFocusable(false); other.grabFocus(); }, {}},
        {"hover enters", [&] { w.mouseMoved({20, 20}, 0); }, {"enter knob", "move knob 20,20 0"}},
        {"hover leaves first", [&] { w.mouseMoved({75, 75}, 0); }, {"leave knob", "enter image", "move image 25,25 0"}},
        {"nothing picked is the root", [&] { w.mouseMoved({220, 220}, 0); }, {"leave image", "enter root", "move root 220,220 0"}},
        {"a grab takes clicks", [&] { knob.grabMouse(); w.mouseDown({75, 75}, 1, 0); }, {"mouseGrabbed knob", "down knob 75,75 1 0"}},
        {"and moves outside the window", [&] { w.mouseMoved({300, -5}, 1); }, {"move knob 300,-5 1"}},
        {"and the release", [&] { w.mouseUp({300, -5}, 1, 0); }, {"up knob 300,-5 1 0"}},
        {"a double click ignores it", [&] { w.doubleClick({120, 120}, 1, 0); }, {"double image 70,70 1 0"}},
        {"so does the wheel", [&] { w.mouseWheel({20, 20}, -1, 0); }, {"wheel knob 20,20 -1 0"}},
        {"another grab takes over", [&] { image.grabMouse(); knob.releaseMouse(); },
         {"mouseReleased knob", "mouseGrabbed image"}},
        {"released", [&] { image.releaseMouse(); }, {"mouseReleased image"}},
        {"the wheel over a picture goes up to who wants it", [&] { w.mouseWheel({75, 75}, 2, 8); }, {"wheel panel 75,75 2 8"}},
        {"and to the root when nobody does", [&] { w.mouseWheel({220, 220}, 1, 0); }, {"wheel root 220,220 1 0"}},
    };
    for (const Step& step : steps) {
        step.action();
        EXPECT_EQ(step.lines, tree.take()) << step.what;
    }
}

}  // namespace
}  // namespace OV::Testing
