#pragma once

#include <cstdint>
#include <istream>
#include <memory>

namespace OV::CFW::Graphics {

// What the image file reader makes of a file.
struct ImageData {
    std::unique_ptr<std::uint32_t[]> pixels; // width × height words, top row first
    int width = 0;
    int height = 0;
    bool alpha = false; // 32-bit files
};

// The largest image the reader allocates for, in pixels; a header that asks for more is refused
// before any allocation.
constexpr std::int64_t maxImagePixels = 4096 * 4096;

// Reads an uncompressed 24- or 32-bit true-colour TGA file from `stream`. Rows a truncated or
// failing stream cannot give are opaque white. Throws Image::LoadError with the reason.
ImageData ReadImage(std::istream& stream);

}  // namespace OV::CFW::Graphics
