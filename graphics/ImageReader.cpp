#include "graphics/ImageReader.h"

#include "graphics/Image.h"

#include <algorithm>
#include <vector>

namespace OV::CFW::Graphics {

namespace {

// A byte the stream cannot give reads as zero.
std::uint32_t ReadByte(std::istream& stream)
{
    const auto byte = stream.get();
    return byte == std::istream::traits_type::eof() ? 0u : static_cast<std::uint8_t>(byte);
}

std::uint32_t ReadWord(std::istream& stream)
{
    const std::uint32_t low = ReadByte(stream);
    return low | ReadByte(stream) << 8;
}

}  // namespace

ImageData ReadImage(std::istream& stream)
{
    if (!stream.good())
        throw Image::LoadError("Can't read from input stream");
    const std::uint32_t idLength = ReadByte(stream);
    const std::uint32_t colorMapType = ReadByte(stream);
    const std::uint32_t imageType = ReadByte(stream);
    ReadWord(stream); // first colour map entry
    const std::uint32_t colorMapLength = ReadWord(stream);
    const std::uint32_t colorMapDepth = ReadByte(stream);
    ReadWord(stream); // x origin
    ReadWord(stream); // y origin
    const int width = static_cast<int>(ReadWord(stream));
    const int height = static_cast<int>(ReadWord(stream));
    const std::uint32_t depth = ReadByte(stream);
    const std::uint32_t descriptor = ReadByte(stream);
    if (colorMapType != 0)
        throw Image::LoadError("Color map not supported");
    if (imageType != 2)
        throw Image::LoadError("Only uncompressed, true-color images are supported");
    if (depth != 24 && depth != 32)
        throw Image::LoadError("Only 24 and 32 bit images are supported");
    // A header asking for more than any picture of ours is refused before the allocation it
    // would size.
    if (static_cast<std::int64_t>(width) * height > maxImagePixels)
        throw Image::LoadError("Image too large");
    stream.ignore(idLength);
    stream.ignore(static_cast<std::streamsize>(((colorMapDepth + 1) >> 3) * colorMapLength));

    ImageData image;
    image.width = width;
    image.height = height;
    image.alpha = depth == 32;
    const std::size_t pixelsPerRow = static_cast<std::size_t>(width);
    image.pixels.reset(new std::uint32_t[pixelsPerRow * static_cast<std::size_t>(height)]);
    try {
        const bool topDown = (descriptor & 32) != 0;
        std::vector<std::uint8_t> row(image.alpha ? 0 : pixelsPerRow * 3);
        for (int fileRow = 0; fileRow < height; ++fileRow) {
            std::uint32_t* target = image.pixels.get() + pixelsPerRow * static_cast<std::size_t>(topDown ? fileRow : height - 1 - fileRow);
            if (image.alpha) {
                stream.read(reinterpret_cast<char*>(target), static_cast<std::streamsize>(pixelsPerRow * 4));
            } else {
                stream.read(reinterpret_cast<char*>(row.data()), static_cast<std::streamsize>(row.size()));
                for (std::size_t x = 0; x < pixelsPerRow; ++x)
                    target[x] = 0xff000000u | std::uint32_t(row[3 * x + 2]) << 16 | std::uint32_t(row[3 * x + 1]) << 8 | row[3 * x];
            }
            // What the stream could not give is opaque white.
            if (stream.fail() || stream.bad())
                std::fill(target, target + pixelsPerRow, 0xffffffffu);
        }
    } catch (...) {
        throw Image::LoadError("Unknown error while loading image");
    }
    return image;
}

}  // namespace OV::CFW::Graphics
