#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace OV::Testing {

// A top-down TGA file of pixels 0xAARRGGBB, top row first: 32 bits with `alpha`, which are
// blended when drawn, or 24, which are copied as they are.
inline std::string Tga(int width, int height, const std::vector<std::uint32_t>& pixels, bool alpha = false)
{
    std::string file = {0, 0, 2, 0, 0, 0, 0, 0, 0, 0, 0, 0};
    for (int value : {width, height})
        file += {static_cast<char>(value & 0xff), static_cast<char>(value >> 8 & 0xff)};
    file += {static_cast<char>(alpha ? 32 : 24), static_cast<char>(alpha ? 0x28 : 0x20)};
    for (std::uint32_t pixel : pixels) {
        for (int shift = 0; shift < (alpha ? 32 : 24); shift += 8)
            file += static_cast<char>(pixel >> shift & 0xff);
    }
    return file;
}

}  // namespace OV::Testing
