// Painting: which 64-pixel tiles a change makes dirty and how a paint gathers them into rects,
// worked out by hand from the tile grid; the two passes and each widget's clip, checked by the
// order of paint calls and by the pixels of the back buffer.
#include "Tree.h"

#include "graphics/Image.h"

#include <memory>

#include <gtest/gtest.h>

namespace OV::Testing {
namespace {

using namespace CFW::GUI;
using CFW::BasicRect;
using CFW::Graphics::Color;

// The rects of the root's paint calls: the rects the tiles were gathered into.
std::vector<std::string> RootPaints(Tree& tree)
{
    std::vector<std::string> paints;
    for (const std::string& line : tree.take()) {
        if (line.rfind("paint root ", 0) == 0)
            paints.push_back(line.substr(11));
    }
    return paints;
}

TEST(WidgetPaint, DirtyTilesGatherIntoRects)
{
    struct Case {
        const char* what;
        std::vector<BasicRect<int>> invalidated;
        BasicRect<int> exposed; // painted before the window's own paint, when not empty
        std::vector<std::vector<std::string>> paints;
    };
    const Case cases[] = {
        {"inside one tile", {{10, 10, 20, 20}}, {}, {{"0,0,64,64"}}},
        {"ending on a boundary marks the next tile", {{64, 0, 64, 64}}, {}, {{"64,0,128,128"}}},
        {"equal runs merge downwards", {{0, 0, 100, 150}}, {}, {{"0,0,128,192"}}},
        {"unequal runs stay apart", {{0, 0, 10, 10}, {0, 64, 70, 10}}, {}, {{"0,0,64,64", "0,64,128,64"}}},
        {"a narrower run below", {{0, 0, 100, 10}, {0, 64, 10, 10}}, {}, {{"0,0,128,64", "0,64,64,64"}}},
        {"two columns merge each", {{0, 0, 10, 100}, {130, 0, 10, 100}}, {}, {{"0,0,64,128", "128,0,64,128"}}},
        {"the grid's last tile", {{250, 250, 6, 6}}, {}, {{"192,192,64,64"}}},
        {"an empty rect marks nothing", {{5, 5, 0, 10}}, {}, {{}}},
        {"tiles outside the paint stay dirty", {{0, 0, 200, 10}}, {0, 0, 10, 10}, {{"0,0,64,64"}, {"64,0,192,64"}}},
    };
    for (const Case& c : cases) {
        Tree tree;
        tree.window.redraw();
        tree.take();
        for (const BasicRect<int>& rect : c.invalidated)
            tree.root.invalidate(rect);
        std::vector<std::vector<std::string>> paints;
        if (c.exposed.width > 0) {
            tree.manager().paint(tree.window, tree.window.painter(), c.exposed);
            paints.push_back(RootPaints(tree));
        }
        tree.window.redraw();
        paints.push_back(RootPaints(tree));
        EXPECT_EQ(c.paints, paints) << c.what;
    }
}

// Each widget copies an opaque picture of its colour over its whole size; the clip decides
// what lands.
TEST(WidgetPaint, PassesAndClipping)
{
    Tree tree;
    Widget& a = tree.add("A", {10, 10, 100, 100});
    Widget& a1 = tree.add("A1", a, {20, 20, 50, 50}); // at (30, 30) in the window
    a1.setTopMost(true);
    tree.add("A1a", a1, {5, 5, 10, 10}); // painted with A1, in pass 1
    tree.add("B", {50, 50, 100, 100});
    tree.add("hidden", {0, 0, 256, 256}).hide();

    std::map<std::string, Color> colors;
    std::map<Color, std::unique_ptr<CFW::Graphics::Image>> pictures;
    tree.manager().getSignals().paint.connect([&](Widget* widget, CFW::Graphics::Painter* painter, const BasicRect<int>&) {
        for (const char* name : {"root", "A", "A1", "A1a", "B", "hidden"}) {
            if (&tree[name] != widget)
                continue;
            std::unique_ptr<CFW::Graphics::Image>& picture = pictures[colors[name]];
            if (!picture) {
                const std::vector<std::uint8_t> bits(256 * 256, 1);
                picture.reset(tree.device.createImageFromBits(bits.data(), {256, 256}, colors[name], colors[name]));
            }
            painter->drawImage(*picture, {0, 0}, {0, 0, 256, 256});
        }
    });
    const auto paint = [&](Color root, Color A, Color A1, Color B) {
        colors = {{"root", root}, {"A", A}, {"A1", A1}, {"B", B}, {"A1a", 0xFF000005}, {"hidden", 0xFFFFFFFF}};
        tree.window.redraw();
    };

    tree.take();
    paint(0xFF000001, 0xFF000002, 0xFF000003, 0xFF000004);
    EXPECT_EQ((std::vector<std::string>{"paint root 0,0,256,256", "paint A 0,0,100,100", "paint B 0,0,100,100",
                                        "paint A1 0,0,50,50", "paint A1a 0,0,10,10"}),
              tree.take());
    struct Probe {
        int x, y;
        Color color;
    };
    const auto check = [&](const std::vector<Probe>& probes) {
        for (const Probe& p : probes)
            EXPECT_EQ(p.color, tree.window.pixel(p.x, p.y)) << p.x << "," << p.y;
    };
    // A1 lies above B although its parent lies below B.
    check({{5, 5, 0xFF000001}, {20, 20, 0xFF000002}, {32, 32, 0xFF000003}, {40, 40, 0xFF000005}, {60, 60, 0xFF000003}, {75, 85, 0xFF000004},
           {120, 120, 0xFF000004}, {200, 200, 0xFF000001}});

    // One tile, (64, 64) to (128, 128): each widget is cut to its part of it.
    tree.root.invalidate({90, 90, 10, 10});
    paint(0xFF000011, 0xFF000012, 0xFF000013, 0xFF000014);
    EXPECT_EQ((std::vector<std::string>{"paint root 64,64,64,64", "paint A 54,54,46,46", "paint B 14,14,64,64",
                                        "paint A1 34,34,16,16"}),
              tree.take());
    check({{70, 70, 0xFF000013}, {40, 40, 0xFF000005}, {100, 100, 0xFF000014}, {127, 127, 0xFF000014},
           {128, 128, 0xFF000004}, {20, 20, 0xFF000002}, {200, 200, 0xFF000001}});
}

}  // namespace
}  // namespace OV::Testing
