// Sliders: only the handle takes a press; drags against values worked out from the span the
// handle travels, whole or smooth, slow with Shift.
#include "Screen.h"

#include "widgets/controls/Slider.h"

namespace OV::Testing {
namespace {

using namespace CFW::Widgets;

TEST(Slider, DragsFromTheHandleOnly)
{
    // 0 to 10 on a track of 110 with a handle of 10: 10 px a unit; the handle of 5 stands at 50,
    // of 8 at 80 (from the bottom when vertical).
    struct Case {
        const char* what;
        bool vertical, smooth;
        float start;
        int modifiers;
        int pressAt, moveTo; // along the track
        float value;
        bool onHandle;
    };
    const Case cases[] = {
        {"beside the handle: nothing", false, true, 5, 0, 20, 90, 5, false},
        {"23 px right, smooth", false, true, 5, 0, 55, 78, 7.3f, true},
        {"truncated", false, false, 5, 0, 55, 78, 7, true},
        {"slowly, smooth", false, true, 5, 16, 55, 78, 5.23f, true},
        {"beyond the end", false, true, 5, 0, 55, 200, 10, true},
        {"vertical, 23 px up", true, true, 5, 0, 55, 32, 7.3f, true},
        {"vertical, 15 px down, truncated", true, false, 5, 0, 55, 70, 3, true},
        {"Control on the handle resets", false, true, 8, 8, 85, 20, 5, true},
        {"Control beside it does not", false, true, 8, 8, 55, 20, 8, false},
    };
    for (const Case& c : cases) {
        Screen screen;
        const auto at = [&c](int along) { return c.vertical ? CFW::BasicPoint<int>{5, along} : CFW::BasicPoint<int>{along, 5}; };
        auto* slider = new Slider(screen.root, c.vertical ? CFW::BasicRect<int>{0, 0, 10, 110} : CFW::BasicRect<int>{0, 0, 110, 10},
                                  nullptr, &screen.plain({10, 10}, 0xFF202020), 0, 10, c.vertical, c.smooth);
        slider->setValue(c.start);
        screen.window.mouseDown(at(c.pressAt), 1, c.modifiers);
        EXPECT_EQ(c.onHandle && c.modifiers != 8, slider->hasMouse()) << c.what;
        EXPECT_EQ(c.onHandle, screen.active() == slider) << c.what;
        screen.window.mouseMoved(at(c.moveTo), 0);
        screen.window.mouseUp(at(c.moveTo), 1, 0);
        EXPECT_FLOAT_EQ(c.value, slider->getValue()) << c.what;
    }
}

}  // namespace
}  // namespace OV::Testing
