// Layouts within layouts: a layout that embeds itself, and a DynamicBuilder that changes
// states, letting each state's resources go.
#include "Scene.h"

#include "widgets/layout/Builder.h"
#include "widgets/layout/DynamicBuilder.h"

#include <gtest/gtest.h>

namespace OV::Testing {
namespace {

using namespace CFW::Widgets;
using CFW::GUI::Widget;

TEST(LayoutBuilders, LayoutsThatEmbedThemselvesStop)
{
    Scene scene;
    scene.file("self.xml", R"(<Layout><Builder Name="me" Layout="self.xml"/><Builder Name="me2" Layout="self.xml"/></Layout>)");
    scene.file("a.xml", R"(<Layout><DynamicBuilder Name="b" Layout0="b.xml"/></Layout>)");
    scene.file("b.xml", R"(<Layout><Builder Name="a" Layout="a.xml"/></Layout>)");
    const auto layout = scene.build(R"(<Builder Name="self" Layout="self.xml"/><Builder Name="a" Layout="a.xml"/>)");
    EXPECT_NE(nullptr, Scene::widget<Builder>(*layout, "self").getLayout());
    EXPECT_EQ(nullptr, Scene::widget<Builder>(*layout, "self.me").getLayout());
    EXPECT_EQ(nullptr, Scene::widget<Builder>(*layout, "self.me2").getLayout());
    const DynamicBuilder& b = Scene::widget<DynamicBuilder>(*layout, "a.b");
    ASSERT_NE(nullptr, b.getLayout());
    EXPECT_EQ(nullptr, Scene::widget<Builder>(*b.getLayout(), "a").getLayout());
}

TEST(LayoutBuilders, DynamicBuilderChangesStates)
{
    Scene scene;
    scene.image("a.tga", 1, 1, {0xFF0000FF});
    scene.image("b.tga", 1, 1, {0xFF00FF00});
    scene.image("shared.tga", 1, 1, {0xFFFF0000});
    scene.file("s0.xml", R"(<Layout SizeW="10" SizeH="11"><StaticImage Name="w" Image="a.tga"/>)"
                         R"(<StaticImage Image="shared.tga"/></Layout>)");
    scene.file("s1.xml", R"(<Layout SizeW="20" SizeH="21"><StaticImage Name="w" Image="b.tga"/>)"
                         R"(<StaticImage Image="shared.tga"/></Layout>)");
    const auto layout = scene.build(R"(<DynamicBuilder Name="d" Layout0="s0.xml" Layout1="s1.xml" Layout3="s0.xml")"
                                    R"( DefaultState="1" PositionX="4"/>)");
    DynamicBuilder& d = Scene::widget<DynamicBuilder>(*layout, "d");
    EXPECT_EQ((std::vector<int>{4, 0, 20, 21}), RectOf(d));
    EXPECT_EQ(1, d.getLayoutIndex());

    // Pictures changed on disk show whether the manager read them again.
    scene.image("a.tga", 2, 2, std::vector<std::uint32_t>(4, 0xFF0000FF));
    scene.image("b.tga", 2, 2, std::vector<std::uint32_t>(4, 0xFF00FF00));
    scene.image("shared.tga", 2, 2, std::vector<std::uint32_t>(4, 0xFFFF0000));
    d.setLayoutIndex(0);
    EXPECT_EQ((std::vector<int>{4, 0, 10, 11}), RectOf(d));
    EXPECT_EQ(2, scene.loadedSize("b.tga").x) << "the old state's picture was let go";
    EXPECT_EQ(2, scene.loadedSize("shared.tga").x) << "a picture both states use is read again, its count having reached 0";
    EXPECT_EQ(2, Scene::widget<Widget>(*d.getLayout(), "w").getRect().width);
    scene.window.timer();
    EXPECT_EQ(2u, d.getChildren().size());

    Widget* const shown = &Scene::widget<Widget>(*d.getLayout(), "w");
    d.setLayoutIndex(0);
    EXPECT_EQ(shown, &Scene::widget<Widget>(*d.getLayout(), "w")) << "the same state again does nothing";
    // No state 3, since "Layout2" ends the series: empty, at its size; the old widgets go at the
    // end of the callback.
    d.setLayoutIndex(3);
    EXPECT_EQ(nullptr, d.getLayout());
    EXPECT_EQ((std::vector<int>{4, 0, 10, 11}), RectOf(d));
    scene.window.timer();
    EXPECT_TRUE(d.getChildren().empty());
    scene.image("a.tga", 3, 3, std::vector<std::uint32_t>(9, 0xFF0000FF));
    EXPECT_EQ(3, scene.loadedSize("a.tga").x);

    // States that cannot be shown leave it empty.
    const auto hostile = scene.build(R"(<DynamicBuilder Name="d" DefaultState="-3"/>)"
                                     R"(<DynamicBuilder Name="e" Layout0="" Layout1="missing.xml" DefaultState="1"/>)");
    for (const char* name : {"d", "e"})
        EXPECT_EQ(nullptr, Scene::widget<DynamicBuilder>(*hostile, name).getLayout()) << name;
}

}  // namespace
}  // namespace OV::Testing
