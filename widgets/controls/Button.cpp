#include "widgets/controls/Button.h"

#include "graphics/Painter.h"
#include "graphics/Window.h"
#include "widgets/gui/WidgetManager.h"
#include "widgets/gui/WidgetSignals.h"

namespace OV::CFW::Widgets {

Button::Button(GUI::Widget& parent, const Rect& rect) : Widget(parent, rect)
{
    GUI::WidgetSignals& events = *getSignals();
    keepConnection(events.mouseDown.connect([this](Widget*, const Point&, int button, int) {
        if (button != Graphics::MouseButton::Left)
            return;
        getManager()->setActiveWidget(this);
        isPressed = true;
        grabMouse();
        pressed(this);
        invalidate();
    }));
    keepConnection(events.mouseUp.connect([this](Widget*, const Point& p, int button, int) {
        if (button == Graphics::MouseButton::Left && hasMouse())
            mouseUp(p);
    }));
    keepConnection(events.mouseEntered.connect([this](Widget*) {
        if (hasMouse() && !isPressed) {
            isPressed = true;
            pressed(this);
        }
        invalidate(); // also for the highlight of a hovered button
    }));
    keepConnection(events.mouseLeft.connect([this](Widget*) {
        if (isPressed) {
            isPressed = false;
            released(this);
        }
        invalidate();
    }));
    keepConnection(events.paint.connect([this](Widget*, Graphics::Painter* painter, const Rect& clip) { draw(*painter, clip); }));
}

void Button::mouseUp(const Point& point)
{
    if (Rect{0, 0, getRect().width, getRect().height}.contains(point.x, point.y)) {
        isPressed = false;
        released(this);
        clicked(this, point);
        clickAction();
        invalidate();
    } else if (isPressed) {
        // Left without a move to say so: it only comes up.
        isPressed = false;
        invalidate();
    }
    releaseMouse();
}

void Button::drawPart(Graphics::Painter& painter, Graphics::Image* image, const Rect& clip)
{
    if (image)
        painter.drawImage(*image, {clip.x, clip.y}, clip);
}

}  // namespace OV::CFW::Widgets
