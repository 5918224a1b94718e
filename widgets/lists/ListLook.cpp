#include "widgets/lists/ListLook.h"

#include "graphics/Font.h"
#include "graphics/Image.h"
#include "graphics/Painter.h"
#include "widgets/lists/ListItem.h"

#include <algorithm>

namespace OV::CFW::Widgets {

namespace {

using Rect = BasicRect<int>;

void Fill(Graphics::Painter& painter, const Rect& rect, Graphics::Color color)
{
    if (Graphics::AlphaOf(color) != 0 && !IsEmpty(rect))
        painter.fillRect(color, rect);
}

void DrawIcon(Graphics::Painter& painter, Graphics::Image& icon, const BasicPoint<int>& at, Graphics::Color color)
{
    const Rect whole{0, 0, icon.size().x, icon.size().y};
    if (color == 0xFFFFFFFFu)
        painter.drawImage(icon, at, whole);
    else
        painter.drawImageTinted(icon, Graphics::Painter::Modulate, color, at, whole);
}

int Height(const Graphics::Image* image)
{
    return image ? image->size().y : 0;
}

int Width(const Graphics::Image* image)
{
    return image ? image->size().x : 0;
}

}  // namespace

const RowStyle& ListLook::styleOf(const ListItem& item) const
{
    const int index = item.getStyle();
    return index > 0 && static_cast<std::size_t>(index) < styles.size() ? styles[static_cast<std::size_t>(index)] : styles.front();
}

int ListLook::rowHeight() const
{
    int height = 1;
    for (const RowStyle& style : styles) {
        for (const CellStyle& cell : style.states) {
            if (cell.icon)
                height = std::max(height, cell.iconPadding.top + Height(cell.icon) + cell.iconPadding.bottom);
            if (cell.font)
                height = std::max(height, cell.textPadding.top + cell.font->getHeight() + cell.textPadding.bottom);
        }
        const int sign = std::max(Height(style.openIcon), Height(style.closedIcon));
        if (sign > 0)
            height = std::max(height, signPadding.top + sign + signPadding.bottom);
    }
    return height;
}

int ListLook::signWidth() const
{
    int width = 0;
    for (const RowStyle& style : styles)
        width = std::max({width, Width(style.openIcon), Width(style.closedIcon)});
    return width > 0 ? signPadding.left + width + signPadding.right : 0;
}

bool ListLook::onSign(const ListItem& item, int x) const
{
    const int start = item.getDepth() * indent;
    return item.isBranch() && x >= start && x < start + signWidth();
}

// The widest icon either state shows, so that selecting a row does not move its text.
int ListLook::iconAreaWidth(const ListItem& item) const
{
    int width = 0;
    for (const CellStyle& cell : styleOf(item).states) {
        const Graphics::Image* icon = item.getIcon() ? item.getIcon() : cell.icon;
        if (icon)
            width = std::max(width, cell.iconPadding.left + Width(icon) + cell.iconPadding.right);
    }
    return width;
}

int ListLook::contentWidth(const ListItem& item) const
{
    if (!columns.empty()) {
        long long sum = 0;
        for (int width : columns)
            sum += std::max(width, 0);
        return static_cast<int>(std::min<long long>(sum, 1 << 30));
    }
    int text = 0;
    for (const CellStyle& cell : styleOf(item).states) {
        const std::string& value = item.getText();
        const int measured = cell.font && !value.empty() ? cell.font->measure(value, 0, static_cast<int>(value.size()), {0, 0}).width : 0;
        text = std::max(text, cell.textPadding.left + measured + cell.textPadding.right);
    }
    return item.getDepth() * indent + signWidth() + iconAreaWidth(item) + text;
}

void ListLook::paintRow(Graphics::Painter& painter, const ListItem& item, bool selected, const RowPlace& place, const Rect& clip) const
{
    const RowStyle& style = styleOf(item);
    const CellStyle& cell = style.states[selected ? 1 : 0];
    const int height = rowHeight();
    Fill(painter, {0, place.top, place.width, height}, cell.emptyBack);
    int x = place.left + item.getDepth() * indent;
    if (Graphics::Image* sign = item.isBranch() ? (item.isOpen() ? style.openIcon : style.closedIcon) : nullptr)
        DrawIcon(painter, *sign, {x + signPadding.left, place.top + signPadding.top}, tintSigns ? cell.iconColor : 0xFFFFFFFFu);
    x += signWidth();
    if (const int iconArea = iconAreaWidth(item); iconArea > 0) {
        Fill(painter, {x, place.top, iconArea, height}, cell.iconBack);
        if (Graphics::Image* icon = item.getIcon() ? item.getIcon() : cell.icon)
            DrawIcon(painter, *icon, {x + cell.iconPadding.left, place.top + cell.iconPadding.top}, cell.iconColor);
        x += iconArea;
    }
    const Rect saved = painter.getClipRect();
    const std::vector<std::string>& texts = item.getTexts();
    const std::size_t count = columns.empty() ? 1 : columns.size();
    int end = place.left;
    for (std::size_t column = 0; column < count; ++column) {
        const int start = column == 0 ? x : end;
        end = columns.empty() ? place.left + place.contentWidth : end + std::max(columns[column], 0);
        const Rect area{start, place.top, end - start, height};
        Fill(painter, area, style.alternate && place.index % 2 != 0 ? cell.alternateBack : cell.textBack);
        if (cell.font && column < texts.size() && !texts[column].empty()) {
            const Padding& padding = cell.textPadding;
            // Cut at the cell's right padding, so that long texts stop short of the next cell.
            painter.setClipRect(Intersect({start, place.top, area.width - padding.right, height}, clip));
            painter.drawTextAligned(*cell.font, cell.textColor, texts[column],
                                    {start + padding.left, place.top + padding.top, area.width - padding.left - padding.right,
                                     cell.font->getHeight()},
                                    Graphics::Font::AlignLeft);
            painter.setClipRect(saved);
        }
        if (!columns.empty())
            Fill(painter, Moved(columnSeparator, {end, place.top}), separatorColor);
    }
    if (separator > 0)
        Fill(painter, {0, place.top + height, place.width, separator}, separatorColor);
}

}  // namespace OV::CFW::Widgets
