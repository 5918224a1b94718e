#pragma once

#include "graphics/Geometry.h"

#include <string>

namespace OV::CFW::Graphics {

class Device;
class Painter;

namespace MouseButton {
enum Code { Left = 1, Middle = 2, Right = 4 };
}

namespace KeyboardButton {
enum Code {
    Character = 0, Backspace = 1, LineFeed = 2, Escape = 3, Tab = 4, Return = 5, Left = 6, Right = 7, Up = 8,
    Down = 9, Insert = 10, Delete = 11, Home = 12, End = 13, Control = 16,
};

// The key that a typed character gives: 8, 9, 10, 13 and 27 have codes of their own, 32 to 126
// are Character; any other is no key (-1).
inline int FromCharacter(int character)
{
    switch (character) {
    case 8: return Backspace;
    case 9: return Tab;
    case 10: return LineFeed;
    case 13: return Return;
    case 27: return Escape;
    default: return character >= 32 && character <= 126 ? Character : -1;
    }
}
}

// The style of a top-level window: border, caption, minimise box, maximise box, system menu,
// resizable.
struct WindowStyle {
    bool border, caption, minimizeBox, maximizeBox, systemMenu, resizable;
};

// A native window with its back buffer and its 25 Hz timer, turning the system's events into
// the calls of its Callback. Window thread only.
class Window {
public:
    // What a window tells its owner (the widget tree). `modifiers`: bits 1 left, 2 middle,
    // 4 right button down, 8 Control, 16 Shift.
    class Callback {
    public:
        virtual ~Callback() = default;
        virtual void created(Window& window) = 0;
        virtual void closing(Window& window) = 0;
        virtual void paint(Window& window, Painter& painter, const BasicRect<int>& rect) = 0;
        virtual void mouseMoved(Window& window, const BasicPoint<int>& point, int modifiers) = 0;
        virtual void mouseDown(Window& window, const BasicPoint<int>& point, int button, int modifiers) = 0;
        virtual void mouseUp(Window& window, const BasicPoint<int>& point, int button, int modifiers) = 0;
        virtual void mouseWheel(Window& window, const BasicPoint<int>& point, int steps, int modifiers) = 0;
        virtual void doubleClick(Window& window, const BasicPoint<int>& point, int button, int modifiers) = 0;
        virtual void keyDown(Window& window, int code, char character, int modifiers) = 0;
        virtual void keyUp(Window& window, int code, char character, int modifiers) = 0;
        virtual void timer(Window& window) = 0;
        virtual void keyboardLost(Window& window) = 0;
    };

    virtual ~Window() = default;
    virtual Device& getDevice() = 0;
    virtual void invalidate(const BasicRect<int>& rect) = 0;
    virtual void grabKeyboard() = 0;
    virtual void releaseKeyboard() = 0;
    // Client coordinates.
    virtual void setCursorPosition(const BasicPoint<int>& point) = 0;
    virtual BasicPoint<int> getCursorPosition() = 0;
    virtual void showCursor() = 0;
    virtual void hideCursor() = 0;
    // 0 arrow, 1 wait, 2 horizontal resize, 3 vertical resize, 4 text beam, 5 hand.
    virtual void setCursorShape(int shape) = 0;
    virtual unsigned long nativeHandle() const = 0;
    // Runs the window: takes in what its connection brought (input, exposure, a closed
    // parent), gives the tick when 40 ms have passed since the last, then paints what is dirty
    // and shows it. The editor's owner calls it from its idle time; nothing else drives it.
    virtual void redraw() = 0;
};

// A window inside one the host owns.
class WindowChild : public Window {
public:
    // Whether the window reads mouse and keys itself, or leaves them to its host.
    virtual bool mouseEnabled() const = 0;
    virtual bool keyboardEnabled() const = 0;
};

// A free window of its own, with a title bar.
class WindowTopLevel : public Window {
public:
    virtual void setTitle(const std::string& title) = 0;
    virtual const std::string& getTitle() const = 0;
    // The outer window's top-left corner on the screen.
    virtual void setPosition(const BasicPoint<int>& point) = 0;
    virtual BasicPoint<int> getPosition() = 0;
};

}  // namespace OV::CFW::Graphics
