#include "graphics/x11/WindowX11.h"

#include <algorithm>
#include <cstdlib>

#include <X11/Xlib-xcb.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/cursorfont.h>
#include <X11/keysym.h>

namespace OV::CFW::Graphics {

namespace {

using namespace std::chrono_literals;

constexpr auto tickPeriod = 40ms;
constexpr unsigned long doubleClickMs = 400;
constexpr long mouseMask = ButtonPressMask | ButtonReleaseMask | PointerMotionMask;
// Arrow, wait, horizontal resize, vertical resize, text beam, hand.
constexpr unsigned cursorGlyphs[6] = {XC_left_ptr, XC_watch, XC_sb_h_double_arrow, XC_sb_v_double_arrow, XC_xterm, XC_hand2};

// Waits for a request's outcome; its error, if any, stays here.
bool Checked(xcb_connection_t* connection, xcb_void_cookie_t cookie)
{
    xcb_generic_error_t* error = xcb_request_check(connection, cookie);
    std::free(error);
    return error == nullptr;
}

// The focus may be asked for a window that is gone or unmapped by now.
bool SetFocus(Display* display, unsigned long window)
{
    xcb_connection_t* connection = XGetXCBConnection(display);
    return Checked(connection, xcb_set_input_focus_checked(connection, XCB_INPUT_FOCUS_PARENT, static_cast<xcb_window_t>(window),
                                                           XCB_CURRENT_TIME));
}

int ScreenOf(Display* display, unsigned long root)
{
    for (int i = 0; i < ScreenCount(display); ++i)
        if (RootWindow(display, i) == root)
            return i;
    return -1;
}

int ButtonCode(unsigned button)
{
    switch (button) {
    case Button1: return MouseButton::Left;
    case Button2: return MouseButton::Middle;
    case Button3: return MouseButton::Right;
    default: return 0;
    }
}

// The keypad's keys count as the navigation keys they stand for when Num Lock is off.
int NavigationCode(KeySym symbol)
{
    switch (symbol) {
    case XK_Left: case XK_KP_Left: return KeyboardButton::Left;
    case XK_Right: case XK_KP_Right: return KeyboardButton::Right;
    case XK_Up: case XK_KP_Up: return KeyboardButton::Up;
    case XK_Down: case XK_KP_Down: return KeyboardButton::Down;
    case XK_Insert: case XK_KP_Insert: return KeyboardButton::Insert;
    case XK_Delete: case XK_KP_Delete: return KeyboardButton::Delete;
    case XK_Home: case XK_KP_Home: return KeyboardButton::Home;
    case XK_End: case XK_KP_End: return KeyboardButton::End;
    default: return -1;
    }
}

}  // namespace

template <class Interface>
int WindowX11<Interface>::Modifiers(unsigned state)
{
    return (state & Button1Mask ? MouseButton::Left : 0) | (state & Button2Mask ? MouseButton::Middle : 0)
        | (state & Button3Mask ? MouseButton::Right : 0) | (state & ControlMask ? 8 : 0) | (state & ShiftMask ? 16 : 0);
}

template <class Interface>
WindowX11<Interface>::WindowX11(Device& device, Window::Callback& callback, const BasicRect<int>& rect)
    : device(device), callback(callback), rect(rect)
{
}

template <class Interface>
WindowX11<Interface>::~WindowX11()
{
    if (deletedFlag)
        *deletedFlag = true;
    windowPainter.reset(); // detaches its segment through the connection
    if (gc)
        XFreeGC(display, gc);
    if (display)
        XCloseDisplay(display); // frees the cursors with everything else of ours on the server
}

template <class Interface>
bool WindowX11<Interface>::open(unsigned long parent, long events, long keys)
{
    if (rect.width < 1 || rect.height < 1 || rect.width > 32767 || rect.height > 32767)
        return false;
    display = XOpenDisplay(nullptr);
    if (!display)
        return false;
    xcb_connection_t* connection = XGetXCBConnection(display);
    int screen = DefaultScreen(display);
    if (parent != 0) {
        xcb_generic_error_t* error = nullptr;
        xcb_get_geometry_reply_t* geometry = xcb_get_geometry_reply(connection, xcb_get_geometry(connection, static_cast<xcb_drawable_t>(parent)), &error);
        std::free(error);
        if (!geometry)
            return false;
        screen = ScreenOf(display, geometry->root);
        std::free(geometry);
        if (screen < 0)
            return false;
    }
    windowPainter = WindowPainterSW::create(display, screen, rect.width, rect.height);
    if (!windowPainter)
        return false;

    // No background: exposed parts keep what they show until painted, so nothing flickers. A
    // visual and colormap of our own make the window independent of the parent's depth. The
    // request is checked, since the host may destroy its window at any time.
    const xcb_window_t window = xcb_generate_id(connection);
    const std::uint32_t values[] = {XCB_BACK_PIXMAP_NONE, 0, XCB_GRAVITY_NORTH_WEST, static_cast<std::uint32_t>(events),
                                    static_cast<std::uint32_t>(DefaultColormap(display, screen))};
    const std::uint32_t valueMask = XCB_CW_BACK_PIXMAP | XCB_CW_BORDER_PIXEL | XCB_CW_BIT_GRAVITY | XCB_CW_EVENT_MASK | XCB_CW_COLORMAP;
    const xcb_window_t under = parent != 0 ? static_cast<xcb_window_t>(parent) : static_cast<xcb_window_t>(RootWindow(display, screen));
    if (!Checked(connection, xcb_create_window_checked(connection, 24, window, under, static_cast<std::int16_t>(rect.x), static_cast<std::int16_t>(rect.y),
                                                       static_cast<std::uint16_t>(rect.width), static_cast<std::uint16_t>(rect.height), 0,
                                                       XCB_WINDOW_CLASS_INPUT_OUTPUT,
                                                       static_cast<xcb_visualid_t>(XVisualIDFromVisual(DefaultVisual(display, screen))),
                                                       valueMask, values)))
        return false;
    handle = window;
    eventMask = events;
    keyMask = keys;
    gc = XCreateGC(display, handle, 0, nullptr);
    defineCursor();
    prepare();
    XMapWindow(display, handle);
    XSync(display, False);
    lastTick = std::chrono::steady_clock::now();
    callback.created(*this);
    return true;
}

template <class Interface>
void WindowX11<Interface>::end(bool destroyedByServer)
{
    if (!handle)
        return;
    if (destroyedByServer) {
        // The focus went with the window; nothing of ours is left to touch.
        keyboardHeld = false;
        previousFocus = 0;
        handle = 0;
    }
    bool* const deleted = deletedFlag;
    if (!closingSent) {
        closingSent = true;
        callback.closing(*this);
        if (deleted && *deleted)
            return;
    }
    if (!handle)
        return;
    releaseKeyboard();
    xcb_connection_t* connection = XGetXCBConnection(display);
    Checked(connection, xcb_destroy_window_checked(connection, static_cast<xcb_window_t>(handle)));
    handle = 0;
}

template <class Interface>
void WindowX11<Interface>::invalidate(const BasicRect<int>& area)
{
    addDirty(area.x, area.y, area.width, area.height);
}

template <class Interface>
void WindowX11<Interface>::addDirty(int x, int y, int width, int height)
{
    dirty = Bounding(dirty, Intersect({x, y, width, height}, {0, 0, rect.width, rect.height}));
}

// The pump. A callback may delete the window: `deleted`, a flag on this frame that the
// destructor sets, is tested after each one before anything of the object is touched again.
template <class Interface>
void WindowX11<Interface>::redraw()
{
    if (!handle)
        return;
    bool deleted = false;
    bool* const outer = deletedFlag;
    deletedFlag = &deleted;
    const auto finish = [&] {
        if (deleted) {
            if (outer)
                *outer = true;
        } else {
            deletedFlag = outer;
        }
    };

    // Sends what is queued and takes in what has come, without waiting for the server: an
    // idle editor costs two system calls a pump.
    XPending(display);
    // Once the window is gone, nothing else queued for it matters (a focus loss, a click), and
    // handling it would touch a window that no longer exists.
    XEvent destroyed;
    if (XCheckTypedWindowEvent(display, handle, DestroyNotify, &destroyed)) {
        end(true);
        return finish();
    }
    while (handle && XEventsQueued(display, QueuedAlready) > 0) {
        XEvent event;
        XNextEvent(display, &event);
        // Of a run of motions only the last matters.
        while (event.type == MotionNotify && XEventsQueued(display, QueuedAlready) > 0) {
            XEvent next;
            XPeekEvent(display, &next);
            if (next.type != MotionNotify)
                break;
            XNextEvent(display, &event);
        }
        dispatch(event, deleted);
        if (deleted)
            return finish();
    }
    if (!handle)
        return finish();

    const auto now = std::chrono::steady_clock::now();
    if (now - lastTick >= tickPeriod) {
        lastTick = now;
        callback.timer(*this);
        if (deleted || !handle)
            return finish();
    }
    if (dirty.width > 0) {
        const BasicRect<int> area = dirty;
        dirty = {};
        callback.paint(*this, windowPainter->painter(), area);
        if (deleted || !handle)
            return finish();
        windowPainter->blit(handle, gc, area.x, area.y, area.x + area.width, area.y + area.height);
    }
    finish();
}

template <class Interface>
void WindowX11<Interface>::dispatch(XEvent& event, const bool& deleted)
{
    switch (event.type) {
    case Expose:
        addDirty(event.xexpose.x, event.xexpose.y, event.xexpose.width, event.xexpose.height);
        break;
    case DestroyNotify: // come while the queue was read
        if (event.xdestroywindow.window == handle)
            end(true);
        break;
    case ButtonPress:
        buttonPressed(event);
        break;
    case ButtonRelease:
        buttonReleased(event, deleted);
        break;
    case MotionNotify:
        callback.mouseMoved(*this, {event.xmotion.x, event.xmotion.y}, Modifiers(event.xmotion.state));
        break;
    case KeyPress:
    case KeyRelease:
        if (keyboardHeld)
            key(event);
        break;
    case FocusOut:
        focusOut(event);
        break;
    case MappingNotify:
        XRefreshKeyboardMapping(&event.xmapping);
        break;
    case ClientMessage:
        clientMessage(event);
        break;
    default:
        break;
    }
}

// X reports the state before the event; the toolkit's word tells it after, so a press has its
// own button in it and a release has not. Buttons 4 and 5 are the wheel. The grab keeps the
// mouse with us while a button is down, wherever the pointer goes.
template <class Interface>
void WindowX11<Interface>::buttonPressed(const XEvent& event)
{
    const XButtonEvent& press = event.xbutton;
    const BasicPoint<int> point{press.x, press.y};
    if (press.button == Button4 || press.button == Button5) {
        callback.mouseWheel(*this, point, press.button == Button4 ? 1 : -1, Modifiers(press.state));
        return;
    }
    const int button = ButtonCode(press.button);
    if (button == 0)
        return;
    XGrabPointer(display, handle, False, mouseMask, GrabModeAsync, GrabModeAsync, None, None, press.time);
    callback.mouseDown(*this, point, button, Modifiers(press.state) | button);
}

template <class Interface>
void WindowX11<Interface>::buttonReleased(const XEvent& event, const bool& deleted)
{
    const XButtonEvent& release = event.xbutton;
    const int button = ButtonCode(release.button);
    if (button == 0)
        return;
    XUngrabPointer(display, release.time);
    XFlush(display); // the pointer is free for other windows at once
    const bool doubled = button == MouseButton::Left && countClick(release.time);
    const BasicPoint<int> point{release.x, release.y};
    const int modifiers = Modifiers(release.state) & ~button;
    callback.mouseUp(*this, point, button, modifiers);
    if (doubled && !deleted)
        callback.doubleClick(*this, point, button, modifiers);
}

// Server times, so that the pump's pace cannot make two slow clicks look quick. A click after
// a double click starts a new pair.
template <class Interface>
bool WindowX11<Interface>::countClick(unsigned long time)
{
    ++clickCount;
    const unsigned long elapsed = (time - clickTimer) & 0xffffffffUL;
    if (elapsed <= doubleClickMs && clickCount >= 2) {
        clickCount = 0;
        return true;
    }
    clickTimer = time;
    return false;
}

// Passing grabs (a window manager's Alt+Tab) and moves inside our window are not a loss.
template <class Interface>
void WindowX11<Interface>::focusOut(const XEvent& event)
{
    const XFocusChangeEvent& focus = event.xfocus;
    if (focus.mode == NotifyGrab || focus.mode == NotifyUngrab || focus.detail == NotifyInferior || focus.detail == NotifyPointer)
        return;
    deactivated();
    if (!keyboardHeld)
        return;
    releaseKeyboard();
    callback.keyboardLost(*this);
}

// The keyboard is the host's until a widget asks for it: key events are selected only while
// we hold the focus, and otherwise pass on to the host's window.
template <class Interface>
void WindowX11<Interface>::grabKeyboard()
{
    if (!handle)
        return;
    // Keys are selected first: the focus request that follows sends the selection along.
    if (!keyboardHeld)
        XSelectInput(display, handle, eventMask | keyMask);
    ::Window focus = None;
    int revert = 0;
    XGetInputFocus(display, &focus, &revert);
    if (focus != handle && !SetFocus(display, handle)) {
        if (!keyboardHeld)
            XSelectInput(display, handle, eventMask);
        return;
    }
    if (!keyboardHeld) {
        previousFocus = focus;
        keyboardHeld = true;
    }
}

// Gives the focus back to where it was, unless it has moved on since.
template <class Interface>
void WindowX11<Interface>::releaseKeyboard()
{
    if (!keyboardHeld)
        return;
    keyboardHeld = false;
    const unsigned long back = previousFocus;
    previousFocus = 0;
    if (!handle)
        return;
    XSelectInput(display, handle, eventMask);
    ::Window focus = None;
    int revert = 0;
    XGetInputFocus(display, &focus, &revert);
    if (focus == handle && back != handle)
        SetFocus(display, back);
}

template <class Interface>
void WindowX11<Interface>::pressed(const XEvent& event, bool characters)
{
    XKeyEvent press = event.xkey;
    char text[8];
    KeySym symbol = NoSymbol;
    const int length = XLookupString(&press, text, sizeof text, &symbol, nullptr);
    const int modifiers = Modifiers(press.state);
    const int navigation = NavigationCode(symbol);
    if (navigation >= 0) {
        callback.keyDown(*this, navigation, 0, modifiers);
        return;
    }
    const int code = characters && length == 1 ? KeyboardButton::FromCharacter(static_cast<unsigned char>(text[0])) : -1;
    if (code >= 0)
        callback.keyDown(*this, code, text[0], modifiers);
}

template <class Interface>
void WindowX11<Interface>::setCursorPosition(const BasicPoint<int>& point)
{
    if (!handle)
        return;
    XWarpPointer(display, None, handle, 0, 0, 0, 0, point.x, point.y);
    XFlush(display);
}

template <class Interface>
BasicPoint<int> WindowX11<Interface>::getCursorPosition()
{
    ::Window root = None, child = None;
    int rootX = 0, rootY = 0, x = 0, y = 0;
    unsigned mask = 0;
    if (!handle || !XQueryPointer(display, handle, &root, &child, &rootX, &rootY, &x, &y, &mask))
        return {};
    return {x, y};
}

template <class Interface>
void WindowX11<Interface>::showCursor()
{
    if (!cursorHidden)
        return;
    cursorHidden = false;
    defineCursor();
}

template <class Interface>
void WindowX11<Interface>::hideCursor()
{
    if (cursorHidden)
        return;
    cursorHidden = true;
    defineCursor();
}

// A shape set while the cursor is hidden shows when it comes back.
template <class Interface>
void WindowX11<Interface>::setCursorShape(int shape)
{
    if (shape < 0 || shape > 5)
        return;
    cursorShape = shape;
    defineCursor();
}

template <class Interface>
void WindowX11<Interface>::defineCursor()
{
    if (!handle)
        return;
    if (cursorHidden && invisibleCursor == None) {
        const char blank = 0;
        const Pixmap bitmap = XCreateBitmapFromData(display, handle, &blank, 1, 1);
        XColor black{};
        invisibleCursor = XCreatePixmapCursor(display, bitmap, bitmap, &black, &black, 0, 0);
        XFreePixmap(display, bitmap);
    }
    unsigned long& shaped = cursors[cursorShape];
    if (!cursorHidden && shaped == None)
        shaped = XCreateFontCursor(display, cursorGlyphs[cursorShape]);
    XDefineCursor(display, handle, cursorHidden ? invisibleCursor : shaped);
    XFlush(display);
}

template class WindowX11<WindowChild>;
template class WindowX11<WindowTopLevel>;

}  // namespace OV::CFW::Graphics
