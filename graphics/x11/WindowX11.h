#pragma once

#include "graphics/Window.h"
#include "graphics/WindowPainterSW.h"

#include <chrono>
#include <memory>

struct _XDisplay;
struct _XGC;
union _XEvent;

namespace OV::CFW::Graphics {

// What both kinds of X window share: a connection of their own (the host's stays untouched), the
// back buffer, the pump, the mouse with its capture and double clicks, the keyboard focus taken
// on request, and the cursor. `Interface` is WindowChild or WindowTopLevel. Nothing here installs
// an X error handler, which is the host's: requests that can fail because of another client
// (its window is gone or unmapped) are checked ones whose errors come back to us.
template <class Interface>
class WindowX11 : public Interface {
public:
    ~WindowX11() override;
    WindowX11(const WindowX11&) = delete;
    WindowX11& operator=(const WindowX11&) = delete;

    Device& getDevice() override { return device; }
    void invalidate(const BasicRect<int>& rect) override;
    void grabKeyboard() override;
    void releaseKeyboard() override;
    void setCursorPosition(const BasicPoint<int>& point) override;
    BasicPoint<int> getCursorPosition() override;
    void showCursor() override;
    void hideCursor() override;
    void setCursorShape(int shape) override;
    // 0 once the window has ended.
    unsigned long nativeHandle() const override { return handle; }
    void redraw() override;

protected:
    WindowX11(Device& device, Window::Callback& callback, const BasicRect<int>& rect);
    // Opens the connection and makes the window under `parent` (0: the root window), with
    // `eventMask` always selected and `keyMask` while the keyboard is held; runs prepare(), maps
    // it and calls created. False when any step fails, with nothing left on the server.
    bool open(unsigned long parent, long eventMask, long keyMask);
    // The kind's own properties, before the window is mapped.
    virtual void prepare() {}
    // A key event while the keyboard is held.
    virtual void key(const _XEvent& event) = 0;
    virtual void clientMessage(const _XEvent&) {}
    // The window lost the input focus to another.
    virtual void deactivated() {}
    // A key press as both kinds take it: the navigation keys, and with `characters` the
    // characters the toolkit knows.
    void pressed(const _XEvent& event, bool characters);
    // The toolkit's modifier word of an X state: 1, 2, 4 the buttons, 8 Control, 16 Shift.
    static int Modifiers(unsigned state);
    // Ends the window: `closing` once, the keyboard given back, our window destroyed unless the
    // server has destroyed it already, the handle forgotten. Each kind calls it first thing in
    // its destructor, so that `closing` sees a whole window.
    void end(bool destroyedByServer);

    Device& device;
    Window::Callback& callback;
    BasicRect<int> rect;
    _XDisplay* display = nullptr;
    unsigned long handle = 0;

private:
    void dispatch(_XEvent& event, const bool& deleted);
    void buttonPressed(const _XEvent& event);
    void buttonReleased(const _XEvent& event, const bool& deleted);
    void focusOut(const _XEvent& event);
    // Counts a left button release; true when it completes a double click.
    bool countClick(unsigned long time);
    void defineCursor();
    // Adds a rect, limited to the window, to what the next paint covers.
    void addDirty(int x, int y, int width, int height);

    std::unique_ptr<WindowPainterSW> windowPainter;
    _XGC* gc = nullptr;
    long eventMask = 0;
    long keyMask = 0;
    bool keyboardHeld = false;
    unsigned long previousFocus = 0; // where the keyboard goes back to
    bool closingSent = false;
    unsigned long cursors[6] = {};
    unsigned long invisibleCursor = 0;
    int cursorShape = 0;
    bool cursorHidden = false;
    unsigned long clickTimer = 0; // server time in ms of the first click of a pair
    int clickCount = 0;
    std::chrono::steady_clock::time_point lastTick;
    BasicRect<int> dirty;
    bool* deletedFlag = nullptr; // set by the destructor while a pump runs
};

}  // namespace OV::CFW::Graphics
