// Lists built from layouts with a real outline font (DejaVu Sans at 11 with 3 more: lines of
// 14): scroll bars linked by name and driven both ways, rows sized by item styles and their
// style documents, columns, trees and folder trees read from attributes.
#include "Bench.h"

#include "widgets/lists/FolderTree.h"
#include "widgets/lists/MultiTextList.h"
#include "widgets/lists/ScrollBar.h"
#include "widgets/lists/TextList.h"
#include "widgets/lists/TextTree.h"

namespace OV::Testing {
namespace {

using namespace CFW::Widgets;

struct FontScene : Bench {
    FontScene()
    {
        file("Fonts/DejaVuSans.ttf", ReadFile(VARNEL4_DEJAVU_SANS));
        file("Fonts/T.xml", R"(<Font Source="Fonts/DejaVuSans.ttf" Height="11" AddInterline="3"/>)");
    }
};

std::string Items(int count)
{
    std::string items;
    for (int i = 0; i < count; ++i)
        items += "<Item Text=\"" + std::to_string(i) + "\"/>";
    return items;
}

TEST(ListLayout, ScrollBarsDriveTheListAndFollowIt)
{
    FontScene scene;
    // Rows of 1 + 14 + 1 and a separator: 17, ten of them in 70; the scroll goes to 100. The bar
    // has no arrows: a handle of 70 × 70 / 170 = 28, travelling 42.
    const auto layout = scene.build(R"(
        <TextList Name="L" SizeW="100" SizeH="70" UnselectedFont="Fonts/T.xml" TextPaddingTop="1" TextPaddingBottom="1"
                  ShowSeparator="1" VScrollBar="V" HScrollBar="Missing" Corner="C">)" +
                                    Items(10) + R"(</TextList>
        <ScrollBar Name="V" PositionX="100" SizeW="16" SizeH="70" Vertical="1"/>
        <Group Name="C" PositionX="100" PositionY="70" SizeW="16" SizeH="16"/>)");
    auto& list = Scene::widget<TextList>(*layout, "L");
    auto& bar = Scene::widget<ScrollBar>(*layout, "V");
    EXPECT_EQ(17, list.getRowPitch());
    EXPECT_EQ((std::vector<int>{170, 70, 0}), (std::vector<int>{bar.getRange(), bar.getPage(), bar.getScrollPosition()}));
    EXPECT_EQ((std::vector<int>{0, 28}), (std::vector<int>{bar.handleRect().y, bar.handleRect().height}));
    EXPECT_TRUE(bar.isVisible());
    EXPECT_FALSE(Scene::widget<CFW::GUI::Widget>(*layout, "C").isVisible()); // no horizontal bar

    // 21 pixels of 42 down: half of 100.
    scene.window.mouseDown({108, 10}, 1, 0);
    scene.window.mouseMoved({108, 31}, 1);
    scene.window.mouseUp({108, 31}, 1, 0);
    EXPECT_EQ(50, list.getScroll().y);
    EXPECT_EQ(2, list.rowAt({50, 0})); // 50 / 17

    scene.window.mouseWheel({50, 30}, -1, 0);
    EXPECT_EQ(100, list.getScroll().y);
    EXPECT_EQ(100, bar.getScrollPosition());
    EXPECT_EQ(42, bar.handleRect().y);

