// The click roll's two counters against values worked out from the step and the slow factor,
// with and without whole steps; the dragger's offsets from the press.
#include "Screen.h"

#include "widgets/controls/ClickRoll.h"
#include "widgets/controls/Dragger.h"

namespace OV::Testing {
namespace {

using namespace CFW::Widgets;

TEST(ClickRoll, CountsNormalAndSlowPixelsApart)
{
    // 0 to 10 from 2, 0.5 a pixel, a tenth of that with Shift; pressed at y = 50.
    struct Move {
        int y, modifiers;
        float value, whole; // without and with whole steps
    };
    const Move moves[] = {
        {40, 0, 7.0f, 7.0f},     // 10 up: 10 steps
        {38, 16, 7.1f, 7.0f},    // 2 up slowly: 10.2
        {48, 0, 2.1f, 2.0f},     // 10 down: 0.2
        {33, 16, 2.85f, 3.0f},   // 15 up slowly: 1.7
        {-100, 0, 10.0f, 10.0f}, // the maximum
    };
    for (const bool rounding : {false, true}) {
        Screen screen;
        auto* roll = new ClickRoll(screen.root, {0, 0, 100, 100}, nullptr, {0, 10, 2, 0.5f, 10, 0, rounding});
        std::vector<float> emitted, expected;
        roll->valueChanged.connect([&emitted](ClickRoll*, float v) { emitted.push_back(v); });
        screen.window.mouseDown({20, 50}, 1, 0);
        for (const Move& m : moves) {
            screen.window.mouseMoved({20, m.y}, m.modifiers);
            if (expected.empty() || expected.back() != (rounding ? m.whole : m.value))
                expected.push_back(rounding ? m.whole : m.value);
        }
        screen.window.mouseUp({20, -100}, 1, 0);
        screen.click({20, 50}, 8); // Control: the default
        expected.push_back(2.0f);
        ExpectFloats(expected, emitted, rounding ? "whole steps" : "smooth");
        EXPECT_EQ(roll, screen.active());
    }
}

TEST(Dragger, ReportsOffsetsFromThePress)
{
    Screen screen;
    auto* dragger = new Dragger(screen.root, {10, 10, 20, 20}, screen.plain({4, 4}, 0xFF808080), true);
    std::vector<std::pair<int, int>> offsets;
    dragger->dragged.connect([&offsets](Dragger*, const CFW::BasicPoint<int>& d) { offsets.emplace_back(d.x, d.y); });
    auto& w = screen.window;
    w.mouseDown({15, 15}, 4, 0); // not the left button
    w.mouseMoved({20, 20}, 0);
    w.mouseDown({15, 15}, 1, 0);
    w.mouseMoved({25, 18}, 1);
    w.mouseMoved({5, 60}, 1); // outside: still the dragger's
    w.mouseUp({5, 60}, 1, 0);
    w.mouseMoved({15, 15}, 0);
    EXPECT_EQ((std::vector<std::pair<int, int>>{{10, 3}, {-10, 45}}), offsets);
}

}  // namespace
}  // namespace OV::Testing
