#include "tests/support/XHostWindow.h"

#include <chrono>
#include <stdexcept>
#include <thread>

#include <X11/Xlib.h>

namespace OV::Testing {

XHostWindow::XHostWindow() : display(XOpenDisplay(nullptr))
{
    if (display == nullptr)
        throw std::runtime_error("no X display: run the tests through scripts/test.sh, which starts Xvfb");
    window = XCreateSimpleWindow(display, DefaultRootWindow(display), 0, 0, 400, 300, 0, 0, 0);
    XMapWindow(display, window);
    XSync(display, False);
}

XHostWindow::~XHostWindow()
{
    Destroy();
    XCloseDisplay(display);
}

std::vector<CFW::BasicRect<int>> XHostWindow::Children()
{
    std::vector<CFW::BasicRect<int>> rects;
    XSync(display, False);
    ::Window root = 0, parent = 0, *children = nullptr;
    unsigned count = 0;
    if (window == 0 || XQueryTree(display, window, &root, &parent, &children, &count) == 0)
        return rects;
    for (unsigned i = 0; i < count; ++i) {
        XWindowAttributes attributes;
        if (XGetWindowAttributes(display, children[i], &attributes) != 0)
            rects.push_back({attributes.x, attributes.y, attributes.width, attributes.height});
    }
    XFree(children);
    return rects;
}

void XHostWindow::Destroy()
{
    if (window == 0)
        return;
    XDestroyWindow(display, window);
    XSync(display, False);
    window = 0;
}

namespace {

// A mapped child of the root window named `title`; with no window manager that is the
// program's own window.
::Window FindMapped(Display* display, const std::string& title)
{
    ::Window root = 0, parent = 0, *children = nullptr, found = 0;
    unsigned count = 0;
    if (XQueryTree(display, DefaultRootWindow(display), &root, &parent, &children, &count) == 0)
        return 0;
    for (unsigned i = 0; i < count && found == 0; ++i) {
        char* name = nullptr;
        XWindowAttributes attributes;
        if (XFetchName(display, children[i], &name) != 0 && name != nullptr && title == name &&
            XGetWindowAttributes(display, children[i], &attributes) != 0 && attributes.map_state == IsViewable)
            found = children[i];
        XFree(name);
    }
    XFree(children);
    return found;
}

}  // namespace

unsigned long WaitForWindow(_XDisplay* display, const std::string& title, double seconds)
{
    const auto end = std::chrono::steady_clock::now() + std::chrono::duration<double>(seconds);
    for (;;) {
        XSync(display, False);
        if (const ::Window window = FindMapped(display, title))
            return window;
        if (std::chrono::steady_clock::now() >= end)
            return 0;
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
}

void RequestClose(_XDisplay* display, unsigned long window)
{
    XEvent message{};
    message.xclient.type = ClientMessage;
    message.xclient.window = window;
    message.xclient.message_type = XInternAtom(display, "WM_PROTOCOLS", False);
    message.xclient.format = 32;
    message.xclient.data.l[0] = static_cast<long>(XInternAtom(display, "WM_DELETE_WINDOW", False));
    XSendEvent(display, window, False, NoEventMask, &message);
    XSync(display, False);
}

}  // namespace OV::Testing
