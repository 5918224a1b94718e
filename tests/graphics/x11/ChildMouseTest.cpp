// The mouse of a child window, driven through XTest: points against where the server puts the
// window, the modifier word against the keys and buttons held, capture, wheel, double clicks,
// the pointer's position.
#include "tests/graphics/x11/XHost.h"

#include <chrono>
#include <thread>

#include <X11/keysym.h>

namespace OV::Testing {
namespace {

// The modifiers tell the state after the event: a press has its own button, a release not.
TEST_F(XHost, ButtonsAndWheelGiveClientPointsAndModifiers)
{
    struct Case {
        unsigned xButton;
        std::vector<unsigned long> held; // keys held around the click
        BasicPoint<int> at;
        std::vector<Call> expected;
    };
    const Case cases[] = {
        {Button1, {}, {10, 10}, {{Call::Down, {10, 10}, 1, 1}, {Call::Up, {10, 10}, 1, 0}}},
        {Button2, {XK_Shift_L}, {50, 20}, {{Call::Down, {50, 20}, 2, 2 | 16}, {Call::Up, {50, 20}, 2, 16}}},
        {Button3, {XK_Control_L}, {199, 149}, {{Call::Down, {199, 149}, 4, 4 | 8}, {Call::Up, {199, 149}, 4, 8}}}, // last pixel
        {Button1, {XK_Shift_L, XK_Control_R}, {0, 0}, {{Call::Down, {0, 0}, 1, 1 | 8 | 16}, {Call::Up, {0, 0}, 1, 8 | 16}}},
        {Button4, {XK_Shift_L}, {40, 60}, {{Call::Wheel, {40, 60}, 1, 16}}},
        {Button5, {}, {40, 60}, {{Call::Wheel, {40, 60}, -1, 0}}},
    };
    auto child = makeChild();
    ASSERT_TRUE(child);
    const BasicPoint<int> corner = origin(child->nativeHandle());
    for (const Case& c : cases) {
        recorder.calls.clear();
        moveTo(corner.x + c.at.x, corner.y + c.at.y);
        for (unsigned long held : c.held)
            key(held, true);
        click(c.xButton);
        for (unsigned long held : c.held)
            key(held, false);
        const auto clicks = [&] { return recorder.only({Call::Down, Call::Up, Call::Wheel}); };
        ASSERT_TRUE(pump(*child, [&] { return clicks().size() == c.expected.size(); }));
        for (std::size_t i = 0; i < c.expected.size(); ++i)
            EXPECT_EQ(Tie(clicks()[i]), Tie(c.expected[i]));
    }
}

TEST_F(XHost, DragLeavingTheChildStillReachesItUntilRelease)
{
    auto child = makeChild();
    ASSERT_TRUE(child);
    const BasicPoint<int> corner = origin(child->nativeHandle());
    const auto last = [&](Call::Kind kind) {
        const auto calls = recorder.only({kind});
        return calls.empty() ? Call{kind, {-1, -1}} : calls.back();
    };
    moveTo(corner.x + 10, corner.y + 10);
    button(Button1, true);
    moveTo(5, 7); // outside the host as well
    ASSERT_TRUE(pump(*child, [&] { return last(Call::Moved).point.x == 5 - corner.x; }));
    EXPECT_EQ(Tie(last(Call::Moved)), Tie(Call{Call::Moved, {5 - corner.x, 7 - corner.y}, 0, 1}));
    moveTo(1000, 900);
    button(Button1, false);
    ASSERT_TRUE(pump(*child, [&] { return recorder.count(Call::Up) == 1; }));
    EXPECT_EQ(Tie(last(Call::Up)), Tie(Call{Call::Up, {1000 - corner.x, 900 - corner.y}, 1, 0}));

    // Released: a move outside is no longer ours. A click inside marks the end.
    recorder.calls.clear();
    moveTo(1100, 950);
    moveTo(corner.x + 3, corner.y + 4);
    click(Button1);
    ASSERT_TRUE(pump(*child, [&] { return recorder.count(Call::Up) == 1; }));
    for (const Call& call : recorder.only({Call::Moved}))
        EXPECT_NE(call.point.x, 1100 - corner.x);
}

// Quick clicks pair up, a third one starts a new pair, and clicks half a second apart never
// pair, however late the pump sees them.
TEST_F(XHost, DoubleClicksComeInPairsOfQuickClicks)
{
    auto child = makeChild();
    ASSERT_TRUE(child);
    const BasicPoint<int> corner = origin(child->nativeHandle());
    moveTo(corner.x + 30, corner.y + 20);
    for (int i = 0; i < 6; ++i) {
        if (i >= 4) {
            XSync(display, False);
            std::this_thread::sleep_for(std::chrono::milliseconds(500));
        }
        click(Button1);
    }
    ASSERT_TRUE(pump(*child, [&] { return recorder.count(Call::Up) == 6; }));
    std::vector<int> kinds;
    for (const Call& call : recorder.only({Call::Up, Call::Double}))
        kinds.push_back(call.kind);
    const int up = Call::Up, twice = Call::Double;
    EXPECT_EQ(kinds, (std::vector<int>{up, up, twice, up, up, twice, up, up}));
    EXPECT_EQ(Tie(recorder.only({Call::Double})[0]), Tie(Call{Call::Double, {30, 20}, 1, 0}));
}

TEST_F(XHost, CursorPositionInClientCoordinates)
{
    auto child = makeChild();
    ASSERT_TRUE(child);
    const BasicPoint<int> corner = origin(child->nativeHandle());
    for (const BasicPoint<int> p : {BasicPoint<int>{0, 0}, BasicPoint<int>{199, 149}, BasicPoint<int>{-20, 300}}) {
        child->setCursorPosition(p);
        EXPECT_EQ(Tie(child->getCursorPosition()), Tie(p)); // a round trip: the move is done
        ::Window root = 0, inside = 0;
        int x = 0, y = 0, windowX = 0, windowY = 0;
        unsigned mask = 0;
        XQueryPointer(display, host, &root, &inside, &x, &y, &windowX, &windowY, &mask);
        EXPECT_EQ(Tie(BasicPoint<int>{x, y}), Tie(BasicPoint<int>{corner.x + p.x, corner.y + p.y}));
    }
    for (int shape = 0; shape < 6; ++shape) { // no X error on a live window
        child->setCursorShape(shape);
        child->hideCursor();
        child->showCursor();
    }
}

}  // namespace
}  // namespace OV::Testing
