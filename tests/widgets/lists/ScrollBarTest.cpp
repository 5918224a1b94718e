// Scroll bars: the handle's size and place for a range and a page, worked out from the track's
// length, and what arrows, track, wheel, drags and held buttons do to the position.
#include "Bench.h"

#include "widgets/lists/ScrollBar.h"

#include <functional>

namespace OV::Testing {
namespace {

using namespace CFW::Widgets;
using CFW::BasicRect;

// A vertical bar 16 × 120 with arrows of 16 × 16: unless adjacent, the track runs from 16 to
// 104, 88 pixels.
ScrollBar& MakeBar(Bench& bench, bool adjacent, bool arrows = true)
{
    ScrollBar::Pictures pictures;
    if (arrows) {
        pictures.releasedBack = pictures.releasedForward = &bench.plain({16, 16}, 0xFF101010);
        pictures.pressedBack = pictures.pressedForward = &bench.plain({16, 16}, 0xFF202020);
    }
    pictures.handle = &bench.plain({16, 20}, 0xFF303030);
    pictures.handleMiddle = {0, 6, 16, 8}; // ends of 6 and 6
    return *new ScrollBar(bench.root, {0, 0, 16, 120}, pictures, true, adjacent);
}

TEST(ScrollBar, HandleShowsThePageShareAndPlace)
{
    struct Case {
        const char* what;
        bool adjacent;
        int range, page, position;
        std::vector<int> handle; // y, height; empty when it fits
    };
    const Case cases[] = {
        // 88 × 100 / 400 = 22 long, 66 to travel over positions 0..300.
        {"at the start", false, 400, 100, 0, {16, 22}},
        {"half way: 66 × 150 / 300", false, 400, 100, 150, {49, 22}},
        {"at the end", false, 400, 100, 300, {82, 22}},
        {"beyond the end is the end", false, 400, 100, 999, {82, 22}},
        {"arrows together at the end: the track starts at 0", true, 400, 100, 150, {33, 22}},
        {"a tiny share: the picture's ends, 12", false, 100000, 100, 0, {16, 12}},
        {"all fits", false, 100, 100, 0, {}},
        {"less than fits", false, 50, 100, 0, {}},
    };
    for (const Case& c : cases) {
        Bench bench;
        ScrollBar& bar = MakeBar(bench, c.adjacent);
        bar.setRange(c.range, c.page);
        bar.setScrollPosition(c.position);
        const BasicRect<int> handle = bar.handleRect();
        const std::vector<int> shown = IsEmpty(handle) ? std::vector<int>() : std::vector<int>{handle.x, handle.y, handle.width, handle.height};
        const std::vector<int> expected = c.handle.empty() ? c.handle : std::vector<int>{0, c.handle[0], 16, c.handle[1]};
        EXPECT_EQ(expected, shown) << c.what;
    }
}

TEST(ScrollBar, ArrowsTrackWheelAndDrag)
{
    // Range 400, page 100, step 10, from 150: the handle covers 49..70. A range of 80 fits.
    struct Case {
        const char* what;
        int range;
        std::function<void(Bench&)> act;
        int position;
    };
    const auto drag = [](int from, int to) {
        return [from, to](Bench& b) {
            b.window.mouseDown({8, from}, 1, 0);
            b.window.mouseMoved({8, to}, 1);
            b.window.mouseUp({8, to}, 1, 0);
        };
    };
    const auto wheel = [](int steps) { return [steps](Bench& b) { b.window.mouseWheel({8, 60}, steps, 0); }; };
    const auto click = [](int y) { return [y](Bench& b) { b.click({8, y}); }; };
    // Held for some ticks, released, and one tick more.
    const auto hold = [](int y, int ticks) {
        return [y, ticks](Bench& b) {
            b.window.mouseDown({8, y}, 1, 0);
            for (int i = 0; i < ticks; ++i)
                b.window.timer();
            b.window.mouseUp({8, y}, 1, 0);
            b.window.timer();
        };
    };
    const Case cases[] = {
        {"back arrow: a step", 400, click(5), 140},
        {"forward arrow: a step", 400, click(110), 160},
        {"track above the handle: a page back", 400, click(30), 50},
        {"track below the handle: a page on", 400, click(90), 250},
        {"wheel up: three steps back", 400, wheel(1), 120},
        {"wheel down twice", 400, wheel(-2), 210},
        {"wheel far up stops at 0", 400, wheel(100), 0},
        {"drag 11 px: 11 × 300 / 66", 400, drag(60, 71), 200},
        {"drag 5 px back: 22.7 rounds to 23", 400, drag(60, 55), 127},
        {"drag past the end", 400, drag(60, 300), 300},
        {"drag past the start", 400, drag(60, -50), 0},
        {"a press beside the handle does not drag", 400, drag(30, 100), 50},
        {"right button: nothing", 400, [](Bench& b) { b.window.mouseDown({8, 5}, 4, 0); }, 150},
        // The press moves once; ticks 1 to 7 wait, and from the 8th each tick moves again.
        {"back arrow held 7 ticks", 400, hold(5, 7), 140},
        {"back arrow held 9 ticks", 400, hold(5, 9), 120},
        // Range 1000: the handle is 12 (the picture's ends), travelling 76 over 0..900. Pages
        // go on while it is above the pointer at 60: at 450 it covers 54..65 and stops.
        {"held track stops under the pointer", 1000, hold(60, 30), 450},
        {"all fits: arrows do nothing", 80, click(110), 0},
        {"all fits: the track does nothing", 80, drag(60, 100), 0},
        {"all fits: the wheel does nothing", 80, wheel(-3), 0},
    };
    for (const Case& c : cases) {
        Bench bench;
        ScrollBar& bar = MakeBar(bench, false);
        bar.setRange(c.range, 100);
        bar.setStep(10);
        bar.setScrollPosition(150);
        const int start = bar.getScrollPosition();
        int told = 0, last = start;
        bar.positionChanged.connect([&](ScrollBar*, int position) { ++told, last = position; });
        c.act(bench);
        bench.window.redraw();
        EXPECT_EQ(c.position, bar.getScrollPosition()) << c.what;
        EXPECT_EQ(c.position, last) << c.what;
        EXPECT_EQ(c.position != start, told > 0) << c.what;
        EXPECT_FALSE(bar.hasMouse()) << c.what;
    }
}

}  // namespace
}  // namespace OV::Testing
