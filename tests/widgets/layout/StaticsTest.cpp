// The static displays, by the pixels they leave and how they move: a picture once or tiled,
// nine parts fitted to a size, a cross-fade on the tick, a picture dragged within limits.
#include "Scene.h"

#include "widgets/statics/BlendImages.h"
#include "widgets/statics/DragIcon.h"

#include <gtest/gtest.h>

namespace OV::Testing {
namespace {

using namespace CFW::Widgets;
using CFW::Graphics::Color;

// The window's pixels from (x, y), `width` × `height`, row by row.
std::vector<Color> Pixels(Scene& scene, int x, int y, int width, int height)
{
    std::vector<Color> pixels;
    for (int row = y; row < y + height; ++row)
        for (int column = x; column < x + width; ++column)
            pixels.push_back(scene.window.pixel(column, row));
    return pixels;
}

TEST(StaticDisplays, PicturesOnceTiledAndInNineParts)
{
    // 24-bit pictures are copied: the window shows their pixels as they are.
    const Color a = 0xFF000001, b = 0xFF000002, c = 0xFF000003, d = 0xFF000004, e = 0xFF000005, f = 0xFF000006,
                g = 0xFF000007, h = 0xFF000008, i = 0xFF000009, none = 0;
    const struct {
        const char* element;
        std::vector<Color> pixels; // the 5 × 4 pixels from (1, 1)
    } cases[] = {
        {R"(<StaticImage Image="two.tga" SizeW="4" SizeH="3"/>)",
         {a, b, none, none, none, /**/ c, d, none, none, none, /**/ none, none, none, none, none, /**/ none, none, none, none, none}},
        {R"(<StaticImage Image="two.tga" Tiled="1" SizeW="3" SizeH="3"/>)",
         {a, b, a, none, none, /**/ c, d, c, none, none, /**/ a, b, a, none, none, /**/ none, none, none, none, none}},
        // Corners as they are, edges and middle repeated.
        {R"(<StaticResizableImage Image="three.tga" ResRectX="1" ResRectY="1" ResRectW="1" ResRectH="1" SizeW="5" SizeH="4"/>)",
         {a, b, b, b, c, /**/ d, e, e, e, f, /**/ d, e, e, e, f, /**/ g, h, h, h, i}},
        // Smaller than the corners: the far ones are cut.
        {R"(<StaticResizableImage Image="three.tga" ResRectX="1" ResRectY="1" ResRectW="1" ResRectH="1" SizeW="2" SizeH="1"/>)",
         {a, c, none, none, none, /**/ none, none, none, none, none, /**/ none, none, none, none, none, /**/ none, none, none, none, none}},
        // A middle that misses the picture: all of it is the middle.
        {R"(<StaticResizableImage Image="two.tga" ResRectX="5" ResRectW="1" ResRectH="1" SizeW="3" SizeH="3"/>)",
         {a, b, a, none, none, /**/ c, d, c, none, none, /**/ a, b, a, none, none, /**/ none, none, none, none, none}},
    };
    for (const auto& test : cases) {
        Scene scene;
        scene.image("two.tga", 2, 2, {a, b, c, d});
        scene.image("three.tga", 3, 3, {a, b, c, d, e, f, g, h, i});
        const auto layout = scene.build(R"(<Group PositionX="1" PositionY="1" SizeW="9" SizeH="9">)" + std::string(test.element) + "</Group>");
        scene.window.redraw();
        EXPECT_EQ(test.pixels, Pixels(scene, 1, 1, 5, 4)) << test.element;
    }
}

TEST(StaticDisplays, BlendImagesFadesOnTheTick)
{
    const Color red = 0xFFFF0000, blue = 0xFF0000FF;
    const auto run = [&](const char* attributes, const std::vector<int>& ticks, const auto& check) {
        Scene scene;
        scene.image("a.tga", 1, 1, {red});
        scene.image("b.tga", 1, 1, {blue});
        const auto layout = scene.build(std::string(R"(<BlendImages Name="x" ImageA="a.tga" ImageB="b.tga" )") + attributes + "/>");
        scene.window.redraw();
        for (int count : ticks) {
            for (int k = 0; k < count; ++k)
                scene.window.timer();
            const bool dirty = !IsEmpty(scene.window.dirtyRect());
            scene.window.redraw();
            check(scene.window.pixel(0, 0), dirty);
        }
    };
    // A quarter of a cycle a second: B in full after 2 s (50 ticks), half-way at 1 s, A again at 4 s.
    std::vector<Color> seen;
    run(R"(Frequency="0.25")", {0, 25, 25, 50}, [&](Color pixel, bool) { seen.push_back(pixel); });
    ASSERT_EQ(4u, seen.size());
    EXPECT_EQ(red, seen[0]);
    EXPECT_LT(0x40u, seen[1] & 0xFF) << std::hex << seen[1];
    EXPECT_LT(0x40u, seen[1] >> 16 & 0xFF) << std::hex << seen[1];
    EXPECT_EQ(blue, seen[2]);
    EXPECT_EQ(red, seen[3]);
    // Five frames a second: a repaint every fifth tick only.
    std::string repaints;
    run(R"(Frequency="1" FPS="5")", {1, 1, 1, 1, 1, 1}, [&](Color, bool dirty) { repaints += dirty ? '1' : '0'; });
    EXPECT_EQ("000010", repaints);
    // A frequency that is no number: A alone, never repainted.
    repaints.clear();
    run(R"(Frequency="inf" FPS="-1")", {1, 1, 30}, [&](Color pixel, bool dirty) { repaints += dirty || pixel != red ? '1' : '0'; });
    EXPECT_EQ("000", repaints);
}

TEST(StaticDisplays, DragIconFollowsWithinItsLimits)
{
    const struct {
        const char* areas;
        CFW::BasicPoint<int> press, to; // in the window
        CFW::BasicPoint<int> position;  // then, in the parent
    } cases[] = {
        {"", {16, 16}, {20, 25}, {9, 14}},
        {"", {16, 16}, {100, 100}, {40, 40}}, // the parent's 50 × 50
        {"", {16, 16}, {0, 0}, {0, 0}},
        {R"(ActiveAreaX="5" ActiveAreaW="5" ActiveAreaH="10")", {16, 16}, {30, 30}, {5, 5}}, // pressed outside the active area
        {R"(ActiveAreaX="5" ActiveAreaW="5" ActiveAreaH="10")", {21, 16}, {30, 30}, {14, 19}},
        {R"(ClipAreaX="5" ClipAreaY="5" ClipAreaW="4" ClipAreaH="4")", {16, 16}, {100, 100}, {5, 5}}, // narrower than the picture
    };
    for (const auto& c : cases) {
        Scene scene;
        scene.image("icon.tga", 10, 10, std::vector<Color>(100, 0xFF00FF00));
        const auto layout = scene.build(R"(<Group PositionX="10" PositionY="10" SizeW="50" SizeH="50">)"
                                        R"(<DragIcon Name="icon" Image="icon.tga" PositionX="5" PositionY="5" )" +
                                        std::string(c.areas) + "/></Group>");
        DragIcon& icon = Scene::widget<DragIcon>(*layout, "icon");
        std::vector<CFW::BasicPoint<int>> moves;
        icon.moved.connect([&](DragIcon*, const CFW::BasicPoint<int>& p) { moves.push_back(p); });
        scene.window.mouseDown(c.press, CFW::Graphics::MouseButton::Left, 0);
        scene.window.mouseMoved(c.to, 0);
        scene.window.mouseUp(c.to, CFW::Graphics::MouseButton::Left, 0);
        scene.window.mouseMoved({c.to.x + 7, c.to.y + 7}, 0); // let go: no more moves
        const CFW::BasicPoint<int> p = icon.getPosition();
        EXPECT_EQ((std::vector<int>{c.position.x, c.position.y}), (std::vector<int>{p.x, p.y})) << c.areas << " to " << c.to.x;
        const bool movedAtAll = c.position.x != 5 || c.position.y != 5;
        EXPECT_EQ(movedAtAll ? 1u : 0u, moves.size()) << c.areas << " to " << c.to.x;
    }
}

}  // namespace
}  // namespace OV::Testing
