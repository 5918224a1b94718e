#pragma once

#include "widgets/controls/RangedValue.h"
#include "widgets/gui/Widget.h"

#include <vector>

#include <boost/signals2/signal.hpp>

namespace OV::CFW::Graphics {
class Image;
class Painter;
}  // namespace OV::CFW::Graphics

namespace OV::CFW::Widgets {

// A rotary control drawn from a film strip: `frames` pictures of equal height, one above the
// next, the one shown chosen by the value. Dragging up raises the value, Shift at the press
// drags slowly, a Control-click resets it to its default, and the wheel steps it. Window thread
// only.
class Knob : public GUI::Widget, public RangedValue<Knob> {
public:
    boost::signals2::signal<void(Knob*, float)> valueChanged;

    // `strip` is not owned. A non-empty `frameList` names the strip's frames to show, in order
    // of value, instead of all of them. The range starts as 0 to 1 and the value at 0.
    Knob(GUI::Widget& parent, const Rect& rect, Graphics::Image* strip, int frames, std::vector<int> frameList = {});

    // Pixels of drag for the whole range; by default one frame a pixel.
    void setMouseRange(float pixels) { mouseRange = pixels; }
    void setSlowModeFactor(float v) { slowModeFactor = v; }
    // What one wheel event adds, whatever its size; 0 moves by the drag's amount per step.
    void setWheelStep(float v) { wheelStep = v; }
    // Shows the nearest frame instead of the one below.
    void setRounding(bool v) { rounding = v; }

    // A hidden knob stops being the active widget.
    void hide() override;
    // A mask is a strip laid out as the pictures: each frame has its own shape.
    bool isPointInside(const Point& point) const override;

protected:
    virtual void handleMouseDown(const Point& point, int modifiers);
    // While dragging: the value for the pointer at `point`, from the start; up raises it.
    virtual void handleMouseMoved(const Point& point);
    virtual void handleMouseUp();
    virtual void draw(Graphics::Painter& painter, const Rect& clip);

    // Chooses the frame for the value, remembers its top and returns its rect in the strip.
    Rect showFrame();
    Graphics::Image* getStrip() const { return strip; }
    const Point& getDragStart() const { return dragStart; }
    bool isSlowMode() const { return slowMode; }

private:
    int frames;
    std::vector<int> frameList;
    Graphics::Image* strip;
    float mouseRange;
    float slowModeFactor = 10.0f;
    bool rounding = false;
    float wheelStep = 0.0f;
    int frameOffsetY = 0; // the top of the frame shown
    Point dragStart;
    float dragStartValue = 0.0f;
    bool slowMode = false; // Shift at the press
};

}  // namespace OV::CFW::Widgets
