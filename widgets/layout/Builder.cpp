#include "widgets/layout/Builder.h"

#include "graphics/res/ResourceSet.h"
#include "widgets/layout/AcquireResource.h"
#include "widgets/layout/DynamicBuilder.h"
#include "widgets/layout/ElementContext.h"
#include "widgets/layout/LayoutManager.h"

#include <cstdlib>

#include <tinyxml.h>

namespace OV::CFW::Widgets {

namespace {

bool Shows(const GUI::Widget& widget, const std::string& file)
{
    if (const auto* builder = dynamic_cast<const Builder*>(&widget))
        return builder->getLayoutFile() == file;
    if (const auto* dynamicBuilder = dynamic_cast<const DynamicBuilder*>(&widget))
        return dynamicBuilder->getLayoutFile() == file;
    return false;
}

int Whole(const TiXmlElement* root, const char* name)
{
    const char* const value = root != nullptr ? root->Attribute(name) : nullptr;
    return value != nullptr ? std::atoi(value) : 0;
}

}  // namespace

std::unique_ptr<LayoutManager> EmbedLayout(GUI::Widget& host, Res::ResourceSet& resources, const std::string& file)
{
    for (const GUI::Widget* above = host.getParent(); above != nullptr; above = above->getParent()) {
        if (Shows(*above, file))
            return nullptr;
    }
    Res::Manager<TiXmlDocument>& documents = resources.getDocuments();
    TiXmlDocument* const document = AcquireResource(documents, file);
    if (document == nullptr)
        return nullptr;
    // The layout keeps nothing of the document, which goes back even when a style fails.
    struct Release {
        Res::Manager<TiXmlDocument>& documents;
        TiXmlDocument* document;
        ~Release() { documents.release(document); }
    } release{documents, document};
    const TiXmlElement* const root = document->RootElement();
    const BasicRect<int> size = LimitedRect({0, 0, Whole(root, "SizeW"), Whole(root, "SizeH")});
    host.setSize({size.width, size.height});
    return std::make_unique<LayoutManager>(*document, resources, host);
}

Builder::Builder(GUI::Widget& parent, const Point& position, Res::ResourceSet& resources, const std::string& file)
    : Widget(parent, {position.x, position.y, 0, 0}), file(file)
{
    layout = EmbedLayout(*this, resources, file);
}

Builder::~Builder() = default;

GUI::Widget* Builder::build(ElementContext& context)
{
    const std::string file = context.text("Layout");
    Res::ResourceSet* const resources = context.resources();
    if (file.empty() || resources == nullptr)
        return nullptr;
    const Rect rect = context.rect();
    return new Builder(context.parent(), {rect.x, rect.y}, *resources, file);
}

}  // namespace OV::CFW::Widgets
