#include "widgets/displays/AnalogMeter.h"

#include "graphics/Image.h"
#include "graphics/Painter.h"
#include "widgets/gui/WidgetSignals.h"

#include <algorithm>
#include <cmath>

namespace OV::CFW::Widgets {

namespace {

constexpr double fullTurn = 2.0 * M_PI;

// Into [0, 2π).
double Turned(double angle)
{
    const double turned = std::fmod(angle, fullTurn);
    return turned < 0.0 ? turned + fullTurn : turned;
}

}  // namespace

AnalogMeter::AnalogMeter(GUI::Widget& parent, const Rect& rect, Graphics::Image* background, Graphics::Image* cover,
                         const Point& coverAt, const Needle& needle)
    : Widget(parent, rect), background(background), cover(cover), coverAt(coverAt), needle(needle)
{
    const Position low{needle.minEnd.x - needle.origin.x, needle.minEnd.y - needle.origin.y};
    const Position high{needle.maxEnd.x - needle.origin.x, needle.maxEnd.y - needle.origin.y};
    startAngle = std::atan2(low.y, low.x);
    const double endAngle = std::atan2(high.y, high.x);
    // With y down, a growing angle turns clockwise on the screen.
    sweep = needle.ccw ? -Turned(startAngle - endAngle) : Turned(endAngle - startAngle);
    startRadius = std::hypot(low.x, low.y);
    endRadius = std::hypot(high.x, high.y);
    keepConnection(getSignals()->paint.connect([this](Widget*, Graphics::Painter* painter, const Rect& clip) { paint(*painter, clip); }));
}

AnalogMeter::Position AnalogMeter::endAt(double share) const
{
    const double angle = startAngle + share * sweep;
    const double radius = startRadius + share * (endRadius - startRadius);
    return {needle.origin.x + radius * std::cos(angle), needle.origin.y + radius * std::sin(angle)};
}

AnalogMeter::Position AnalogMeter::shadowAt(double share) const
{
    return {needle.shadowMinOffset.x + share * (needle.shadowMaxOffset.x - needle.shadowMinOffset.x),
            needle.shadowMinOffset.y + share * (needle.shadowMaxOffset.y - needle.shadowMinOffset.y)};
}

// Needle and shadow, with room for the stroke's width and its smoothing.
GUI::Widget::Rect AnalogMeter::bounds(double share) const
{
    const Position end = endAt(share);
    const Position shadow = shadowAt(share);
    const double dx = shadow.x;
    const double dy = shadow.y;
    const double margin = needle.thickness + 2.0;
    const double x0 = std::min({needle.origin.x, end.x, needle.origin.x + dx, end.x + dx}) - margin;
    const double y0 = std::min({needle.origin.y, end.y, needle.origin.y + dy, end.y + dy}) - margin;
    const double x1 = std::max({needle.origin.x, end.x, needle.origin.x + dx, end.x + dx}) + margin;
    const double y1 = std::max({needle.origin.y, end.y, needle.origin.y + dy, end.y + dy}) + margin;
    const double limit = 1 << 20;
    const auto pixel = [limit](double v) { return static_cast<int>(std::clamp(std::floor(v), -limit, limit)); };
    return {pixel(x0), pixel(y0), pixel(x1) - pixel(x0) + 1, pixel(y1) - pixel(y0) + 1};
}

void AnalogMeter::setLevel(float value)
{
    const double share = (static_cast<double>(value) - needle.minValue) / (static_cast<double>(needle.maxValue) - needle.minValue);
    const double next = share > 0.0 ? std::min(share, 1.0) : 0.0;
    // A quarter of a pixel at the end is the least move that shows.
    const Position from = endAt(shown);
    const Position to = endAt(next);
    if (std::lround(from.x * 4.0) == std::lround(to.x * 4.0) && std::lround(from.y * 4.0) == std::lround(to.y * 4.0))
        return;
    const Rect before = bounds(shown);
    shown = next;
    invalidate(Bounding(before, bounds(shown)));
}

void AnalogMeter::drawNeedle(Graphics::Painter& painter, const Position& offset, Graphics::Color color, double share) const
{
    const Position from{needle.origin.x + offset.x, needle.origin.y + offset.y};
    const Position end = endAt(share);
    const Position to{end.x + offset.x, end.y + offset.y};
    if (!needle.wedge) {
        painter.drawLine(color, from, to, needle.thickness);
        return;
    }
    const double length = std::hypot(to.x - from.x, to.y - from.y);
    if (!(length > 0.0))
        return;
    // Across the needle, half the thickness either side of the origin.
    const double nx = -(to.y - from.y) / length * needle.thickness / 2.0;
    const double ny = (to.x - from.x) / length * needle.thickness / 2.0;
    const Position corners[3] = {{from.x + nx, from.y + ny}, {to.x, to.y}, {from.x - nx, from.y - ny}};
    painter.fillPolygon(color, corners, 3, 1.0);
}

void AnalogMeter::paint(Graphics::Painter& painter, const Rect& clip)
{
    if (background) {
        const Rect part = Intersect(clip, {0, 0, background->size().x, background->size().y});
        if (!IsEmpty(part))
            painter.drawImage(*background, {part.x, part.y}, part);
    }
    const Position shadow = shadowAt(shown);
    if (shadow.x != 0.0 || shadow.y != 0.0)
        drawNeedle(painter, shadow, needle.shadowColor, shown);
    drawNeedle(painter, {0.0, 0.0}, needle.color, shown);
    if (cover) {
        const Point size = cover->size();
        const Rect part = Intersect(clip, {coverAt.x, coverAt.y, size.x, size.y});
        if (!IsEmpty(part))
            painter.drawImage(*cover, {part.x, part.y}, Moved(part, {-coverAt.x, -coverAt.y}));
    }
}

}  // namespace OV::CFW::Widgets
