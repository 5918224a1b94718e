// Layouts written to hurt: absurd and negative sizes, nesting as deep as the parser allows and
// deeper. Each builds what it can, or nothing. (Unknown names, missing and meaningless
// attributes are cases of the other tests' tables.)
#include "Scene.h"

#include "platform/XmlParse.h"

#include <gtest/gtest.h>

namespace OV::Testing {
namespace {

using namespace CFW::Widgets;
using CFW::GUI::Widget;

TEST(HostileLayouts, SizesAreKeptWithinLimits)
{
    const struct {
        const char* attributes;
        std::vector<int> rect;
    } cases[] = {
        {R"(SizeW="2000000000" SizeH="2000000000")", {0, 0, maxLayoutExtent, maxLayoutExtent}},
        {R"(SizeW="2e9" SizeH="-5")", {0, 0, 2, 0}}, // read as whole numbers: 2
        {R"(PositionX="-2000000000" PositionY="99999999999" SizeW="-2147483648" SizeH="7")", {-maxLayoutExtent, maxLayoutExtent, 0, 7}},
        {R"(PositionX="x" SizeW="" SizeH="")", {0, 0, 0, 0}},
    };
    for (const auto& c : cases) {
        Scene scene;
        scene.image("dot.tga", 1, 1, {0xFF123456});
        scene.file("big.xml", std::string("<Layout ") + c.attributes + "/>");
        const auto layout = scene.build(std::string(R"(<StaticImage Name="i" Image="dot.tga" Tiled="1" )") + c.attributes + "/>"
                                        + R"(<Builder Name="b" Layout="big.xml" )" + c.attributes + "/>");
        for (const char* name : {"i", "b"})
            EXPECT_EQ(c.rect, RectOf(Scene::widget<Widget>(*layout, name))) << c.attributes << " " << name;
        // Tiling a picture of one pixel over such a widget paints the window's part only.
        scene.window.redraw();
        if (c.rect[0] == 0 && c.rect[2] > 2) {
            EXPECT_EQ(0xFF123456u, scene.window.pixel(127, 127)) << c.attributes;
        }
    }
}

std::string Nested(int depth)
{
    std::string xml;
    for (int i = 0; i < depth; ++i)
        xml += R"(<Group SizeW="100" SizeH="100">)";
    xml += R"(<Highlight Name="deepest" SizeW="1" SizeH="1" ColorR="0" ColorG="0" ColorB="255"/>)";
    for (int i = 0; i < depth; ++i)
        xml += "</Group>";
    return xml;
}

TEST(HostileLayouts, NestingAsDeepAsTheParserAllows)
{
    // The root "Layout" and the highlight take two levels.
    const int deepest = Platform::maxXmlDepth - 2;
    for (const int depth : {deepest, deepest + 1}) {
        Scene scene;
        const auto layout = scene.build(Nested(depth));
        if (depth == deepest) {
            EXPECT_EQ(1u, scene.root.getChildren().size());
            Widget* deepestWidget = nullptr;
            layout->getWidget("deepest", deepestWidget);
            int levels = 0;
            for (Widget* w = deepestWidget; w != &scene.root; w = w->getParent())
                ++levels;
            EXPECT_EQ(depth + 1, levels);
            // Painting, picking and deleting go all the way down too.
            scene.window.redraw();
            EXPECT_NE(0u, scene.window.pixel(0, 0));
            EXPECT_EQ(0u, scene.window.pixel(1, 1));
            scene.window.mouseMoved({0, 0}, 0);
        } else {
            EXPECT_TRUE(scene.root.getChildren().empty()) << "refused by the parser: an empty layout";
        }
    }
}

}  // namespace
}  // namespace OV::Testing
