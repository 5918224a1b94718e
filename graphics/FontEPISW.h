#pragma once

#include "graphics/FontEPI.h"

#include <array>

namespace OV::CFW::Graphics {

// A bitmap font cut from a strip: white-on-black glyphs for the codes 0 to 254 in order, and
// below them, at the strip's height - 2, a marker row whose opaque black pixels part the
// glyphs. Building it rewrites the strip as a coverage mask (alpha from red, colour white).
class FontEPISW : public FontEPI {
public:
    // The strip is not owned and must outlive the font.
    explicit FontEPISW(Image& strip);

    int getHeight() const override { return height; }
    int getBaseline() const override { return height; }
    BasicPoint<int> getCharSize(unsigned char c) const override;
    BasicRect<int> layout(const std::string& text, int start, int count, const BasicRect<int>& rect, int alignment) const override;
    BasicRect<int> measure(const std::string& text, int start, int count, const BasicPoint<int>& point) const override;
    Image& getImage() const override { return image; }
    const BasicRect<int>& getGlyph(unsigned char c) const override { return glyphs[c]; }

private:
    Image& image;
    std::array<BasicRect<int>, 256> glyphs{};
    int height = 0;
};

}  // namespace OV::CFW::Graphics
