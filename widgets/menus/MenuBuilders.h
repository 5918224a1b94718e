#pragma once

#include "widgets/layout/ElementContext.h"

namespace OV::CFW::Widgets {

// The builders of the menus' layout elements. Each reads the menu's items from its "Item"
// children ("Text", "ID", "Separator"); an "Item" inside an "Item" belongs to its submenu.
GUI::Widget* BuildOVMenu(ElementContext& context);
GUI::Widget* BuildOVMenu2(ElementContext& context);
GUI::Widget* BuildOldMenu(ElementContext& context);

}  // namespace OV::CFW::Widgets
