// The button family: press, leave, come back and release with the left button only, the
// signals in their order and the image each state shows; check boxes, multi-state buttons and
// radio groups on top.
#include "Screen.h"

#include "widgets/controls/CheckBox.h"
#include "widgets/controls/MultiStateButton.h"
#include "widgets/controls/PushButton.h"
#include "widgets/controls/RadioButton.h"

#include <algorithm>
#include <utility>

namespace OV::Testing {
namespace {

using namespace CFW::Widgets;
using CFW::Graphics::Color;

constexpr Color A = 0xFF0000A0, B = 0xFF00A000, C = 0xFFA00000, D = 0xFFA0A0A0;
const CFW::BasicPoint<int> in{15, 15}, out{50, 50}; // the buttons are at (10, 10, 20, 20)

struct Step {
    const char* what;
    std::function<void()> action;
    std::vector<std::string> lines;
    Color shown; // at `in`
};

// Runs the steps, with the button's signals logged as lines such as "clicked 5,5".
void RunSteps(Screen& screen, Button& button, std::vector<std::string>& log, const std::vector<Step>& steps)
{
    button.pressed.connect([&log](Button*) { log.push_back("pressed"); });
    button.released.connect([&log](Button*) { log.push_back("released"); });
    button.clicked.connect([&log](Button*, const CFW::BasicPoint<int>& p) {
        log.push_back("clicked " + std::to_string(p.x) + "," + std::to_string(p.y));
    });
    for (const Step& step : steps) {
        step.action();
        EXPECT_EQ(step.lines, std::exchange(log, {})) << step.what;
        screen.window.redraw();
        EXPECT_EQ(step.shown, screen.window.pixel(in.x, in.y)) << step.what;
    }
}

TEST(PushButton, PressLeaveComeBackRelease)
{
    Screen screen;
    auto& w = screen.window;
    auto* button = new PushButton(screen.root, {10, 10, 20, 20}, &screen.plain({20, 20}, A), &screen.plain({20, 20}, B),
                                  &screen.plain({20, 20}, C));
    std::vector<std::string> log;
    RunSteps(screen, *button, log,
             {
                 {"hover highlights", [&] { w.mouseMoved(in, 0); }, {}, C},
                 {"press", [&] { w.mouseDown(in, 1, 0); }, {"pressed"}, B},
                 {"leave while held", [&] { w.mouseMoved(out, 1); }, {"released"}, A},
                 {"come back", [&] { w.mouseMoved(in, 1); }, {"pressed"}, B},
                 {"release inside", [&] { w.mouseUp({12, 29}, 1, 0); }, {"released", "clicked 2,19"}, C},
                 {"the right button is nothing", [&] { w.mouseDown(in, 4, 0); w.mouseUp(in, 4, 0); }, {}, C},
                 {"nor ends a press", [&] { w.mouseDown(in, 1, 0); w.mouseUp(in, 4, 0); }, {"pressed"}, B},
                 {"release outside", [&] { w.mouseMoved(out, 1); w.mouseUp(out, 1, 0); }, {"released"}, A},
                 {"coming back after presses nothing", [&] { w.mouseMoved(in, 0); }, {}, C},
             });
    EXPECT_EQ(button, screen.active());
}

TEST(CheckBox, ClickFlipsAndShowsTheFourImages)
{
    Screen screen;
    auto& w = screen.window;
    auto* box = new CheckBox(screen.root, {10, 10, 20, 20},
                             {&screen.plain({20, 20}, A), &screen.plain({20, 20}, B), &screen.plain({20, 20}, C),
                              &screen.plain({20, 20}, D)});
    std::vector<std::string> log;
    box->toggled.connect([&log](CheckBox*, bool on) { log.push_back(on ? "on" : "off"); });
    RunSteps(screen, *box, log,
             {
                 {"pressed unchecked", [&] { w.mouseDown(in, 1, 0); }, {"pressed"}, C},
                 {"checked", [&] { w.mouseUp(in, 1, 0); }, {"released", "clicked 5,5", "on"}, B},
                 {"pressed checked", [&] { w.mouseDown(in, 1, 0); }, {"pressed"}, D},
                 {"unchecked", [&] { w.mouseUp(in, 1, 0); }, {"released", "clicked 5,5", "off"}, A},
                 {"set unchanged", [&] { box->setChecked(false); }, {}, A},
                 {"set", [&] { box->setChecked(true); }, {"on"}, B},
             });
}

TEST(MultiStateButton, StepsRoundItsStates)
{
    Screen screen;
    auto* button = new MultiStateButton(screen.root, {10, 10, 20, 20},
                                        {&screen.plain({20, 20}, A), &screen.plain({20, 20}, B), &screen.plain({20, 20}, C)});
    std::vector<int> states;
    std::vector<Color> shown;
    button->stateChanged.connect([&states](MultiStateButton*, int state) { states.push_back(state); });
    for (int i = 0; i < 3; ++i) {
        screen.click(in);
        screen.window.redraw();
        shown.push_back(screen.window.pixel(in.x, in.y));
    }
    for (const int state : {2, 2, 3, -1})
        button->setState(state);
    EXPECT_EQ((std::vector<Color>{B, C, A}), shown);
    EXPECT_EQ((std::vector<int>{1, 2, 0, 2}), states);
}

TEST(RadioGroup, OneSelectedAtATime)
{
    Screen screen;
    auto group = std::make_shared<RadioGroup>("modes");
    std::vector<RadioButton*> buttons;
    for (int x : {0, 10, 20})
        buttons.push_back(new RadioButton(screen.root, {x, 0, 10, 10}, {&screen.plain({10, 10}, A), &screen.plain({10, 10}, B)}, group));
    std::vector<long> selections; // the index, -1 for none
    group->selectionChanged.connect([&](RadioGroup*, RadioButton* b) {
        selections.push_back(b ? std::find(buttons.begin(), buttons.end(), b) - buttons.begin() : -1);
    });
    for (const int x : {15, 15, 25})
        screen.click({x, 5});
    screen.window.redraw();
    EXPECT_EQ((std::vector<Color>{A, A, B}), (std::vector<Color>{screen.window.pixel(5, 5), screen.window.pixel(15, 5),
                                                                 screen.window.pixel(25, 5)}));
    group->select(nullptr);
    group->select(buttons[0]);
    delete buttons[0]; // takes the selection with it, quietly
    EXPECT_EQ(nullptr, group->getSelected());
    EXPECT_EQ(2u, group->getButtons().size());
    EXPECT_EQ((std::vector<long>{1, 2, -1, 0}), selections);
}

}  // namespace
}  // namespace OV::Testing
