// How child windows end: with the host's window, with their owner, or not at all when they
// cannot be made; never with an X error, never leaving a window behind.
#include "tests/graphics/x11/XHost.h"

namespace OV::Testing {
namespace {

TEST_F(XHost, DestroyingTheHostWindowEndsTheChildOnce)
{
    auto child = makeChild();
    ASSERT_TRUE(child);
    child->grabKeyboard();
    child->hideCursor();
    child->redraw(); // its requests are done before the host's
    XDestroyWindow(display, host);
    host = 0;
    ASSERT_TRUE(pump(*child, [&] { return recorder.count(Call::Closing) == 1; }));
    EXPECT_EQ(child->nativeHandle(), 0u);

    // Whatever the owner does with it now touches no X window and calls nothing back.
    recorder.calls.clear();
    child->invalidate({0, 0, 10, 10});
    child->grabKeyboard();
    child->releaseKeyboard();
    child->setCursorShape(3);
    child->showCursor();
    child->setCursorPosition({1, 1});
    EXPECT_EQ(child->getCursorPosition().x, 0);
    child->redraw();
    child.reset();
    EXPECT_TRUE(recorder.calls.empty());
}

TEST_F(XHost, ChildThatCannotBeMadeIsNull)
{
    const ::Window gone = XCreateSimpleWindow(display, host, 0, 0, 10, 10, 0, 0, 0);
    XDestroyWindow(display, gone);
    XSync(display, False);
    struct Case {
        unsigned long parent;
        BasicRect<int> rect;
    };
    const Case cases[] = {
        {gone, {0, 0, 100, 100}}, {0, {0, 0, 100, 100}}, {host, {0, 0, 0, 100}}, {host, {0, 0, 100, -1}}, {host, {0, 0, 40000, 10}},
    };
    for (const Case& c : cases)
        EXPECT_EQ(device.createWindowChild(recorder, c.rect, c.parent, true, true), nullptr);
    EXPECT_TRUE(recorder.calls.empty());
}

// Under AddressSanitizer this also shows that nothing leaks.
TEST_F(XHost, OpenAndCloseTwoHundredTimes)
{
    for (int i = 0; i < 200; ++i) {
        auto child = makeChild();
        ASSERT_TRUE(child);
        child->invalidate({0, 0, 200, 150});
        child->redraw();
    }
    EXPECT_EQ(recorder.count(Call::Created), 200);
    EXPECT_EQ(recorder.count(Call::Closing), 200);
    EXPECT_EQ(recorder.count(Call::Paint), 200);
    ::Window root = 0, parent = 0, *children = nullptr;
    unsigned count = 0;
    XQueryTree(display, host, &root, &parent, &children, &count);
    if (children)
        XFree(children);
    EXPECT_EQ(count, 0u);
}

}  // namespace
}  // namespace OV::Testing
