#include "widgets/menus/OVMenu2.h"

#include <algorithm>

namespace OV::CFW::Widgets {

namespace {

constexpr int maxColumns = 64;

}  // namespace

OVMenu2::OVMenu2(GUI::Widget& parent, const Rect& rect, const Look& look, const Extras& extras) : OVMenu(parent, rect, look)
{
    metrics.offset = extras.offset;
    metrics.columns = std::clamp(extras.columns, 1, maxColumns);
    metrics.columnSpacing = std::max(0, extras.columnSpacing);
    setInactiveColor(extras.textColorInactive);
    setIcons(extras.icons);
}

}  // namespace OV::CFW::Widgets
