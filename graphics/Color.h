#pragma once

#include <cstdint>

namespace OV::CFW::Graphics {

// A pixel and a colour: one 32-bit word 0xAARRGGBB, components straight (not premultiplied).
// In memory, on a little-endian machine, its bytes are B, G, R, A.
using Color = std::uint32_t;

constexpr std::uint32_t AlphaOf(Color c) { return c >> 24; }
constexpr std::uint32_t RedOf(Color c) { return (c >> 16) & 0xff; }
constexpr std::uint32_t GreenOf(Color c) { return (c >> 8) & 0xff; }
constexpr std::uint32_t BlueOf(Color c) { return c & 0xff; }
constexpr Color MakeColor(std::uint32_t a, std::uint32_t r, std::uint32_t g, std::uint32_t b)
{
    return (a << 24) | (r << 16) | (g << 8) | b;
}

}  // namespace OV::CFW::Graphics
