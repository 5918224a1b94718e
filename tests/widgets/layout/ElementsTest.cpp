// Building widgets from elements: the class each element name makes, elements that make
// nothing, the attributes every widget takes, styles, and finding widgets by name.
#include "Scene.h"

#include "graphics/BitMask.h"
#include "widgets/layout/Builder.h"
#include "widgets/layout/DynamicBuilder.h"
#include "widgets/layout/LayoutInterfaces.h"
#include "widgets/statics/BlendImages.h"
#include "widgets/statics/DragIcon.h"
#include "widgets/statics/Group.h"
#include "widgets/statics/Highlight.h"
#include "widgets/statics/StaticImage.h"
#include "widgets/statics/StaticResizableImage.h"
#include "widgets/statics/StaticText.h"

#include <typeindex>

#include <gtest/gtest.h>

namespace OV::Testing {
namespace {

using namespace CFW::Widgets;
using CFW::GUI::Widget;
using Error = LayoutManager::Error;

// Resources most cases use: a picture 2 × 2 and a layout to embed.
void AddCommonFiles(const Scene& scene)
{
    scene.image("red.tga", 2, 2, std::vector<std::uint32_t>(4, 0xFFFF0000));
    scene.file("inner.xml", R"(<Layout SizeW="30" SizeH="40"><Group Name="leaf"/></Layout>)");
}

TEST(LayoutElements, EachNameMakesItsClassOrNothing)
{
    const struct {
        const char* xml;
        std::type_index made; // typeid(void): nothing, children neither
    } cases[] = {
        {R"(<Builder Layout="inner.xml"/>)", typeid(Builder)},
        {R"(<DynamicBuilder Layout0="inner.xml"/>)", typeid(DynamicBuilder)},
        {R"(<StaticImage Image="red.tga"/>)", typeid(StaticImage)},
        {R"(<StaticResizableImage Image="red.tga"/>)", typeid(StaticResizableImage)},
        {R"(<StaticText Font="red.tga" Text="x"/>)", typeid(StaticText)},
        {R"(<Group/>)", typeid(Group)},
        {R"(<Blender/>)", typeid(Blender)},
        {R"(<Highlight/>)", typeid(Highlight)},
        {R"(<DragIcon Image="red.tga"/>)", typeid(DragIcon)},
        {R"(<BlendImages ImageA="red.tga" ImageB="red.tga"/>)", typeid(BlendImages)},
        {R"(<Builder><Group/></Builder>)", typeid(void)},
        {R"(<StaticImage Image="missing.tga"><Group/></StaticImage>)", typeid(void)},
        {R"(<StaticImage Image="bad.tga"><Group/></StaticImage>)", typeid(void)},
        {R"(<StaticImage Image="bad.tga.gz"><Group/></StaticImage>)", typeid(void)},
        {R"(<StaticImage><Group/></StaticImage>)", typeid(void)},
        {R"(<StaticResizableImage Image="missing.tga"><Group/></StaticResizableImage>)", typeid(void)},
        {R"(<StaticText Text="x"><Group/></StaticText>)", typeid(void)},
        {R"(<DragIcon Image="missing.tga"><Group/></DragIcon>)", typeid(void)},
        {R"(<BlendImages ImageA="red.tga" ImageB="missing.tga"><Group/></BlendImages>)", typeid(void)},
        {R"(<Knobby><Group/></Knobby>)", typeid(void)},
        {R"(<group/>text<!-- comment -->)", typeid(void)},
        {R"(<AuxImage Name="a" Image="red.tga"/>)", typeid(void)},
    };
    for (const auto& c : cases) {
        Scene scene;
        AddCommonFiles(scene);
        scene.file("bad.tga", "not a picture");
        scene.file("bad.tga.gz", std::string("\x1f\x8b\x08\0garbage\x10\0\0\0", 16));
        const auto layout = scene.build(c.xml);
        const std::vector<Widget*>& made = scene.root.getChildren();
        if (c.made == typeid(void)) {
            EXPECT_TRUE(made.empty()) << c.xml;
            continue;
        }
        ASSERT_EQ(1u, made.size()) << c.xml;
        EXPECT_EQ(c.made, std::type_index(typeid(*made[0]))) << c.xml;
    }
}

TEST(LayoutElements, CommonAttributes)
{
    // A mask 3 × 1 with alpha 100, 200 and 128.
    const std::vector<std::uint32_t> mask = {0x64000000, 0xC8000000, 0x80000000};
    const struct {
        const char* attributes;
        bool visible, enabled, topMost;
        std::uint32_t color;
        const char* hits; // of the mask's three pixels; empty without a mask
    } cases[] = {
        {"", true, true, false, 0xFFFFFFFF, ""},
        {R"(Visible="0")", false, true, false, 0xFFFFFFFF, ""},
        {R"(Visible="1")", true, true, false, 0xFFFFFFFF, ""},
        {R"(Enabled="0" Visible="2")", true, false, false, 0xFFFFFFFF, ""},
        {R"(Visible="no" Enabled="" TopMost="1x" ColorA="-7")", false, false, true, 0xF9FFFFFF, ""}, // C's atoi
        {R"(TopMost="1")", true, true, true, 0xFFFFFFFF, ""},
        {R"(TopMost="2")", true, true, false, 0xFFFFFFFF, ""},
        {R"(ColorR="16")", true, true, false, 0xFF10FFFF, ""},
        {R"(ColorA="0" ColorB="3")", true, true, false, 0x00FFFF03, ""},
        {R"(MaskImage="mask.tga")", true, true, false, 0xFFFFFFFF, "011"},
        {R"(MaskImage="mask.tga" MaskThreshold="50")", true, true, false, 0xFFFFFFFF, "111"},
        {R"(MaskImage="mask.tga" MaskThreshold="300")", true, true, false, 0xFFFFFFFF, "011"},
        {R"(MaskImage="mask.tga" MaskThreshold="-1")", true, true, false, 0xFFFFFFFF, "011"},
        {R"(MaskImage="mask.tga" MaskThreshold="255")", true, true, false, 0xFFFFFFFF, "000"},
        {R"(MaskImage="missing.tga")", true, true, false, 0xFFFFFFFF, ""},
    };
    for (const auto& c : cases) {
        Scene scene;
        scene.image("mask.tga", 3, 1, mask, true);
        const auto layout = scene.build(std::string("<Group Name=\"g\" SizeW=\"3\" SizeH=\"1\" ") + c.attributes + "/>");
        const Widget& g = Scene::widget<Widget>(*layout, "g");
        EXPECT_EQ(c.visible, g.isVisible()) << c.attributes;
        EXPECT_EQ(c.enabled, g.isEnabled()) << c.attributes;
        EXPECT_EQ(c.topMost, g.isTopMost()) << c.attributes;
        EXPECT_EQ(c.color, g.getColor()) << c.attributes;
        std::string hits;
        for (int x = 0; g.getMask() != nullptr && x < 3; ++x)
            hits += g.isPointInside({x, 0}) ? '1' : '0';
        EXPECT_EQ(c.hits, hits) << c.attributes;
    }
}

TEST(LayoutElements, StylesGiveDefaults)
{
    Scene scene;
    AddCommonFiles(scene);
    scene.file("image.xml", R"(<StaticImage Image="red.tga" PositionX="5" PositionY="6"/>)");
    scene.file("self.xml", R"(<Group Style="self.xml" SizeW="4"/>)");
    scene.file("loopA.xml", R"(<Group Style="loopB.xml" SizeW="3"/>)");
    scene.file("loopB.xml", R"(<Group Style="loopA.xml" SizeH="5"/>)");
    const auto layout = scene.build(R"(<StaticImage Name="i" Style="image.xml" PositionX="7"/>)"
                                    R"(<Group Name="self" Style="self.xml"/>)"
                                    R"(<Group Name="loop" Style="loopA.xml"/>)");
    // The element's own attributes win; a style's "Style" is never followed.
    EXPECT_EQ((std::vector<int>{7, 6, 2, 2}), RectOf(Scene::widget<Widget>(*layout, "i")));
    EXPECT_EQ((std::vector<int>{0, 0, 4, 0}), RectOf(Scene::widget<Widget>(*layout, "self")));
    EXPECT_EQ((std::vector<int>{0, 0, 3, 0}), RectOf(Scene::widget<Widget>(*layout, "loop")));
}

TEST(LayoutElements, StyleErrors)
{
    const struct {
        const char* element;
        const char* message;
    } cases[] = {
        {R"(<Group Style=""/>)", "Empty Style attribute"},
        {R"(<Group Style="none.xml"/>)", "Style not found: none.xml"},
        {R"(<Group Style="image.xml"/>)", "Style for <Group> is of a different widget type in: image.xml"},
        {R"(<Group Style="empty.xml"/>)", "Style for <Group> is of a different widget type in: empty.xml"},
        {R"(<Knobby Style="image.xml"/>)", "Style for <Knobby> is of a different widget type in: image.xml"},
    };
    for (const auto& c : cases) {
        Scene scene;
        AddCommonFiles(scene);
        scene.file("image.xml", R"(<StaticImage Image="red.tga"/>)");
        scene.file("empty.xml", "");
        try {
            scene.build(std::string(R"(<StaticImage Image="red.tga"/>)") + c.element + "<Group/>");
            ADD_FAILURE() << c.element;
        } catch (const LayoutManager::StyleError& error) {
            EXPECT_EQ(std::string(c.message), error.what());
        }
        // What was made before stays with the parent, and goes with it.
        EXPECT_EQ(1u, scene.root.getChildren().size()) << c.element;
    }
}

TEST(LayoutElements, GetWidgetByNameAndPath)
{
    Scene scene;
    AddCommonFiles(scene);
    scene.file("middle.xml", R"(<Layout><Builder Name="inner" Layout="inner.xml"/></Layout>)");
    scene.file("other.xml", R"(<Other SizeW="5" SizeH="6"><Group/></Other>)");
    const auto layout = scene.build(R"(<Group Name="g" PositionX="1"/><Group Name="g" PositionX="2"/>)"
                                    R"(<Builder Name="outer" Layout="middle.xml"/>)"
                                    R"(<Builder Name="empty" Layout="missing.xml"/>)"
                                    R"(<Builder Name="other" Layout="other.xml" PositionX="7" SizeW="99"/>)");
    EXPECT_EQ(2, Scene::widget<Group>(*layout, "g").getRect().x);
    // A builder's size is its document's, a document of another root gives no widgets.
    EXPECT_EQ((std::vector<int>{0, 0, 30, 40}), RectOf(Scene::widget<Widget>(*layout, "outer.inner")));
    EXPECT_EQ((std::vector<int>{7, 0, 5, 6}), RectOf(Scene::widget<Widget>(*layout, "other")));
    EXPECT_TRUE(Scene::widget<Widget>(*layout, "other").getChildren().empty());
    Group* leaf = nullptr;
    layout->getWidget("outer.inner.leaf", leaf);
    EXPECT_NE(nullptr, leaf);

    const struct {
        const char* name;
        const char* message;
        bool notFound;
    } cases[] = {
        {"nobody", "Widget nobody not found", true},
        {"outer.inner.nobody", "Widget nobody not found", true},
        {"nobody.leaf", "Widget nobody not found", true},
        {"g.leaf", "The widget g is of class Group, not Builder", false},
        {"outer", "The widget outer is of class Builder, not Group", false},
        {"outer.inner.leaf.x", "The widget leaf is of class Group, not Builder", false},
        {"empty.leaf", "The Builder empty has no layout", true},
    };
    for (const auto& c : cases) {
        Group* out = nullptr;
        try {
            layout->getWidget(c.name, out);
            ADD_FAILURE() << c.name;
        } catch (const Error& error) {
            EXPECT_EQ(c.message, std::string(error.what()));
            EXPECT_EQ(c.notFound, dynamic_cast<const LayoutManager::WidgetNotFound*>(&error) != nullptr) << c.name;
        }
    }
    Group* out = &Scene::widget<Group>(*layout, "g");
    EXPECT_THROW(layout->getWidget("nobody", out), Error);
    EXPECT_EQ(nullptr, out);

    // A widget that goes is no longer found; the layout lets its top level go with it.
    Scene::widget<Widget>(*layout, "outer").destroy();
    scene.window.timer();
    EXPECT_THROW(layout->getWidget("outer.inner", out), LayoutManager::WidgetNotFound);
}

// A widget with scroll bars and extra resources, to see what the layout hands it.
class ListProbe : public Widget, public Scrollable, public AuxResourceUser {
public:
    using Widget::Widget;
    void setScrollBars(Widget* horizontal, Widget* vertical, Widget* corner) override { bars = {horizontal, vertical, corner}; }
    void addAuxImage(const std::string& name, CFW::Graphics::Image&) override { aux += "image " + name + ";"; }
    void addAuxFont(const std::string& name, CFW::Graphics::Font&) override { aux += "font " + name + ";"; }

