#pragma once

#include "graphics/DeviceSW.h"
#include "graphics/Image.h"
#include "graphics/WindowOffscreen.h"
#include "widgets/gui/Root.h"
#include "widgets/gui/WidgetManager.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace OV::Testing {

// A root on an off-screen window, with the pictures that controls are drawn from.
struct Screen {
    Screen() : root({128, 128}), window(device, *root.getManager(), {128, 128}) {}

    CFW::GUI::Widget* active() { return root.getManager()->getActiveWidget(); }
    void click(const CFW::BasicPoint<int>& point, int modifiers = 0)
    {
        window.mouseDown(point, 1, modifiers);
        window.mouseUp(point, 1, 0);
    }
    // Opaque, so copied as it is when drawn.
    CFW::Graphics::Image& picture(const CFW::BasicPoint<int>& size, const std::function<CFW::Graphics::Color(int, int)>& at)
    {
        std::vector<std::uint8_t> rgb;
        for (int y = 0; y < size.y; ++y) {
            for (int x = 0; x < size.x; ++x)
                rgb.insert(rgb.end(), {std::uint8_t(at(x, y) >> 16), std::uint8_t(at(x, y) >> 8), std::uint8_t(at(x, y))});
        }
        pictures.emplace_back(device.createImageFromPixels(rgb.data(), size.x * 3, size, CFW::Graphics::Device::RGB));
        return *pictures.back();
    }
    CFW::Graphics::Image& plain(const CFW::BasicPoint<int>& size, CFW::Graphics::Color color)
    {
        return picture(size, [color](int, int) { return color; });
    }

    CFW::Graphics::DeviceSW device;
    std::vector<std::unique_ptr<CFW::Graphics::Image>> pictures; // outlive the widgets
    CFW::GUI::Root root;
    CFW::Graphics::WindowOffscreen window; // goes first: it tells the manager it is closing
};

inline void ExpectFloats(const std::vector<float>& expected, const std::vector<float>& actual, const std::string& what)
{
    ASSERT_EQ(expected.size(), actual.size()) << what;
    for (std::size_t i = 0; i < expected.size(); ++i)
        EXPECT_FLOAT_EQ(expected[i], actual[i]) << what << ", value " << i;
}

}  // namespace OV::Testing
