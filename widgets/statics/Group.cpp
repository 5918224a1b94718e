#include "widgets/statics/Group.h"

#include "widgets/layout/ElementContext.h"

namespace OV::CFW::Widgets {

GUI::Widget* Group::build(ElementContext& context)
{
    return new Group(context.parent(), context.rect());
}

GUI::Widget* Blender::build(ElementContext& context)
{
    return new Blender(context.parent(), context.rect());
}

}  // namespace OV::CFW::Widgets
