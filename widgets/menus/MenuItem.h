#pragma once

#include <string>
#include <vector>

namespace OV::CFW::Widgets {

// One entry of a pop-up menu: a choice, a separator, or the title of a submenu (an item with
// items of its own, which is opened rather than chosen). Only enabled entries that are not
// separators take the highlight.
struct MenuItem {
    std::string text;
    int id = 0;
    bool separator = false;
    bool ticked = false;
    bool enabled = true;
    int icon = -1; // a cell of the menu's icon strip, where the menu has one
    std::vector<MenuItem> submenu;

    bool hasSubmenu() const { return !separator && !submenu.empty(); }
    bool selectable() const { return !separator && enabled; }
};

// Every item of `id` at any depth, in document order.
std::vector<MenuItem*> FindMenuItems(std::vector<MenuItem>& items, int id);

}  // namespace OV::CFW::Widgets
