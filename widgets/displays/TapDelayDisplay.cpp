#include "widgets/displays/TapDelayDisplay.h"

#include "graphics/Font.h"
#include "graphics/Image.h"
#include "graphics/Painter.h"
#include "widgets/gui/WidgetSignals.h"

#include <algorithm>
#include <cmath>

namespace OV::CFW::Widgets {

namespace {

constexpr int maxTaps = 1024;

}  // namespace

TapDelayDisplay::TapDelayDisplay(GUI::Widget& parent, const Rect& rect, const Look& look, int taps)
    : Widget(parent, rect), look(look), taps(static_cast<std::size_t>(std::clamp(taps, 0, maxTaps)))
{
    this->look.rows = std::clamp(look.rows, 1, maxTaps);
    setWantsWheel(true);
    GUI::WidgetSignals& events = *getSignals();
    keepConnection(events.paint.connect([this](Widget*, Graphics::Painter* painter, const Rect& clip) { paint(*painter, clip); }));
    keepConnection(events.mouseDown.connect([this](Widget*, const Point& p, int, int) {
        const int tap = tapAt(p);
        if (tap < 0 || tap == selected)
            return;
        setSelectedTap(tap);
        tapSelected(this, tap);
    }));
    keepConnection(events.mouseWheel.connect([this](Widget*, const Point&, int steps, int) { scrollTo(firstRow - steps); }));
}

GUI::Widget::Rect TapDelayDisplay::area() const
{
    return IsEmpty(look.displayArea) ? Rect{0, 0, getSize().x, getSize().y} : look.displayArea;
}

int TapDelayDisplay::rowHeight() const
{
    return std::max(1, area().height / look.rows);
}

void TapDelayDisplay::setTap(int index, double length, const std::string& label)
{
    if (index < 0 || index >= getTapCount())
        return;
    Tap& tap = taps[static_cast<std::size_t>(index)];
    tap.length = std::isfinite(length) ? std::clamp(length, 0.0, 1.0) : 0.0;
    tap.label = label;
    invalidate();
}

void TapDelayDisplay::setSelectedTap(int index)
{
    const int next = index >= 0 && index < getTapCount() ? index : -1;
    if (next == selected)
        return;
    selected = next;
    if (selected >= 0 && selected < firstRow)
        scrollTo(selected);
    else if (selected >= firstRow + look.rows)
        scrollTo(selected - look.rows + 1);
    invalidate();
}

void TapDelayDisplay::scrollTo(int first)
{
    const int next = std::clamp(first, 0, std::max(0, getTapCount() - look.rows));
    if (next == firstRow)
        return;
    firstRow = next;
    invalidate();
}

int TapDelayDisplay::tapAt(const Point& point) const
{
    const Rect bounds = area();
    if (!bounds.contains(point.x, point.y))
        return -1;
    const int row = (point.y - bounds.y) / rowHeight();
    const int tap = firstRow + row;
    return row < look.rows && tap < getTapCount() ? tap : -1;
}

void TapDelayDisplay::paint(Graphics::Painter& painter, const Rect& clip)
{
    if (look.background) {
        const Rect part = Intersect(clip, {0, 0, look.background->size().x, look.background->size().y});
        if (!IsEmpty(part))
            painter.drawImage(*look.background, {part.x, part.y}, part);
    }
    const Rect bounds = area();
    const int height = rowHeight();
    for (int row = 0; row < look.rows && firstRow + row < getTapCount(); ++row) {
        const int index = firstRow + row;
        const Tap& tap = taps[static_cast<std::size_t>(index)];
        const Rect band{bounds.x, bounds.y + row * height, bounds.width, height};
        if (IsEmpty(Intersect(band, clip)))
            continue;
        const int length = static_cast<int>(std::lround(tap.length * band.width));
        painter.fillRect(index == selected ? look.selectedRowColor : look.rowColor, {band.x, band.y + 1, length, band.height - 2});
        if (look.font) {
            const int textHeight = look.font->getHeight();
            painter.drawTextAligned(*look.font, look.fontColor, tap.label,
                                    {band.x + length + 4, band.y + (band.height - textHeight) / 2, band.width - length - 4, textHeight},
                                    Graphics::Font::AlignLeft);
        }
    }
}

}  // namespace OV::CFW::Widgets
