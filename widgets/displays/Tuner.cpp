#include "widgets/displays/Tuner.h"

#include "graphics/Image.h"
#include "graphics/Painter.h"
#include "widgets/gui/WidgetSignals.h"

#include <algorithm>
#include <cmath>

namespace OV::CFW::Widgets {

namespace {

constexpr int maxFeather = 256;

}  // namespace

Tuner::Tuner(GUI::Widget& parent, const Rect& rect, Graphics::Image& off, Graphics::Image& on, float minValue, float maxValue,
             int feather)
    : Widget(parent, rect), off(off), on(on), minValue(minValue), maxValue(maxValue), feather(std::clamp(feather, 0, maxFeather))
{
    keepConnection(getSignals()->paint.connect([this](Widget*, Graphics::Painter* painter, const Rect& clip) { paint(*painter, clip); }));
}

void Tuner::setValue(float value)
{
    const double share = (static_cast<double>(value) - minValue) / (static_cast<double>(maxValue) - minValue);
    int next = -1;
    if (!std::isnan(share)) {
        const int length = std::max(1, vertical() ? getSize().y : getSize().x);
        const int along = static_cast<int>(std::lround(std::clamp(share, 0.0, 1.0) * (length - 1)));
        next = vertical() ? length - 1 - along : along;
    }
    if (next == spot)
        return;
    const Rect before = spotRect(spot);
    spot = next;
    invalidate(Bounding(before, spotRect(spot)));
}

GUI::Widget::Rect Tuner::spotRect(int at) const
{
    if (at < 0)
        return {};
    if (vertical())
        return {0, at - feather, getSize().x, 2 * feather + 1};
    return {at - feather, 0, 2 * feather + 1, getSize().y};
}

void Tuner::paint(Graphics::Painter& painter, const Rect& clip)
{
    const Point offSize = off.size();
    const Rect dark = Intersect(clip, {0, 0, offSize.x, offSize.y});
    if (!IsEmpty(dark))
        painter.drawImage(off, {dark.x, dark.y}, dark);
    if (spot < 0)
        return;
    const Point onSize = on.size();
    const Rect lit = Intersect(clip, {0, 0, onSize.x, onSize.y});
    // A line of pixels at a time, each the fainter the farther from the middle.
    for (int d = -feather; d <= feather; ++d) {
        const Rect line = Intersect(lit, vertical() ? Rect{0, spot + d, onSize.x, 1} : Rect{spot + d, 0, 1, onSize.y});
        if (IsEmpty(line))
            continue;
        const auto alpha = static_cast<Graphics::Color>(255 * (feather + 1 - std::abs(d)) / (feather + 1));
        if (alpha == 255)
            painter.drawImage(on, {line.x, line.y}, line);
        else
            painter.drawImageTinted(on, Graphics::Painter::Modulate, alpha << 24 | 0xFFFFFFu, {line.x, line.y}, line);
    }
}

}  // namespace OV::CFW::Widgets
