#include "widgets/menus/OVMenu.h"

#include "graphics/Font.h"
#include "graphics/Image.h"
#include "graphics/Painter.h"
#include "widgets/statics/Tiling.h"

#include <algorithm>

namespace OV::CFW::Widgets {

OVMenu::OVMenu(GUI::Widget& parent, const Rect& rect, const Look& look)
    : Menu(parent, rect, look.font, look.images, look.textColor), look(look),
      inactiveColor(Faded(look.textColor))
{
    if (look.fontHighlight)
        metrics.rowHeight = std::max(metrics.rowHeight, RowHeightFor(look.fontHighlight));
    if (look.image)
        setFrame(look.image, look.itemRect);
    metrics.overlap = look.overlap;
}

void OVMenu::setIcons(Graphics::Image* strip)
{
    icons = strip;
    iconSize = strip ? strip->size().y : 0;
    iconCount = iconSize > 0 ? strip->size().x / iconSize : 0;
    if (iconCount > 0)
        metrics.rowHeight = std::max(metrics.rowHeight, iconSize + 2);
}

int OVMenu::itemWidth(const MenuItem& item) const
{
    const int text = std::max(TextWidth(font, item.text), TextWidth(look.fontHighlight, item.text));
    return 2 * metrics.gutter + (iconCount > 0 ? iconSize + 4 : 0) + text + 4;
}

void OVMenu::drawBackground(Graphics::Painter& painter, const Rect& area, const Rect& clip) const
{
    if (look.image) {
        DrawNineSliced(painter, *look.image, look.itemRect, area, clip);
        return;
    }
    painter.fillRect(0xFF303030, area);
    painter.drawRect(look.sepColorStrong, area);
}

void OVMenu::drawItem(Graphics::Painter& painter, const MenuItem& item, const Rect& row, bool highlighted) const
{
    if (highlighted)
        painter.fillRect((look.textColorHi & 0xFFFFFFu) | 0x30000000u, row);
    if (iconCount > 0 && item.icon >= 0 && item.icon < iconCount)
        painter.drawImage(*icons, {row.x + metrics.gutter, row.y + (row.height - iconSize) / 2},
                          {item.icon * iconSize, 0, iconSize, iconSize});
    const int indent = iconCount > 0 ? iconSize + 4 : 0;
    if (highlighted)
        drawEntry(painter, item, row, look.fontHighlight ? look.fontHighlight : font, look.textColorHi, indent);
    else
        drawEntry(painter, item, row, font, item.enabled ? look.textColor : inactiveColor, indent);
}

void OVMenu::drawSeparator(Graphics::Painter& painter, const Rect& row) const
{
    const int length = row.width - look.sepLeft - look.sepRight;
    const int y = row.y + row.height / 2;
    painter.drawHLine(look.sepColor, {row.x + look.sepLeft, y - 1}, length);
    painter.drawHLine(look.sepColorStrong, {row.x + look.sepLeft, y}, length);
}

}  // namespace OV::CFW::Widgets
