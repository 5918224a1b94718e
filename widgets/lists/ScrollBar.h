#pragma once

#include "widgets/gui/Widget.h"

#include <boost/signals2/signal.hpp>

namespace OV::CFW::Graphics {
class Image;
class Painter;
}  // namespace OV::CFW::Graphics

namespace OV::CFW::Widgets {

class ElementContext;

// A bar over a whole (the range) of which a page is in view, the position being where the page
// starts: 0 to range - page. The handle shows the page's share and place on the track; drag it,
// click the track beside it to move a page, press the arrows to move a step, or turn the wheel
// for three steps. Held arrows and track repeat with the manager's tick. When the whole fits
// the page the handle goes, the arrows dim, and input does nothing. Window thread only.
class ScrollBar : public GUI::Widget {
public:
    // None is needed (a handle without a picture is plain grey); the arrows' lengths along
    // the bar come from their pictures.
    struct Pictures {
        Graphics::Image* background = nullptr;
        Rect backgroundMiddle; // the stretching part, as in StaticResizableImage
        Graphics::Image* handle = nullptr;
        Rect handleMiddle;
        Graphics::Image* releasedBack = nullptr;
        Graphics::Image* pressedBack = nullptr;
        Graphics::Image* releasedForward = nullptr;
        Graphics::Image* pressedForward = nullptr;
    };

    // On every change, by the user or a setter.
    boost::signals2::signal<void(ScrollBar*, int)> positionChanged;

    // `adjacentButtons` puts both arrows together at the far end, otherwise one at each end.
    // The pictures are not owned. Range, page and position start at 0, the step at 1.
    ScrollBar(GUI::Widget& parent, const Rect& rect, const Pictures& pictures, bool vertical, bool adjacentButtons);

    // Negative values count as 0; the position is pulled into the new range.
    void setRange(int range, int page);
    void setStep(int pixels);
    void setScrollPosition(int value);
    int getRange() const { return range; }
    int getPage() const { return page; }
    int getScrollPosition() const { return position; }
    int getStep() const { return step; }
    bool isVertical() const { return vertical; }
    // Nothing to scroll: the range fits the page.
    bool fits() const { return range <= page; }
    // In widget coordinates; empty when it fits.
    Rect handleRect() const;

    // "Background" and "Handle" with their "ResRect" middles, "PressedBack", "ReleasedBack",
    // "PressedForward", "ReleasedForward", "Vertical", "AdjacentButtons". Any picture may be
    // missing: a bar needs none to work.
    static GUI::Widget* build(ElementContext& context);

private:
    enum class Part { None, Back, Forward, PageBack, PageForward, Handle };
    // Spans along the bar: [start, start + length).
    struct Span {
        int start = 0;
        int length = 0;
    };
    struct Geometry {
        Span back, forward, track, handle;
    };

    Geometry geometry() const;
    int along(const Point& point) const { return vertical ? point.y : point.x; }
    int maxPosition() const { return range > page ? range - page : 0; }
    Part partAt(const Point& point) const;
    Rect spanRect(const Span& span) const;
    void mouseDown(const Point& point);
    void mouseMoved(const Point& point);
    void release();
    // One more move of the held part; a held track stops once the handle reaches the pointer.
    void repeat();
    void draw(Graphics::Painter& painter, const Rect& clip);
    void drawArrow(Graphics::Painter& painter, const Span& span, Graphics::Image* released, Graphics::Image* pressed, Part part,
                   const Rect& clip);

    Pictures pictures;
    bool vertical;
    bool adjacentButtons;
    int range = 0;
    int page = 0;
    int position = 0;
    int step = 1;
    Part held = Part::None;
    int heldTicks = 0;
    int pointerAlong = 0; // where the held pointer is
    int dragStart = 0;
    int dragStartPosition = 0;
};

}  // namespace OV::CFW::Widgets
