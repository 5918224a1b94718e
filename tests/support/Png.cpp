#include "tests/support/Png.h"

#include <fstream>
#include <vector>

#include <zlib.h>

namespace OV::Testing {

namespace {

void PutWord(std::string& out, std::uint32_t value)
{
    for (int shift = 24; shift >= 0; shift -= 8)
        out.push_back(static_cast<char>((value >> shift) & 0xff));
}

// Length, type, data, and the CRC of type and data.
void PutChunk(std::string& out, const char* type, const std::string& data)
{
    PutWord(out, static_cast<std::uint32_t>(data.size()));
    const std::string body = std::string(type, 4) + data;
    out += body;
    PutWord(out, static_cast<std::uint32_t>(crc32(0, reinterpret_cast<const Bytef*>(body.data()), static_cast<uInt>(body.size()))));
}

}  // namespace

std::string EncodePng(const std::uint32_t* pixels, int width, int height)
{
    std::string header;
    PutWord(header, static_cast<std::uint32_t>(width));
    PutWord(header, static_cast<std::uint32_t>(height));
    header += std::string("\x08\x02\x00\x00\x00", 5); // 8 bits, RGB, deflate, no filter, no interlace

    std::vector<Bytef> raw;
    raw.reserve(static_cast<std::size_t>(height) * (static_cast<std::size_t>(width) * 3 + 1));
    for (int y = 0; y < height; ++y) {
        raw.push_back(0); // row filter: none
        for (int x = 0; x < width; ++x) {
            const std::uint32_t p = pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x)];
            raw.insert(raw.end(), {static_cast<Bytef>(p >> 16), static_cast<Bytef>(p >> 8), static_cast<Bytef>(p)});
        }
    }
    uLongf size = compressBound(static_cast<uLong>(raw.size()));
    std::string deflated(size, '\0');
    compress2(reinterpret_cast<Bytef*>(deflated.data()), &size, raw.data(), static_cast<uLong>(raw.size()), 6);
    deflated.resize(size);

    std::string file("\x89PNG\r\n\x1a\n", 8);
    PutChunk(file, "IHDR", header);
    PutChunk(file, "IDAT", deflated);
    PutChunk(file, "IEND", "");
    return file;
}

bool WritePng(const std::string& path, const std::uint32_t* pixels, int width, int height)
{
    std::ofstream out(path, std::ios::binary);
    const std::string file = EncodePng(pixels, width, height);
    out.write(file.data(), static_cast<std::streamsize>(file.size()));
    return static_cast<bool>(out.flush());
}

}  // namespace OV::Testing
