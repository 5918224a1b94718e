// Images of the software device: the TGA reader on files written byte by byte here (hostile
// ones too), the conversions of bits and pixels, hit masks and bitmap fonts cut from a strip.
#include "graphics/BitMask.h"
#include "graphics/DeviceSW.h"
#include "graphics/FontEPISW.h"
#include "graphics/ImageReader.h"
#include "graphics/ImageSW.h"

#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace OV::Testing {
namespace {

using namespace CFW::Graphics;
using CFW::BasicPoint;

// A TGA file: header fields as given, then the rows' bytes as given.
std::string Tga(int width, int height, int depth, int descriptor, const std::vector<std::uint8_t>& data, int type = 2,
                int colorMap = 0, int idLength = 0)
{
    std::string file;
    const auto byte = [&](int v) { file.push_back(static_cast<char>(v & 0xff)); };
    const auto word = [&](int v) { byte(v), byte(v >> 8); };
    byte(idLength), byte(colorMap), byte(type), word(0), word(0), byte(0), word(7), word(9);
    word(width), word(height), byte(depth), byte(descriptor);
    file.append(static_cast<std::size_t>(idLength), 'i');
    file.append(data.begin(), data.end());
    return file;
}

std::vector<std::uint32_t> Pixels(Image& image)
{
    const auto [pixels, pitch] = image.lock();
    std::vector<std::uint32_t> copy;
    for (int y = 0; y < image.size().y; ++y)
        for (int x = 0; x < image.size().x; ++x)
            copy.push_back(pixels[y * pitch / 4 + x]);
    image.unlock();
    return copy;
}

std::unique_ptr<Image> Read(const std::string& file)
{
    std::istringstream stream(file);
    return std::unique_ptr<Image>(DeviceSW().createImageFromStream(0, stream, file.size()));
}

TEST(ImageTest, FilesAreReadInTheirRowOrderAndDepth)
{
    // Two rows of two pixels; file order B, G, R(, A).
    const std::vector<std::uint8_t> rows24 = {1, 2, 3, 4, 5, 6, /**/ 7, 8, 9, 10, 11, 12};
    const std::vector<std::uint8_t> rows32 = {1, 2, 3, 200, 4, 5, 6, 0, /**/ 7, 8, 9, 255, 10, 11, 12, 1};
    const std::vector<std::uint32_t> first24 = {0xff030201, 0xff060504}, second24 = {0xff090807, 0xff0c0b0a};
    const std::vector<std::uint32_t> first32 = {0xc8030201, 0x00060504}, second32 = {0xff090807, 0x010c0b0a};
    const auto join = [](std::vector<std::uint32_t> a, const std::vector<std::uint32_t>& b) { a.insert(a.end(), b.begin(), b.end()); return a; };
    // Bit 5 of the descriptor: the first file row is the top one; otherwise the bottom one.
    for (const auto& [depth, rows, first, second, alpha] :
         {std::tuple{24, rows24, first24, second24, false}, std::tuple{32, rows32, first32, second32, true}}) {
        const auto topDown = Read(Tga(2, 2, depth, 32 | 8, rows)); // other descriptor bits are ignored
        const auto bottomUp = Read(Tga(2, 2, depth, 0, rows));
        EXPECT_EQ(join(first, second), Pixels(*topDown)) << depth;
        EXPECT_EQ(join(second, first), Pixels(*bottomUp)) << depth;
        EXPECT_EQ(alpha, topDown->hasAlpha()) << depth;
        EXPECT_EQ(2, topDown->size().x);
    }
    // An ID field and a (harmless, length 0) colour map entry size are skipped.
    EXPECT_EQ((std::vector<std::uint32_t>{0xff030201}), Pixels(*Read(Tga(1, 1, 24, 32, {1, 2, 3}, 2, 0, 5))));
}

TEST(ImageTest, HostileFilesGiveTheReasonOrWhiteRows)
{
    const std::pair<std::string, const char*> refused[] = {
        {Tga(1, 1, 24, 0, {1, 2, 3}, 2, 1), "Color map not supported"},
        {Tga(1, 1, 24, 0, {1, 2, 3}, 10), "Only uncompressed, true-color images are supported"},
        {Tga(1, 1, 16, 0, {1, 2}), "Only 24 and 32 bit images are supported"},
        {Tga(1, 1, 8, 0, {1}), "Only 24 and 32 bit images are supported"},
        // Sizes that would ask for gigabytes are refused before anything is allocated.
        {Tga(65535, 65535, 32, 0, {}), "Image too large"},
        {Tga(4097, 4096, 24, 0, {}), "Image too large"},
        {"", "Only uncompressed, true-color images are supported"},
    };
    for (const auto& [file, message] : refused) {
        try {
            Read(file);
            ADD_FAILURE() << "no error for " << message;
        } catch (const Image::LoadError& error) {
            EXPECT_STREQ(message, error.what());
        }
    }
    std::istringstream failed("x");
    failed.setstate(std::ios::failbit);
    EXPECT_THROW(ReadImage(failed), Image::LoadError);

    // Cut short: whole rows of what is there, opaque white for the rest, no error.
    const auto cut = Read(Tga(2, 3, 24, 32, {1, 2, 3, 4, 5, 6, 7, 8}));
    EXPECT_EQ((std::vector<std::uint32_t>{0xff030201, 0xff060504, 0xffffffff, 0xffffffff, 0xffffffff, 0xffffffff}), Pixels(*cut));
    const auto header = Read(Tga(300, 200, 32, 0, {}));
    for (std::uint32_t pixel : Pixels(*header))
        ASSERT_EQ(0xffffffffu, pixel);
    // The largest size taken reads as white, not as an error.
    EXPECT_EQ(4096, Read(Tga(4096, 4096, 24, 0, {}))->size().x);
}

TEST(ImageTest, BitsAndPixelsBecomeWordsByTheirOrder)
{
    DeviceSW device;
    const std::uint8_t bits[] = {0, 1, 7, 0};
    for (const auto& [set, clear, alpha] : {std::tuple{0xff112233u, 0xff445566u, false}, std::tuple{0xff000000u, 0x00000000u, true},
                                           std::tuple{0xfe112233u, 0xff445566u, true}}) {
        std::unique_ptr<Image> image(device.createImageFromBits(bits, {2, 2}, set, clear));
        EXPECT_EQ((std::vector<std::uint32_t>{clear, set, set, clear}), Pixels(*image));
        EXPECT_EQ(alpha, image->hasAlpha()) << std::hex << set << " " << clear;
    }
    // One pixel of components 1, 2, 3 (and 4) in each byte order, rows 8 bytes apart.
    const std::tuple<int, std::vector<std::uint8_t>, std::uint32_t, bool> orders[] = {
        {Device::RGB, {1, 2, 3}, 0xff010203, false},     {Device::BGR, {3, 2, 1}, 0xff010203, false},
        {Device::ARGB, {4, 1, 2, 3}, 0x04010203, true},  {Device::BGRA, {3, 2, 1, 4}, 0x04010203, true},
        {Device::RGBA, {1, 2, 3, 4}, 0x04010203, true},  {Device::ABGR, {4, 3, 2, 1}, 0x04010203, true},
    };
    for (const auto& [order, bytes, word, alpha] : orders) {
        std::vector<std::uint8_t> source(16, 0xee);
        std::copy(bytes.begin(), bytes.end(), source.begin() + 8); // the second row
        std::unique_ptr<Image> image(device.createImageFromPixels(source.data() + 8, -8, {1, 2}, order));
        EXPECT_EQ(word, Pixels(*image)[0]) << order;
        EXPECT_EQ(alpha, image->hasAlpha()) << order;
    }
    EXPECT_EQ(nullptr, createDevice(1));
    std::unique_ptr<Device> made(createDevice(0));
    EXPECT_NE(nullptr, made);
    std::istringstream stream(Tga(1, 1, 24, 0, {1, 2, 3}));
    EXPECT_EQ(0, std::unique_ptr<Image>(device.createImageFromStream(1, stream, 21))->size().x) << "only kind 0 reads";
}

TEST(ImageTest, MasksAreBuiltOnceFromThe32BitAlpha)
{
    // Alphas 0, 127, 128, 255 in a 3 by 2 picture (with two more pixels of 200).
    const std::vector<std::uint8_t> rows = {0, 0, 0, 0, 0, 0, 0, 127, 0, 0, 0, 128, 0, 0, 0, 255, 0, 0, 0, 200, 0, 0, 0, 200};
    std::istringstream stream(Tga(3, 2, 32, 32, rows));
    BitMask mask(stream);
    EXPECT_FALSE(mask.isBuilt());
    mask.build(128);
    EXPECT_TRUE(mask.isBuilt());
    const bool expected[] = {false, false, true, true, true, true};
    for (int i = 0; i < 6; ++i)
        EXPECT_EQ(expected[i], mask.test({i % 3, i / 3})) << i;
    mask.build(0); // the first build holds
    EXPECT_FALSE(mask.test({0, 0}));

    // Without an alpha channel there is nothing to build from: nothing is hit.
    std::istringstream opaque(Tga(2, 1, 24, 32, {1, 2, 3, 4, 5, 6}));
    BitMask flat(opaque);
    flat.build(0);
    EXPECT_FALSE(flat.test({0, 0}) || flat.test({1, 0}));
}

// A strip of three glyph runs, two and three and one pixel wide, parted by separators in the
// marker row (height - 2) of a 9-row image; the art's red is a glyph's coverage.
TEST(ImageTest, BitmapFontsAreCutAtTheMarkerRowsSeparators)
{
    constexpr int width = 12, rows = 9;
    std::unique_ptr<std::uint32_t[]> pixels(new std::uint32_t[width * rows]);
    for (int i = 0; i < width * rows; ++i)
        pixels[i] = 0xff000000u | static_cast<std::uint32_t>(i % 256) << 16;
    const char marker[] = "#ab#cde##f##"; // '#' is a separator: opaque black
    for (int x = 0; x < width; ++x)
        pixels[(rows - 2) * width + x] = marker[x] == '#' ? 0xff000000u : 0xff808080u;
    ImageSW strip(std::move(pixels), width, rows, true);
    FontEPISW font(strip);
    EXPECT_EQ(4, font.getHeight());
    EXPECT_EQ(4, font.getBaseline());
    const std::tuple<int, int, int> glyphs[] = {{0, 1, 2}, {1, 4, 3}, {2, 9, 1}, {3, 12, 0}, {200, 12, 0}, {255, 0, 0}};
    for (const auto& [code, x, w] : glyphs) {
        EXPECT_EQ(x, font.getGlyph(static_cast<unsigned char>(code)).x) << code;
        EXPECT_EQ(w, font.getGlyph(static_cast<unsigned char>(code)).width) << code;
    }
    // The strip is now white with the art's red as alpha.
    const auto [mask, pitch] = strip.lock();
    EXPECT_EQ(0x05ffffffu, mask[5]);
    EXPECT_EQ(0x11ffffffu, mask[pitch / 4 + 5]); // pixel 17
    strip.unlock();

    // Measuring and placing "\x01\x00\x02": widths 3, 2 and 1.
    const std::string text("\x01\x00\x02", 3);
    const auto rect = font.measure(text, 1, 5, {10, 20}); // count cut at the text's end
    EXPECT_EQ(13, rect.x);
    EXPECT_EQ(20, rect.y);
    EXPECT_EQ(3, rect.width);
    EXPECT_EQ(4, rect.height);
    const std::tuple<int, int> placed[] = {{Font::AlignLeft, 100}, {Font::AlignCenter, 100 + 25 - 3}, {Font::AlignRight, 100 + 50 - 6}};
    for (const auto& [alignment, x] : placed)
        EXPECT_EQ(x, font.layout(text, 0, 3, {100, 0, 50, 10}, alignment).x) << alignment;
    EXPECT_EQ(3, font.getCharSize(1).x);
}

}  // namespace
}  // namespace OV::Testing
