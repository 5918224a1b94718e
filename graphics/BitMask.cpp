#include "graphics/BitMask.h"

#include "graphics/ImageReader.h"

namespace OV::CFW::Graphics {

BitMask::BitMask(std::istream& stream)
{
    ImageData image = ReadImage(stream);
    width = image.width;
    height = image.height;
    if (image.alpha)
        pixels = std::move(image.pixels);
}

void BitMask::build(int newThreshold)
{
    if (built)
        return;
    threshold = newThreshold;
    const std::size_t count = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
    bits.assign((count + 31) / 32, 0u);
    // A mask read from a file without alpha has no pixels: nothing is set.
    for (std::size_t i = 0; pixels != nullptr && i < count; ++i) {
        if (static_cast<int>(pixels[i] >> 24) >= threshold)
            bits[i / 32] |= 1u << (i % 32);
    }
    pixels.reset();
    built = true;
}

bool BitMask::test(const BasicPoint<int>& point) const
{
    const std::size_t i = static_cast<std::size_t>(width) * static_cast<std::size_t>(point.y) + static_cast<std::size_t>(point.x);
    return built && (bits[i / 32] >> (i % 32) & 1u) != 0;
}

}  // namespace OV::CFW::Graphics
