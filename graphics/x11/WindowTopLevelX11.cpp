#include "graphics/x11/WindowTopLevelX11.h"

#include <memory>
#include <new>

#include <X11/XKBlib.h>
#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/keysym.h>

namespace OV::CFW::Graphics {

namespace {

// The window manager hints of Motif, which every current window manager reads: what the frame
// shows and what the user may do with the window.
struct MotifWmHints {
    unsigned long flags, functions, decorations;
    long inputMode;
    unsigned long status;
};

constexpr unsigned long hintFunctions = 1, hintDecorations = 2;
constexpr unsigned long functionResize = 2, functionMove = 4, functionMinimize = 8, functionMaximize = 16, functionClose = 32;
constexpr unsigned long decorBorder = 2, decorResize = 4, decorTitle = 8, decorMenu = 16, decorMinimize = 32, decorMaximize = 64;

// A caption comes with any of the boxes; a close button with the system menu, which comes with
// the boxes too.
MotifWmHints Decorations(const WindowStyle& style)
{
    const auto flag = [](bool on, unsigned long bits) { return on ? bits : 0UL; };
    const bool menu = style.systemMenu || style.minimizeBox || style.maximizeBox;
    const bool caption = style.caption || menu;
    const bool resizable = style.border && style.resizable;
    MotifWmHints hints{hintFunctions | hintDecorations, functionMove, 0, 0, 0};
    hints.decorations = flag(caption, decorTitle | decorBorder) | flag(style.border, decorBorder) | flag(resizable, decorResize)
        | flag(menu, decorMenu) | flag(style.minimizeBox, decorMinimize) | flag(style.maximizeBox, decorMaximize);
    hints.functions |= flag(resizable, functionResize) | flag(style.minimizeBox, functionMinimize)
        | flag(style.maximizeBox, functionMaximize) | flag(menu, functionClose);
    return hints;
}

}  // namespace

WindowTopLevelX11* WindowTopLevelX11::create(Device& device, Window::Callback& callback, const BasicRect<int>& rect,
                                             const WindowStyle* style)
{
    const WindowStyle chosen = style ? *style : WindowStyle{false, true, false, false, false, false};
    std::unique_ptr<WindowTopLevelX11> window(new (std::nothrow) WindowTopLevelX11(device, callback, rect, chosen));
    const long events = ExposureMask | StructureNotifyMask | FocusChangeMask | ButtonPressMask | ButtonReleaseMask | PointerMotionMask;
    if (!window || !window->open(0, events, KeyPressMask | KeyReleaseMask))
        return nullptr;
    return window.release();
}

WindowTopLevelX11::WindowTopLevelX11(Device& device, Window::Callback& callback, const BasicRect<int>& rect, const WindowStyle& style)
    : WindowX11(device, callback, rect), style(style)
{
}

WindowTopLevelX11::~WindowTopLevelX11()
{
    end(false);
}

void WindowTopLevelX11::prepare()
{
    char* names[AtomCount] = {const_cast<char*>("WM_PROTOCOLS"), const_cast<char*>("WM_DELETE_WINDOW"),
                              const_cast<char*>("_NET_WM_NAME"), const_cast<char*>("UTF8_STRING"),
                              const_cast<char*>("_MOTIF_WM_HINTS"), const_cast<char*>("_NET_FRAME_EXTENTS")};
    XInternAtoms(display, names, AtomCount, False, atoms);
    Atom deleteWindow = atoms[DeleteWindow];
    XSetWMProtocols(display, handle, &deleteWindow, 1);

    // Where we asked for it, and as large as the back buffer unless the user may resize it.
    XSizeHints hints{};
    hints.flags = USPosition | PSize;
    hints.x = rect.x;
    hints.y = rect.y;
    hints.width = hints.min_width = hints.max_width = rect.width;
    hints.height = hints.min_height = hints.max_height = rect.height;
    if (!(style.border && style.resizable))
        hints.flags |= PMinSize | PMaxSize;
    XSetWMNormalHints(display, handle, &hints);

    const MotifWmHints motif = Decorations(style);
    XChangeProperty(display, handle, atoms[MotifHints], atoms[MotifHints], 32, PropModeReplace,
                    reinterpret_cast<const unsigned char*>(&motif), 5);
    // Held keys repeat as presses alone, so Control is not released and pressed again.
    XkbSetDetectableAutoRepeat(display, True, nullptr);
}

void WindowTopLevelX11::setTitle(const std::string& text)
{
    if (text == title)
        return;
    title = text;
    if (!handle)
        return;
    XStoreName(display, handle, title.c_str());
    XChangeProperty(display, handle, atoms[NetWmName], atoms[Utf8String], 8, PropModeReplace,
                    reinterpret_cast<const unsigned char*>(title.data()), static_cast<int>(title.size()));
    XFlush(display);
}

// The window manager places the frame's corner where the window is moved to.
void WindowTopLevelX11::setPosition(const BasicPoint<int>& point)
{
    if (!handle)
        return;
    XMoveWindow(display, handle, point.x, point.y);
    XFlush(display);
}

// Our window's corner on the screen, less the frame the window manager reports around it.
BasicPoint<int> WindowTopLevelX11::getPosition()
{
    XWindowAttributes attributes;
    if (!handle || !XGetWindowAttributes(display, handle, &attributes))
        return {};
    ::Window child = None;
    int x = 0, y = 0;
    XTranslateCoordinates(display, handle, attributes.root, 0, 0, &x, &y, &child);
    Atom type = None;
    int format = 0;
    unsigned long count = 0, after = 0;
    unsigned char* data = nullptr;
    if (XGetWindowProperty(display, handle, atoms[FrameExtents], 0, 4, False, XA_CARDINAL, &type, &format, &count, &after, &data) == Success
        && type == XA_CARDINAL && format == 32 && count == 4) {
        const long* extents = reinterpret_cast<const long*>(data); // left, right, top, bottom
        x -= static_cast<int>(extents[0]);
        y -= static_cast<int>(extents[2]);
    }
    if (data)
        XFree(data);
    return {x, y};
}

void WindowTopLevelX11::key(const XEvent& event)
{
    XKeyEvent copy = event.xkey;
    const KeySym symbol = XLookupKeysym(&copy, 0);
    const int modifiers = Modifiers(event.xkey.state);
    const bool press = event.type == KeyPress;
    if (symbol == XK_Control_L || symbol == XK_Control_R) {
        controlDown = press;
        if (press)
            callback.keyDown(*this, KeyboardButton::Control, 0, modifiers);
        else
            callback.keyUp(*this, KeyboardButton::Control, 0, modifiers);
        return;
    }
    if (!press)
        return;
    if (controlDown && (symbol == XK_c || symbol == XK_v)) {
        callback.keyDown(*this, KeyboardButton::Character, symbol == XK_c ? 'C' : 'V', modifiers);
        return;
    }
    pressed(event, !controlDown);
}

void WindowTopLevelX11::clientMessage(const XEvent& event)
{
    const XClientMessageEvent& message = event.xclient;
    if (message.message_type == atoms[Protocols] && message.format == 32
        && static_cast<Atom>(message.data.l[0]) == atoms[DeleteWindow])
        end(false);
}

}  // namespace OV::CFW::Graphics
