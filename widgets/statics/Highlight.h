#pragma once

#include "widgets/gui/Widget.h"

namespace OV::CFW::Graphics {
class Painter;
}

namespace OV::CFW::Widgets {

class ElementContext;

// Its rect filled with its colour, blended by the colour's alpha: a translucent mark over
// what lies below, such as the control under the pointer.
class Highlight : public GUI::Widget {
public:
    Highlight(GUI::Widget& parent, const Rect& rect);

    // The rect and colour "Color".
    static GUI::Widget* build(ElementContext& context);
};

}  // namespace OV::CFW::Widgets
