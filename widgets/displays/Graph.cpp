#include "widgets/displays/Graph.h"

#include "graphics/Image.h"
#include "graphics/Painter.h"
#include "widgets/gui/WidgetSignals.h"
#include "widgets/statics/Tiling.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace OV::CFW::Widgets {

namespace {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
// Points farther outside the widget are pulled in to this distance, which keeps the rasteriser's
// numbers small; only a line from that far away bends where it shows.
constexpr double farOutside = 1 << 16;

}  // namespace

bool Graph::Axis::set(double newLow, double newHigh)
{
    if (newLow == low && newHigh == high)
        return false;
    low = newLow;
    high = newHigh;
    return true;
}

double Graph::Axis::share(double v) const
{
    if (scale == Linear)
        return high != low ? (v - low) / (high - low) : notANumber;
    if (!(low > 0.0) || !(high > 0.0) || !(v > 0.0) || high == low)
        return notANumber;
    return std::log(v / low) / std::log(high / low);
}

double Graph::Axis::value(double s) const
{
    if (scale == Linear)
        return low + s * (high - low);
    if (!(low > 0.0) || !(high > 0.0))
        return notANumber;
    return low * std::pow(high / low, s);
}

Graph::Graph(GUI::Widget& parent, const Rect& rect, Graphics::Image* background, bool tiled, Graphics::Color borderColor,
             Scale scaleX, Scale scaleY)
    : Widget(parent, rect), background(background), tiled(tiled), borderColor(borderColor),
      x{scaleX, scaleX == Linear ? 0.0 : 1.0, scaleX == Linear ? 1.0 : 10.0},
      y{scaleY, scaleY == Linear ? 0.0 : 1.0, scaleY == Linear ? 1.0 : 10.0}
{
    keepConnection(getSignals()->paint.connect([this](Widget*, Graphics::Painter* painter, const Rect& clip) { paint(*painter, clip); }));
}

void Graph::setRangeX(double low, double high)
{
    if (x.set(low, high))
        invalidate();
}

void Graph::setRangeY(double low, double high)
{
    if (y.set(low, high))
        invalidate();
}

Graph::Position Graph::toPixels(const Position& units) const
{
    return {0.5 + x.share(units.x) * (getSize().x - 1), 0.5 + (1.0 - y.share(units.y)) * (getSize().y - 1)};
}

Graph::Position Graph::toUnits(const Position& pixels) const
{
    const int width = getSize().x - 1;
    const int height = getSize().y - 1;
    return {width > 0 ? x.value((pixels.x - 0.5) / width) : notANumber,
            height > 0 ? y.value(1.0 - (pixels.y - 0.5) / height) : notANumber};
}

void Graph::setCurve(int id, std::vector<Position> points, Graphics::Color color, double width)
{
    curves[id] = {std::move(points), color, std::isfinite(width) ? std::clamp(width, 0.1, 64.0) : 1.0};
    invalidate();
}

void Graph::removeCurve(int id)
{
    if (curves.erase(id) > 0)
        invalidate();
}

void Graph::paint(Graphics::Painter& painter, const Rect& clip)
{
    const Point size = getSize();
    if (background) {
        const Point picture = background->size();
        const Rect area = tiled ? Rect{0, 0, size.x, size.y} : Rect{0, 0, picture.x, picture.y};
        DrawTiled(painter, *background, {0, 0, picture.x, picture.y}, area, clip);
    }
    std::vector<Position> run;
    const auto flush = [&](const Curve& curve) {
        if (run.size() >= 2)
            painter.drawPolyline(curve.color, run.data(), static_cast<int>(run.size()), curve.width);
        run.clear();
    };
    for (const auto& [id, curve] : curves) {
        for (const Position& point : curve.points) {
            const Position at = toPixels(point);
            if (!std::isfinite(at.x) || !std::isfinite(at.y)) {
                flush(curve);
                continue;
            }
            run.push_back({std::clamp(at.x, -farOutside, size.x + farOutside), std::clamp(at.y, -farOutside, size.y + farOutside)});
        }
        flush(curve);
    }
    if (Graphics::AlphaOf(borderColor) > 0)
        painter.drawRect(borderColor, {0, 0, size.x, size.y});
}

}  // namespace OV::CFW::Widgets
