#include "widgets/controls/Slider.h"

#include "graphics/Image.h"
#include "graphics/Painter.h"
#include "widgets/controls/ValueInput.h"
#include "widgets/gui/WidgetManager.h"
#include "widgets/gui/WidgetSignals.h"

#include <algorithm>
#include <cmath>

namespace OV::CFW::Widgets {

Slider::Slider(GUI::Widget& parent, const Rect& rect, Graphics::Image* background, Graphics::Image* handle, float minValue,
               float maxValue, bool vertical, bool smooth)
    : Widget(parent, rect), RangedValue(minValue, maxValue, (minValue + maxValue) / 2.0f, (minValue + maxValue) / 2.0f),
      vertical(vertical), smooth(smooth), background(background), handle(handle)
{
    GUI::WidgetSignals& events = *getSignals();
    keepConnection(events.mouseDown.connect([this](Widget*, const Point& p, int, int modifiers) { mouseDown(p, modifiers); }));
    keepConnection(events.mouseMoved.connect([this](Widget*, const Point& p, int) {
        if (hasMouse())
            mouseMoved(p);
    }));
    keepConnection(events.mouseUp.connect([this](Widget*, const Point&, int, int) {
        if (!hasMouse())
            return;
        releaseMouse();
        slowMode = false;
    }));
    keepConnection(events.paint.connect([this](Widget*, Graphics::Painter* painter, const Rect& clip) { draw(*painter, clip); }));
}

GUI::Widget::Rect Slider::handleRect() const
{
    const Point size = handle ? handle->size() : Point{};
    const Rect& rect = getRect();
    const int span = vertical ? rect.height - size.y : rect.width - size.x;
    float share = maxValue != minValue ? (value - minValue) / (maxValue - minValue) : 0.0f;
    if (!(share > 0.0f))
        share = 0.0f;
    const int along = static_cast<int>(static_cast<float>(span) * std::min(share, 1.0f));
    // Across the track the handle stands in the middle.
    if (vertical)
        return {(rect.width - size.x) / 2, span - along, size.x, size.y};
    return {along, (rect.height - size.y) / 2, size.x, size.y};
}

void Slider::mouseDown(const Point& point, int modifiers)
{
    if (!handleRect().contains(point.x, point.y))
        return;
    getManager()->setActiveWidget(this);
    if (modifiers & ControlKey) {
        setValue(defaultValue);
        return;
    }
    dragStart = point;
    dragStartValue = value;
    slowMode = (modifiers & ShiftKey) != 0;
    grabMouse();
}

void Slider::mouseMoved(const Point& point)
{
    // Always from the start, so that nothing drifts: back at the start is the start value.
    const int delta = vertical ? dragStart.y - point.y : point.x - dragStart.x;
    const Point size = handle ? handle->size() : Point{};
    const int span = vertical ? getRect().height - size.y : getRect().width - size.x;
    if (span == 0 || (slowMode && slowModeFactor == 0.0f))
        return;
    float change = (maxValue - minValue) * static_cast<float>(delta) / static_cast<float>(span);
    if (slowMode)
        change /= slowModeFactor;
    const float v = change + dragStartValue;
    setValue(smooth ? v : std::trunc(v));
}

void Slider::draw(Graphics::Painter& painter, const Rect& clip)
{
    if (background)
        painter.drawImage(*background, {clip.x, clip.y}, clip);
    if (handle) {
        const Rect at = handleRect();
        painter.drawImage(*handle, {at.x, at.y}, {0, 0, at.width, at.height});
    }
}

}  // namespace OV::CFW::Widgets
