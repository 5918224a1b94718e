#include "widgets/statics/StaticResizableImage.h"

#include "graphics/Image.h"
#include "widgets/gui/WidgetSignals.h"
#include "widgets/layout/ElementContext.h"
#include "widgets/statics/Tiling.h"

namespace OV::CFW::Widgets {

StaticResizableImage::StaticResizableImage(GUI::Widget& parent, const Rect& rect, Graphics::Image& image, const Rect& middle)
    : Widget(parent, rect), image(image), middle(middle)
{
    keepConnection(getSignals()->paint.connect([this](Widget*, Graphics::Painter* painter, const Rect& clip) {
        DrawNineSliced(*painter, this->image, this->middle, {0, 0, getSize().x, getSize().y}, clip, getColor());
    }));
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
