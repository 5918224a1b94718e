#include "widgets/displays/QM3Matrix.h"

#include "graphics/Font.h"
#include "graphics/Image.h"
#include "graphics/Painter.h"
#include "widgets/gui/WidgetSignals.h"

#include <algorithm>
#include <cmath>

namespace OV::CFW::Widgets {

namespace {

constexpr int maxSide = 1024; // cells either way, of the matrix and of its window

int WidthOf(const Graphics::Image* image)
{
    return image ? image->size().x : 0;
}

int HeightOf(const Graphics::Image* image)
{
    return image ? image->size().y : 0;
}

void DrawCentred(Graphics::Painter& painter, Graphics::Image* image, const BasicRect<int>& box)
{
    if (!image)
        return;
    const BasicPoint<int> picture = image->size();
    painter.drawImage(*image, {box.x + (box.width - picture.x) / 2, box.y + (box.height - picture.y) / 2}, {0, 0, picture.x, picture.y});
}

}  // namespace

QM3Matrix::QM3Matrix(GUI::Widget& parent, const Rect& rect, const Look& look) : Widget(parent, rect), look(look)
{
    this->look.cellsShown = {std::clamp(look.cellsShown.x, 1, maxSide), std::clamp(look.cellsShown.y, 1, maxSide)};
    setMatrixSize(this->look.cellsShown.x, this->look.cellsShown.y);
    GUI::WidgetSignals& events = *getSignals();
    keepConnection(events.paint.connect([this](Widget*, Graphics::Painter* painter, const Rect& clip) { paint(*painter, clip); }));
    keepConnection(events.mouseDown.connect([this](Widget*, const Point& p, int, int) { click(p); }));
}

void QM3Matrix::setMatrixSize(int columns, int rows)
{
    const Point next{std::clamp(columns, 0, maxSide), std::clamp(rows, 0, maxSide)};
    std::vector<Cell> kept(static_cast<std::size_t>(next.x) * static_cast<std::size_t>(next.y));
    for (int row = 0; row < std::min(size.y, next.y); ++row) {
        for (int column = 0; column < std::min(size.x, next.x); ++column)
            kept[static_cast<std::size_t>(row * next.x + column)] = std::move(cells[static_cast<std::size_t>(row * size.x + column)]);
    }
    cells = std::move(kept);
    size = next;
    if (selected.x >= size.x || selected.y >= size.y)
        selected = {-1, -1};
    scrollTo(scroll.x, scroll.y);
    invalidate();
}

void QM3Matrix::setCell(int column, int row, const Cell& cell)
{
    if (column < 0 || row < 0 || column >= size.x || row >= size.y)
        return;
    Cell& stored = cells[static_cast<std::size_t>(row * size.x + column)];
    stored = cell;
    stored.fader = std::isnan(cell.fader) ? 0.0f : std::clamp(cell.fader, 0.0f, 1.0f);
    invalidate();
}

const QM3Matrix::Cell* QM3Matrix::getCell(int column, int row) const
{
    if (column < 0 || row < 0 || column >= size.x || row >= size.y)
        return nullptr;
    return &cells[static_cast<std::size_t>(row * size.x + column)];
}

void QM3Matrix::setSelected(int column, int row)
{
    const bool inside = column >= 0 && row >= 0 && column < size.x && row < size.y;
    const Point next = inside ? Point{column, row} : Point{-1, -1};
    if (next.x == selected.x && next.y == selected.y)
        return;
    selected = next;
    if (inside) {
        const Point shown = look.cellsShown;
        scrollTo(std::clamp(scroll.x, column - shown.x + 1, column), std::clamp(scroll.y, row - shown.y + 1, row));
    }
    invalidate();
}

void QM3Matrix::scrollTo(int column, int row)
{
    const Point next{std::clamp(column, 0, std::max(0, size.x - look.cellsShown.x)),
                     std::clamp(row, 0, std::max(0, size.y - look.cellsShown.y))};
    if (next.x == scroll.x && next.y == scroll.y)
        return;
    scroll = next;
    invalidate();
}

GUI::Widget::Rect QM3Matrix::grid() const
{
    const int left = WidthOf(look.arrowLeft);
    const int top = HeightOf(look.arrowUp);
    return {left, top, std::max(0, getSize().x - left - WidthOf(look.arrowRight)),
            std::max(0, getSize().y - top - HeightOf(look.arrowDown))};
}

GUI::Widget::Point QM3Matrix::cellSize() const
{
    const Rect area = grid();
    return {area.width / look.cellsShown.x, area.height / look.cellsShown.y};
}

GUI::Widget::Point QM3Matrix::cellAt(const Point& point) const
{
    const Rect area = grid();
    const Point cell = cellSize();
    if (cell.x <= 0 || cell.y <= 0 || point.x < area.x || point.y < area.y)
        return {-1, -1};
    const Point at{(point.x - area.x) / cell.x, (point.y - area.y) / cell.y};
    const Point found{scroll.x + at.x, scroll.y + at.y};
    if (at.x >= look.cellsShown.x || at.y >= look.cellsShown.y || found.x >= size.x || found.y >= size.y)
        return {-1, -1};
    return found;
}

void QM3Matrix::click(const Point& point)
{
    const Rect area = grid();
    if (point.x < area.x)
        scrollTo(scroll.x - 1, scroll.y);
    else if (point.x >= area.x + area.width)
        scrollTo(scroll.x + 1, scroll.y);
    else if (point.y < area.y)
        scrollTo(scroll.x, scroll.y - 1);
    else if (point.y >= area.y + area.height)
        scrollTo(scroll.x, scroll.y + 1);
    else if (const Point cell = cellAt(point); cell.x >= 0)
        cellClicked(this, cell.x, cell.y);
}

void QM3Matrix::paint(Graphics::Painter& painter, const Rect& clip)
{
    const Rect area = grid();
    const Point cell = cellSize();
    for (int r = 0; r < look.cellsShown.y && scroll.y + r < size.y; ++r) {
        for (int c = 0; c < look.cellsShown.x && scroll.x + c < size.x; ++c) {
            const Rect box{area.x + c * cell.x, area.y + r * cell.y, cell.x, cell.y};
            if (IsEmpty(Intersect(box, clip)))
                continue;
            const Point at{scroll.x + c, scroll.y + r};
            const Cell& shown = cells[static_cast<std::size_t>(at.y * size.x + at.x)];
            const bool isSelected = at.x == selected.x && at.y == selected.y;
            painter.fillRect(isSelected ? look.selectedCellColor : shown.on ? look.onCellColor : look.offCellColor, box);
            const int fader = static_cast<int>(std::lround(shown.fader * (box.width - 2)));
            painter.fillRect(look.faderColor, {box.x + 1, box.y + box.height - 4, fader, 3});
            painter.drawRect(look.borderColor, box);
            int y = box.y + 2;
            for (const auto& [font, text] : {std::pair{look.nameFont, &shown.name}, std::pair{look.textFont, &shown.text}}) {
                if (!font)
                    continue;
                painter.drawTextAligned(*font, look.borderColor, *text, {box.x + 2, y, box.width - 4, font->getHeight()},
                                        Graphics::Font::AlignCenter);
                y += font->getHeight();
            }
        }
    }
    // Where the matrix goes on.
    if (scroll.x > 0)
        DrawCentred(painter, look.arrowLeft, {0, area.y, area.x, area.height});
    if (scroll.x + look.cellsShown.x < size.x)
        DrawCentred(painter, look.arrowRight, {area.x + area.width, area.y, getSize().x - area.x - area.width, area.height});
    if (scroll.y > 0)
        DrawCentred(painter, look.arrowUp, {area.x, 0, area.width, area.y});
    if (scroll.y + look.cellsShown.y < size.y)
        DrawCentred(painter, look.arrowDown, {area.x, area.y + area.height, area.width, getSize().y - area.y - area.height});
}

}  // namespace OV::CFW::Widgets
