#pragma once

#include "widgets/gui/Widget.h"

#include <boost/signals2/signal.hpp>

namespace OV::CFW::Graphics {
class Image;
class Painter;
}  // namespace OV::CFW::Graphics

namespace OV::CFW::Widgets {

class ElementContext;

// A picture the user drags with the left button: a press inside its active area takes it, and
// it follows the pointer with its whole rect kept inside its clip area.
class DragIcon : public GUI::Widget {
public:
    boost::signals2::signal<void(DragIcon*, const Point&)> moved; // the new position, in the parent

    // `image` is not owned and must outlive the widget's painting. `activeArea` is in the
    // widget's coordinates, empty for all of it; `clipArea` in the parent's, empty for all of
    // the parent.
    DragIcon(GUI::Widget& parent, const Rect& rect, Graphics::Image& image, const Rect& activeArea, const Rect& clipArea);

    // "Image" (without it, no widget), "ActiveAreaX", "ActiveAreaY", "ActiveAreaW",
    // "ActiveAreaH", "ClipAreaX", "ClipAreaY", "ClipAreaW", "ClipAreaH"; the size defaults to
    // the picture's.
    static GUI::Widget* build(ElementContext& context);

private:
    void paint(Graphics::Painter& painter, const Rect& clip);
    void press(const Point& point, int button);
    void drag(const Point& point);

    Graphics::Image& image;
    Rect activeArea;
    Rect clipArea;
    Point grip; // where the pointer holds the picture while it is dragged
};

}  // namespace OV::CFW::Widgets
