#pragma once

#include "widgets/controls/RangedValue.h"
#include "widgets/gui/Widget.h"

#include <boost/signals2/signal.hpp>

namespace OV::CFW::Graphics {
class Image;
class Painter;
}  // namespace OV::CFW::Graphics

namespace OV::CFW::Widgets {

// A handle moved along a track, horizontally (right raises the value) or vertically (up raises
// it). Only a press on the handle starts a drag; Shift at the press drags slowly, a Control-click
// resets the value to its default. Unless smooth, the value moves in whole numbers. Window
// thread only.
class Slider : public GUI::Widget, public RangedValue<Slider> {
public:
    boost::signals2::signal<void(Slider*, float)> valueChanged;

    // The images are not owned; `background` may be null. The value and its default start in the
    // middle of the range.
    Slider(GUI::Widget& parent, const Rect& rect, Graphics::Image* background, Graphics::Image* handle, float minValue,
           float maxValue, bool vertical, bool smooth);

    void setSlowModeFactor(float v) { slowModeFactor = v; }

private:
    // Where the handle is drawn for the value, in widget coordinates.
    Rect handleRect() const;
    void mouseDown(const Point& point, int modifiers);
    void mouseMoved(const Point& point);
    void draw(Graphics::Painter& painter, const Rect& clip);

    bool vertical;
    bool smooth;
    Graphics::Image* background;
    Graphics::Image* handle;
    Point dragStart;
    float dragStartValue = 0.0f;
    bool slowMode = false; // Shift at the press
    float slowModeFactor = 10.0f;
};

}  // namespace OV::CFW::Widgets
