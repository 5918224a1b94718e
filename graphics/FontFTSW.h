#pragma once

#include "graphics/FontFT.h"

#include <cstddef>
#include <cstdint>
#include <memory>

namespace OV::CFW::Graphics {

// An outline font on AGG's FreeType engine, its glyphs kept as paths in AGG's font cache. The
// engine works at 100 times the horizontal resolution, so that advances keep their fractions:
// every horizontal figure is in hundredths of a pixel until it is scaled back.
class FontFTSW : public FontFT {
public:
    // AGG's engine and cache; defined in FontFTSWAgg.h, for this font and the painter.
    struct Outlines;

    // Settings are held within these: heights to 1..maxHeight pixels, the interline to
    // ±maxHeight, the resolution to 0..maxResolution and tracking to ±maxTracking.
    static constexpr int maxHeight = 512;
    static constexpr int maxResolution = 1200;
    static constexpr double maxTracking = 100.0;

    // The font file in `data` must outlive the font. A file FreeType rejects, an empty one or a
    // face index outside 0..65535 leaves the font not loaded: it measures and draws nothing.
    FontFTSW(const std::uint8_t* data, std::size_t dataSize, int height, int addInterline, const std::string& faceName,
             int faceIndex);
    ~FontFTSW() override;
    FontFTSW(const FontFTSW&) = delete;
    FontFTSW& operator=(const FontFTSW&) = delete;

    int getHeight() const override { return lineHeight; }
    int getBaseline() const override;
    BasicPoint<int> getCharSize(unsigned char c) const override;
    BasicRect<int> layout(const std::string& text, int start, int count, const BasicRect<int>& rect, int alignment) const override;
    BasicRect<int> measure(const std::string& text, int start, int count, const BasicPoint<int>& point) const override;
    void setHeight(int height) override;
    void setResolution(int dpi) override;
    int getResolution() const override;
    void setHinting(bool hinting) override;
    bool getHinting() const override;
    void setFlipY(bool flipY) override;
    bool getFlipY() const override;
    void setTracking(double value) override;
    double getTracking() const override { return tracking; }
    bool isLoaded() const override { return loaded; }

    // Null when the font is not loaded.
    Outlines* getOutlines() const { return loaded ? outlines.get() : nullptr; }

private:
    int lineHeight;
    std::unique_ptr<Outlines> outlines;
    double tracking = 1.0; // pixels; a description sets its own
    bool loaded = false;
};

}  // namespace OV::CFW::Graphics
