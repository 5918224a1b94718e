// The outline font against FreeType's own figures for the same face, read here straight through
// FreeType; its ink against its measures and the clip; and its factory.
#include "graphics/DeviceSW.h"
#include "graphics/FontFT.h"
#include "graphics/PainterSW.h"
#include "graphics/res/ResourceSet.h"
#include "tests/support/ScratchFolder.h"

#include <ft2build.h>
#include FT_FREETYPE_H

#include <algorithm>
#include <memory>
#include <numeric>
#include <vector>

#include <gtest/gtest.h>

namespace OV::Testing {
namespace {

using namespace CFW::Graphics;
using CFW::BasicRect;

const std::string dejaVu = ReadFile(VARNEL4_DEJAVU_SANS);

std::unique_ptr<FontFT> MakeFont(int height, double tracking = 0.0)
{
    auto* font = DeviceSW().createFontFT(reinterpret_cast<const std::uint8_t*>(dejaVu.data()), dejaVu.size(), height, 3, "", 0);
    auto* outline = dynamic_cast<FontFT*>(font);
    outline->setTracking(tracking);
    return std::unique_ptr<FontFT>(outline);
}

// DejaVu Sans through FreeType, `height` pixels high and `stretch` times as wide.
struct Reference {
    Reference(int height, int stretch) : height(height), stretch(stretch)
    {
        FT_Init_FreeType(&library);
        FT_New_Memory_Face(library, reinterpret_cast<const FT_Byte*>(dejaVu.data()), FT_Long(dejaVu.size()), 0, &face);
        FT_Set_Pixel_Sizes(face, FT_UInt(height * stretch), FT_UInt(height));
    }
    ~Reference() { FT_Done_FreeType(library); }
    // Pixels before `start` and from it to `end`: each glyph's hinted advance, its kerning after
    // the glyph before and the tracking, summed in 26.6 at 100 times the width.
    std::pair<int, int> span(const std::string& text, std::size_t start, std::size_t end, double tracking) const
    {
        double sums[2] = {0.0, 0.0};
        FT_UInt previous = 0;
        for (std::size_t i = 0; i < end; ++i) {
            const FT_UInt glyph = FT_Get_Char_Index(face, static_cast<unsigned char>(text[i]));
            FT_Vector kerning{0, 0};
            if (glyph != 0 && previous != 0)
                FT_Get_Kerning(face, previous, glyph, FT_KERNING_DEFAULT, &kerning);
            if (glyph != 0 && FT_Load_Glyph(face, glyph, FT_LOAD_DEFAULT) == 0)
                sums[i >= start] += (face->glyph->advance.x + kerning.x) / 64.0 + tracking * 100.0;
            previous = glyph;
        }
        return {int(sums[0] * 0.01 + 0.5), int(sums[1] * 0.01 + 0.5)};
    }
    // Square pixels of a glyph in FreeType's own rendering, without hinting.
    double area(char c) const
    {
        FT_Load_Glyph(face, FT_Get_Char_Index(face, static_cast<unsigned char>(c)), FT_LOAD_NO_HINTING | FT_LOAD_RENDER);
        const FT_Bitmap& bitmap = face->glyph->bitmap;
        double sum = 0.0;
        for (unsigned i = 0; i < bitmap.rows * bitmap.width; ++i)
            sum += bitmap.buffer[i / bitmap.width * unsigned(bitmap.pitch) + i % bitmap.width] / 255.0;
        return sum / stretch;
    }

