#pragma once

#include "graphics/Geometry.h"
#include "graphics/Window.h"

#include <boost/signals2/signal.hpp>

namespace OV::CFW::Graphics {
class Painter;
}

namespace OV::CFW::GUI {

class Widget;

// The events of one widget, or of all widgets (the manager's global instance). Every signal
// takes the receiving widget first; points are relative to it. Buttons and modifiers are those
// of Graphics::Window::Callback.
struct WidgetSignals {
    using Point = BasicPoint<int>;
    template <typename... Args>
    using Signal = boost::signals2::signal<void(Widget*, Args...)>;

    Signal<> created;
    Signal<Graphics::Painter*, const BasicRect<int>&> paint; // the clip rect, in widget coordinates
    Signal<const Point&, int> mouseMoved;                    // modifiers
    Signal<const Point&, int, int> mouseDown;                // button, modifiers
    Signal<const Point&, int, int> mouseUp;
    Signal<const Point&, int, int> mouseWheel;               // steps, modifiers
    Signal<const Point&, int, int> doubleClick;
    Signal<Graphics::KeyboardButton::Code, char, int> keyDown;
    Signal<Graphics::KeyboardButton::Code, char, int> keyUp;
    Signal<> mouseEntered;
    Signal<> mouseLeft;
};

}  // namespace OV::CFW::GUI
