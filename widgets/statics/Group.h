#pragma once

#include "widgets/gui/Widget.h"

namespace OV::CFW::Widgets {

class ElementContext;

// A container: it draws nothing and holds its children together, to move or hide them at once.
class Group : public GUI::Widget {
public:
    Group(GUI::Widget& parent, const Rect& rect) : Widget(parent, rect) {}

    // The rect only.
    static GUI::Widget* build(ElementContext& context);
};

// A container whose colour is meant for its children. It stays a plain container: a parent
// paints before its children and the tree has no off-screen pass in which it could tint them,
// so each child keeps its own colour.
class Blender : public GUI::Widget {
public:
    Blender(GUI::Widget& parent, const Rect& rect) : Widget(parent, rect) {}

    // The rect only.
    static GUI::Widget* build(ElementContext& context);
};

}  // namespace OV::CFW::Widgets
