#include "widgets/layout/DynamicBuilder.h"

#include "widgets/layout/Builder.h"
#include "widgets/layout/ElementContext.h"
#include "widgets/layout/LayoutManager.h"

namespace OV::CFW::Widgets {

DynamicBuilder::DynamicBuilder(GUI::Widget& parent, const Point& position, Res::ResourceSet& resources,
                               std::vector<std::string> layoutFiles)
    : Widget(parent, {position.x, position.y, 0, 0}), layoutFiles(std::move(layoutFiles)), resources(resources)
{
}

DynamicBuilder::~DynamicBuilder() = default;

void DynamicBuilder::setLayoutIndex(int index)
{
    if (index == currentIndex)
        return;
    currentIndex = index;
    layout.reset();
    if (index >= 0 && static_cast<std::size_t>(index) < layoutFiles.size())
        layout = EmbedLayout(*this, resources, layoutFiles[static_cast<std::size_t>(index)]);
}

std::string DynamicBuilder::getLayoutFile() const
{
    const bool inRange = currentIndex >= 0 && static_cast<std::size_t>(currentIndex) < layoutFiles.size();
    return inRange ? layoutFiles[static_cast<std::size_t>(currentIndex)] : std::string();
}

GUI::Widget* DynamicBuilder::build(ElementContext& context)
{
    Res::ResourceSet* const resources = context.resources();
    if (resources == nullptr)
        return nullptr;
    const Rect rect = context.rect();
    auto* const widget = new DynamicBuilder(context.parent(), {rect.x, rect.y}, *resources, context.series("Layout"));
    widget->setLayoutIndex(context.integer("DefaultState"));
    return widget;
}

}  // namespace OV::CFW::Widgets
