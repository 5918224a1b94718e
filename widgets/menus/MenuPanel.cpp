#include "widgets/menus/MenuPanel.h"

#include "graphics/Painter.h"
#include "widgets/gui/WidgetSignals.h"
#include "widgets/layout/ElementContext.h"
#include "widgets/menus/Menu.h"

#include <algorithm>

namespace OV::CFW::Widgets {

namespace {

// Far beyond any window, yet sums of a great many rows stay within an int.
constexpr int maxRow = 1024;
constexpr long long maxContent = 1 << 30;

}  // namespace

MenuPanel::MenuPanel(GUI::Widget& root, Menu& menu, std::vector<MenuItem>& items, const Point& maxSize)
    : Widget(root, {}), menu(&menu), items(items)
{
    const Menu::Metrics& m = menu.metrics;
    const int count = static_cast<int>(std::min<std::size_t>(items.size(), maxContent));
    const int columns = std::clamp(m.columns, 1, std::max(count, 1));
    const int perColumn = std::max(1, (count + columns - 1) / columns);
    int columnWidth = 0;
    for (const MenuItem& item : items)
        columnWidth = std::max(columnWidth, std::clamp(menu.itemWidth(item), 0, maxLayoutExtent));
    const int spacing = std::clamp(m.columnSpacing, 0, maxLayoutExtent);
    rows.reserve(static_cast<std::size_t>(count));
    long long y = 0;
    long long height = 0;
    for (int i = 0; i < count; ++i) {
        if (i % perColumn == 0)
            y = 0;
        const int rowHeight = std::clamp(items[i].separator ? m.separatorHeight : m.rowHeight, 1, maxRow);
        rows.push_back({(i / perColumn) * (columnWidth + spacing), static_cast<int>(y), columnWidth, rowHeight});
        y = std::min(y + rowHeight, maxContent);
        height = std::max(height, y);
    }
    contentHeight = static_cast<int>(height);
    contentWidth = columns * columnWidth + (columns - 1) * spacing;
    const long long fullHeight = height + m.frameTop + m.frameBottom;
    scrolling = fullHeight > maxSize.y;
    const long long width = static_cast<long long>(contentWidth) + m.frameLeft + m.frameRight;
    setSize({static_cast<int>(std::min<long long>(width, maxSize.x)), scrolling ? maxSize.y : static_cast<int>(fullHeight)});
    setWantsWheel(true);
    GUI::WidgetSignals& events = *getSignals();
    keepConnection(events.paint.connect([this](Widget*, Graphics::Painter* painter, const Rect& clip) { paint(*painter, clip); }));
    keepConnection(events.mouseWheel.connect([this](Widget*, const Point&, int steps, int) {
        if (this->menu)
            scrollBy(-steps * this->menu->metrics.rowHeight);
    }));
}

MenuPanel::~MenuPanel()
{
    if (menu)
        menu->forgetPanel(this);
}

void MenuPanel::detach()
{
    menu = nullptr;
    destroy();
}

GUI::Widget::Rect MenuPanel::viewRect() const
{
    const Menu::Metrics& m = menu->metrics;
    const int arrows = scrolling ? m.arrowHeight : 0;
    const int height = getSize().y - m.frameTop - m.frameBottom - 2 * arrows;
    return {m.frameLeft, m.frameTop + arrows, contentWidth, std::max(height, 0)};
}

GUI::Widget::Rect MenuPanel::itemRect(int index) const
{
    const Rect view = viewRect();
    return {rows[index].x + view.x, rows[index].y + view.y - scroll, rows[index].width, rows[index].height};
}

int MenuPanel::hitTest(const Point& point) const
{
    if (!menu)
        return noHit;
    const Rect view = viewRect();
    if (scrolling) {
        const int arrow = menu->metrics.arrowHeight;
        if (Rect{view.x, view.y - arrow, view.width, arrow}.contains(point.x, point.y))
            return upArrow;
        if (Rect{view.x, view.y + view.height, view.width, arrow}.contains(point.x, point.y))
            return downArrow;
    }
    if (!view.contains(point.x, point.y))
        return noHit;
    for (int i = 0; i < static_cast<int>(rows.size()); ++i) {
        if (itemRect(i).contains(point.x, point.y))
            return i;
    }
    return noHit;
}

void MenuPanel::setHover(int index)
{
    if (index == hover || !menu)
        return;
    if (hover >= 0)
        invalidate(itemRect(hover));
    hover = index;
    if (hover < 0)
        return;
    // Into view: the row's top or bottom at the view's edge.
    const Rect& row = rows[hover];
    const int viewHeight = viewRect().height;
    if (row.y < scroll)
        scrollBy(row.y - scroll);
    else if (row.y + row.height > scroll + viewHeight)
        scrollBy(row.y + row.height - viewHeight - scroll);
    invalidate(itemRect(hover));
}

void MenuPanel::moveHover(int direction)
{
    const int count = static_cast<int>(rows.size());
    if (count == 0)
        return;
    const int start = hover >= 0 ? hover : (direction > 0 ? -1 : count);
    for (int step = 1; step <= count; ++step) {
        const int index = ((start + direction * step) % count + count) % count;
        if (items[index].selectable()) {
            setHover(index);
            return;
        }
    }
}

void MenuPanel::scrollBy(int pixels)
{
    if (!menu)
        return;
    const int maxScroll = std::max(0, contentHeight - viewRect().height);
    const int next = static_cast<int>(std::clamp(static_cast<long long>(scroll) + pixels, 0LL, static_cast<long long>(maxScroll)));
    if (next == scroll)
        return;
    scroll = next;
    invalidate();
}

void MenuPanel::paint(Graphics::Painter& painter, const Rect& clip)
{
    if (!menu)
        return;
    menu->drawBackground(painter, {0, 0, getSize().x, getSize().y}, clip);
    const Rect view = viewRect();
    const Rect shown = Intersect(view, clip);
    if (!IsEmpty(shown)) {
        painter.setClipRect(shown);
        for (int i = 0; i < static_cast<int>(rows.size()); ++i) {
            const Rect row = itemRect(i);
            if (IsEmpty(Intersect(row, shown)))
                continue;
            if (items[i].separator)
                menu->drawSeparator(painter, row);
            else
                menu->drawItem(painter, items[i], row, i == hover);
        }
        painter.setClipRect(clip);
    }
    if (scrolling) {
        const int arrow = menu->metrics.arrowHeight;
        menu->drawScrollArrow(painter, {view.x, view.y - arrow, view.width, arrow}, true, scroll > 0);
        menu->drawScrollArrow(painter, {view.x, view.y + view.height, view.width, arrow}, false,
                              scroll < contentHeight - view.height);
    }
}

}  // namespace OV::CFW::Widgets
