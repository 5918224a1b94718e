#pragma once

#include "graphics/Font.h"

namespace OV::CFW::Graphics {

class Image;

// A bitmap font: glyphs are rects of one image strip, a coverage mask drawn tinted.
class FontEPI : public Font {
public:
    bool isBitmap() const override { return true; }
    bool isOutline() const override { return false; }
    // The strip the glyphs are cut from.
    virtual Image& getImage() const = 0;
    virtual const BasicRect<int>& getGlyph(unsigned char c) const = 0;
};

}  // namespace OV::CFW::Graphics
