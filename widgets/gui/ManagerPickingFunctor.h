#pragma once

#include "widgets/gui/Widget.h"

namespace OV::CFW::GUI {

// Mouse events go to visible, enabled widgets only.
class ManagerPickingFunctor : public Widget::PickingFunctor {
public:
    bool operator()(Widget& widget) override { return widget.isVisible() && widget.isEnabled(); }
};

}  // namespace OV::CFW::GUI
