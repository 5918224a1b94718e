#include "widgets/controls/ClickRoll.h"

#include "graphics/Font.h"
#include "graphics/Painter.h"
#include "widgets/controls/ValueInput.h"
#include "widgets/gui/WidgetManager.h"
#include "widgets/gui/WidgetSignals.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace OV::CFW::Widgets {

ClickRoll::ClickRoll(GUI::Widget& parent, const Rect& rect, Graphics::Font* font, const Settings& settings)
    : Widget(parent, rect), font(font), settings(settings),
      value(Limit(settings.defaultValue, settings.minValue, settings.maxValue))
{
    GUI::WidgetSignals& events = *getSignals();
    keepConnection(events.mouseDown.connect([this](Widget*, const Point& p, int, int modifiers) { mouseDown(p, modifiers); }));
    keepConnection(events.mouseMoved.connect([this](Widget*, const Point& p, int modifiers) {
        if (hasMouse())
            mouseMoved(p, modifiers);
    }));
    keepConnection(events.mouseUp.connect([this](Widget*, const Point&, int, int) { releaseMouse(); }));
    keepConnection(events.paint.connect([this](Widget*, Graphics::Painter* painter, const Rect&) { draw(*painter); }));
}

void ClickRoll::setValue(float v)
{
    const float limited = Limit(v, settings.minValue, settings.maxValue);
    if (limited == value)
        return;
    value = limited;
    invalidate();
    valueChanged(this, value);
}

void ClickRoll::mouseDown(const Point& point, int modifiers)
{
    getManager()->setActiveWidget(this);
    if (modifiers & ControlKey) {
        setValue(settings.defaultValue);
        return;
    }
    dragStartValue = value;
    lastY = point.y;
    slowCount = 0;
    normalCount = 0;
    grabMouse();
}

void ClickRoll::mouseMoved(const Point& point, int modifiers)
{
    (modifiers & ShiftKey ? slowCount : normalCount) += lastY - point.y;
    lastY = point.y;
    const float slowStep = settings.slowModeFactor != 0.0f ? 1.0f / settings.slowModeFactor : 0.0f;
    float steps = static_cast<float>(slowCount) * slowStep + static_cast<float>(normalCount);
    if (settings.rounding)
        steps = std::round(steps);
    setValue(steps * settings.stepValue + dragStartValue);
}

void ClickRoll::draw(Graphics::Painter& painter)
{
    if (!font)
        return;
    char text[64];
    std::snprintf(text, sizeof text, "%.*f", std::clamp(settings.decimals, 0, 9), static_cast<double>(value));
    painter.drawTextAligned(*font, getColor(), text, {0, 0, getRect().width, getRect().height}, Graphics::Font::AlignCenter);
}

}  // namespace OV::CFW::Widgets
