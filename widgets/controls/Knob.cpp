#include "widgets/controls/Knob.h"

#include "graphics/Image.h"
#include "graphics/Painter.h"
#include "widgets/controls/ValueInput.h"
#include "widgets/gui/WidgetManager.h"
#include "widgets/gui/WidgetSignals.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace OV::CFW::Widgets {

Knob::Knob(GUI::Widget& parent, const Rect& rect, Graphics::Image* strip, int frames, std::vector<int> frameList)
    : Widget(parent, rect), RangedValue(0.0f, 1.0f, 0.5f, 0.0f), frames(frames), frameList(std::move(frameList)), strip(strip),
      mouseRange(static_cast<float>(frames))
{
    setWantsWheel(true);
    GUI::WidgetSignals& events = *getSignals();
    keepConnection(events.mouseDown.connect([this](Widget*, const Point& p, int, int modifiers) { handleMouseDown(p, modifiers); }));
    keepConnection(events.mouseMoved.connect([this](Widget*, const Point& p, int) {
        if (hasMouse())
            handleMouseMoved(p);
    }));
    keepConnection(events.mouseUp.connect([this](Widget*, const Point&, int, int) {
        if (hasMouse())
            handleMouseUp();
    }));
    keepConnection(events.mouseWheel.connect([this](Widget*, const Point&, int steps, int) {
        if (steps == 0)
            return;
        if (wheelStep != 0.0f) {
            setValue(steps > 0 ? value + wheelStep : value - wheelStep);
            return;
        }
        const float pixels = mouseRange * (slowMode ? slowModeFactor : 1.0f);
        if (pixels != 0.0f)
            setValue((maxValue - minValue) * static_cast<float>(steps) / pixels + value);
    }));
    keepConnection(events.paint.connect([this](Widget*, Graphics::Painter* painter, const Rect& clip) { draw(*painter, clip); }));
}

void Knob::hide()
{
    Widget::hide();
    if (getManager() && getManager()->getActiveWidget() == this)
        getManager()->setActiveWidget(nullptr);
}

bool Knob::isPointInside(const Point& point) const
{
    return Widget::isPointInside({point.x, point.y + frameOffsetY});
}

void Knob::handleMouseDown(const Point& point, int modifiers)
{
    getManager()->setActiveWidget(this);
    if (modifiers & ControlKey) {
        setValue(Limit(defaultValue, minValue, maxValue));
        return;
    }
    dragStart = point;
    slowMode = (modifiers & ShiftKey) != 0;
    dragStartValue = value;
    grabMouse();
}

void Knob::handleMouseUp()
{
    releaseMouse();
    slowMode = false;
}

void Knob::handleMouseMoved(const Point& point)
{
    // Always from the start, so that nothing drifts: back on the start row is the start value.
    const float pixels = mouseRange * (slowMode ? slowModeFactor : 1.0f);
    if (pixels != 0.0f)
        setValue((maxValue - minValue) * static_cast<float>(dragStart.y - point.y) / pixels + dragStartValue);
}

GUI::Widget::Rect Knob::showFrame()
{
    const int count = frameList.empty() ? frames : static_cast<int>(frameList.size());
    int index = 0;
    if (count > 1 && maxValue != minValue) {
        float position = (value - minValue) * static_cast<float>(count - 1) / (maxValue - minValue);
        if (rounding)
            position = std::floor(position + 0.5f);
        // Written so that NaN lands on the first frame.
        if (position > 0.0f)
            index = position < static_cast<float>(count - 1) ? static_cast<int>(position) : count - 1;
    }
    const Point size = strip ? strip->size() : Point{};
    if (frames < 1) {
        frameOffsetY = 0;
        return {0, 0, size.x, size.y};
    }
    // A frame number beyond the strip shows its nearest frame.
    const int frame = std::clamp(frameList.empty() ? index : frameList[static_cast<std::size_t>(index)], 0, frames - 1);
    frameOffsetY = static_cast<int>(static_cast<std::int64_t>(size.y) * frame / frames);
    return {0, frameOffsetY, size.x, size.y / frames};
}

void Knob::draw(Graphics::Painter& painter, const Rect& clip)
{
    showFrame();
    if (!strip)
        return;
    const Rect source{clip.x, clip.y + frameOffsetY, clip.width, clip.height};
    if (getColor() == 0xFFFFFFFF)
        painter.drawImage(*strip, {clip.x, clip.y}, source);
    else
        painter.drawImageTinted(*strip, Graphics::Painter::Modulate, getColor(), {clip.x, clip.y}, source);
}

}  // namespace OV::CFW::Widgets
