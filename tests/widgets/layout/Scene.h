#pragma once

#include "graphics/DeviceSW.h"
#include "graphics/WindowOffscreen.h"
#include "graphics/res/ResourceSet.h"
#include "tests/support/ScratchFolder.h"
#include "widgets/gui/Root.h"
#include "widgets/layout/LayoutManager.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace OV::Testing {

// A folder of resources written by the test, a root on an off-screen window, and layouts built
// under the root from XML text.
class Scene {
public:
    explicit Scene(const CFW::BasicPoint<int>& size = {128, 128});

    void file(const std::string& name, const std::string& text) const { folder.Write(name, text); }
    // A 24-bit picture, or 32-bit with `alpha`.
    void image(const std::string& name, int width, int height, const std::vector<std::uint32_t>& pixels, bool alpha = false) const;
    // The widgets of `xml`, the elements under a root "Layout", built under the root.
    std::unique_ptr<CFW::Widgets::LayoutManager> build(const std::string& xml,
                                                      CFW::Widgets::ElementLookup lookUp = CFW::Widgets::FindElement);
    // The widget of `name` as a T; throws, failing the test, when there is none.
    template <typename T>
    static T& widget(const CFW::Widgets::LayoutManager& layout, const std::string& name);
    // The size of image `name` as the image manager has it: still loaded, or read from disk now.
    CFW::BasicPoint<int> loadedSize(const std::string& name);

    ScratchFolder folder;
    CFW::Graphics::DeviceSW device;
    CFW::Res::ResourceSet resources;
    CFW::GUI::Root root;
    CFW::Graphics::WindowOffscreen window; // goes first: it tells the manager it is closing

private:
    int layouts = 0;
};

// x, y, width, height.
std::vector<int> RectOf(const CFW::GUI::Widget& widget);

template <typename T>
T& Scene::widget(const CFW::Widgets::LayoutManager& layout, const std::string& name)
{
    T* found = nullptr;
    layout.getWidget(name, found);
    return *found;
}

}  // namespace OV::Testing
