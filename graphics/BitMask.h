#pragma once

#include "graphics/Geometry.h"

#include <cstdint>
#include <istream>
#include <memory>
#include <vector>

namespace OV::CFW::Graphics {

// A one-bit hit mask built once from the alpha of an image file: widgets use it to pick by
// shape. Loaded (pixels, no bits) until built (bits, no pixels). Window thread only.
class BitMask {
public:
    // Reads the file as images are read (Image::LoadError on failure). A 24-bit file keeps no
    // pixels, so no bits can be built from it.
    explicit BitMask(std::istream& stream);

    bool isBuilt() const { return built; }
    // Sets each pixel's bit when its alpha is at least `threshold`; then frees the pixels. Only
    // the first call builds; later calls leave the mask as it is. Nothing without pixels.
    void build(int threshold);
    // Whether the pixel at `point` is set; the point must lie inside the mask.
    bool test(const BasicPoint<int>& point) const;
    BasicPoint<int> size() const { return {width, height}; }

private:
    std::unique_ptr<std::uint32_t[]> pixels;
    std::vector<std::uint32_t> bits; // bit i of word i / 32 is pixel i, row after row
    bool built = false;
    int width = 0;
    int height = 0;
    int threshold = -1;
};

}  // namespace OV::CFW::Graphics
