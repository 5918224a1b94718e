#include "widgets/statics/DragIcon.h"

#include "graphics/Image.h"
#include "graphics/Window.h"
#include "widgets/gui/WidgetSignals.h"
#include "widgets/layout/ElementContext.h"
#include "widgets/statics/Tiling.h"

#include <algorithm>
#include <string>

namespace OV::CFW::Widgets {

DragIcon::DragIcon(GUI::Widget& parent, const Rect& rect, Graphics::Image& image, const Rect& activeArea, const Rect& clipArea)
    : Widget(parent, rect), image(image), activeArea(activeArea), clipArea(clipArea)
{
    GUI::WidgetSignals& signals = *getSignals();
    keepConnection(signals.paint.connect([this](Widget*, Graphics::Painter* painter, const Rect& clip) { paint(*painter, clip); }));
    keepConnection(signals.mouseDown.connect([this](Widget*, const Point& point, int button, int) { press(point, button); }));
    keepConnection(signals.mouseMoved.connect([this](Widget*, const Point& point, int) { drag(point); }));
    keepConnection(signals.mouseUp.connect([this](Widget*, const Point&, int button, int) {
        if (button == Graphics::MouseButton::Left)
            releaseMouse();
    }));
}

void DragIcon::paint(Graphics::Painter& painter, const Rect& clip)
{
    const Point size = image.size();
    DrawTiled(painter, image, {0, 0, size.x, size.y}, {0, 0, size.x, size.y}, clip, getColor());
}

void DragIcon::press(const Point& point, int button)
{
    const Rect active = IsEmpty(activeArea) ? Rect{0, 0, getRect().width, getRect().height} : activeArea;
    if (button != Graphics::MouseButton::Left || !active.contains(point.x, point.y))
        return;
    grip = point;
    grabMouse();
}

void DragIcon::drag(const Point& point)
{
    if (!hasMouse())
        return;
    Rect limits = clipArea;
    if (IsEmpty(limits) && getParent() != nullptr)
        limits = {0, 0, getParent()->getRect().width, getParent()->getRect().height};
    const Rect& rect = getRect();
    // Inside the limits; where they are narrower than the picture, at their top-left corner.
    const auto place = [](int wanted, int low, int room) { return std::max(low, std::min(wanted, low + room)); };
    const Point position{place(rect.x + point.x - grip.x, limits.x, limits.width - rect.width),
                         place(rect.y + point.y - grip.y, limits.y, limits.height - rect.height)};
    if (position.x == rect.x && position.y == rect.y)
        return;
    setPosition(position);
    moved(this, position);
}

GUI::Widget* DragIcon::build(ElementContext& context)
{
    Graphics::Image* const image = context.image(context.text("Image"));
    if (image == nullptr)
        return nullptr;
    const auto area = [&context](const std::string& stem) {
        return LimitedRect({context.integer((stem + "X").c_str()), context.integer((stem + "Y").c_str()),
                            context.integer((stem + "W").c_str()), context.integer((stem + "H").c_str())});
    };
    return new DragIcon(context.parent(), context.rect(image->size()), *image, area("ActiveArea"), area("ClipArea"));
}

}  // namespace OV::CFW::Widgets
