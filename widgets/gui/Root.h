#pragma once

#include "widgets/gui/Widget.h"

namespace OV::CFW::GUI {

// The top of a widget tree, the size of its window. It owns the tree's WidgetManager, which
// the window gets as its callback; the window must go before the root.
class Root : public Widget {
public:
    explicit Root(const Point& size);
    ~Root() override;

    // The root is deleted by its owner, never by the manager.
    void destroy() override {}
};

}  // namespace OV::CFW::GUI
