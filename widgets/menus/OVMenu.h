#pragma once

#include "widgets/menus/Menu.h"

namespace OV::CFW::Widgets {

// The menu of the product's look: a picture behind the rows, the highlighted row in its own
// colour and font over a faint band, separators as a groove of two lines.
class OVMenu : public Menu {
public:
    // The pictures and fonts are not owned and must outlive the widget; any may be null.
    struct Look {
        Graphics::Font* font = nullptr;
        Graphics::Font* fontHighlight = nullptr; // null: `font`
        Graphics::Image* image = nullptr;        // the background, stretched around `itemRect`
        Rect itemRect;                           // the part of `image` where the rows go
        Images images;
        Graphics::Color textColor = 0xFFDDDDDD;
        Graphics::Color textColorHi = 0xFFFFFFFF;
        Graphics::Color sepColor = 0xFF1A1A1A;
        Graphics::Color sepColorStrong = 0xFF5A5A5A;
        int sepLeft = 0; // separators stop short of the row's ends by these
        int sepRight = 0;
        int overlap = 0; // of a submenu over its parent
    };

    OVMenu(GUI::Widget& parent, const Rect& rect, const Look& look);

protected:
    int itemWidth(const MenuItem& item) const override;
    void drawBackground(Graphics::Painter& painter, const Rect& area, const Rect& clip) const override;
    void drawItem(Graphics::Painter& painter, const MenuItem& item, const Rect& row, bool highlighted) const override;
    void drawSeparator(Graphics::Painter& painter, const Rect& row) const override;

    // For the columns' variant: a strip of square icons, and the text of disabled items.
    void setIcons(Graphics::Image* strip);
    void setInactiveColor(Graphics::Color color) { inactiveColor = color; }

private:
    Look look;
    Graphics::Color inactiveColor;
    Graphics::Image* icons = nullptr;
    int iconSize = 0;
    int iconCount = 0;
};

}  // namespace OV::CFW::Widgets
