#include "widgets/displays/PhaseScope.h"

#include "graphics/Image.h"
#include "graphics/Painter.h"
#include "widgets/gui/WidgetManager.h"

#include <algorithm>
#include <cmath>

namespace OV::CFW::Widgets {

namespace {

constexpr int msPerTick = 40;
constexpr int maxPersistenceMs = 1000;
constexpr std::size_t maxPoints = 4096; // a tick's worth at 96 kHz

}  // namespace

PhaseScope::PhaseScope(GUI::Widget& parent, const Rect& rect, Graphics::Image* background, Graphics::Color color, Mode mode,
                       int persistenceMs)
    : Widget(parent, rect), background(background), color(color), mode(mode),
      maxAge(std::clamp(persistenceMs, 0, maxPersistenceMs) / msPerTick)
{
    keepConnection(getSignals()->paint.connect([this](Widget*, Graphics::Painter* painter, const Rect& clip) { paint(*painter, clip); }));
    keepConnection(getManager()->tick.connect([this](GUI::WidgetManager*) { tick(); }));
}

BasicPoint<double> PhaseScope::pointFor(float left, float right) const
{
    const double l = std::clamp(static_cast<double>(left), -1.0, 1.0);
    const double r = std::clamp(static_cast<double>(right), -1.0, 1.0);
    const double half = std::min(getSize().x, getSize().y) / 2.0;
    return {getSize().x / 2.0 + (r - l) / 2.0 * half, getSize().y / 2.0 - (l + r) / 2.0 * half};
}

void PhaseScope::addSamples(const float* left, const float* right, std::size_t count)
{
    for (std::size_t i = 0; i < count && pending.size() < maxPoints; ++i) {
        if (!std::isnan(left[i]) && !std::isnan(right[i]))
            pending.push_back(pointFor(left[i], right[i]));
    }
}

void PhaseScope::clear()
{
    pending.clear();
    if (frames.empty())
        return;
    frames.clear();
    invalidate();
}

void PhaseScope::tick()
{
    const bool wasShowing = !frames.empty();
    for (Frame& frame : frames)
        ++frame.age;
    while (!frames.empty() && frames.front().age > maxAge)
        frames.pop_front();
    if (!pending.empty()) {
        frames.push_back({std::move(pending), 0});
        pending.clear();
    }
    if (wasShowing || !frames.empty())
        invalidate();
}

void PhaseScope::paint(Graphics::Painter& painter, const Rect& clip)
{
    if (background) {
        const Rect part = Intersect(clip, {0, 0, background->size().x, background->size().y});
        if (!IsEmpty(part))
            painter.drawImage(*background, {part.x, part.y}, part);
    } else {
        painter.fillRect(0xFF000000, clip);
    }
    for (const Frame& frame : frames) {
        const auto alpha = static_cast<Graphics::Color>(Graphics::AlphaOf(color) * (maxAge + 1 - frame.age) / (maxAge + 1));
        const Graphics::Color faded = alpha << 24 | (color & 0xFFFFFFu);
        if (mode == Lines) {
            painter.drawPolyline(faded, frame.points.data(), static_cast<int>(frame.points.size()), 1.0);
            continue;
        }
        for (const BasicPoint<double>& point : frame.points)
            painter.putPixel(faded, static_cast<int>(point.x), static_cast<int>(point.y));
    }
}

}  // namespace OV::CFW::Widgets
