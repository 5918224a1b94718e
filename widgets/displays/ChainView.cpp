#include "widgets/displays/ChainView.h"

#include "graphics/Font.h"
#include "graphics/Painter.h"
#include "widgets/gui/WidgetSignals.h"
#include "widgets/layout/ElementContext.h"

#include <algorithm>

namespace OV::CFW::Widgets {

namespace {

constexpr int maxNodes = 4096;

}  // namespace

ChainView::ChainView(GUI::Widget& parent, const Rect& rect, const Look& look) : Widget(parent, rect), look(look)
{
    this->look.nodeSize = {std::clamp(look.nodeSize.x, 1, maxLayoutExtent), std::clamp(look.nodeSize.y, 1, maxLayoutExtent)};
    this->look.spacing = {std::clamp(look.spacing.x, 0, maxLayoutExtent), std::clamp(look.spacing.y, 0, maxLayoutExtent)};
    GUI::WidgetSignals& events = *getSignals();
    keepConnection(events.paint.connect([this](Widget*, Graphics::Painter* painter, const Rect& clip) { paint(*painter, clip); }));
    keepConnection(events.mouseDown.connect([this](Widget*, const Point& p, int, int) {
        const int node = nodeAt(p);
        if (node >= 0)
            nodeClicked(this, node);
    }));
}

void ChainView::setNodes(std::vector<std::string> names)
{
    if (names.size() > maxNodes)
        names.resize(maxNodes);
    nodes = std::move(names);
    invalidate();
}

int ChainView::perRow() const
{
    const int step = look.nodeSize.x + look.spacing.x;
    return std::max(1, (getSize().x + look.spacing.x) / step);
}

GUI::Widget::Rect ChainView::nodeRect(int index) const
{
    const int columns = perRow();
    const long long x = static_cast<long long>(index % columns) * (look.nodeSize.x + look.spacing.x);
    const long long y = static_cast<long long>(index / columns) * (look.nodeSize.y + look.spacing.y);
    const auto limited = [](long long v) { return static_cast<int>(std::min<long long>(v, 1 << 30)); };
    return {limited(x), limited(y), look.nodeSize.x, look.nodeSize.y};
}

int ChainView::nodeAt(const Point& point) const
{
    for (int i = 0; i < getNodeCount(); ++i) {
        if (nodeRect(i).contains(point.x, point.y))
            return i;
    }
    return -1;
}

void ChainView::paint(Graphics::Painter& painter, const Rect& clip)
{
    const int count = getNodeCount();
    for (int i = 0; i < count; ++i) {
        const Rect box = nodeRect(i);
        if (i + 1 < count && !IsEmpty(Intersect(Bounding(box, nodeRect(i + 1)), clip))) {
            const Rect next = nodeRect(i + 1);
            const double middleY = box.y + box.height / 2.0;
            if (next.y == box.y) {
                painter.drawLine(look.color, {box.x + box.width + 0.0, middleY}, {next.x + 0.0, middleY}, 1.0);
            } else {
                // Down from the box, back along the gap between the rows, down into the next.
                const double gapY = box.y + box.height + look.spacing.y / 2.0;
                const BasicPoint<double> path[4] = {{box.x + box.width / 2.0, box.y + box.height + 0.0},
                                                    {box.x + box.width / 2.0, gapY},
                                                    {next.x + next.width / 2.0, gapY},
                                                    {next.x + next.width / 2.0, next.y + 0.0}};
                painter.drawPolyline(look.color, path, 4, 1.0);
            }
        }
        if (IsEmpty(Intersect(box, clip)))
            continue;
        painter.drawRect(look.color, box);
        if (look.font) {
            const int width = look.textWidth > 0 ? look.textWidth : box.width;
            painter.drawTextAligned(*look.font, look.color, nodes[static_cast<std::size_t>(i)],
                                    {box.x + look.textOffset.x, box.y + look.textOffset.y, width, look.font->getHeight()},
                                    Graphics::Font::AlignCenter);
        }
    }
}

}  // namespace OV::CFW::Widgets
