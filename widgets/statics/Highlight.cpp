#include "widgets/statics/Highlight.h"

#include "graphics/Painter.h"
#include "widgets/gui/WidgetSignals.h"
#include "widgets/layout/ElementContext.h"

namespace OV::CFW::Widgets {

Highlight::Highlight(GUI::Widget& parent, const Rect& rect) : Widget(parent, rect)
{
    keepConnection(getSignals()->paint.connect(
        [this](Widget*, Graphics::Painter* painter, const Rect& clip) { painter->fillRect(getColor(), clip); }));
}

GUI::Widget* Highlight::build(ElementContext& context)
{
    return new Highlight(context.parent(), context.rect());
}

}  // namespace OV::CFW::Widgets
