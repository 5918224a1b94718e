#pragma once

#include "tests/widgets/layout/Scene.h"

#include "graphics/Font.h"
#include "graphics/Image.h"
#include "widgets/lists/ItemList.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace OV::Testing {

// Every character 6 pixels wide, lines 10 high; it draws nothing.
class FixedFont : public CFW::Graphics::Font {
public:
    int getHeight() const override { return 10; }
    int getBaseline() const override { return 8; }
    CFW::BasicPoint<int> getCharSize(unsigned char) const override { return {6, 10}; }
    CFW::BasicRect<int> layout(const std::string& text, int start, int count, const CFW::BasicRect<int>& rect, int alignment) const override
    {
        return placeMeasured(text, start, count, rect, alignment);
    }
    CFW::BasicRect<int> measure(const std::string&, int start, int count, const CFW::BasicPoint<int>& point) const override
    {
        return {point.x + 6 * start, point.y, 6 * count, 10};
    }
    bool isBitmap() const override { return false; }
    bool isOutline() const override { return false; }
};

// A scene with pictures made in memory and input delivered by the window.
struct Bench : Scene {
    CFW::Graphics::Image& plain(const CFW::BasicPoint<int>& size, CFW::Graphics::Color color)
    {
        std::vector<std::uint8_t> rgb;
        for (int i = 0; i < size.x * size.y; ++i)
            rgb.insert(rgb.end(), {std::uint8_t(color >> 16), std::uint8_t(color >> 8), std::uint8_t(color)});
        pictures.emplace_back(device.createImageFromPixels(rgb.data(), size.x * 3, size, CFW::Graphics::Device::RGB));
        return *pictures.back();
    }
    void click(const CFW::BasicPoint<int>& point, int modifiers = 0)
    {
        window.mouseDown(point, 1, modifiers);
        window.mouseUp(point, 1, 0);
    }
    void key(int code, int modifiers = 0) { window.keyDown(code, 0, modifiers); }

    FixedFont font;
    std::vector<std::unique_ptr<CFW::Graphics::Image>> pictures;
};

// Text in `font` with paddings 4 left, 2 top, 4 right, 3 bottom: rows of 15 and a separator of
// 1, so a pitch of 16.
inline CFW::Widgets::ListLook TextLook(CFW::Graphics::Font& font)
{
    CFW::Widgets::ListLook look;
    for (CFW::Widgets::CellStyle& cell : look.styles.front().states) {
        cell.font = &font;
        cell.textPadding = {4, 2, 4, 3};
    }
    look.separator = 1;
    return look;
}

// The rows' first texts, joined by spaces.
inline std::string RowTexts(const CFW::Widgets::ItemList& list)
{
    std::string texts;
    for (int row = 0; row < list.getRowCount(); ++row)
        texts += (row ? " " : "") + list.getRowItem(row).getText();
    return texts;
}

// The selected items' first texts, joined by spaces.
inline std::string SelectedTexts(const CFW::Widgets::ItemList& list)
{
    std::string texts;
    for (const CFW::Widgets::ListItem* item : list.getSelectedItems())
        texts += (texts.empty() ? "" : " ") + item->getText();
    return texts;
}

}  // namespace OV::Testing
