#include "widgets/statics/StaticResizableImage.h"

#include "graphics/Image.h"
#include "widgets/gui/WidgetSignals.h"
#include "widgets/layout/ElementContext.h"
#include "widgets/statics/Tiling.h"

#include <algorithm>

namespace OV::CFW::Widgets {

StaticResizableImage::StaticResizableImage(GUI::Widget& parent, const Rect& rect, Graphics::Image& image, const Rect& middle)
    : Widget(parent, rect), image(image)
{
    const Point size = image.size();
    const Rect whole{0, 0, size.x, size.y};
    const Rect inside = Intersect(middle, whole);
    this->middle = IsEmpty(inside) ? whole : inside;
    keepConnection(getSignals()->paint.connect([this](Widget*, Graphics::Painter* painter, const Rect& clip) { paint(*painter, clip); }));
}

void StaticResizableImage::paint(Graphics::Painter& painter, const Rect& clip)
{
    const Point size = image.size();
    const Point area{std::max(getSize().x, 0), std::max(getSize().y, 0)};
    // Column and row edges in the picture, then in the widget: the corners keep their size.
    const int sourceX[4] = {0, middle.x, middle.x + middle.width, size.x};
    const int sourceY[4] = {0, middle.y, middle.y + middle.height, size.y};
    const int left = std::min(middle.x, area.x);
    const int top = std::min(middle.y, area.y);
    const int right = std::min(size.x - sourceX[2], area.x - left);
    const int bottom = std::min(size.y - sourceY[2], area.y - top);
    const int x[4] = {0, left, area.x - right, area.x};
    const int y[4] = {0, top, area.y - bottom, area.y};
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 3; ++column) {
            const Rect source{sourceX[column], sourceY[row], sourceX[column + 1] - sourceX[column], sourceY[row + 1] - sourceY[row]};
            const Rect target{x[column], y[row], x[column + 1] - x[column], y[row + 1] - y[row]};
            DrawTiled(painter, image, source, target, clip, getColor());
        }
    }
}

GUI::Widget* StaticResizableImage::build(ElementContext& context)
{
    Graphics::Image* const image = context.image(context.text("Image"));
    if (image == nullptr)
        return nullptr;
    const Rect middle{context.integer("ResRectX"), context.integer("ResRectY"), context.integer("ResRectW"), context.integer("ResRectH")};
    return new StaticResizableImage(context.parent(), context.rect(image->size()), *image, middle);
}

}  // namespace OV::CFW::Widgets
