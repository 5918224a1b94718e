#pragma once

#include "widgets/gui/Widget.h"
#include "widgets/menus/MenuItem.h"

#include <vector>

namespace OV::CFW::Graphics {
class Painter;
}

namespace OV::CFW::Widgets {

class Menu;

// One open level of a Menu: the items in rows (in columns when the menu has them), drawn by the
// menu, with its highlight and its scroll position. Taller than `maxHeight`, it shows a part of
// the rows between two scroll arrows. The menu places it, routes the pointer and the keys to
// it, and destroys it; the menu's items must outlive it.
class MenuPanel : public GUI::Widget {
public:
    // What hitTest finds besides an item's index.
    static constexpr int noHit = -1;
    static constexpr int upArrow = -2;
    static constexpr int downArrow = -3;

    MenuPanel(GUI::Widget& root, Menu& menu, std::vector<MenuItem>& items, const Point& maxSize);
    ~MenuPanel() override;

    std::vector<MenuItem>& getItems() const { return items; }
    // `point` in panel coordinates.
    int hitTest(const Point& point) const;
    // In panel coordinates, as scrolled.
    Rect itemRect(int index) const;
    int getHover() const { return hover; }
    // -1 for none; scrolls the item into view.
    void setHover(int index);
    // To the next item that takes the highlight, round the end; nothing when none does.
    void moveHover(int direction);
    void scrollBy(int pixels);
    // The menu is going: the panel forgets it, and the manager deletes the panel.
    void detach();

private:
    Rect viewRect() const;
    void paint(Graphics::Painter& painter, const Rect& clip);

    Menu* menu;
    std::vector<MenuItem>& items;
    std::vector<Rect> rows; // from the view's top-left, unscrolled
    int contentWidth = 0;
    int contentHeight = 0;
    bool scrolling = false;
    int scroll = 0;
    int hover = -1;
};

}  // namespace OV::CFW::Widgets
