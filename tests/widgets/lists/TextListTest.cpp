// Text lists: which row a point finds with paddings, separators and scrolling, how each policy
// selects by clicks and keys, how keys and the wheel scroll, what the calls change and tell, and
// the colours a row is painted in. Rows are 15 high with a separator of 1 (TextLook).
#include "Bench.h"

#include "widgets/lists/TextList.h"

#include <cstdlib>

namespace OV::Testing {
namespace {

using namespace CFW::Widgets;
namespace Key = CFW::Graphics::KeyboardButton;

constexpr int control = 8;
constexpr int shift = 16;

// A list of 100 × 80 (five rows in view) with items "0", "1", ...
TextList& MakeList(Bench& bench, int items, SelectionPolicy policy, const ListLook& look)
{
    auto* list = new TextList(bench.root, {0, 0, 100, 80}, look, policy);
    std::vector<std::string> texts;
    for (int i = 0; i < items; ++i)
        texts.push_back(std::to_string(i));
    list->setItems(texts);
    return *list;
}

TEST(TextList, RowsUnderPoints)
{
    struct Case {
        int items, scroll, x, y;
        int row;
    };
    const Case cases[] = {
        {10, 0, 50, 0, 0},   {10, 0, 50, 14, 0}, {10, 0, 50, 15, 0}, // the separator is its row's
        {10, 0, 50, 16, 1},  {10, 0, 50, 79, 4}, {3, 0, 50, 47, 2},  {3, 0, 50, 48, -1},
        {10, 20, 50, 0, 1},  {10, 20, 50, 11, 1}, {10, 20, 50, 12, 2}, {10, 80, 50, 79, 9},
        {10, 0, -1, 5, -1},  {10, 0, 100, 5, -1},
    };
    for (const Case& c : cases) {
        Bench bench;
        TextList& list = MakeList(bench, c.items, SelectionPolicy::SingleSelection, TextLook(bench.font));
        list.setScroll({0, c.scroll});
        EXPECT_EQ(c.row, list.rowAt({c.x, c.y})) << c.items << " items, scrolled " << c.scroll << ", at " << c.x << ", " << c.y;
    }
}

TEST(TextList, PoliciesSelectByClicks)
{
    // Four rows in 0..63; y 70 is below them.
    struct Click {
        int row; // -1: below the rows
        int modifiers;
    };
    struct Case {
        SelectionPolicy policy;
        std::vector<Click> clicks;
        std::vector<int> selection;
        int told;
    };
    using P = SelectionPolicy;
    const Case cases[] = {
        {P::NoSelection, {{1, 0}, {2, control}}, {}, 0},
        {P::SingleSelection, {{1, 0}, {3, 0}}, {3}, 2},
        {P::SingleSelection, {{1, 0}, {1, control}}, {}, 2},
        {P::SingleSelection, {{1, 0}, {3, control}}, {3}, 2},
        {P::SingleSelection, {{1, 0}, {1, 0}}, {1}, 1},
        {P::SingleSelection, {{1, 0}, {-1, 0}}, {}, 2},
        {P::ExclusiveSelection, {{1, 0}, {1, control}, {-1, 0}}, {1}, 1},
        {P::ExclusiveSelection, {{1, 0}, {2, shift}}, {2}, 2},
        {P::MultiSelection, {{0, 0}, {2, control}}, {0, 2}, 2},
        {P::MultiSelection, {{0, 0}, {2, control}, {3, shift}}, {2, 3}, 3},
        {P::MultiSelection, {{1, 0}, {3, shift}}, {1, 2, 3}, 2},
        {P::MultiSelection, {{3, 0}, {0, control}, {1, control | shift}}, {0, 1, 3}, 3},
        {P::MultiSelection, {{0, 0}, {1, control}, {1, control}}, {0}, 3},
        {P::MultiSelection, {{2, 0}, {-1, 0}}, {}, 2},
        {P::MultiSelection, {{2, 0}, {-1, control}}, {2}, 1},
        {P::MultiSelection, {{2, shift}}, {2}, 1}, // no anchor yet: a plain click
    };
    for (const Case& c : cases) {
        Bench bench;
        TextList& list = MakeList(bench, 4, c.policy, TextLook(bench.font));
        int told = 0;
        list.selectionChanged.connect([&told](ItemList*) { ++told; });
        std::string what = "policy " + std::to_string(static_cast<int>(c.policy)) + ":";
        for (const Click& click : c.clicks) {
            bench.click({50, click.row < 0 ? 70 : click.row * 16 + 8}, click.modifiers);
            what += " " + std::to_string(click.row) + "/" + std::to_string(click.modifiers);
        }
        EXPECT_EQ(c.selection, list.getSelection()) << what;
        EXPECT_EQ(c.told, told) << what;
    }
}

TEST(TextList, KeysMoveTheSelectionIntoView)
{
    // Ten rows of 16 in a view of 80: the last scroll is 80.
    struct Case {
        SelectionPolicy policy;
        int clickRow;
        std::vector<std::pair<int, int>> keys; // code, modifiers
        std::vector<int> selection;
        int current, scroll;
    };
    using P = SelectionPolicy;
    const Case cases[] = {
        {P::SingleSelection, 0, {{Key::Down, 0}, {Key::Down, 0}, {Key::Down, 0}}, {3}, 3, 0},
        {P::SingleSelection, 0, {{Key::End, 0}}, {9}, 9, 80},
        {P::SingleSelection, 0, {{Key::End, 0}, {Key::Home, 0}}, {0}, 0, 0},
        // Row 5 ends at 96: scrolled by 16 to show it whole.
        {P::SingleSelection, 4, {{Key::Down, 0}}, {5}, 5, 16},
        {P::SingleSelection, 0, {{Key::Up, 0}}, {0}, 0, 0},
        {P::SingleSelection, 4, {{Key::End, 0}, {Key::Up, 0}, {Key::Up, 0}, {Key::Up, 0}, {Key::Up, 0}, {Key::Up, 0}}, {4}, 4, 64},
        {P::ExclusiveSelection, 2, {{Key::Down, shift}}, {3}, 3, 0},
        {P::MultiSelection, 2, {{Key::Down, shift}, {Key::Down, shift}}, {2, 3, 4}, 4, 0},
        {P::MultiSelection, 2, {{Key::Down, shift}, {Key::Up, shift}, {Key::Up, shift}}, {1, 2}, 1, 0},
        {P::MultiSelection, 2, {{Key::Down, shift}, {Key::Down, 0}}, {4}, 4, 0},
        {P::NoSelection, 0, {{Key::End, 0}, {Key::Up, 0}}, {}, 8, 80},
        {P::SingleSelection, 0, {{Key::Left, 0}, {Key::Right, 0}, {Key::Tab, 0}}, {0}, 0, 0},
    };
    for (const Case& c : cases) {
        Bench bench;
        TextList& list = MakeList(bench, 10, c.policy, TextLook(bench.font));
        bench.click({50, c.clickRow * 16 + 8});
        for (const auto& [code, modifiers] : c.keys)
            bench.key(code, modifiers);
        const std::string what = "policy " + std::to_string(static_cast<int>(c.policy)) + ", " + std::to_string(c.keys.size()) + " keys";
        EXPECT_EQ(c.selection, list.getSelection()) << what;
        EXPECT_EQ(c.current, list.getCurrentRow()) << what;
        EXPECT_EQ(c.scroll, list.getScroll().y) << what;
    }
}

TEST(TextList, KeysNeedTheFocusAndReturnActivates)
{
    Bench bench;
    TextList& list = MakeList(bench, 10, SelectionPolicy::SingleSelection, TextLook(bench.font));
    std::vector<int> activated;
    list.itemActivated.connect([&activated](ItemList*, int row) { activated.push_back(row); });
    bench.key(Key::Down);
    EXPECT_EQ(std::vector<int>{}, list.getSelection());
    bench.click({50, 40});
    bench.key(Key::Return);
    bench.window.doubleClick({50, 8}, 1, 0);
    bench.window.doubleClick({50, 79}, 1, 0);
    EXPECT_EQ((std::vector<int>{2, 0, 4}), activated);
}

TEST(TextList, WheelScrollsThreeRowsWithinLimits)
{
    // Ten rows: 160 high in 80. One item of 30 characters: 4 + 180 + 4 wide in 100.
    struct Case {
        std::vector<int> steps;
        int modifiers;
        int x, y;
    };
    const Case cases[] = {
        {{-1}, 0, 0, 48}, {{-2}, 0, 0, 80}, {{1}, 0, 0, 0},   {{-1, 1}, 0, 0, 0},
        {{-1}, shift, 48, 0}, {{-2}, shift, 88, 0}, {{-9, 3}, shift, 0, 0},
    };
    for (const Case& c : cases) {
        Bench bench;
        TextList& list = MakeList(bench, 10, SelectionPolicy::SingleSelection, TextLook(bench.font));
        list.setItemText(3, std::string(30, 'w'));
        for (int step : c.steps)
            bench.window.mouseWheel({50, 40}, step, c.modifiers);
        EXPECT_EQ((std::vector<int>{c.x, c.y}), (std::vector<int>{list.getScroll().x, list.getScroll().y})) << c.steps.front() << "/" << c.modifiers;
    }
}

TEST(TextList, CallsChangeItemsAndTell)
{
    Bench bench;
    TextList& list = MakeList(bench, 5, SelectionPolicy::MultiSelection, TextLook(bench.font));
    int told = 0;
    list.selectionChanged.connect([&told](ItemList*) { ++told; });
    list.select(1);
    list.select(3);
    list.select(3); // no change
    list.select(99);
    EXPECT_EQ((std::vector<int>{1, 3}), list.getSelection());
    EXPECT_EQ(2, told);

    list.removeItem(0); // the selected move up with the rest
    EXPECT_EQ((std::vector<int>{0, 2}), list.getSelection());
    EXPECT_EQ("1 2 3 4", RowTexts(list));
    list.removeItem(1); // not selected: nothing to tell
    EXPECT_EQ(2, told);
    list.removeItem(0);
    EXPECT_EQ(3, told);
    EXPECT_EQ(2, list.addItem("new"));
    EXPECT_EQ("3 4 new", RowTexts(list));

    // Down to one when the policy narrows.
    list.setSelectionPolicy(SelectionPolicy::ExclusiveSelection);
    EXPECT_EQ(0, list.getSelectedIndex());
    list.select(2);
    EXPECT_EQ(std::vector<int>{2}, list.getSelection());
    list.clearItems();
    EXPECT_EQ(0, list.getItemCount());
    EXPECT_EQ(-1, list.getSelectedIndex());
    EXPECT_EQ("", list.getItemText(0));
    EXPECT_EQ(5, told);
}

TEST(TextList, RowsAreFilledByTheirState)
{
    const CFW::Graphics::Color normal = 0xFF102030, chosen = 0xFF405060, line = 0xFF00FF00, stripe = 0xFF0000FF;
    Bench bench;
    ListLook look = TextLook(bench.font);
    look.styles.front().states[0].emptyBack = normal;
    look.styles.front().states[0].textBack = normal;
    look.styles.front().states[1].emptyBack = chosen;
    look.styles.front().states[1].textBack = chosen;
    look.separatorColor = line;
    look.background[0] = look.background[1] = stripe;
    TextList& list = MakeList(bench, 3, SelectionPolicy::SingleSelection, look);
    list.select(1);
    bench.window.redraw();
    // Row 0 in 0..14, its line at 15; row 1 from 16; the rows end at 48.
    const struct {
        int x, y;
        CFW::Graphics::Color color;
    } pixels[] = {{50, 5, normal}, {50, 15, line}, {99, 20, chosen}, {0, 30, chosen}, {50, 31, line}, {50, 40, normal}, {50, 60, stripe}};
    // Opaque fills blend at 255/256: each component may come out one less.
    const auto near = [](CFW::Graphics::Color a, CFW::Graphics::Color b) {
        for (int shift = 0; shift < 32; shift += 8) {
            if (std::abs(static_cast<int>(a >> shift & 0xFF) - static_cast<int>(b >> shift & 0xFF)) > 1)
                return false;
        }
        return true;
    };
    for (const auto& p : pixels)
        EXPECT_TRUE(near(p.color, bench.window.pixel(p.x, p.y))) << std::hex << bench.window.pixel(p.x, p.y) << " at " << std::dec << p.x << ", " << p.y;
}

}  // namespace
}  // namespace OV::Testing
