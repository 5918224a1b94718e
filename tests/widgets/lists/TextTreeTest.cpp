// Text trees: which rows show as branches open and close by their signs, double clicks and the
// Left and Right keys, and what closing does to a selection it hides.
#include "Bench.h"

#include "widgets/lists/TextTree.h"

namespace OV::Testing {
namespace {

using namespace CFW::Widgets;
namespace Key = CFW::Graphics::KeyboardButton;

// A: A1, A2: A2a; B; C: C1. Signs of 8 with 2 on each side take x 0..11 at depth 0 and, with
// an indent of 10, 10..21 at depth 1. Rows have a pitch of 16.
TextTree& MakeTree(Bench& bench)
{
    ListLook look = TextLook(bench.font);
    look.styles.front().openIcon = &bench.plain({8, 8}, 0xFF111111);
    look.styles.front().closedIcon = &bench.plain({8, 8}, 0xFF222222);
    look.signPadding = {2, 0, 2, 0};
    look.indent = 10;
    auto* tree = new TextTree(bench.root, {0, 0, 100, 120}, look, SelectionPolicy::SingleSelection);
    const auto leaf = [](const char* text) { return ItemOf({text}); };
    ItemContent a = leaf("A"), a2 = leaf("A2"), c = leaf("C");
    a2.children = {leaf("A2a")};
    a.children = {leaf("A1"), a2};
    c.children = {leaf("C1")};
    tree->setItems({a, leaf("B"), c});
    return *tree;
}

TEST(TextTree, BranchesOpenAndClose)
{
    struct Step {
        enum { Click, Double, KeyDown } kind;
        int x, row; // or the key's code in x
    };
    struct Case {
        const char* what;
        std::vector<Step> steps;
        std::string rows, selected;
    };
    const Case cases[] = {
        {"closed at first", {}, "A B C", ""},
        {"A's sign opens it without selecting", {{Step::Click, 5, 0}}, "A A1 A2 B C", ""},
        {"A2's sign is indented", {{Step::Click, 5, 0}, {Step::Click, 15, 2}}, "A A1 A2 A2a B C", ""},
        {"left of A2's sign selects", {{Step::Click, 5, 0}, {Step::Click, 5, 2}}, "A A1 A2 B C", "A2"},
        {"the sign again closes", {{Step::Click, 5, 0}, {Step::Click, 5, 0}}, "A B C", ""},
        {"a click on the text selects only", {{Step::Click, 50, 2}}, "A B C", "C"},
        {"a double click on the text opens", {{Step::Double, 50, 2}}, "A B C C1", ""},
        {"a double click on a leaf leaves the rows", {{Step::Double, 50, 1}}, "A B C", ""},
        {"Right opens, Right again goes to the first child",
         {{Step::Click, 50, 0}, {Step::KeyDown, Key::Right, 0}, {Step::KeyDown, Key::Right, 0}}, "A A1 A2 B C", "A1"},
        {"Left goes to the parent, then closes it",
         {{Step::Click, 5, 0}, {Step::Click, 50, 2}, {Step::KeyDown, Key::Left, 0}, {Step::KeyDown, Key::Left, 0}}, "A B C", "A"},
        {"Return opens a branch", {{Step::Click, 50, 2}, {Step::KeyDown, Key::Return, 0}}, "A B C C1", "C"},
        {"closing hides a selection: the branch takes it",
         {{Step::Click, 5, 0}, {Step::Click, 15, 2}, {Step::Click, 50, 3}, {Step::Click, 5, 0}}, "A B C", "A"},
        {"Down walks the open rows", {{Step::Click, 5, 0}, {Step::Click, 50, 0}, {Step::KeyDown, Key::Down, 0}, {Step::KeyDown, Key::Down, 0},
          {Step::KeyDown, Key::Down, 0}}, "A A1 A2 B C", "B"},
    };
    for (const Case& c : cases) {
        Bench bench;
        TextTree& tree = MakeTree(bench);
        for (const Step& step : c.steps) {
            const CFW::BasicPoint<int> at{step.x, step.row * 16 + 8};
            if (step.kind == Step::Click)
                bench.click(at);
            else if (step.kind == Step::Double)
                bench.window.doubleClick(at, 1, 0);
            else
                bench.key(step.x);
        }
        EXPECT_EQ(c.rows, RowTexts(tree)) << c.what;
        EXPECT_EQ(c.selected, SelectedTexts(tree)) << c.what;
    }
}

TEST(TextTree, CallsBuildAndPrune)
{
    Bench bench;
    TextTree& tree = MakeTree(bench);
    ListItem& b = *tree.getItems()[1];
    ListItem& b1 = tree.addItem("B1", &b);
    tree.addItem("B1x", &b1);
    tree.addItem("D");
    EXPECT_EQ("A B C D", RowTexts(tree));
    tree.setOpen(b, true);
    tree.setOpen(b1, true);
    EXPECT_EQ("A B B1 B1x C D", RowTexts(tree));
    EXPECT_EQ(1, b1.getDepth());
    EXPECT_EQ(2, tree.getRowItem(3).getDepth());
    tree.selectItem(*b1.getChildren().front());
    tree.removeItem(b1);
    EXPECT_EQ("A B C D", RowTexts(tree));
    EXPECT_EQ("", SelectedTexts(tree));
    EXPECT_EQ(-1, tree.getCurrentRow());
    tree.clearItems();
    EXPECT_EQ(0, tree.getRowCount());
}

}  // namespace
}  // namespace OV::Testing
