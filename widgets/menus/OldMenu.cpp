#include "widgets/menus/OldMenu.h"

#include "graphics/Image.h"
#include "graphics/Painter.h"
#include "widgets/statics/Tiling.h"

namespace OV::CFW::Widgets {

OldMenu::OldMenu(GUI::Widget& parent, const Rect& rect, const Look& look)
    : Menu(parent, rect, look.font, look.images, look.textColor), look(look)
{
    if (look.background)
        setFrame(look.background, look.backgroundRect);
    if (look.separator)
        metrics.separatorHeight = look.separator->size().y;
}

void OldMenu::drawBackground(Graphics::Painter& painter, const Rect& area, const Rect& clip) const
{
    if (look.background) {
        DrawNineSliced(painter, *look.background, look.backgroundRect, area, clip);
        return;
    }
    painter.fillRect(0xFFF0F0F0, area);
    painter.drawRect(0xFF808080, area);
}

void OldMenu::drawItem(Graphics::Painter& painter, const MenuItem& item, const Rect& row, bool highlighted) const
{
    if (highlighted) {
        painter.fillRect(look.highlightedColor, row);
        drawEntry(painter, item, row, font, look.highlightedTextColor);
    } else {
        drawEntry(painter, item, row, font, item.enabled ? look.textColor : Faded(look.textColor));
    }
}

void OldMenu::drawSeparator(Graphics::Painter& painter, const Rect& row) const
{
    if (look.separator) {
        DrawNineSliced(painter, *look.separator, look.separatorRect, row, painter.getClipRect());
        return;
    }
    painter.drawHLine(Faded(look.textColor), {row.x + 2, row.y + row.height / 2}, row.width - 4);
}

}  // namespace OV::CFW::Widgets
