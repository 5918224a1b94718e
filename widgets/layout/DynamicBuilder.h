#pragma once

#include "widgets/gui/Widget.h"

#include <memory>
#include <string>
#include <vector>

namespace OV::CFW::Res {
class ResourceSet;
}

namespace OV::CFW::Widgets {

class ElementContext;
class LayoutManager;

// A widget that shows one of several layout documents, its states, and changes between them.
// Each state's widgets and resources go when another is shown.
class DynamicBuilder : public GUI::Widget {
public:
    // Empty until a state is chosen.
    DynamicBuilder(GUI::Widget& parent, const Point& position, Res::ResourceSet& resources, std::vector<std::string> layoutFiles);
    ~DynamicBuilder() override;

    // Nothing for the current index. Otherwise the current layout goes first, its widgets
    // destroyed and its resources released, then state `index` is built and gives the widget its
    // size. An index without a state, or a document that cannot be had, leaves it empty.
    void setLayoutIndex(int index);
    int getLayoutIndex() const { return currentIndex; }
    // Null while empty.
    LayoutManager* getLayout() const { return layout.get(); }
    // The current state's document; empty without one.
    std::string getLayoutFile() const;

    // "Layout0", "Layout1", ..., "PositionX", "PositionY", and "DefaultState", the index shown
    // first.
    static GUI::Widget* build(ElementContext& context);

private:
    std::vector<std::string> layoutFiles;
    Res::ResourceSet& resources;
    int currentIndex = -1;
    std::unique_ptr<LayoutManager> layout;
};

}  // namespace OV::CFW::Widgets
