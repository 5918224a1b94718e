#include "widgets/displays/CorrelationMeter.h"

#include "graphics/Image.h"
#include "graphics/Painter.h"
#include "widgets/gui/WidgetManager.h"

#include <algorithm>
#include <cmath>

namespace OV::CFW::Widgets {

namespace {

constexpr int msPerTick = 40;
constexpr int maxPersistenceMs = 60000;

}  // namespace

CorrelationMeter::CorrelationMeter(GUI::Widget& parent, const Rect& rect, Graphics::Image* background, const Colors& colors,
                                   int persistenceMs, double lineThickness)
    : Widget(parent, rect), background(background), colors(colors),
      holdTicks(std::clamp(persistenceMs, 0, maxPersistenceMs) / msPerTick),
      lineThickness(std::isfinite(lineThickness) ? std::clamp(lineThickness, 1.0, 64.0) : 1.0)
{
    keepConnection(getSignals()->paint.connect([this](Widget*, Graphics::Painter* painter, const Rect& clip) { paint(*painter, clip); }));
    keepConnection(getManager()->tick.connect([this](GUI::WidgetManager*) { tick(); }));
}

int CorrelationMeter::pixelFor(double correlation) const
{
    const int length = std::max(1, vertical() ? getSize().y : getSize().x);
    const int along = static_cast<int>(std::lround((correlation + 1.0) / 2.0 * (length - 1)));
    return vertical() ? length - 1 - along : along;
}

CorrelationMeter::Marks CorrelationMeter::marks() const
{
    return {pixelFor(value), pixelFor(minimum), pixelFor(maximum)};
}

void CorrelationMeter::changed(const Marks& before)
{
    if (!(marks() == before))
        invalidate();
}

void CorrelationMeter::setCorrelation(double correlation)
{
    if (std::isnan(correlation))
        return;
    const Marks before = marks();
    value = std::clamp(correlation, -1.0, 1.0);
    if (value <= minimum) {
        minimum = value;
        minimumAge = 0;
    }
    if (value >= maximum) {
        maximum = value;
        maximumAge = 0;
    }
    changed(before);
}

void CorrelationMeter::addSamples(const float* left, const float* right, std::size_t count)
{
    double product = 0.0;
    double leftEnergy = 0.0;
    double rightEnergy = 0.0;
    for (std::size_t i = 0; i < count; ++i) {
        const double l = left[i];
        const double r = right[i];
        if (!std::isfinite(l) || !std::isfinite(r))
            continue;
        product += l * r;
        leftEnergy += l * l;
        rightEnergy += r * r;
    }
    const double energy = std::sqrt(leftEnergy * rightEnergy);
    if (energy > 1e-20 && std::isfinite(energy))
        setCorrelation(product / energy);
}

void CorrelationMeter::tick()
{
    const Marks before = marks();
    if (++minimumAge > holdTicks)
        minimum += (value - minimum) / 2.0;
    if (++maximumAge > holdTicks)
        maximum += (value - maximum) / 2.0;
    changed(before);
}

void CorrelationMeter::paint(Graphics::Painter& painter, const Rect& clip)
{
    const Point size = getSize();
    if (background) {
        const Rect part = Intersect(clip, {0, 0, background->size().x, background->size().y});
        if (!IsEmpty(part))
            painter.drawImage(*background, {part.x, part.y}, part);
    }
    const Marks at = marks();
    const int low = std::min(at.minimum, at.maximum);
    const int span = std::abs(at.maximum - at.minimum) + 1;
    painter.fillRect(colors.shadow, vertical() ? Rect{0, low, size.x, span} : Rect{low, 0, span, size.y});
    const auto line = [&](Graphics::Color color, int pixel, double width) {
        const double middle = pixel + 0.5;
        if (vertical())
            painter.drawLine(color, {0.0, middle}, {static_cast<double>(size.x), middle}, width);
        else
            painter.drawLine(color, {middle, 0.0}, {middle, static_cast<double>(size.y)}, width);
    };
    line(colors.min, at.minimum, 1.0);
    line(colors.max, at.maximum, 1.0);
    line(colors.value, at.value, lineThickness);
}

}  // namespace OV::CFW::Widgets
