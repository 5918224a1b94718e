#include "graphics/FontFTSW.h"

#include "graphics/FontFTSWAgg.h"

#include <algorithm>
#include <climits>
#include <cmath>

namespace OV::CFW::Graphics {

namespace {

constexpr double unitWidth = 0.01; // one engine unit in pixels

// Towards zero, held within int; NaN (a face of height 0) gives 0.
int Truncate(double value)
{
    if (std::isnan(value))
        return 0;
    return static_cast<int>(std::clamp(value, static_cast<double>(INT_MIN), static_cast<double>(INT_MAX)));
}

int ClampHeight(int height)
{
    return std::clamp(height, 1, FontFTSW::maxHeight);
}

}  // namespace

FontFTSW::FontFTSW(const std::uint8_t* data, std::size_t dataSize, int height, int addInterline, const std::string& faceName,
                   int faceIndex)
    : lineHeight(ClampHeight(height) + std::clamp(addInterline, -maxHeight, maxHeight)), outlines(std::make_unique<Outlines>())
{
    // With no data the engine would open a file named after the face instead; face indices
    // above 65535 select named instances, which are not faces of their own.
    loaded = data != nullptr && dataSize > 0 && dataSize <= static_cast<std::size_t>(LONG_MAX) && faceIndex >= 0 &&
             faceIndex <= 0xffff &&
             outlines->engine.load_font(faceName.c_str(), static_cast<unsigned>(faceIndex), agg::glyph_ren_outline,
                                        reinterpret_cast<const char*>(data), static_cast<long>(dataSize));
    setHeight(height);
    outlines->engine.hinting(true);
    outlines->engine.flip_y(true);
}

FontFTSW::~FontFTSW() = default;

int FontFTSW::getBaseline() const
{
    // The face's ascender scaled to the height, one pixel lower.
    return loaded ? Truncate(outlines->engine.ascender() + 1.0) : 0;
}

BasicPoint<int> FontFTSW::getCharSize(unsigned char c) const
{
    double kerning = 0.0;
    const agg::glyph_cache* glyph = loaded ? outlines->next(static_cast<char>(c), kerning) : nullptr;
    return {glyph != nullptr ? Truncate(glyph->advance_x * unitWidth + 0.5) : 0, lineHeight};
}

BasicRect<int> FontFTSW::measure(const std::string& text, int start, int count, const BasicPoint<int>& point) const
{
    const int length = static_cast<int>(text.size());
    start = std::clamp(start, 0, length);
    const int end = start + std::clamp(count, 0, length - start);
    double before = 0.0; // engine units
    double range = 0.0;
    if (loaded) {
        outlines->cache.reset_last_glyph();
        for (int i = 0; i < end; ++i) {
            double kerning = 0.0;
            if (const agg::glyph_cache* glyph = outlines->next(text[static_cast<std::size_t>(i)], kerning))
                (i < start ? before : range) += glyph->advance_x + kerning + tracking * Outlines::unitsPerPixel;
        }
    }
    return {point.x + Truncate(before * unitWidth + 0.5), point.y, Truncate(range * unitWidth + 0.5), lineHeight};
}

BasicRect<int> FontFTSW::layout(const std::string& text, int start, int count, const BasicRect<int>& rect, int alignment) const
{
    return placeMeasured(text, start, count, rect, alignment);
}

void FontFTSW::setHeight(int height)
{
    height = ClampHeight(height);
    outlines->engine.height(height);
    outlines->engine.width(height * Outlines::unitsPerPixel);
}

void FontFTSW::setResolution(int dpi)
{
    outlines->engine.resolution(static_cast<unsigned>(std::clamp(dpi, 0, maxResolution)));
}

int FontFTSW::getResolution() const
{
    return static_cast<int>(outlines->engine.resolution());
}

void FontFTSW::setHinting(bool hinting)
{
    outlines->engine.hinting(hinting);
}

bool FontFTSW::getHinting() const
{
    return outlines->engine.hinting();
}

void FontFTSW::setFlipY(bool flipY)
{
    outlines->engine.flip_y(flipY);
}

bool FontFTSW::getFlipY() const
{
    return outlines->engine.flip_y();
}

void FontFTSW::setTracking(double value)
{
    tracking = std::isfinite(value) ? std::clamp(value, -maxTracking, maxTracking) : 0.0;
}

}  // namespace OV::CFW::Graphics
