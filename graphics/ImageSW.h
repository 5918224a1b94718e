#pragma once

#include "graphics/Image.h"

#include <memory>

namespace OV::CFW::Graphics {

// An image in plain memory: width × height words, rows of width × 4 bytes.
class ImageSW : public Image {
public:
    // Takes the pixels, which must hold width × height words. Allocation failures of callers
    // that make the pixels are the environment's out-of-memory exception.
    ImageSW(std::unique_ptr<std::uint32_t[]> pixels, int width, int height, bool alpha);
    // Pixels left uninitialised; alpha true.
    explicit ImageSW(const BasicPoint<int>& size);

    const BasicPoint<int>& size() const override { return dimensions; }
    bool hasAlpha() const override { return alpha; }
    std::pair<std::uint32_t*, int> lock() override;
    void unlock() override { locked = false; }

private:
    std::unique_ptr<std::uint32_t[]> pixels;
    int pitch;
    BasicPoint<int> dimensions;
    bool alpha;
    bool locked = false;
};

}  // namespace OV::CFW::Graphics
