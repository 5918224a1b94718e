#pragma once

#include "widgets/menus/OVMenu.h"

namespace OV::CFW::Widgets {

// The product's menu with more: columns of rows side by side (filled top to bottom, one
// column after the next), icons from a strip, a colour for disabled items, and an offset from
// the point it pops up at.
class OVMenu2 : public OVMenu {
public:
    struct Extras {
        Point offset;
        Graphics::Color textColorInactive = 0x80DDDDDD;
        int columns = 1;
        int columnSpacing = 0;
        Graphics::Image* icons = nullptr; // square cells, as high as the strip; not owned
    };

    OVMenu2(GUI::Widget& parent, const Rect& rect, const Look& look, const Extras& extras);
};

}  // namespace OV::CFW::Widgets
