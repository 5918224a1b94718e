#include "widgets/displays/Meter.h"

#include "graphics/Image.h"
#include "graphics/Painter.h"
#include "widgets/gui/WidgetSignals.h"
#include "widgets/layout/ElementContext.h"

#include <algorithm>
#include <cmath>

namespace OV::CFW::Widgets {

namespace {

constexpr int maxLeds = 1 << 16;

}  // namespace

Meter::Meter(GUI::Widget& parent, const Rect& rect, Graphics::Image& off, Graphics::Image& on, const Settings& settings)
    : Widget(parent, rect), off(off), on(on), settings(settings),
      steps(std::clamp(settings.leds, 0, maxLeds) * (settings.halfLeds ? 2 : 1))
{
    this->settings.ledsOffset = {std::clamp(settings.ledsOffset.x, 0, maxLayoutExtent),
                                 std::clamp(settings.ledsOffset.y, 0, maxLayoutExtent)};
    keepConnection(getSignals()->paint.connect([this](Widget*, Graphics::Painter* painter, const Rect& clip) { paint(*painter, clip); }));
}

int Meter::stepsFor(float value) const
{
    const double share = (static_cast<double>(value) - settings.minValue) / (static_cast<double>(settings.maxValue) - settings.minValue);
    if (!(share > 0.0))
        return 0;
    if (share >= 1.0)
        return steps;
    // A level on an LED's threshold lights it, despite the rounding of the division.
    return std::min(steps, static_cast<int>(std::floor(share * steps + 1e-6)));
}

GUI::Widget::Rect Meter::litRect(int count) const
{
    const Point size = on.size();
    const Point margin = settings.ledsOffset;
    const Rect bar{margin.x, margin.y, std::max(0, size.x - 2 * margin.x), std::max(0, size.y - 2 * margin.y)};
    if (steps == 0 || count == 0)
        return {bar.x, bar.y, 0, 0};
    const auto part = [&](int length) { return static_cast<int>(std::lround(static_cast<double>(length) * count / steps)); };
    switch (settings.orientation) {
    case RightToLeft:
        return {bar.x + bar.width - part(bar.width), bar.y, part(bar.width), bar.height};
    case BottomToTop:
        return {bar.x, bar.y + bar.height - part(bar.height), bar.width, part(bar.height)};
    case TopToBottom:
        return {bar.x, bar.y, bar.width, part(bar.height)};
    case LeftToRight:
    default:
        return {bar.x, bar.y, part(bar.width), bar.height};
    }
}

void Meter::setLevel(float value)
{
    level = value;
    const int next = stepsFor(value);
    if (next == lit)
        return;
    const Rect before = litRect(lit);
    lit = next;
    invalidate(Bounding(before, litRect(lit)));
}

void Meter::paint(Graphics::Painter& painter, const Rect& clip)
{
    const Point offSize = off.size();
    const Rect dark = Intersect(clip, {0, 0, offSize.x, offSize.y});
    if (!IsEmpty(dark))
        painter.drawImage(off, {dark.x, dark.y}, dark);
    const Rect shown = Intersect(litRect(lit), clip);
    if (!IsEmpty(shown))
        painter.drawImage(on, {shown.x, shown.y}, shown);
}

}  // namespace OV::CFW::Widgets
