#pragma once

#include "widgets/gui/Widget.h"

namespace OV::CFW::Graphics {
class Image;
class Painter;
}  // namespace OV::CFW::Graphics

namespace OV::CFW::Widgets {

class ElementContext;

// A picture: drawn once at the top-left corner, or tiled over the whole widget. The widget's
// colour, when not 0xFFFFFFFF, modulates it.
class StaticImage : public GUI::Widget {
public:
    // `image` is not owned and must outlive the widget's painting.
    StaticImage(GUI::Widget& parent, const Rect& rect, Graphics::Image& image, bool tiled);

    // "Image" (without it, no widget), "Tiled"; the size defaults to the picture's.
    static GUI::Widget* build(ElementContext& context);

private:
    void paint(Graphics::Painter& painter, const Rect& clip);

    Graphics::Image& image;
    bool tiled;
};

}  // namespace OV::CFW::Widgets
