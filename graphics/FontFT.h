#pragma once

#include "graphics/Font.h"

namespace OV::CFW::Graphics {

// An outline font, drawn from a font file's glyph outlines. Its line height is fixed when it is
// made; the glyph height, resolution, hinting, flip and tracking can change afterwards.
class FontFT : public Font {
public:
    bool isBitmap() const override { return false; }
    bool isOutline() const override { return true; }

    // The glyphs' height; the line height stays as it was made.
    virtual void setHeight(int height) = 0;
    // Dots per inch; 0 takes the height in pixels.
    virtual void setResolution(int dpi) = 0;
    virtual int getResolution() const = 0;
    virtual void setHinting(bool hinting) = 0;
    virtual bool getHinting() const = 0;
    // On: outlines turned over for a top-left origin.
    virtual void setFlipY(bool flipY) = 0;
    virtual bool getFlipY() const = 0;
    // Extra advance after every glyph, in pixels.
    virtual void setTracking(double tracking) = 0;
    virtual double getTracking() const = 0;
    // False when the font file could not be read as a font.
    virtual bool isLoaded() const = 0;
};

}  // namespace OV::CFW::Graphics
