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

protected:
    // layout() by measure(): the width of the whole text places it, centred in integer halves.
    BasicRect<int> placeMeasured(const std::string& text, int start, int count, const BasicRect<int>& rect, int alignment) const
    {
        const int width = measure(text, 0, static_cast<int>(text.size()), {rect.x, rect.y}).width;
        int x = rect.x;
        if (alignment == AlignCenter)
            x = rect.x + rect.width / 2 - width / 2;
        else if (alignment == AlignRight)
            x = rect.x + rect.width - width;
        return measure(text, start, count, {x, rect.y});
    }
};

}  // namespace OV::CFW::Graphics
