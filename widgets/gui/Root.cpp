#include "widgets/gui/Root.h"

#include "widgets/gui/WidgetManager.h"

namespace OV::CFW::GUI {

Root::Root(const Point& size) : Widget(*new WidgetManager, {0, 0, size.x, size.y})
{
    getManager()->setRoot(*this);
}

Root::~Root()
{
    const std::vector<Widget*> children = getChildren();
    for (Widget* child : children)
        child->destroy();
    WidgetManager* const manager = getManager();
    detachManager();
    // Deletes the children, which are pending now.
    delete manager;
}

}  // namespace OV::CFW::GUI
