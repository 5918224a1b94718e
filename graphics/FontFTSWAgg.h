#pragma once

// The AGG side of the outline font, for the font itself and the painter that draws it; nothing
// outside the graphics code includes it.
#include "graphics/FontFTSW.h"

// AGG's headers are not clean under our warnings; they are not ours to change.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wsign-compare"
#pragma GCC diagnostic ignored "-Wimplicit-fallthrough"
#include <agg_font_cache_manager.h>
#include <agg_font_freetype.h>
#pragma GCC diagnostic pop

namespace OV::CFW::Graphics {

struct FontFTSW::Outlines {
    using Engine = agg::font_engine_freetype_int32;
    static constexpr double unitsPerPixel = 100.0; // horizontally

    Engine engine{32};                              // faces
    agg::font_cache_manager<Engine> cache{engine, 32}; // font sizes and settings

    // The glyph of `c`, null when the face has none; `kerning` gets its kerning after the glyph
    // before it, in hundredths of a pixel. A text starts with cache.reset_last_glyph().
    const agg::glyph_cache* next(char c, double& kerning)
    {
        const agg::glyph_cache* glyph = cache.glyph(static_cast<unsigned char>(c));
        if (glyph == nullptr || glyph->glyph_index == 0) // index 0 is the face's "missing" box
            return nullptr;
        double y = 0.0;
        kerning = 0.0;
        cache.add_kerning(&kerning, &y);
        return glyph;
    }
};

}  // namespace OV::CFW::Graphics
