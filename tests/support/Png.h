#pragma once

#include <cstdint>
#include <string>

namespace OV::Testing {

// A PNG file of `width` × `height` pixels 0xAARRGGBB, rows from the top, stored as 8-bit RGB
// (alpha dropped), one deflated stream without row filters.
std::string EncodePng(const std::uint32_t* pixels, int width, int height);

// Writes EncodePng's file; false when it cannot be written.
bool WritePng(const std::string& path, const std::uint32_t* pixels, int width, int height);

}  // namespace OV::Testing