    std::vector<Widget*> bars;
    std::string aux;
};

BuildFunction WithListProbe(const std::string& name)
{
    if (name == "List")
        return [](ElementContext& context) -> Widget* { return new ListProbe(context.parent(), context.rect()); };
    return FindElement(name);
}

TEST(LayoutElements, ScrollBarsAndAuxResources)
{
    Scene scene;
    AddCommonFiles(scene);
    const auto layout = scene.build(R"(<List Name="list" HScrollBar="h" VScrollBar="nowhere" Corner="c.leaf">)"
                                    R"(  <AuxImage Name="one" Image="red.tga"/><AuxImage Image="red.tga"/>)"
                                    R"(  <AuxImage Name="two" Image="missing.tga"/><AuxFont Name="f" Font="red.tga"/>)"
                                    R"(</List>)"
                                    R"(<Group Name="h"/><Builder Name="c" Layout="inner.xml"/>)",
                                    WithListProbe);
    const ListProbe& list = Scene::widget<ListProbe>(*layout, "list");
    EXPECT_EQ((std::vector<Widget*>{&Scene::widget<Widget>(*layout, "h"), nullptr, &Scene::widget<Widget>(*layout, "c.leaf")}),
              list.bars);
    EXPECT_EQ("image one;font f;", list.aux);
}

}  // namespace
}  // namespace OV::Testing
