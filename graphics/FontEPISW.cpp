#include "graphics/FontEPISW.h"

#include "graphics/Image.h"

#include <algorithm>

namespace OV::CFW::Graphics {

namespace {

constexpr std::uint32_t separator = 0xff000000u; // opaque black

}  // namespace

FontEPISW::FontEPISW(Image& strip) : image(strip)
{
    const std::pair<std::uint32_t*, int> bits = image.lock();
    const int width = image.size().x;
    const int rows = image.size().y;
    height = std::max(rows - 5, 0);
    const auto row = [&bits](int y) {
        return reinterpret_cast<std::uint32_t*>(reinterpret_cast<std::uint8_t*>(bits.first) + static_cast<std::ptrdiff_t>(y) * bits.second);
    };
    if (rows >= 2) {
        const std::uint32_t* marker = row(rows - 2);
        int x = 0;
        for (int code = 0; code < 255; ++code) {
            while (x < width && marker[x] == separator)
                ++x;
            const int begin = x;
            while (x < width && marker[x] != separator)
                ++x;
            glyphs[static_cast<std::size_t>(code)] = {begin, 0, x - begin, height};
        }
    }
    // The strip becomes a coverage mask: white, with the art's red as alpha.
    for (int y = 0; y < rows; ++y) {
        std::uint32_t* line = row(y);
        for (int x = 0; x < width; ++x)
            line[x] = ((line[x] >> 16) & 0xffu) << 24 | 0x00ffffffu;
    }
    image.unlock();
}

BasicPoint<int> FontEPISW::getCharSize(unsigned char c) const
{
    return {glyphs[c].width, glyphs[c].height};
}

BasicRect<int> FontEPISW::measure(const std::string& text, int start, int count, const BasicPoint<int>& point) const
{
    const int length = static_cast<int>(text.size());
    start = std::clamp(start, 0, length);
    const int end = start + std::clamp(count, 0, length - start);
    BasicRect<int> bounds{point.x, point.y, 0, height};
    for (int i = 0; i < end; ++i) {
        const BasicRect<int>& glyph = glyphs[static_cast<unsigned char>(text[static_cast<std::size_t>(i)])];
        (i < start ? bounds.x : bounds.width) += glyph.width;
        bounds.height = std::max(bounds.height, glyph.height);
    }
    return bounds;
}

BasicRect<int> FontEPISW::layout(const std::string& text, int start, int count, const BasicRect<int>& rect, int alignment) const
{
    return placeMeasured(text, start, count, rect, alignment);
}

}  // namespace OV::CFW::Graphics
