#include "hosts/edit/HostWindow.h"

#include "hosts/common/HostError.h"

#include <poll.h>

#include <X11/Xutil.h>

namespace OV::Hosts {

HostWindow::HostWindow(const std::string& title, int width, int height) : display(XOpenDisplay(nullptr))
{
    if (display == nullptr)
        throw HostError(Failed, "cannot open the X display (is DISPLAY set?)");
    const int screen = DefaultScreen(display);
    window = XCreateSimpleWindow(display, RootWindow(display, screen), 0, 0, static_cast<unsigned>(width),
                                 static_cast<unsigned>(height), 0, BlackPixel(display, screen), BlackPixel(display, screen));
    XStoreName(display, window, title.c_str());
    // The editor has one size: the window manager is asked not to resize it.
    XSizeHints* hints = XAllocSizeHints();
    hints->flags = PMinSize | PMaxSize;
    hints->min_width = hints->max_width = width;
    hints->min_height = hints->max_height = height;
    XSetWMNormalHints(display, window, hints);
    XFree(hints);
    deleteWindow = XInternAtom(display, "WM_DELETE_WINDOW", False);
    XSetWMProtocols(display, window, &deleteWindow, 1);
    XSelectInput(display, window, StructureNotifyMask);
    XMapWindow(display, window);
    // The editor's child is made on another connection: the window must exist on the server
    // before its id is handed over.
    XSync(display, False);
}

HostWindow::~HostWindow()
{
    XDestroyWindow(display, window);
    XCloseDisplay(display);
}

bool HostWindow::Pump(int milliseconds)
{
    if (!open)
        return false;
    if (XPending(display) == 0) {
        pollfd connection{ConnectionNumber(display), POLLIN, 0};
        poll(&connection, 1, milliseconds);
    }
    while (open && XPending(display) > 0) {
        XEvent event;
        XNextEvent(display, &event);
        // The window stays until the editor inside it has closed.
        if (event.type == ClientMessage && static_cast<Atom>(event.xclient.data.l[0]) == deleteWindow)
            open = false;
    }
    return open;
}

}  // namespace OV::Hosts
