// Knobs: drags, Control-clicks and the wheel against values worked out from the range and the
// pixels of drag; the frame shown, read from a strip whose frames have colours of their own.
#include "Screen.h"

#include "graphics/BitMask.h"
#include "tests/support/Tga.h"
#include "widgets/controls/KnobRotatable.h"

#include <sstream>

namespace OV::Testing {
namespace {

using namespace CFW::Widgets;
using CFW::Graphics::Color;

constexpr int Shift = 16, Control = 8;

// A knob over (0, 0, 100, 100), 0 to 1 over 100 pixels, and what it emits.
struct Fixture {
    Screen screen;
    Knob* knob = new Knob(screen.root, {0, 0, 100, 100}, nullptr, 2);
    std::vector<float> emitted;

    explicit Fixture(float start)
    {
        knob->setMouseRange(100);
        knob->setValue(start);
        knob->valueChanged.connect([this](Knob*, float v) { emitted.push_back(v); });
    }
};

TEST(Knob, DragsFromTheStartPoint)
{
    struct Case {
        const char* what;
        float start;
        int modifiers;
        std::vector<int> moves; // the pointer's y, pressed at 50
        std::vector<float> emitted;
    };
    const Case cases[] = {
        {"50 px up is half the range", 0.25f, 0, {0}, {0.75f}},
        {"with Shift a tenth of it", 0.25f, Shift, {0}, {0.30f}},
        {"down lowers, the start is the start", 0.5f, 0, {70, 50}, {0.3f, 0.5f}},
        {"at the maximum until back past its point", 0.25f, 0, {-50, -40, -25, -15}, {1, 0.9f}},
        {"at the minimum likewise", 0.25f, 0, {90, 75, 70}, {0, 0.05f}},
        {"Control resets, with no drag", 0.8f, Control, {0}, {0.5f}},
        {"Control at the default does nothing", 0.5f, Control, {0}, {}},
    };
    for (const Case& c : cases) {
        Fixture f(c.start);
        f.screen.window.mouseDown({50, 50}, 1, c.modifiers);
        EXPECT_EQ(f.knob, f.screen.active()) << c.what;
        // Sideways too, and Shift the other way than at the press: neither counts.
        for (std::size_t i = 0; i < c.moves.size(); ++i)
            f.screen.window.mouseMoved({50 + 7 * static_cast<int>(i + 1), c.moves[i]}, c.modifiers ^ Shift);
        f.screen.window.mouseUp({50, 0}, 1, 0);
        f.screen.window.mouseMoved({50, 20}, 0); // released: nothing
        ExpectFloats(c.emitted, f.emitted, c.what);
    }
}

TEST(Knob, WheelAndSetters)
{
    struct Case {
        float wheelStep;
        int steps;
        float value;
    };
    const Case cases[] = {{0.1f, 3, 0.6f}, {0.1f, -3, 0.4f}, {0.0f, 2, 0.52f}, {0.0f, -1, 0.49f}, {0.1f, 0, 0.5f}, {0.7f, 1, 1}};
    for (const Case& c : cases) {
        Fixture f(0.5f);
        f.knob->setWheelStep(c.wheelStep);
        f.screen.window.mouseWheel({50, 50}, c.steps, 0);
        ExpectFloats(c.value == 0.5f ? std::vector<float>{} : std::vector<float>{c.value}, f.emitted,
                     std::to_string(c.wheelStep) + " by " + std::to_string(c.steps));
    }

    Fixture f(0);
    for (const float v : {0.0f, 2.0f, 1.5f})
        f.knob->setValue(v);
    f.knob->setMaxValue(0.6f);
    f.knob->setMinValue(0.1f); // the value is inside
    EXPECT_FLOAT_EQ(0.35f, f.knob->getDefaultValue());
    ExpectFloats({1.0f, 0.6f}, f.emitted, "setters");
}

// Frame i of a strip 4 pixels wide, 2 rows a frame.
Color FrameColor(int i)
{
    return 0xFF000000u | static_cast<Color>(i + 1) * 0x102030u;
}

TEST(Knob, ShowsTheFrameOfItsValue)
{
    constexpr Color plain = 0xFFFFFFFF, untouched = 0, blendedNothing = 0xFF000000;
    struct Case {
        const char* what;
        int stripFrames, frames; // drawn in the strip, told the knob
        std::vector<int> frameList;
        float min, max, value;
        bool rounding;
        Color color, top, bottom; // the knob's two rows
    };
    const Case cases[] = {
        {"2.96 truncates", 5, 5, {}, 0, 1, 0.74f, false, plain, FrameColor(2), FrameColor(2)},
        {"2.96 rounds", 5, 5, {}, 0, 1, 0.74f, true, plain, FrameColor(3), FrameColor(3)},
        {"the maximum", 5, 5, {}, 0, 1, 1.0f, false, plain, FrameColor(4), FrameColor(4)},
        {"15 of 20", 5, 5, {}, -10, 10, 5.0f, false, plain, FrameColor(3), FrameColor(3)},
        {"a list, middle", 5, 5, {4, 0, 2}, 0, 1, 0.5f, false, plain, FrameColor(0), FrameColor(0)},
        {"a list beyond the strip", 5, 5, {9}, 0, 1, 0.0f, false, plain, FrameColor(4), FrameColor(4)},
        {"an empty range", 5, 5, {}, 0.5f, 0.5f, 0.5f, false, plain, FrameColor(0), FrameColor(0)},
        {"no frames", 5, 0, {}, 0, 1, 1.0f, false, plain, FrameColor(0), FrameColor(0)},
        {"a strip shorter than its frames", 2, 5, {}, 0, 1, 1.0f, false, plain, FrameColor(1), untouched},
        {"a tint multiplies, alpha too", 5, 5, {}, 0, 1, 0.0f, false, 0x00FFFFFF, blendedNothing, blendedNothing},
    };
    for (const Case& c : cases) {
        Screen screen;
        auto& strip = screen.picture({4, 2 * c.stripFrames}, [](int, int y) { return FrameColor(y / 2); });
        auto* knob = new Knob(screen.root, {10, 10, 4, 2}, &strip, c.frames, c.frameList);
        knob->setMaxValue(c.max);
        knob->setMinValue(c.min);
        knob->setValue(c.value);
        knob->setRounding(c.rounding);
        knob->setColor(c.color);
        screen.window.redraw();
        EXPECT_EQ(c.top, screen.window.pixel(10, 10)) << c.what;
        EXPECT_EQ(c.bottom, screen.window.pixel(13, 11)) << c.what;
    }
}

TEST(Knob, MaskFollowsTheFrame)
{
    // Two frames of 4 × 4: the first opaque on its left half, the second on its right half.
    std::vector<std::uint32_t> pixels;
    for (int i = 0; i < 4 * 8; ++i)
        pixels.push_back((i % 4 < 2) == (i / 4 < 4) ? 0xFF000000 : 0);
    std::istringstream file(Tga(4, 8, pixels, true));
    CFW::Graphics::BitMask mask(file);
    mask.build(128);
    struct Case {
        float value;
        int x, y; // the knob is at (20, 20)
        bool hits;
    };
    for (const Case& c : {Case{0, 21, 21, true}, Case{0, 23, 23, false}, Case{1, 21, 21, false}, Case{1, 23, 23, true}}) {
        Screen screen;
        auto* knob = new Knob(screen.root, {20, 20, 4, 4}, &screen.plain({4, 8}, 0xFF336699), 2);
        knob->setMask(&mask);
        knob->setValue(c.value);
        screen.window.redraw();
        screen.click({c.x, c.y});
        EXPECT_EQ(c.hits, screen.active() == knob) << c.value << " at " << c.x << "," << c.y;
    }
}

TEST(Knob, HidingClearsTheActiveWidgetWhenItIsThatKnob)
{
    Screen screen;
    auto* first = new Knob(screen.root, {0, 0, 50, 50}, nullptr, 10);
    auto* second = new Knob(screen.root, {50, 0, 50, 50}, nullptr, 10);
    screen.click({10, 10});
    second->hide();
    EXPECT_EQ(first, screen.active());
    first->hide();
    EXPECT_EQ(nullptr, screen.active());
}

TEST(KnobRotatable, DragsBothValuesOrOneAxisWithShift)
{
    // From 0.5 and 0.5 at (50, 50): 100 px up is the whole value, 200 slowly; 100 px to the right
    // is the whole rotation (-50 to 50 degrees, a pixel each), slow or not.
    struct Case {
        int modifiers;
        CFW::BasicPoint<int> first, second;
        float value, rotation; // after both moves
    };
    const Case cases[] = {
        {0, {70, 40}, {40, 60}, 0.4f, 0.4f},
        {Shift, {51, 40}, {90, 30}, 0.6f, 0.5f},   // up first: the value alone
        {Shift, {70, 48}, {60, 0}, 0.5f, 0.6f},    // sideways first: the rotation alone
        {Control, {70, 40}, {60, 0}, 0.5f, 0.3f},  // both defaults, no drag
    };
    for (const Case& c : cases) {
        Screen screen;
        auto* knob = new KnobRotatable(screen.root, {0, 0, 100, 100}, nullptr, 2);
        knob->setMouseRange(100);
        knob->setRotationRange(-50, 50);
        knob->setPixelPerDegree(1);
        knob->setValue(0.9f);
        knob->setRotation(0.5f);
        knob->setDefaultRotation(0.3f);
        if (c.modifiers != Control)
            knob->setValue(0.5f);
        screen.window.mouseDown({50, 50}, 1, c.modifiers);
        screen.window.mouseMoved(c.first, 0);
        screen.window.mouseMoved(c.second, 0);
        screen.window.mouseUp(c.second, 1, 0);
        EXPECT_FLOAT_EQ(c.value, knob->getValue()) << c.modifiers;
        EXPECT_FLOAT_EQ(c.rotation, knob->getRotation()) << c.modifiers;
    }
}

}  // namespace
}  // namespace OV::Testing
