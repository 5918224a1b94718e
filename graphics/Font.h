#pragma once

#include "graphics/Geometry.h"

#include <string>

namespace OV::CFW::Graphics {

// A font of either kind: a bitmap strip or outlines. Characters are single bytes; codes above
// 127 count by their unsigned value. Window thread only.
class Font {
public:
    enum Alignment { AlignLeft = 0, AlignCenter = 1, AlignRight = 2 };

    virtual ~Font() = default;
    // Line height in pixels.
    virtual int getHeight() const = 0;
    // Pixels from the top of the line to the baseline.
    virtual int getBaseline() const = 0;
    virtual BasicPoint<int> getCharSize(unsigned char c) const = 0;
    // The bounds of characters start..start + count of `text` placed in `rect` by `alignment`.
    virtual BasicRect<int> layout(const std::string& text, int start, int count, const BasicRect<int>& rect,
                                  int alignment) const = 0;
    // The bounds of characters start..start + count of `text` written from `point`.
    virtual BasicRect<int> measure(const std::string& text, int start, int count, const BasicPoint<int>& point) const = 0;
    virtual bool isBitmap() const = 0;
    virtual bool isOutline() const = 0;
};

}  // namespace OV::CFW::Graphics
