#pragma once

#include "graphics/DeviceSW.h"
#include "graphics/Image.h"
#include "graphics/WindowOffscreen.h"
#include "graphics/res/ResourceSet.h"
#include "widgets/gui/Root.h"
#include "widgets/gui/WidgetManager.h"
#include "widgets/layout/ElementContext.h"

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <tinyxml.h>

namespace OV::Testing {

// A root on an off-screen window, and layout elements built under it from XML text, with
// pictures made by the test and the product's outline fonts.
class Bench : public CFW::Widgets::ElementContext {
public:
    explicit Bench(const CFW::BasicPoint<int>& size = {128, 128});

    // The widget of one element, or null when its builder makes none (or it is no T).
    template <typename T = CFW::GUI::Widget>
    T* build(const std::string& xml)
    {
        return dynamic_cast<T*>(buildWidget(xml));
    }
    // An opaque picture, copied as it is when drawn, known to the elements by `name`.
    CFW::Graphics::Image& picture(const std::string& name, const CFW::BasicPoint<int>& size,
                                  const std::function<CFW::Graphics::Color(int, int)>& at);
    CFW::Graphics::Image& plain(const std::string& name, const CFW::BasicPoint<int>& size, CFW::Graphics::Color color)
    {
        return picture(name, size, [color](int, int) { return color; });
    }

    void move(const CFW::BasicPoint<int>& point, int modifiers = 0) { window.mouseMoved(point, modifiers); }
    void click(const CFW::BasicPoint<int>& point)
    {
        window.mouseDown(point, 1, 0);
        window.mouseUp(point, 1, 0);
    }
    void key(int code) { window.keyDown(code, 0, 0); }
    // After painting what waits.
    CFW::Graphics::Color pixel(int x, int y)
    {
        window.redraw();
        return window.pixel(x, y);
    }

    const TiXmlElement& element() const override { return *document.RootElement(); }
    CFW::GUI::Widget& parent() const override { return root; }
    CFW::Graphics::Image* image(const std::string& name) override;
    CFW::Graphics::Font* font(const std::string& name) override;

    CFW::Graphics::DeviceSW device;
    CFW::Res::ResourceSet resources; // the fonts, which it keeps until it goes
    std::map<std::string, std::unique_ptr<CFW::Graphics::Image>> pictures;
    mutable CFW::GUI::Root root;
    CFW::Graphics::WindowOffscreen window; // goes first: it tells the manager it is closing

private:
    CFW::GUI::Widget* buildWidget(const std::string& xml);

    TiXmlDocument document;
};

// Whether the colours differ by at most 2 in each component: the painter's blends may take one
// off a component even of an opaque colour.
inline ::testing::AssertionResult SameColor(CFW::Graphics::Color expected, CFW::Graphics::Color actual)
{
    for (int shift = 0; shift < 32; shift += 8) {
        const int difference = static_cast<int>((expected >> shift) & 0xFF) - static_cast<int>((actual >> shift) & 0xFF);
        if (difference > 2 || difference < -2)
            return ::testing::AssertionFailure() << std::hex << actual << " is not " << expected;
    }
    return ::testing::AssertionSuccess() << std::hex << actual << " is near " << expected;
}

}  // namespace OV::Testing
