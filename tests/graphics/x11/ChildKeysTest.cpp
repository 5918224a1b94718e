// The keyboard of a child window: the host keeps its keys until the window asks for them, and
// gets the focus back when it lets go. Where the focus is, the server tells.
#include "tests/graphics/x11/XHost.h"

#include <X11/keysym.h>

namespace OV::Testing {
namespace {

using Key = std::pair<int, char>; // code, character

std::vector<Key> KeysDown(const Recorder& recorder)
{
    std::vector<Key> keys;
    for (const Call& call : recorder.only({Call::KeyDown}))
        keys.emplace_back(call.value, call.character);
    return keys;
}

TEST_F(XHost, KeysReachTheChildOnlyWhileItHoldsTheKeyboard)
{
    auto child = makeChild();
    ASSERT_TRUE(child);
    XEvent event;
    tap(XK_a);
    ASSERT_TRUE(hostEvent(KeyPress, event));

    child->grabKeyboard();
    EXPECT_EQ(focus(), child->nativeHandle());
    const std::pair<unsigned long, Key> typed[] = {
        {XK_a, {0, 'a'}}, {XK_space, {0, ' '}}, {XK_1, {0, '1'}}, {XK_minus, {0, '-'}}, {XK_Left, {6, 0}},
        {XK_Right, {7, 0}}, {XK_Up, {8, 0}}, {XK_Down, {9, 0}}, {XK_Insert, {10, 0}}, {XK_Delete, {11, 0}},
        {XK_Home, {12, 0}}, {XK_End, {13, 0}}, {XK_BackSpace, {1, 8}}, {XK_Escape, {3, 27}}, {XK_Tab, {4, 9}},
        {XK_Return, {5, 13}}, {XK_F1, {-1, 0}}, // nothing
    };
    std::vector<Key> expected;
    for (const auto& [symbol, result] : typed) {
        tap(symbol);
        if (result.first >= 0)
            expected.push_back(result);
    }
    // Shift gives capitals. A child knows no Control: C and V with it are control characters,
    // which it drops, and J is a line feed.
    key(XK_Shift_L, true);
    tap(XK_b);
    key(XK_Shift_L, false);
    key(XK_Control_L, true);
    for (unsigned long symbol : {XK_c, XK_v, XK_j})
        tap(symbol);
    key(XK_Control_L, false);
    tap(XK_z);
    expected.insert(expected.end(), {{0, 'B'}, {2, 10}, {0, 'z'}});
    ASSERT_TRUE(pump(*child, [&] { return KeysDown(recorder).size() == expected.size(); }));
    EXPECT_EQ(KeysDown(recorder), expected);
    EXPECT_EQ(recorder.count(Call::KeyUp), 0);

    // Let go, the focus is the host's again and so are the keys.
    child->releaseKeyboard();
    EXPECT_EQ(focus(), host);
    recorder.calls.clear();
    tap(XK_q);
    ASSERT_TRUE(hostEvent(KeyPress, event));

    // Taken away, the keyboard is lost, once.
    child->grabKeyboard();
    XSetInputFocus(display, host, RevertToParent, CurrentTime);
    ASSERT_TRUE(pump(*child, [&] { return recorder.count(Call::KeyboardLost) == 1; }));
    EXPECT_EQ(focus(), host);
    tap(XK_w);
    ASSERT_TRUE(hostEvent(KeyPress, event));
    child->redraw();
    EXPECT_EQ(recorder.count(Call::KeyDown), 0);
    EXPECT_EQ(recorder.count(Call::KeyboardLost), 1);
}

// Mouse and keys over a child that takes neither go to the host window under it.
TEST_F(XHost, ChildWithoutMouseAndKeyboardLeavesThemToTheHost)
{
    auto child = makeChild(false, false);
    ASSERT_TRUE(child);
    child->grabKeyboard();
    EXPECT_EQ(focus(), host);
    const BasicPoint<int> corner = origin(child->nativeHandle());
    moveTo(corner.x + 50, corner.y + 50);
    click(Button1);
    click(Button4);
    tap(XK_a);
    XEvent event;
    ASSERT_TRUE(hostEvent(ButtonPress, event));
    EXPECT_EQ(Tie(BasicPoint<int>{event.xbutton.x, event.xbutton.y}), Tie(BasicPoint<int>{corner.x + 50 - hostX, corner.y + 50 - hostY}));
    ASSERT_TRUE(hostEvent(ButtonPress, event));
    EXPECT_EQ(event.xbutton.button, static_cast<unsigned>(Button4));
    ASSERT_TRUE(hostEvent(KeyPress, event));
    child->redraw();
    EXPECT_TRUE(recorder.only({Call::Moved, Call::Down, Call::Up, Call::Wheel, Call::Double, Call::KeyDown}).empty());
}

}  // namespace
}  // namespace OV::Testing
