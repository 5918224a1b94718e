#include "widgets/menus/MenuItem.h"

namespace OV::CFW::Widgets {

namespace {

void Collect(std::vector<MenuItem>& items, int id, std::vector<MenuItem*>& found)
{
    for (MenuItem& item : items) {
        if (item.id == id && !item.separator)
            found.push_back(&item);
        Collect(item.submenu, id, found);
    }
}

}  // namespace

std::vector<MenuItem*> FindMenuItems(std::vector<MenuItem>& items, int id)
{
    std::vector<MenuItem*> found;
    Collect(items, id, found);
    return found;
}

}  // namespace OV::CFW::Widgets
