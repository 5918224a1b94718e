#include "widgets/controls/KnobRotatable.h"

#include "graphics/Painter.h"
#include "widgets/controls/ValueInput.h"

#include <cstdlib>

namespace OV::CFW::Widgets {

KnobRotatable::KnobRotatable(GUI::Widget& parent, const Rect& rect, Graphics::Image* strip, int frames, std::vector<int> frameList)
    : Knob(parent, rect, strip, frames, std::move(frameList))
{
    setSlowModeFactor(2.0f);
}

void KnobRotatable::setRotation(float v)
{
    const float limited = Limit(v, 0.0f, 1.0f);
    if (limited == rotation)
        return;
    rotation = limited;
    rotationChanged(this, rotation);
    invalidate();
}

void KnobRotatable::setRotationRange(float minDegrees, float maxDegrees)
{
    minValueRotation = minDegrees;
    maxValueRotation = maxDegrees;
    invalidate();
}

void KnobRotatable::setCenters(const Point& rotation, const Point& destination)
{
    centerRotation = rotation;
    centerDestination = destination;
    invalidate();
}

void KnobRotatable::handleMouseDown(const Point& point, int modifiers)
{
    Knob::handleMouseDown(point, modifiers);
    if (modifiers & ControlKey) {
        setRotation(defaultRotation);
        return;
    }
    dragStartRotation = rotation;
    dragAxis = NoAxis;
}

void KnobRotatable::handleMouseMoved(const Point& point)
{
    const int dx = point.x - getDragStart().x;
    const int dy = getDragStart().y - point.y;
    if (isSlowMode() && dragAxis == NoAxis) {
        if (dx == 0 && dy == 0)
            return;
        dragAxis = std::abs(dy) > std::abs(dx) ? Vertical : Horizontal;
    }
    if (!isSlowMode() || dragAxis == Vertical)
        Knob::handleMouseMoved(point);
    const float pixels = (maxValueRotation - minValueRotation) * pixelPerDegree;
    if ((!isSlowMode() || dragAxis == Horizontal) && pixels != 0.0f)
        setRotation(static_cast<float>(dx) / pixels + dragStartRotation);
}

void KnobRotatable::handleMouseUp()
{
    Knob::handleMouseUp();
    dragAxis = NoAxis;
}

void KnobRotatable::draw(Graphics::Painter& painter, const Rect&)
{
    const Rect frame = showFrame();
    if (!getStrip())
        return;
    const double angle = minValueRotation + rotation * (maxValueRotation - minValueRotation);
    painter.drawImageRotated(*getStrip(), {static_cast<double>(centerDestination.x), static_cast<double>(centerDestination.y)},
                             angle, frame, centerRotation);
}

}  // namespace OV::CFW::Widgets
