// A top-level window: its title and place as the server has them, the window manager's close
// request, and Control with copy and paste.
#include "tests/graphics/x11/XHost.h"
#include "tests/support/XHostWindow.h"

#include <algorithm>
#include <tuple>

#include <X11/Xatom.h>
#include <X11/keysym.h>

namespace OV::Testing {
namespace {

std::unique_ptr<G::WindowTopLevel> MakeTopLevel(G::Device& device, Recorder& recorder)
{
    return std::unique_ptr<G::WindowTopLevel>(device.createWindowTopLevel(recorder, {300, 200, 320, 240}, nullptr));
}

TEST_F(XHost, TopLevelTitlePlaceAndCloseRequest)
{
    auto window = MakeTopLevel(device, recorder);
    ASSERT_TRUE(window);
    const ::Window id = window->nativeHandle();
    const std::string title = "Presets \xc3\xa4";
    window->setTitle(title);
    window->setPosition({150, 120});
    EXPECT_EQ(Tie(window->getPosition()), Tie(BasicPoint<int>{150, 120})); // a round trip: all is done
    EXPECT_EQ(Tie(origin(id)), Tie(BasicPoint<int>{150, 120}));            // no window manager, no frame
    EXPECT_EQ(window->getTitle(), title);
    char* name = nullptr;
    ASSERT_TRUE(XFetchName(display, id, &name));
    EXPECT_EQ(std::string(name), title);
    XFree(name);
    Atom type = None;
    int format = 0;
    unsigned long count = 0, after = 0;
    unsigned char* data = nullptr;
    XGetWindowProperty(display, id, XInternAtom(display, "_NET_WM_NAME", False), 0, 100, False,
                       XInternAtom(display, "UTF8_STRING", False), &type, &format, &count, &after, &data);
    ASSERT_TRUE(data);
    EXPECT_EQ(std::string(reinterpret_cast<char*>(data), count), title);
    XFree(data);

    RequestClose(display, id);
    ASSERT_TRUE(pump(*window, [&] { return recorder.count(Call::Closing) == 1; }));
    EXPECT_EQ(window->nativeHandle(), 0u);
    ::Window root = 0, parent = 0, *children = nullptr;
    unsigned windows = 0;
    XQueryTree(display, DefaultRootWindow(display), &root, &parent, &children, &windows);
    EXPECT_EQ(std::count(children, children + windows, id), 0);
    XFree(children);
    window.reset();
    EXPECT_EQ(recorder.count(Call::Closing), 1);
}

TEST_F(XHost, TopLevelSendsControlAndCopyPaste)
{
    auto window = MakeTopLevel(device, recorder);
    ASSERT_TRUE(window);
    window->grabKeyboard();
    EXPECT_EQ(focus(), window->nativeHandle());
    key(XK_Control_L, true);
    tap(XK_c);
    tap(XK_v);
    tap(XK_x); // no characters while Control is down
    tap(XK_Left);
    key(XK_Control_L, false);
    tap(XK_x);
    ASSERT_TRUE(pump(*window, [&] { return recorder.count(Call::KeyDown) == 5; }));
    std::vector<std::tuple<Call::Kind, int, char>> keys;
    for (const Call& call : recorder.only({Call::KeyDown, Call::KeyUp}))
        keys.emplace_back(call.kind, call.value, call.character);
    const std::vector<std::tuple<Call::Kind, int, char>> expected = {
        {Call::KeyDown, 16, 0}, {Call::KeyDown, 0, 'C'}, {Call::KeyDown, 0, 'V'}, {Call::KeyDown, 6, 0},
        {Call::KeyUp, 16, 0}, {Call::KeyDown, 0, 'x'},
    };
    EXPECT_EQ(keys, expected);
    window->releaseKeyboard();
    EXPECT_EQ(focus(), host);
}

}  // namespace
}  // namespace OV::Testing
