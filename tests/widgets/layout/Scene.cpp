#include "Scene.h"

#include "tests/support/Tga.h"

#include "widgets/gui/WidgetManager.h"

#include <tinyxml.h>

#include <gtest/gtest.h>

namespace OV::Testing {

using namespace CFW;

Scene::Scene(const BasicPoint<int>& size) : resources(device), root(size), window(device, *root.getManager(), size)
{
    resources.getProvider().addPath(folder.Path());
}

void Scene::image(const std::string& name, int width, int height, const std::vector<std::uint32_t>& pixels, bool alpha) const
{
    file(name, Tga(width, height, pixels, alpha));
}

std::unique_ptr<Widgets::LayoutManager> Scene::build(const std::string& xml, Widgets::ElementLookup lookUp)
{
    const std::string name = "layout" + std::to_string(++layouts) + ".xml";
    file(name, "<Layout>" + xml + "</Layout>");
    TiXmlDocument* const document = resources.getDocuments().acquire(name);
    EXPECT_NE(nullptr, document);
    std::unique_ptr<Widgets::LayoutManager> layout;
    try {
        layout = std::make_unique<Widgets::LayoutManager>(*document, resources, root, lookUp);
    } catch (...) {
        resources.getDocuments().release(document);
        throw;
    }
    resources.getDocuments().release(document);
    return layout;
}

BasicPoint<int> Scene::loadedSize(const std::string& name)
{
    Graphics::Image* const image = resources.getImages().acquire(name);
    const BasicPoint<int> size = image->size();
    resources.getImages().release(image);
    return size;
}

std::vector<int> RectOf(const GUI::Widget& widget)
{
    const BasicRect<int>& r = widget.getRect();
    return {r.x, r.y, r.width, r.height};
}

}  // namespace OV::Testing
