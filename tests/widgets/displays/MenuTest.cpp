// Pop-up menus on a 128 × 128 window. Without a font or pictures a row is 16 high, a separator
// 7, the frame 2 on every side and an item 36 wide (two gutters of 16 and 4 of air), so a menu
// of three items is 40 × 52. A picture's frame is its border around the rows' rect.
#include "Bench.h"

#include "widgets/menus/Menu.h"
#include "widgets/statics/StaticImage.h"

namespace OV::Testing {
namespace {

using namespace CFW::Widgets;
using CFW::BasicPoint;
using CFW::BasicRect;
namespace Key = CFW::Graphics::KeyboardButton;

const std::string threeItems = R"(<Item ID="1"/><Item ID="2"/><Item ID="3"/>)";
const std::string withSubmenu = R"(<Item ID="1"/><Item Text="Sub" ID="9"><Item ID="21"/><Item ID="22"/></Item><Item ID="3"/>)";

// A menu built from `xml` with what it chose and how often it closed.
struct Opened {
    Opened(Bench& bench, const std::string& xml) : menu(bench.build<Menu>(xml))
    {
        if (!menu)
            return;
        menu->itemChosen.connect([this](Menu*, int id) { chosen.push_back(id); });
        menu->closed.connect([this](Menu*) { ++closings; });
    }
    Menu* menu;
    std::vector<int> chosen;
    int closings = 0;
};

std::vector<int> RectOf(const BasicRect<int>& r)
{
    return {r.x, r.y, r.width, r.height};
}

TEST(Menu, OpensInsideTheWindowOverEverything)
{
    struct Case {
        std::string xml;
        BasicPoint<int> at;
        std::vector<int> rect;
    };
    const Case cases[] = {
        {"<OVMenu>" + threeItems + "</OVMenu>", {10, 20}, {10, 20, 40, 52}},
        {"<OVMenu>" + threeItems + "</OVMenu>", {100, 100}, {88, 76, 40, 52}},
        {"<OVMenu>" + threeItems + "</OVMenu>", {-5, -7}, {0, 0, 40, 52}},
        {R"(<OVMenu2 OffsetPositionX="5" OffsetPositionY="-3">)" + threeItems + "</OVMenu2>", {10, 20}, {15, 17, 40, 52}},
        // Two columns of two rows, 4 apart: 2 + 36 + 4 + 36 + 2 wide.
        {R"(<OVMenu2 NumberOfColumns="2" ColumnSpacing="4">)" + threeItems + "</OVMenu2>", {60, 10}, {48, 10, 80, 36}},
        // A 12 × 12 picture around (4, 4, 4, 4): a frame of 4.
        {R"(<OldMenu Background="frame" BackgroundRectX="4" BackgroundRectY="4" BackgroundRectW="4" BackgroundRectH="4">)" +
             threeItems + "</OldMenu>",
         {120, 0}, {84, 0, 44, 56}},
        // Around (3, 2, 4, 5): 3 left, 2 above, 5 right and below.
        {R"(<OVMenu Image="frame" ItemRectX="3" ItemRectY="2" ItemRectW="4" ItemRectH="5">)" + threeItems + "</OVMenu>",
         {10, 10}, {10, 10, 44, 55}},
        {R"(<OVMenu><Item ID="1"/><Item Separator="1"/><Item ID="2"/></OVMenu>)", {0, 0}, {0, 0, 40, 43}},
        // A tick 20 wide widens the gutters to 24.
        {R"(<OldMenu Mark="wide">)" + threeItems + "</OldMenu>", {0, 0}, {0, 0, 56, 52}},
    };
    for (const Case& c : cases) {
        Bench bench;
        bench.plain("frame", {12, 12}, 0xFF102030);
        bench.plain("wide", {20, 8}, 0xFF102030);
        Opened opened(bench, c.xml);
        ASSERT_NE(nullptr, opened.menu) << c.xml;
        // Added after the menu, so above it in the tree.
        new StaticImage(bench.root, {0, 0, 128, 128}, bench.plain("cover", {128, 128}, 0xFFFF00FF), false);
        opened.menu->popup(c.at);
        EXPECT_TRUE(opened.menu->isOpen()) << c.xml;
        EXPECT_EQ(c.rect, RectOf(opened.menu->levelRect(0))) << c.xml;
        EXPECT_FALSE(SameColor(0xFFFF00FFu, bench.pixel(c.rect[0] + 1, c.rect[1] + 1))) << c.xml;
        EXPECT_EQ(opened.menu, bench.root.getManager()->getMouseWidget()) << c.xml;
    }
}

TEST(Menu, ChoosesTheItemClicked)
{
    // Opened at (10, 10): rows from y 12, 16 high; a separator 7.
    enum Action { Move, MoveHeld, Click, Release };
    struct Case {
        const char* what;
        std::string xml;
        std::vector<std::pair<Action, BasicPoint<int>>> actions;
        std::vector<int> chosen;
        bool open;
    };
    const Case cases[] = {
        {"hover and click the second", "<OVMenu>" + threeItems + "</OVMenu>", {{Move, {30, 36}}, {Click, {30, 36}}}, {2}, false},
        {"a click alone", "<OldMenu>" + threeItems + "</OldMenu>", {{Click, {30, 52}}}, {3}, false},
        {"second column", R"(<OVMenu2 NumberOfColumns="2" ColumnSpacing="4">)" + threeItems + "</OVMenu2>",
         {{Move, {70, 20}}, {Click, {70, 20}}}, {3}, false},
        {"a separator chooses nothing", R"(<OVMenu><Item ID="1"/><Item Separator="1"/><Item ID="2"/></OVMenu>)",
         {{Click, {30, 31}}}, {}, true},
        {"the row after the separator", R"(<OVMenu><Item ID="1"/><Item Separator="1"/><Item ID="2"/></OVMenu>)",
         {{Click, {30, 43}}}, {2}, false},
        {"the frame chooses nothing", "<OVMenu>" + threeItems + "</OVMenu>", {{Click, {30, 11}}}, {}, true},
        {"dragged onto an item with the button held", "<OVMenu>" + threeItems + "</OVMenu>",
         {{MoveHeld, {30, 20}}, {Release, {30, 20}}}, {1}, false},
        {"the release of the press that opened it", "<OVMenu>" + threeItems + "</OVMenu>", {{Release, {30, 20}}}, {}, true},
    };
    for (const Case& c : cases) {
        Bench bench;
        Opened opened(bench, c.xml);
        ASSERT_NE(nullptr, opened.menu) << c.what;
        opened.menu->popup({10, 10});
        for (const auto& [action, at] : c.actions) {
            if (action == Move || action == MoveHeld)
                bench.move(at, action == MoveHeld ? 1 : 0);
            else if (action == Click)
                bench.click(at);
            else
                bench.window.mouseUp(at, 1, 0);
        }
        EXPECT_EQ(c.chosen, opened.chosen) << c.what;
        EXPECT_EQ(c.open, opened.menu->isOpen()) << c.what;
        EXPECT_EQ(c.open ? 0 : 1, opened.closings) << c.what;
    }
}

TEST(Menu, HighlightsTheRowUnderThePointerTicksAndSkipsDisabledItems)
{
    Bench bench;
    bench.plain("tick", {8, 8}, 0xFFFF0000);
    Opened opened(bench, R"(<OldMenu Mark="tick" HighlightedColorR="0" HighlightedColorG="0" HighlightedColorB="255">)" + threeItems +
                             "</OldMenu>");
    opened.menu->setItemEnabled(2, false);
    opened.menu->setTicked(3, true);
    opened.menu->popup({10, 10});
    const std::pair<int, std::vector<bool>> cases[] = {{20, {true, false, false}}, {36, {false, false, false}}, {52, {false, false, true}}};
    for (const auto& [y, lit] : cases) {
        bench.move({30, y});
        for (int row = 0; row < 3; ++row) {
            const bool highlighted = SameColor(0xFF0000FFu, bench.pixel(30, 20 + 16 * row));
            EXPECT_EQ(lit[row], highlighted) << "pointer at " << y << ", row " << row;
        }
    }
    // The tick in the middle of the last row's gutter, 16 square.
    EXPECT_TRUE(SameColor(0xFFFF0000u, bench.pixel(19, 51)));
    EXPECT_FALSE(SameColor(0xFFFF0000u, bench.pixel(19, 19)));
    bench.click({30, 36});
    EXPECT_TRUE(opened.chosen.empty());
    opened.menu->setItemEnabled(2, true);
    bench.click({30, 36});
    EXPECT_EQ(std::vector<int>{2}, opened.chosen);
}

TEST(Menu, ClosesWithNothingChosen)
{
    const std::pair<const char*, std::function<void(Bench&, Menu&)>> cases[] = {
        {"a click outside", [](Bench& bench, Menu&) { bench.click({100, 100}); }},
        {"a click outside after a hover", [](Bench& bench, Menu&) { bench.move({30, 20}); bench.click({5, 5}); }},
        {"Escape", [](Bench& bench, Menu&) { bench.key(Key::Escape); }},
        {"hidden", [](Bench&, Menu& menu) { menu.hide(); }},
        {"another menu opens", [](Bench& bench, Menu&) {
             bench.build<Menu>("<OldMenu>" + threeItems + "</OldMenu>")->popup({60, 60});
             bench.key(Key::Escape); // closes the other
         }},
        {"the window loses the keyboard", [](Bench& bench, Menu&) { bench.window.keyboardLost(); }},
    };
    for (const auto& [what, action] : cases) {
        Bench bench;
        Opened opened(bench, "<OVMenu>" + threeItems + "</OVMenu>");
        const std::size_t children = bench.root.getChildren().size();
        opened.menu->popup({10, 10});
        EXPECT_TRUE(opened.menu->hasFocus()) << what;
        action(bench, *opened.menu);
        bench.window.timer(); // deletes what was destroyed
        EXPECT_FALSE(opened.menu->isOpen()) << what;
        EXPECT_TRUE(opened.chosen.empty()) << what;
        EXPECT_EQ(1, opened.closings) << what;
        EXPECT_FALSE(opened.menu->hasMouse()) << what;
        EXPECT_FALSE(opened.menu->hasFocus()) << what;
        EXPECT_GE(children + 1, bench.root.getChildren().size()) << what; // the other menu's own widget at most
    }
}

TEST(Menu, SubmenusOpenOnTheSideThatFits)
{
    // The submenu's first row is level with its item (the second row); it is 40 × 36.
    struct Case {
        std::string xml;
        BasicPoint<int> at;
        std::vector<int> menu, submenu;
    };
    const Case cases[] = {
        {"<OVMenu>" + withSubmenu + "</OVMenu>", {10, 10}, {10, 10, 40, 52}, {50, 26, 40, 36}},
        {"<OVMenu>" + withSubmenu + "</OVMenu>", {80, 10}, {80, 10, 40, 52}, {40, 26, 40, 36}},
        {R"(<OVMenu Overlap="3">)" + withSubmenu + "</OVMenu>", {10, 10}, {10, 10, 40, 52}, {47, 26, 40, 36}},
        {R"(<OVMenu Overlap="3">)" + withSubmenu + "</OVMenu>", {80, 10}, {80, 10, 40, 52}, {43, 26, 40, 36}},
        {"<OldMenu>" + withSubmenu + "</OldMenu>", {10, 100}, {10, 76, 40, 52}, {50, 92, 40, 36}},
    };
    for (const Case& c : cases) {
        Bench bench;
        Opened opened(bench, c.xml);
        opened.menu->popup(c.at);
        ASSERT_EQ(c.menu, RectOf(opened.menu->levelRect(0))) << c.xml;
        const BasicPoint<int> subItem{c.menu[0] + 20, c.menu[1] + 2 + 16 + 8};
        bench.move(subItem);
        ASSERT_EQ(2u, opened.menu->openLevels()) << c.xml;
        EXPECT_EQ(c.submenu, RectOf(opened.menu->levelRect(1))) << c.xml;
        // Back over the first item closes it, over its own item again it opens.
        bench.move({subItem.x, subItem.y - 16});
        EXPECT_EQ(1u, opened.menu->openLevels()) << c.xml;
        bench.move(subItem);
        bench.move({c.submenu[0] + 20, c.submenu[1] + 2 + 16 + 8});
        bench.click({c.submenu[0] + 20, c.submenu[1] + 2 + 16 + 8});
        EXPECT_EQ(std::vector<int>{22}, opened.chosen) << c.xml;
        EXPECT_FALSE(opened.menu->isOpen()) << c.xml;
    }
}

TEST(Menu, KeysWalkTheInnermostLevel)
{
    // A separator and a submenu between the first item and the last.
    const std::string xml = R"(<OVMenu><Item ID="1"/><Item Separator="1"/><Item ID="9">)"
                            R"(<Item ID="21"/><Item ID="22"/></Item><Item ID="3"/></OVMenu>)";
    struct Case {
        std::vector<int> keys;
        std::vector<int> chosen;
        std::size_t levels;
    };
    const Case cases[] = {
        {{Key::Down, Key::Return}, {1}, 0},
        {{Key::Up, Key::Return}, {3}, 0},
        {{Key::Down, Key::Down, Key::Down, Key::Down, Key::Return}, {1}, 0},
        {{Key::Down, Key::Down, Key::Right}, {}, 2},
        {{Key::Down, Key::Down, Key::Right, Key::Down, Key::Return}, {22}, 0},
        {{Key::Down, Key::Down, Key::Return, Key::Return}, {21}, 0},
        {{Key::Down, Key::Down, Key::Right, Key::Left}, {}, 1},
        {{Key::Down, Key::Down, Key::Right, Key::Escape}, {}, 1},
        {{Key::Down, Key::Down, Key::Right, Key::Escape, Key::Escape}, {}, 0},
        {{Key::Return, Key::Right, Key::Left}, {}, 1},
    };
    for (const Case& c : cases) {
        Bench bench;
        Opened opened(bench, xml);
        opened.menu->popup({10, 10});
        for (int key : c.keys)
            bench.key(key);
        EXPECT_EQ(c.chosen, opened.chosen) << c.keys.size() << " keys";
        EXPECT_EQ(c.levels, opened.menu->openLevels()) << c.keys.size() << " keys";
    }
}

TEST(Menu, ATallMenuScrolls)
{
    // 20 rows in 128: the view runs from 14 to 114 between arrow bands of 12, the last row ends
    // 320 down, so the view scrolls by up to 220.
    std::string xml = "<OVMenu>";
    for (int id = 100; id < 120; ++id)
        xml += "<Item ID=\"" + std::to_string(id) + "\"/>";
    xml += "</OVMenu>";
    const std::pair<const char*, std::function<void(Bench&)>> cases[] = {
        {"none", [](Bench&) {}},
        {"two ticks on the down arrow", [](Bench& bench) { bench.move({20, 120}); bench.window.timer(); bench.window.timer(); }},
        {"a click on the down arrow", [](Bench& bench) { bench.click({20, 120}); }},
        {"a tick on the up arrow at the top", [](Bench& bench) { bench.move({20, 5}); bench.window.timer(); }},
        {"three steps of the wheel", [](Bench& bench) { bench.window.mouseWheel({20, 60}, -3, 0); }},
        {"Up to the last", [](Bench& bench) { bench.key(Key::Up); }},
    };
    const std::vector<int> clicked = {100, 102, 101, 100, 103, 114}; // at y 22, 8 below the view's top
    for (std::size_t i = 0; i < std::size(cases); ++i) {
        Bench bench;
        Opened opened(bench, xml);
        opened.menu->popup({0, 50});
        ASSERT_EQ((std::vector<int>{0, 0, 40, 128}), RectOf(opened.menu->levelRect(0)));
        cases[i].second(bench);
        bench.pixel(0, 0); // paints it as scrolled
        bench.click({20, 22});
        EXPECT_EQ(std::vector<int>{clicked[i]}, opened.chosen) << cases[i].first;
    }
}

TEST(Menu, SurvivesHostileUse)
{
    Bench bench;
    // Nothing to show: nothing opens.
    Opened empty(bench, "<OVMenu/>");
    empty.menu->popup({10, 10});
    EXPECT_FALSE(empty.menu->isOpen());
    EXPECT_EQ(nullptr, bench.root.getManager()->getMouseWidget());

    // Thousands of rows and absurd attributes: it stays in the window and works.
    std::string many = R"(<OVMenu2 NumberOfColumns="1000000000" ColumnSpacing="-5" Overlap="2000000000" SepLeft="2000000000")"
                       R"( OffsetPositionX="2000000000" ItemRectX="-9" Image="frame"><Item ID="7"><Item ID="8"/></Item>)";
    for (int i = 0; i < 5000; ++i)
        many += i % 7 == 0 ? R"(<Item Separator="1"/>)" : "<Item ID=\"" + std::to_string(i) + "\"/>";
    many += "</OVMenu2>";
    bench.plain("frame", {12, 12}, 0xFF102030);
    Opened opened(bench, many);
    opened.menu->popup({2000000000, -2000000000});
    const BasicRect<int> r = opened.menu->levelRect(0);
    EXPECT_TRUE(r.x >= 0 && r.y >= 0 && r.x + r.width <= 128 && r.y + r.height <= 128) << r.x << "," << r.y;
    bench.key(Key::Down);
    bench.key(Key::Right);
    EXPECT_EQ(2u, opened.menu->openLevels());
    bench.pixel(0, 0);
    bench.key(Key::Left);
    bench.key(Key::Up);
    bench.key(Key::Return);
    EXPECT_EQ(std::vector<int>{4999}, opened.chosen);

    // Submenus 60 deep, each opened by key, each in the window.
    std::string deep = "<OldMenu>";
    for (int i = 0; i < 60; ++i)
        deep += "<Item ID=\"" + std::to_string(i) + "\">";
    for (int i = 0; i < 60; ++i)
        deep += "</Item>";
    deep += "</OldMenu>";
    Opened nested(bench, deep);
    nested.menu->popup({0, 0});
    for (int i = 0; i < 60; ++i) {
        bench.key(Key::Down);
        bench.key(Key::Right);
    }
    EXPECT_EQ(60u, nested.menu->openLevels());
    const BasicRect<int> last = nested.menu->levelRect(59);
    EXPECT_TRUE(last.x >= 0 && last.x + last.width <= 128);
    bench.pixel(0, 0);
    for (int i = 0; i < 60; ++i)
        bench.key(Key::Escape);
    EXPECT_FALSE(nested.menu->isOpen());

    // Destroyed while open, by a handler or from outside, and new items while open.
    Opened chooser(bench, "<OVMenu>" + threeItems + "</OVMenu>");
    chooser.menu->itemChosen.connect([](Menu* menu, int) { menu->destroy(); });
    chooser.menu->popup({10, 10});
    bench.click({30, 20});
    EXPECT_EQ(std::vector<int>{1}, chooser.chosen);
    Opened gone(bench, "<OVMenu>" + withSubmenu + "</OVMenu>");
    gone.menu->popup({10, 10});
    bench.move({30, 36});
    gone.menu->destroy();
    bench.window.timer();
    bench.move({70, 52});
    bench.click({70, 52});
    EXPECT_EQ(nullptr, bench.root.getManager()->getMouseWidget());
    Opened renewed(bench, "<OVMenu>" + withSubmenu + "</OVMenu>");
    renewed.menu->popup({10, 10});
    bench.move({30, 36});
    renewed.menu->setItems({});
    EXPECT_FALSE(renewed.menu->isOpen());
    bench.click({70, 52});
    // Open as the tree goes.
    MenuItem item;
    item.id = 5;
    renewed.menu->setItems({item});
    renewed.menu->popup({0, 0});
}

TEST(Menu, FitsItsText)
{
    Bench bench;
    const std::string items = R"(<Item Text="Short" ID="1"/><Item Text="A much longer entry" ID="2"/>)";
    Opened plain(bench, "<OVMenu>" + items + "</OVMenu>");
    Opened lettered(bench, R"(<OVMenu Font="Fonts/Sans11.xml" FontHighlight="Fonts/Sans11.xml">)" + items + "</OVMenu>");
    plain.menu->popup({0, 0});
    const int bare = plain.menu->levelRect(0).width;
    lettered.menu->popup({0, 0});
    const BasicRect<int> r = lettered.menu->levelRect(0);
    EXPECT_GT(r.width, bare + 60);
    EXPECT_GE(r.height, 2 * 14 + 4); // rows at least the font's line
    bench.move({10, 5});
    // Some of the text is drawn, much lighter than the dark panel.
    int lit = 0;
    for (int x = 18; x < r.width - 18; ++x) {
        for (int y = r.y + 2; y < r.y + r.height / 2; ++y)
            lit += (bench.pixel(x, y) & 0xFF) > 0x80 ? 1 : 0;
    }
    EXPECT_GT(lit, 10);
}

}  // namespace
}  // namespace OV::Testing
