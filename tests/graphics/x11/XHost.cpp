#include "tests/graphics/x11/XHost.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <thread>

#include <X11/extensions/XTest.h>

namespace OV::Testing {

namespace {

int errors = 0; // on every connection of the process

int CountError(Display* display, XErrorEvent* error)
{
    char text[128];
    XGetErrorText(display, error->error_code, text, sizeof text);
    ADD_FAILURE() << "X error: " << text << " (request " << static_cast<int>(error->request_code) << ")";
    ++errors;
    return 0;
}

}  // namespace

std::vector<Call> Recorder::only(std::initializer_list<Call::Kind> kinds) const
{
    std::vector<Call> result;
    std::copy_if(calls.begin(), calls.end(), std::back_inserter(result),
                 [&](const Call& call) { return std::find(kinds.begin(), kinds.end(), call.kind) != kinds.end(); });
    return result;
}

void Recorder::paint(G::Window&, G::Painter& painter, const BasicRect<int>& rect)
{
    painter.clear(color | 0xff000000u);
    calls.push_back({Call::Paint, {}, 0, 0, 0, rect});
}

void XHost::SetUp()
{
    // A server that resets when its last client leaves refuses connections for a moment.
    const char* name = std::getenv("DISPLAY");
    for (int round = 0; name && !display && round < 500; ++round) {
        display = XOpenDisplay(nullptr);
        if (!display)
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    ASSERT_NE(display, nullptr) << "no X display can be opened (DISPLAY=" << (name ? name : "unset")
                                << "): run the X tests under xvfb-run, as scripts/test.sh does";
    int event = 0, error = 0, major = 0, minor = 0;
    ASSERT_TRUE(XTestQueryExtension(display, &event, &error, &major, &minor)) << "the X server has no XTEST extension";
    errors = 0;
    XSetErrorHandler(CountError);
    XSetWindowAttributes attributes{};
    attributes.background_pixel = 0x203040;
    attributes.event_mask = KeyPressMask | ButtonPressMask;
    host = XCreateWindow(display, DefaultRootWindow(display), hostX, hostY, hostWidth, hostHeight, 0, CopyFromParent, InputOutput,
                         CopyFromParent, CWBackPixel | CWEventMask, &attributes);
    XMapWindow(display, host);
    XSetInputFocus(display, host, RevertToParent, CurrentTime);
    XSync(display, False);
}

void XHost::TearDown()
{
    if (!display)
        return;
    if (host)
        XDestroyWindow(display, host);
    XSync(display, False);
    EXPECT_EQ(errors, 0);
    XSetErrorHandler(nullptr);
    XCloseDisplay(display);
}

std::unique_ptr<G::WindowChild> XHost::makeChild(bool mouse, bool keyboard, BasicRect<int> rect)
{
    return std::unique_ptr<G::WindowChild>(device.createWindowChild(recorder, rect, host, mouse, keyboard));
}

bool XHost::pump(G::Window& window, const std::function<bool()>& done)
{
    XSync(display, False);
    for (int round = 0; round < 2000; ++round) {
        window.redraw();
        if (done())
            return true;
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    return false;
}

bool XHost::hostEvent(int type, XEvent& event)
{
    for (int round = 0; round < 2000; ++round) {
        if (XCheckTypedWindowEvent(display, host, type, &event))
            return true;
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    return false;
}

BasicPoint<int> XHost::origin(unsigned long window)
{
    int x = 0, y = 0;
    ::Window child = 0;
    XTranslateCoordinates(display, window, DefaultRootWindow(display), 0, 0, &x, &y, &child);
    return {x, y};
}

unsigned long XHost::focus()
{
    ::Window focused = 0;
    int revert = 0;
    XGetInputFocus(display, &focused, &revert);
    return focused;
}

void XHost::moveTo(int x, int y)
{
    XTestFakeMotionEvent(display, DefaultScreen(display), x, y, CurrentTime);
}

void XHost::button(unsigned b, bool press)
{
    XTestFakeButtonEvent(display, b, press, CurrentTime);
}

void XHost::key(unsigned long symbol, bool press)
{
    XTestFakeKeyEvent(display, XKeysymToKeycode(display, symbol), press, CurrentTime);
}

}  // namespace OV::Testing
