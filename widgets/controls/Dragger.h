#pragma once

#include "widgets/gui/Widget.h"

#include <boost/signals2/signal.hpp>

namespace OV::CFW::Graphics {
class Image;
class Painter;
}  // namespace OV::CFW::Graphics

namespace OV::CFW::Widgets {

// An image that reports drags with the left button: at each move, how far the pointer is from
// where it was pressed, in the widget's coordinates. Moving the widget by that much keeps the
// point grabbed under the pointer. Window thread only.
class Dragger : public GUI::Widget {
public:
    boost::signals2::signal<void(Dragger*, const Point&)> dragged;

    // The image is not owned; tiled, it repeats over the whole widget. The
    // widget's colour, when not 0xFFFFFFFF, modulates it.
    Dragger(GUI::Widget& parent, const Rect& rect, Graphics::Image& image, bool tiled);

private:
    void draw(Graphics::Painter& painter, const Rect& clip);

    Graphics::Image& image;
    bool tiled;
    Point dragStart;
};

}  // namespace OV::CFW::Widgets
