#include "widgets/controls/Dragger.h"

#include "graphics/Image.h"
#include "graphics/Window.h"
#include "widgets/gui/WidgetManager.h"
#include "widgets/gui/WidgetSignals.h"
#include "widgets/statics/Tiling.h"

namespace OV::CFW::Widgets {

Dragger::Dragger(GUI::Widget& parent, const Rect& rect, Graphics::Image& image, bool tiled)
    : Widget(parent, rect), image(image), tiled(tiled)
{
    GUI::WidgetSignals& events = *getSignals();
    keepConnection(events.mouseDown.connect([this](Widget*, const Point& p, int button, int) {
        if (button != Graphics::MouseButton::Left)
            return;
        getManager()->setActiveWidget(this);
        dragStart = p;
        grabMouse();
    }));
    keepConnection(events.mouseMoved.connect([this](Widget*, const Point& p, int) {
        if (hasMouse())
            dragged(this, {p.x - dragStart.x, p.y - dragStart.y});
    }));
    keepConnection(events.mouseUp.connect([this](Widget*, const Point&, int button, int) {
        if (button == Graphics::MouseButton::Left)
            releaseMouse();
    }));
    keepConnection(events.paint.connect([this](Widget*, Graphics::Painter* painter, const Rect& clip) { draw(*painter, clip); }));
}

void Dragger::draw(Graphics::Painter& painter, const Rect& clip)
{
    const Point size = image.size();
    const Rect area = tiled ? Rect{0, 0, getRect().width, getRect().height} : Rect{0, 0, size.x, size.y};
    DrawTiled(painter, image, {0, 0, size.x, size.y}, area, clip, getColor());
}

}  // namespace OV::CFW::Widgets
