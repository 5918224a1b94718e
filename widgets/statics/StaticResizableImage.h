#pragma once

#include "widgets/gui/Widget.h"

namespace OV::CFW::Graphics {
class Image;
}  // namespace OV::CFW::Graphics

namespace OV::CFW::Widgets {

class ElementContext;

// A picture fitted to any size by nine parts: `middle`, a rect of the picture, is its stretchable
// part. The corners around it are drawn as they are, the edges between them are repeated along
// the widget's edges and the middle over the rest. Repeating rather than scaling keeps every
// pixel as drawn, so borders and patterns stay sharp; a widget smaller than the corners cuts
// the far ones. A middle that misses the picture makes the whole picture the middle.
class StaticResizableImage : public GUI::Widget {
public:
    // `image` is not owned and must outlive the widget's painting.
    StaticResizableImage(GUI::Widget& parent, const Rect& rect, Graphics::Image& image, const Rect& middle);

    // "Image" (without it, no widget), "ResRectX", "ResRectY", "ResRectW", "ResRectH"; the size
    // defaults to the picture's.
    static GUI::Widget* build(ElementContext& context);

private:
    Graphics::Image& image;
    Rect middle;
};

}  // namespace OV::CFW::Widgets