    int height, stretch;
    FT_Library library = nullptr;
    FT_Face face = nullptr;
};

TEST(FontFT, MetricsAreFreeTypesFigures)
{
    struct Case { int height; std::string text; int start, count; double tracking; };
    const Case cases[] = {
        {11, "Hello, World", 0, 12, 0.0},
        {11, "AVATAR To Wa", 2, 7, 0.0}, // kerning pairs on both sides of the range
        {20, "fi\xe9\xc5x", 1, 3, 0.0},  // codes above 127 through their unsigned value
        {11, "A\x01V.", 0, 4, 0.0},      // the face has no glyph for \x01
        {13, "Hello", 1, 99, 1.0},       // count beyond the end
        {9, "Tracking", 3, 4, -0.35},
    };
    for (const Case& c : cases) {
        const auto font = MakeFont(c.height, c.tracking);
        const Reference reference(c.height, 100);
        const std::size_t end = std::min(c.text.size(), std::size_t(c.start + c.count));
        const auto [before, width] = reference.span(c.text, std::size_t(c.start), end, c.tracking);
        const BasicRect<int> measured = font->measure(c.text, c.start, c.count, {7, -4});
        EXPECT_EQ((std::vector<int>{7 + before, -4, width, c.height + 3}),
                  (std::vector<int>{measured.x, measured.y, measured.width, measured.height})) << c.text;
        EXPECT_EQ(int(reference.face->ascender * double(c.height) / reference.face->height + 1.0), font->getBaseline());
        EXPECT_EQ(reference.span(c.text, 0, 1, 0.0).second, font->getCharSize(static_cast<unsigned char>(c.text[0])).x) << c.text;
    }
    // By the rules alone: a missing glyph adds nothing, and tracking 1 a pixel for each
    // character, the last one included.
    const auto plain = MakeFont(11, 0.0);
    const auto tracked = MakeFont(11, 1.0);
    EXPECT_EQ(plain->measure("AB", 0, 2, {}).width, plain->measure("A\x01\x02" "B", 0, 4, {}).width);
    EXPECT_EQ(plain->measure("Hello", 0, 5, {}).width + 5, tracked->measure("Hello", 0, 5, {}).width);
}

struct Canvas {
    explicit Canvas(Color background) : pixels(120 * 40, background), painter(pixels.data(), 120 * 4, {120, 40}) {}
    std::vector<Color> pixels;
    PainterSW painter;
};

TEST(FontFT, InkWithinItsRectOnTheBaselineAndTheClip)
{
    const auto font = MakeFont(20);
    const Color black = 0xFF000000, color = 0xFF30C060;
    Canvas whole(black);
    whole.painter.setOrigin({3, 2});
    whole.painter.drawText(*font, color, "HAVAH", {10, 5});
    const BasicRect<int> rect = font->measure("HAVAH", 0, 5, {13, 7});
    std::vector<int> rowInk(40, 0);
    int full = 0;
    for (int i = 0; i < 120 * 40; ++i) {
        const Color p = whole.pixels[std::size_t(i)];
        EXPECT_TRUE(p == black || rect.contains(i % 120, i / 120)) << i % 120 << ", " << i / 120;
        full += p == color; // full coverage is the colour exactly
        rowInk[std::size_t(i / 120)] += int(GreenOf(p));
    }
    EXPECT_GT(full, 40);
    // The letters stand on the baseline: two stems of each H, two pixels wide or more, in the row
    // above it.
    const int baseline = 7 + font->getBaseline();
    EXPECT_GT(rowInk[std::size_t(baseline - 1)], 4 * 2 * 0xC0);
    EXPECT_EQ(0, std::accumulate(rowInk.begin() + baseline, rowInk.end(), 0));

    // Clipped: the same pixels inside the clip, but for the rasteriser's rounding where it cuts
    // a slanted edge at the clip, and nothing outside it.
    Canvas clipped(black);
    clipped.painter.setOrigin({3, 2});
    clipped.painter.setClipRect({17, 8, 15, 8});
    clipped.painter.drawText(*font, color, "HAVAH", {10, 5});
    const BasicRect<int> clip{20, 10, 15, 8};
    for (int i = 0; i < 120 * 40; ++i) {
        const Color p = clipped.pixels[std::size_t(i)];
        if (clip.contains(i % 120, i / 120))
            ASSERT_NEAR(int(GreenOf(whole.pixels[std::size_t(i)])), int(GreenOf(p)), 1) << i % 120 << ", " << i / 120;
        else
            ASSERT_EQ(black, p) << i % 120 << ", " << i / 120;
    }

    // Curves flattened, not drawn through their control points, which adds 5 % or more.
    const auto unhinted = MakeFont(36);
    unhinted->setHinting(false);
    for (const char c : std::string("Oe")) {
        Canvas canvas(0);
        canvas.painter.drawText(*unhinted, std::string(1, c), {2, 0}); // white
        const double covered = std::accumulate(canvas.pixels.begin(), canvas.pixels.end(), 0.0,
                                               [](double sum, Color p) { return sum + AlphaOf(p) / 255.0; });
        const double area = Reference(36, 1).area(c);
        EXPECT_NEAR(area, covered, area * 0.025) << c;
    }
}

TEST(FontFT, FactoryReadsDescriptionsSharesFilesAndRefusesBadOnes)
{
    const ScratchFolder folder;
    folder.Write("Face.ttf", dejaVu);
    folder.Write("Bad.ttf", dejaVu.substr(0, dejaVu.size() / 2));
    struct Case { const char* name; const char* attributes; std::vector<double> expected; };
    const Case cases[] = {
        // line height, resolution, hinting, flip, tracking
        {"set.xml", "Source='Face.ttf' Height='12' AddInterline='2' DPI='96' Hinting='0' FlipY='1' Tracking='0.5'", {14, 96, 0, 0, 0.5}},
        {"defaults.xml", "Source='Face.ttf'", {10, 0, 1, 1, 0.0}},
        {"absurd.xml", "Source='Face.ttf' Height='99999' AddInterline='-99999' DPI='-5' Tracking='1e300'", {0, 0, 1, 1, 100.0}},
        {"bad.xml", "Source='Bad.ttf'", {}},
        {"index.xml", "Source='Face.ttf' FaceIndex='1'", {}},
    };
    auto provider = std::make_shared<CFW::Res::Provider>();
    provider->addPath(folder.Path());
    DeviceSW device;
    CFW::Res::Utils::XMLFactory documents;
    CFW::Res::FontFTFactory factory(device, *provider, documents);
    CFW::Res::ManagerGeneric<Font, CFW::Res::FontFTFactory> fonts(provider, factory);
    std::vector<Font*> loaded;
    for (const Case& c : cases) {
        folder.Write(c.name, std::string("<Font ") + c.attributes + "/>");
        auto* font = dynamic_cast<FontFT*>(fonts.acquire(c.name));
        ASSERT_EQ(c.expected.empty(), font == nullptr) << c.name;
        if (font != nullptr) {
            const std::vector<double> settings = {double(font->getHeight()), double(font->getResolution()), double(font->getHinting()),
                                                  double(font->getFlipY()), font->getTracking()};
            EXPECT_EQ(c.expected, settings) << c.name;
            loaded.push_back(font);
        }
    }
    for (Font* font : loaded) {
        EXPECT_EQ(1u, factory.fileCount()); // one copy for all three
        fonts.release(font);
    }
    EXPECT_EQ(0u, factory.fileCount());

    // The product's descriptions, from its pack.
    CFW::Res::ResourceSet resources(device);
    resources.getProvider().addPath(VARNEL4_PACK);
    for (const auto& [name, height] : {std::pair{"Fonts/Sans11.xml", 14}, {"Fonts/Sans14.xml", 18}, {"Fonts/SansBold11.xml", 14}}) {
        const Font* font = resources.getFontsFT().acquire(name);
        EXPECT_EQ(height, font != nullptr ? font->getHeight() : 0) << name;
    }
}

}  // namespace
}  // namespace OV::Testing
