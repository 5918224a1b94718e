#pragma once

#include "widgets/menus/Menu.h"

namespace OV::CFW::Widgets {

// The plainer menu: a picture or a light panel behind the rows, the highlighted row filled with
// a colour, separators from a picture or as a faint line.
class OldMenu : public Menu {
public:
    // The pictures and the font are not owned and must outlive the widget; any may be null.
    struct Look {
        Graphics::Font* font = nullptr;
        Graphics::Image* background = nullptr; // stretched around `backgroundRect`
        Rect backgroundRect;                   // the part of `background` where the rows go
        Graphics::Image* separator = nullptr;  // stretched along the row around `separatorRect`
        Rect separatorRect;
        Images images;
        Graphics::Color textColor = 0xFF000000;
        Graphics::Color highlightedTextColor = 0xFFFFFFFF;
        Graphics::Color highlightedColor = 0xFF3060A0;
    };

    OldMenu(GUI::Widget& parent, const Rect& rect, const Look& look);

protected:
    void drawBackground(Graphics::Painter& painter, const Rect& area, const Rect& clip) const override;
    void drawItem(Graphics::Painter& painter, const MenuItem& item, const Rect& row, bool highlighted) const override;
    void drawSeparator(Graphics::Painter& painter, const Rect& row) const override;

private:
    Look look;
};

}  // namespace OV::CFW::Widgets
