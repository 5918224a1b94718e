#include "widgets/statics/StaticImage.h"

#include "graphics/Image.h"
#include "widgets/gui/WidgetSignals.h"
#include "widgets/layout/ElementContext.h"
#include "widgets/statics/Tiling.h"

namespace OV::CFW::Widgets {

StaticImage::StaticImage(GUI::Widget& parent, const Rect& rect, Graphics::Image& image, bool tiled)
    : Widget(parent, rect), image(image), tiled(tiled)
{
    keepConnection(getSignals()->paint.connect([this](Widget*, Graphics::Painter* painter, const Rect& clip) { paint(*painter, clip); }));
}

void StaticImage::paint(Graphics::Painter& painter, const Rect& clip)
{
    const Point size = image.size();
    const Rect area = tiled ? Rect{0, 0, getRect().width, getRect().height} : Rect{0, 0, size.x, size.y};
    DrawTiled(painter, image, {0, 0, size.x, size.y}, area, clip, getColor());
}

GUI::Widget* StaticImage::build(ElementContext& context)
{
    Graphics::Image* const image = context.image(context.text("Image"));
    if (image == nullptr)
        return nullptr;
    return new StaticImage(context.parent(), context.rect(image->size()), *image, context.integer("Tiled") != 0);
}

}  // namespace OV::CFW::Widgets
