// The software painter against values worked by hand from its blend rules, and its anti-aliased
// paths against coverage that geometry gives: areas, widths and exact pixel maps.
#include "graphics/ImageSW.h"
#include "graphics/PainterSW.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <memory>
#include <random>
#include <vector>

#include <gtest/gtest.h>

namespace OV::Testing {
namespace {

using namespace CFW::Graphics;
using CFW::BasicPoint;
using CFW::BasicRect;
using Op = std::function<void(PainterSW&)>;

struct Canvas {
    Canvas(int w, int h, Color fill) : w(w), h(h), pixels(static_cast<std::size_t>(w * h), fill), painter(pixels.data(), w * 4, {w, h}) {}
    Color& at(int x, int y) { return pixels[static_cast<std::size_t>(y * w + x)]; }
    // Coverage of a white shape on transparent black: the alpha a pixel ends with.
    double covered()
    {
        double sum = 0.0;
        for (Color p : pixels)
            sum += AlphaOf(p) / 255.0;
        return sum;
    }
    int w, h;
    std::vector<Color> pixels;
    PainterSW painter;
};

std::unique_ptr<ImageSW> MakeImage(int w, int h, bool alpha, const std::vector<Color>& pixels)
{
    std::unique_ptr<std::uint32_t[]> bits(new std::uint32_t[pixels.size()]);
    std::copy(pixels.begin(), pixels.end(), bits.get());
    return std::make_unique<ImageSW>(std::move(bits), w, h, alpha);
}

std::vector<BasicPoint<double>> Box(double x0, double y0, double x1, double y1)
{
    return {{x0, y0}, {x1, y0}, {x1, y1}, {x0, y1}};
}

TEST(PainterBlend, DirectRuleInEveryIntegerOperation)
{
    struct Case { Color source, destination, expected; };
    const Case cases[] = {
        {0xFFFFFFFF, 0xFF000000, 0xFFFEFEFE}, // a = 255 is not a copy
        {0x80FF0000, 0x000000FF, 0xFF7F007F}, // B: 255 + floor(-255 * 128 / 256) = 127; A becomes 255
        {0x00FFFFFF, 0x00123456, 0xFF123456},
        {0x40C86432, 0xFF3264C8, 0xFF5764A2}, // R: 50 + floor(150 * 64 / 256) = 87; B: 200 + floor(-37.5) = 162
    };
    for (const Case& c : cases) {
        const auto image = MakeImage(1, 1, true, {c.source});
        const std::vector<Op> ops = {
            [&](PainterSW& p) { p.putPixel(c.source, 1, 1); }, [&](PainterSW& p) { p.fillRect(c.source, {1, 1, 1, 1}); },
            [&](PainterSW& p) { p.drawHLine(c.source, {1, 1}, 1); }, [&](PainterSW& p) { p.drawVLine(c.source, {1, 1}, 1); },
            [&](PainterSW& p) { p.drawRect(c.source, {1, 1, 1, 1}); }, [&](PainterSW& p) { p.drawImage(*image, {1, 1}, {0, 0, 1, 1}); }};
        EXPECT_EQ(PainterSW::BlendDirect(c.source, c.destination), c.expected);
        for (std::size_t op = 0; op < ops.size(); ++op) {
            Canvas canvas(3, 3, c.destination);
            ops[op](canvas.painter);
            for (int i = 0; i < 9; ++i)
                EXPECT_EQ(canvas.pixels[static_cast<std::size_t>(i)], i == 4 ? c.expected : c.destination) << "op " << op << " pixel " << i;
        }
    }
}

TEST(PainterBlend, TintAndModulate)
{
    struct Case { int mode; Color source, color, destination, expected; };
    const Case cases[] = {
        {Painter::Tint, 0x80123456, 0x00FF8000, 0xFF000080, 0xFF7F4040},     // colour at a = 128, its own alpha ignored
        {Painter::Modulate, 0xC0FF8040, 0x80808080, 0xFF000000, 0xFF2F180C}, // a = 96, s = (127, 64, 32)
        {Painter::Modulate, 0xC0FF8040, 0x80808080, 0x00FFFFFF, 0xFFCFB7AB}, // 255 + floor(-128 * 96 / 256) = 207 ...
        {2, 0xFFFFFFFF, 0xFFFFFFFF, 0x00FFFFFF, 0x00FFFFFF},                  // no such mode: nothing drawn
    };
    for (const Case& c : cases) {
        Canvas canvas(1, 1, c.destination);
        canvas.painter.drawImageTinted(*MakeImage(1, 1, false, {c.source}), c.mode, c.color, {0, 0}, {0, 0, 1, 1});
        EXPECT_EQ(canvas.at(0, 0), c.expected) << "mode " << c.mode;
    }
}

TEST(PainterBlend, CoverageRuleThreeBranches)
{
    // Half a pixel gives coverage 128; alpha = ((c + 1) * A) >> 8.
    struct Case { Color color, destination; double right; Color expected; };
    const Case cases[] = {
        {0x00FFFFFF, 0x80102030, 1.0, 0x80102030}, // A = 0: nothing written
        {0xFFFFFFFF, 0xFF000000, 1.0, 0xFFFFFFFF}, // alpha 255: the colour itself, unlike the direct blend
        {0xFF123456, 0x00000000, 1.0, 0xFF123456},
        {0xFFFF0064, 0xFF0064C8, 0.5, 0xFF7F3296}, // alpha 128: R 32640 >> 8, G (-12800 + 25600) >> 8, B 38400 >> 8
        {0xFFFF0064, 0x000064C8, 0.5, 0x807F3296}, // out.A = 0 - ((0 + 255) >> 8) + 128
        {0x80FF0064, 0xFF0064C8, 1.0, 0xFF7F3296}, // (256 * 128) >> 8 is alpha 128 again
        {0xC8FFFFFF, 0x00000000, 0.5, 0x64636363}, // alpha (129 * 200) >> 8 = 100; 25500 >> 8 = 99
    };
    for (const Case& c : cases) {
        Canvas canvas(2, 1, c.destination);
        const auto square = Box(0.0, 0.0, c.right, 1.0);
        canvas.painter.fillPolygon(c.color, square.data(), 4, 1.0);
        EXPECT_EQ(canvas.at(0, 0), c.expected) << std::hex << c.color << " over " << c.destination;
        EXPECT_EQ(canvas.at(1, 0), c.destination);
    }
}

TEST(PainterClip, OriginDeviceClipAndClipRect)
{
    // 9 × 7 surface; each case leaves the effective clip that a huge fill, integer or anti-aliased, fills.
    struct Case { const char* name; Op setUp; BasicRect<int> expected; };
    const Case cases[] = {
        {"clip rect moved by origin", [](PainterSW& p) { p.setOrigin({2, 1}); p.setClipRect({0, 0, 3, 2}); }, {2, 1, 3, 2}},
        {"origin alone keeps the clip", [](PainterSW& p) { p.setClipRect({0, 0, 3, 2}); p.setOrigin({2, 1}); }, {0, 0, 3, 2}},
        {"device clip ignores origin", [](PainterSW& p) { p.setOrigin({2, 1}); p.setDeviceClip({1, 1, 4, 4}); }, {1, 1, 4, 4}},
        {"device clip takes the stored rect as it is",
         [](PainterSW& p) { p.setOrigin({2, 1}); p.setClipRect({0, 0, 3, 2}); p.setDeviceClip({0, 0, 9, 7}); }, {0, 0, 3, 2}},
        {"device clip cut to the surface, near", [](PainterSW& p) { p.setDeviceClip({-5, -5, 8, 9}); }, {0, 0, 3, 4}},
        {"device clip cut to the surface, far", [](PainterSW& p) { p.setDeviceClip({7, 5, 10, 10}); }, {7, 5, 2, 2}},
        {"clip rect cut by the device clip",
         [](PainterSW& p) { p.setDeviceClip({1, 1, 3, 3}); p.setClipRect({-10, -10, 100, 100}); }, {1, 1, 3, 3}},
        {"nothing left", [](PainterSW& p) { p.setClipRect({10, 0, 5, 5}); }, {0, 0, 0, 0}},
    };
    const auto huge = Box(-1000.0, -1000.0, 1000.0, 1000.0);
    const std::vector<Op> fills = {[](PainterSW& p) { p.fillRect(0xFFFFFFFF, {-1000, -1000, 3000, 3000}); },
                                   [&](PainterSW& p) { p.fillPolygon(0xFFFFFFFF, huge.data(), 4, 1.0); }};
    for (const Case& c : cases)
        for (const Op& fill : fills) {
            Canvas canvas(9, 7, 0);
            c.setUp(canvas.painter);
            fill(canvas.painter);
            for (int y = 0; y < 7; ++y)
                for (int x = 0; x < 9; ++x)
                    EXPECT_EQ(canvas.at(x, y) != 0, c.expected.contains(x, y)) << c.name << " at " << x << ", " << y;
        }
}

TEST(PainterClip, RectsAndLinesCutAtEveryEdge)
{
    // Origin (1, 1), clip rect (1, 0, 5, 4): the effective clip is (2, 1, 5, 4) on 9 × 7.
    struct Case { const char* name; Op draw; BasicRect<int> shape; };
    const Case cases[] = {
        {"fill across the left", [](PainterSW& p) { p.fillRect(~0u, {-3, 1, 5, 2}); }, {-3, 1, 5, 2}},
        {"fill across the right", [](PainterSW& p) { p.fillRect(~0u, {4, 0, 9, 1}); }, {4, 0, 9, 1}},
        {"fill across top and bottom", [](PainterSW& p) { p.fillRect(~0u, {2, -2, 2, 9}); }, {2, -2, 2, 9}},
        {"fill over all of it", [](PainterSW& p) { p.fillRect(~0u, {-1, -1, 9, 7}); }, {-1, -1, 9, 7}},
        {"fill outside", [](PainterSW& p) { p.fillRect(~0u, {6, 0, 2, 2}); }, {6, 0, 2, 2}},
        {"fill of negative size", [](PainterSW& p) { p.fillRect(~0u, {3, 2, -2, 1}); }, {0, 0, 0, 0}},
        {"line across left and right", [](PainterSW& p) { p.drawHLine(~0u, {-2, 3}, 12); }, {-2, 3, 12, 1}},
        {"line below", [](PainterSW& p) { p.drawHLine(~0u, {0, 4}, 12); }, {0, 4, 12, 1}},
        {"column across top and bottom", [](PainterSW& p) { p.drawVLine(~0u, {4, -3}, 12); }, {4, -3, 1, 12}},
        {"column on the last one", [](PainterSW& p) { p.drawVLine(~0u, {5, 0}, 3); }, {5, 0, 1, 3}},
        {"column to the right", [](PainterSW& p) { p.drawVLine(~0u, {6, 0}, 3); }, {6, 0, 1, 3}},
    };
    for (const Case& c : cases) {
        Canvas canvas(9, 7, 0);
        canvas.painter.setOrigin({1, 1});
        canvas.painter.setClipRect({1, 0, 5, 4});
        c.draw(canvas.painter);
        const BasicRect<int> clip{2, 1, 5, 4};
        for (int y = 0; y < 7; ++y)
            for (int x = 0; x < 9; ++x)
                EXPECT_EQ(canvas.at(x, y) != 0, clip.contains(x, y) && c.shape.contains(x - 1, y - 1)) << c.name << " at " << x << ", " << y;
    }
}

TEST(PainterRect, OutlineBlendsEachPixelOnce)
{
    // 0x80FFFFFF over black: once 127, twice 127 + 64 = 191.
    struct Case { BasicRect<int> rect; std::vector<const char*> rows; };
    const Case cases[] = {
        {{1, 1, 4, 1}, {"......", ".1111.", "......", "......", "......"}},
        {{1, 1, 4, 2}, {"......", ".1111.", ".1111.", "......", "......"}},
        {{1, 1, 4, 3}, {"......", ".1111.", ".1..1.", ".1111.", "......"}},
        {{1, 1, 1, 3}, {"......", ".1....", ".2....", ".1....", "......"}},
        {{1, 1, 4, 0}, {"......", "......", "......", "......", "......"}},
    };
    for (const Case& c : cases) {
        Canvas canvas(6, 5, 0xFF000000);
        canvas.painter.drawRect(0x80FFFFFF, c.rect);
        for (int y = 0; y < 5; ++y)
            for (int x = 0; x < 6; ++x) {
                const char mark = c.rows[static_cast<std::size_t>(y)][x];
                EXPECT_EQ(canvas.at(x, y), mark == '.' ? 0xFF000000 : mark == '1' ? 0xFF7F7F7F : 0xFFBFBFBF)
                    << c.rect.width << "x" << c.rect.height << " at " << x << ", " << y;
            }
    }
}

TEST(PainterBlit, CutsThePairOfRectsAtEveryEdge)
{
    // A 4 × 3 image copied with origin (1, 1) into the device clip (1, 1, 7, 5) of 9 × 7. A
    // surface pixel shows image pixel (u, v) when it lies in the clip, (u, v) in the source rect
    // and in the image.
    std::vector<Color> bits;
    for (Color i = 1; i <= 12; ++i)
        bits.push_back(0x40000000 | i); // alpha kept: copied, not blended
    const auto image = MakeImage(4, 3, false, bits);
    struct Case { BasicPoint<int> point; BasicRect<int> source; };
    const Case cases[] = {{{2, 2}, {0, 0, 4, 3}}, {{-2, 1}, {0, 0, 4, 3}},  {{5, 1}, {0, 0, 4, 3}},  {{2, -2}, {0, 0, 4, 3}},
                          {{2, 4}, {0, 0, 4, 3}}, {{2, 2}, {-1, -2, 4, 3}}, {{1, 0}, {2, 1, 5, 5}}, {{2, 2}, {4, 0, 2, 2}}};
    const BasicRect<int> clip{1, 1, 7, 5};
    for (const Case& c : cases) {
        Canvas canvas(9, 7, 0);
        canvas.painter.setDeviceClip(clip);
        canvas.painter.setOrigin({1, 1});
        canvas.painter.drawImage(*image, c.point, c.source);
        for (int y = 0; y < 7; ++y)
            for (int x = 0; x < 9; ++x) {
                const int u = x - 1 - c.point.x + c.source.x, v = y - 1 - c.point.y + c.source.y;
                const bool shown = clip.contains(x, y) && c.source.contains(u, v) && BasicRect<int>{0, 0, 4, 3}.contains(u, v);
                EXPECT_EQ(canvas.at(x, y), shown ? bits[static_cast<std::size_t>(v * 4 + u)] : 0u)
                    << "point " << c.point.x << ", " << c.point.y << " at " << x << ", " << y;
            }
    }
}

TEST(PainterBlit, OverlappingCopyOnOneSurface)
{
    // Down, up, right, left and diagonally by one pixel.
    struct Case { BasicPoint<int> point; BasicRect<int> source; };
    const Case cases[] = {{{0, 1}, {0, 0, 5, 3}}, {{0, 0}, {0, 1, 5, 3}}, {{1, 0}, {0, 0, 4, 4}}, {{0, 0}, {1, 0, 4, 4}}, {{1, 1}, {0, 0, 4, 3}}};
    for (const Case& c : cases) {
        std::vector<Color> before;
        for (Color i = 0; i < 20; ++i)
            before.push_back(0xFF000000 | i);
        const auto image = MakeImage(5, 4, false, before);
        PainterSW painter(image->lock().first, 20, {5, 4});
        painter.drawImage(*image, c.point, c.source);
        const Color* after = image->lock().first;
        for (int y = 0; y < 4; ++y)
            for (int x = 0; x < 5; ++x) {
                const BasicRect<int> target{c.point.x, c.point.y, c.source.width, c.source.height};
                const int from = target.contains(x, y) ? (y - c.point.y + c.source.y) * 5 + x - c.point.x + c.source.x : y * 5 + x;
                EXPECT_EQ(after[y * 5 + x], before[static_cast<std::size_t>(from)]) << x << ", " << y;
            }
    }
    // Blending within one row reads each source pixel before it is overwritten: red over blue
    // gives 0xFFFE0000, blue over red 0xFF0000FE.
    const auto row = MakeImage(5, 1, true, {0xFF0000FF, 0xFFFF0000, 0xFF0000FF, 0xFFFF0000, 0xFF0000FF});
    PainterSW painter(row->lock().first, 20, {5, 1});
    painter.drawImage(*row, {1, 0}, {0, 0, 4, 1});
    EXPECT_EQ(std::vector<Color>(row->lock().first, row->lock().first + 5),
              (std::vector<Color>{0xFF0000FF, 0xFF0000FE, 0xFFFE0000, 0xFF0000FE, 0xFFFE0000}));
}

TEST(PainterPixel, GetPixelOverWhiteNegativePitchAndCopyOut)
{
    // Opaque pixels come back as they are: floor(-x * 255 / 256) is -x for 0 < x < 256.
    const std::pair<Color, Color> cases[] = {
        {0x80000000, 0xFF7F7F7F}, {0xFF102030, 0xFF102030}, {0x00123456, 0xFFFFFFFF}, {0x40FF0000, 0xFFFFBFBF}};
    for (const auto& [stored, expected] : cases) {
        Canvas canvas(3, 3, 0);
        canvas.at(2, 1) = stored;
        canvas.painter.setOrigin({1, 1});
        canvas.painter.setClipRect({5, 5, 1, 1}); // no clip applies
        EXPECT_EQ(canvas.painter.getPixel(1, 0), expected);
    }
    // A negative pitch runs rows upwards from the pixels given, for both kinds of drawing.
    std::vector<Color> memory(12, 0);
    PainterSW upwards(memory.data() + 8, -16, {4, 3});
    upwards.fillRect(0xFF000000, {0, 0, 4, 1});
    const auto row1 = Box(0.0, 1.0, 4.0, 2.0);
    upwards.fillPolygon(0xFFFFFFFF, row1.data(), 4, 1.0);
    EXPECT_EQ(memory, (std::vector<Color>{0, 0, 0, 0, ~0u, ~0u, ~0u, ~0u, 0xFF000000, 0xFF000000, 0xFF000000, 0xFF000000}));
    // copyToImage: the source rect moved by the origin, cut to the surface and to the image.
    upwards.putPixel(0xFF00FF00, 3, 1);
    upwards.setOrigin({1, 0});
    ImageSW out({2, 2});
    upwards.copyToImage({1, 0, 5, 5}, out, {0, 0});
    EXPECT_EQ(std::vector<Color>(out.lock().first, out.lock().first + 4), (std::vector<Color>{0xFF000000, 0xFF000000, ~0u, 0xFF00FF00}));
}

TEST(PainterAgg, CoverageSumsToArea)
{
    std::vector<BasicPoint<double>> disc;
    const int n = 256;
    const double pi = std::acos(-1.0), r = 15.0;
    for (int i = 0; i < n; ++i)
        disc.push_back({30.3 + r * std::cos(2 * pi * i / n), 20.6 + r * std::sin(2 * pi * i / n)});
    auto twice = Box(10.0, 10.0, 20.0, 20.0);
    twice.insert(twice.end(), twice.begin(), twice.end());
    struct Case { const char* name; std::vector<BasicPoint<double>> points; BasicRect<int> clip; double area, perimeter; };
    const Case cases[] = {
        {"rect", Box(10.25, 5.5, 40.75, 25.25), {0, 0, 64, 48}, 30.5 * 19.75, 100.5},
        {"disc", disc, {0, 0, 64, 48}, 0.5 * n * r * r * std::sin(2 * pi / n), 2 * pi * r},
        {"rect cut by the clip", Box(-10.0, -10.0, 50.0, 50.0), {5, 7, 30, 20}, 600.0, 100.0},
        {"square traced twice, non-zero", twice, {0, 0, 64, 48}, 100.0, 40.0},
    };
    for (const Case& c : cases) {
        Canvas canvas(64, 48, 0);
        canvas.painter.setDeviceClip(c.clip);
        canvas.painter.fillPolygon(0xFFFFFFFF, c.points.data(), static_cast<int>(c.points.size()), 1.0);
        EXPECT_NEAR(canvas.covered(), c.area, c.perimeter / 128) << c.name;
    }
    // Pixel by pixel, each pixel's share of the rect, in 256ths and at most 255.
    Canvas canvas(64, 48, 0);
    const auto rect = Box(10.25, 5.5, 40.75, 25.25);
    canvas.painter.fillPolygon(0xFFFFFFFF, rect.data(), 4, 1.0);
    for (int y = 0; y < 48; ++y)
        for (int x = 0; x < 64; ++x) {
            const double share = std::max(0.0, std::min(x + 1.0, 40.75) - std::max(x + 0.0, 10.25)) *
                                 std::max(0.0, std::min(y + 1.0, 25.25) - std::max(y + 0.0, 5.5));
            EXPECT_NEAR(AlphaOf(canvas.at(x, y)), std::min(255.0, share * 256), 1.0) << x << ", " << y;
        }
}

TEST(PainterAgg, StrokeWidthFromCoverage)
{
    // Butt caps: a stroke covers length × width; a right-angle miter join adds back exactly the
    // corner the two rects overlap, a round join a quarter disc of it.
    const double pi = std::acos(-1.0);
    struct Case { const char* name; std::vector<BasicPoint<double>> points; double width, length, corner; int kind; };
    const Case cases[] = {
        {"horizontal line", {{5.0, 10.5}, {45.0, 10.5}}, 1.0, 40.0, 0.0, 0},
        {"vertical line", {{20.3, 3.0}, {20.3, 43.0}}, 2.5, 40.0, 0.0, 0},
        {"slanted line", {{5.0, 5.0}, {5.0 + 40 * std::cos(pi / 6), 5.0 + 40 * std::sin(pi / 6)}}, 6.0, 40.0, 0.0, 0},
        {"polyline, miter join", {{10.0, 10.0}, {40.0, 10.0}, {40.0, 30.0}}, 6.0, 50.0, 0.0, 1},
        {"curve at step 1, round join", {{10.0, 10.0}, {40.0, 10.0}, {40.0, 30.0}}, 6.0, 50.0, 9.0 - pi * 9.0 / 4, 2},
    };
    for (const Case& c : cases) {
        Canvas canvas(64, 48, 0);
        const int count = static_cast<int>(c.points.size());
        if (c.kind == 0)
            canvas.painter.drawLine(0xFFFFFFFF, c.points[0], c.points[1], c.width);
        else if (c.kind == 1)
            canvas.painter.drawPolyline(0xFFFFFFFF, c.points.data(), count, c.width);
        else
            canvas.painter.drawCurve(0xFFFFFFFF, c.points.data(), count, c.width, 1.0);
        EXPECT_NEAR(canvas.covered(), c.length * c.width - c.corner, 2 * (c.length + c.width) / 128) << c.name;
    }
}

TEST(PainterAgg, CurveStepLimitedToOnePoint)
{
    // 8 points 1 apart and 2 up or down: n² / Σd² = 64 / 35, limited to a step of 1.
    std::vector<BasicPoint<double>> zigzag;
    for (int i = 0; i < 8; ++i)
        zigzag.push_back({10.0 + i, i % 2 ? 12.0 : 10.0});
    const auto draw = [&](double smoothness) {
        Canvas canvas(24, 24, 0);
        canvas.painter.drawCurve(0xFFFFFFFF, zigzag.data(), 8, 1.0, smoothness);
        return canvas.pixels;
    };
    EXPECT_EQ(draw(0.0), draw(1.0));
    EXPECT_NE(draw(0.0), draw(35.0 / 64)); // the step the rule gives before its limit
}

TEST(PainterAgg, ParallelogramBlitsReproducePixels)
{
    // Whole-pixel maps: each surface pixel's centre lands on a source pixel's centre.
    std::mt19937 random(7);
    std::vector<Color> bits;
    for (int i = 0; i < 24; ++i)
        bits.push_back(0xFF000000 | (random() & 0xFFFFFF));
    const auto image = MakeImage(6, 4, true, bits);
    using Map = std::function<bool(int x, int y, int& u, int& v)>;
    struct Case { const char* name; Op draw; Map map; };
    const double corners[6] = {4.0, 2.0, 10.0, 2.0, 10.0, 6.0};
    const Case cases[] = {
        {"identity, origin (1, 1)",
         [&](PainterSW& p) { p.setOrigin({1, 1}); p.drawImageParallelogram(*image, corners, {0, 0, 6, 4}); },
         [](int x, int y, int& u, int& v) { u = x - 5; v = y - 3; return true; }},
        {"90 degrees about pivot (2, 1) at (20, 10)",
         [&](PainterSW& p) { p.drawImageRotated(*image, {20.0, 10.0}, 90.0, {0, 0, 6, 4}, {2, 1}); },
         [](int x, int y, int& u, int& v) { u = y - 8; v = 20 - x; return true; }}, // x = 20 + 1 - 1 - v, y = 10 - 2 + u
        {"180 degrees about the middle",
         [&](PainterSW& p) { p.drawImageRotated(*image, {20.0, 10.0}, 180.0, {0, 0, 6, 4}); },
         [](int x, int y, int& u, int& v) { u = 22 - x; v = 11 - y; return true; }},
        {"right half, pivot shifted by the rect's x",
         [&](PainterSW& p) { p.drawImageRotated(*image, {10.0, 10.0}, 0.0, {3, 0, 3, 4}); },
         [](int x, int y, int& u, int& v) { u = x - 6 + 3; v = y - 8; return u >= 3; }}, // pivot (4, 2): corners from (6, 8)
    };
    for (const Case& c : cases) {
        Canvas canvas(32, 24, 0);
        c.draw(canvas.painter);
        for (int y = 0; y < 24; ++y)
            for (int x = 0; x < 32; ++x) {
                int u = 0, v = 0;
                const bool shown = c.map(x, y, u, v) && u >= 0 && u < 6 && v >= 0 && v < 4;
                EXPECT_EQ(canvas.at(x, y), shown ? bits[static_cast<std::size_t>(v * 6 + u)] : 0u) << c.name << " at " << x << ", " << y;
            }
    }
    // Half a pixel along: each inside pixel is the rounded mean of two, (a + b + 1) >> 1.
    Canvas canvas(5, 1, 0);
    const double shifted[6] = {0.5, 0.0, 3.5, 0.0, 3.5, 1.0};
    canvas.painter.drawImageParallelogram(*MakeImage(3, 1, false, {0xFF0A0A0A, 0xFF151515, 0xFF282828}), shifted, {0, 0, 3, 1});
    EXPECT_EQ(canvas.at(1, 0), 0xFF101010u);
    EXPECT_EQ(canvas.at(2, 0), 0xFF1F1F1Fu);
}

}  // namespace
}  // namespace OV::Testing
