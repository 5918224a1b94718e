#include "widgets/displays/SimpleWindow.h"

#include "graphics/Window.h"
#include "widgets/gui/WidgetSignals.h"

#include <algorithm>

namespace OV::CFW::Widgets {

SimpleWindow::SimpleWindow(GUI::Widget& parent, const Rect& rect, Graphics::Image& image, const Rect& middle, const Rect& dragArea)
    : StaticResizableImage(parent, rect, image, middle), dragArea(dragArea)
{
    GUI::WidgetSignals& events = *getSignals();
    keepConnection(events.mouseDown.connect([this](Widget*, const Point& p, int button, int) {
        raise();
        if (button == Graphics::MouseButton::Left && this->dragArea.contains(p.x, p.y)) {
            grip = p;
            grabMouse();
        }
    }));
    keepConnection(events.mouseMoved.connect([this](Widget*, const Point& p, int) {
        if (hasMouse())
            drag(p);
    }));
    keepConnection(events.mouseUp.connect([this](Widget*, const Point&, int button, int) {
        if (button == Graphics::MouseButton::Left)
            releaseMouse();
    }));
}

// The grip stays under the pointer, as far as the parent allows: a window larger than its
// parent keeps its top-left corner inside.
void SimpleWindow::drag(const Point& point)
{
    const Widget* const parent = getParent();
    if (!parent)
        return;
    const Point size = getSize();
    const Point room{parent->getSize().x - size.x, parent->getSize().y - size.y};
    const long long x = static_cast<long long>(getPosition().x) + point.x - grip.x;
    const long long y = static_cast<long long>(getPosition().y) + point.y - grip.y;
    setPosition({static_cast<int>(std::clamp<long long>(x, 0, std::max(0, room.x))),
                 static_cast<int>(std::clamp<long long>(y, 0, std::max(0, room.y)))});
}

}  // namespace OV::CFW::Widgets