    // Fewer items: everything fits, and the bar goes.
    list.setItems(std::vector<std::string>{"one", "two"});
    EXPECT_EQ(0, list.getScroll().y);
    EXPECT_FALSE(bar.isVisible());
}

TEST(ListLayout, BarsShowWhileNeededUnlessAlwaysVisible)
{
    FontScene scene;
    const std::string font = R"( UnselectedFont="Fonts/T.xml" SizeW="50" SizeH="50")";
    const auto layout = scene.build(R"(<TextList VScrollBar="A")" + font + ">" + Items(2) + R"(</TextList>
        <TextList VScrollBar="B" VScrollBarAlwaysVisible="1")" + font + ">" + Items(2) + R"(</TextList>
        <TextList VScrollBar="C")" + font + ">" + Items(9) + R"(</TextList>
        <ScrollBar Name="A" Vertical="1" SizeW="8" SizeH="50"/><ScrollBar Name="B" Vertical="1" SizeW="8" SizeH="50"/>
        <ScrollBar Name="C" Vertical="1" SizeW="8" SizeH="50"/>)");
    const std::vector<bool> visible{Scene::widget<ScrollBar>(*layout, "A").isVisible(), Scene::widget<ScrollBar>(*layout, "B").isVisible(),
                                    Scene::widget<ScrollBar>(*layout, "C").isVisible()};
    EXPECT_EQ((std::vector<bool>{false, true, true}), visible);
}

TEST(ListLayout, ItemStylesSizeTheRows)
{
    FontScene scene;
    scene.image("icon.tga", 4, 20, std::vector<std::uint32_t>(80, 0xFF00FF00));
    // The style document fills in what the element lacks: a bottom of 10, not a top of 50.
    scene.file("S.xml", R"(<ListItemStyle TextPaddingNTop="50" TextPaddingNBottom="10"/>)");
    // Style 0: 2 + 14 + 2; style 1: 2 + 14 + 10 = 26 against the icon's 1 + 20. With the
    // separator of 2, a pitch of 28.
    const auto layout = scene.build(R"(
        <TextList2 Name="L" SizeW="100" SizeH="100" Separator="2" SelectionPolicy="MultiSelection">
          <ListItemStyle FontN="Fonts/T.xml" TextPaddingNTop="2" TextPaddingNBottom="2"/>
          <ListItemStyle Style="S.xml" FontN="Fonts/T.xml" TextPaddingNTop="2" IconN="icon.tga" IconPaddingNTop="1"/>
          <Item Text="a"/><Item Text="b" StyleIndex="1"/><Item Text="c" Icon="icon.tga" StyleIndex="7"/>
        </TextList2>
        <MultiTextList2 Name="M" SizeW="50" SizeH="50" ColumnSize="30, 40,x,-5">
          <ListItemStyle FontN="Fonts/T.xml"/><Item Text0="x" Text1="y"/>
        </MultiTextList2>
        <MultiTextList Name="N" SizeW="50" SizeH="50" UnselectedFont="Fonts/T.xml">
          <Column Width="30"/><Column Width="45"/><Item Text0="x" Text1="y"/><Item Text="z"/>
        </MultiTextList>)");
    auto& list = Scene::widget<TextList2>(*layout, "L");
    EXPECT_EQ(28, list.getRowPitch());
    scene.click({50, 60}, 8);
    scene.click({50, 10}, 8);
    EXPECT_EQ((std::vector<int>{0, 2}), list.getSelection());
    EXPECT_EQ(1, list.getItems()[1]->getStyle());

    auto& styled = Scene::widget<MultiTextList2>(*layout, "M");
    EXPECT_EQ((std::vector<int>{30, 40, 0}), styled.getColumns());
    EXPECT_EQ((std::vector<std::string>{"x", "y"}), styled.getRow(0));
    auto& plain = Scene::widget<MultiTextList>(*layout, "N");
    EXPECT_EQ((std::vector<int>{30, 45}), plain.getColumns());
    EXPECT_EQ(75, plain.getContentSize().x);
    EXPECT_EQ((std::vector<std::string>{"z"}), plain.getRow(1));
    scene.window.redraw();
}

TEST(ListLayout, TreesFromItemsAndFromTheDisk)
{
    FontScene scene;
    ScratchFolder presets;
    for (const char* file : {"Bass/Deep.vnp", "Bass/notes.txt", "Lead.VNP", "lead 2.vnp"})
        presets.Write(file, "");
    const auto layout = scene.build(R"(
        <TextTree Name="T" SizeW="100" SizeH="100" UnselectedFont="Fonts/T.xml" DepthOffset="12">
          <Item Text="A"><Item Text="A1"><Item Text="A1a"/></Item></Item><Item Text="B"/>
        </TextTree>
        <FolderTree Name="F" SizeW="100" SizeH="100" UnselectedFont="Fonts/T.xml" ExtensionFilter="vnp" Path=")" +
                                    presets.Path() + R"(" File="Bass/Deep.vnp"/>
        <TextList Name="NoFont" SizeW="10" SizeH="10"/>)");
    auto& tree = Scene::widget<TextTree>(*layout, "T");
    EXPECT_EQ("A B", RowTexts(tree));
    tree.setOpen(*tree.getItems()[0], true);
    tree.setOpen(*tree.getItems()[0]->getChildren()[0], true);
    EXPECT_EQ("A A1 A1a B", RowTexts(tree));
    EXPECT_EQ(2, tree.getRowItem(2).getDepth());

    auto& folders = Scene::widget<FolderTree>(*layout, "F");
    EXPECT_EQ("Bass Deep.vnp lead 2.vnp Lead.VNP", RowTexts(folders)); // a space before a dot
    EXPECT_EQ(FolderTree::CurrentFileStyle, folders.getRowItem(1).getStyle());
    EXPECT_THROW(Scene::widget<TextList>(*layout, "NoFont"), LayoutManager::WidgetNotFound);
}

}  // namespace
}  // namespace OV::Testing
