// The tree's structure over time: re-parenting, destruction from inside a handler (run under
// AddressSanitizer, it also shows that nothing is used after it is freed), and what a widget's
// end clears in the manager.
#include "Tree.h"

#include <functional>

#include <gtest/gtest.h>

namespace OV::Testing {
namespace {

using namespace CFW::GUI;
using CFW::BasicRect;

std::string Text(const BasicRect<int>& r)
{
    return std::to_string(r.x) + "," + std::to_string(r.y) + "," + std::to_string(r.width) + "," + std::to_string(r.height);
}

TEST(WidgetTree, ReparentingFoldsThePositionIntoTheSize)
{
    struct Case {
        BasicRect<int> rect;
        const char* newParent;
        const char* expectedRect;
        const char* expectedParent;
        bool last; // among the parent's children; a refused move leaves it before its sibling
        std::vector<std::string> lines;
    };
    const Case cases[] = {
        {{10, 20, 30, 40}, "b", "0,0,40,60", "b", true, {"focusLost w", "mouseReleased w", "releases 1"}},
        {{-5, 10, 30, 40}, "b", "0,0,25,50", "b", true, {"focusLost w", "mouseReleased w", "releases 1"}},
        {{10, 20, 30, 40}, "a", "0,0,40,60", "a", true, {"focusLost w", "mouseReleased w", "releases 1"}}, // to the end
        {{10, 20, 30, 40}, "c", "10,20,30,40", "a", false, {}}, // below itself
        {{10, 20, 30, 40}, "w", "10,20,30,40", "a", false, {}},
    };
    for (const Case& c : cases) {
        Tree tree;
        Widget& a = tree.add("a", {0, 0, 100, 100});
        tree.add("b", {100, 100, 100, 100});
        Widget& w = tree.add("w", a, c.rect);
        tree.add("c", w, {0, 0, 5, 5});
        tree.add("sibling", a, {0, 0, 5, 5});
        w.grabFocus();
        w.grabMouse();
        tree.take();
        w.setParent(&tree[c.newParent]);
        EXPECT_EQ(c.expectedRect, Text(w.getRect())) << c.newParent;
        EXPECT_EQ(&tree[c.expectedParent], w.getParent());
        EXPECT_EQ(c.last, &w == tree[c.expectedParent].getChildren().back());
        EXPECT_EQ(c.lines, tree.take());
    }
}

TEST(WidgetTree, DestroyFromItsOwnHandler)
{
    Tree tree;
    Widget& button = tree.add("button", {10, 10, 50, 50});
    tree.add("child", button, {40, 40, 10, 10});
    tree.window.redraw();
    std::string seenAfterDestroy;
    button.getSignals()->mouseUp.connect([](Widget* widget, const auto&...) { widget->destroy(); });
    // Later slots of the same emission still reach the widget.
    button.getSignals()->mouseUp.connect([&](Widget* widget, const auto&...) {
        seenAfterDestroy = Text(widget->getRect()) + (widget->getParent() ? " in the tree" : " out of the tree");
    });
    tree.take();

    tree.window.mouseUp({15, 15}, 1, 0);
    EXPECT_EQ("10,10,50,50 out of the tree", seenAfterDestroy);
    EXPECT_EQ((std::vector<std::string>{"up button 5,5 1 0", "destroyed button", "destroyed child"}), tree.take());
    EXPECT_EQ("10,10,50,50", Text(tree.window.dirtyRect()));
    EXPECT_TRUE(tree.root.getChildren().empty());
    tree.window.mouseDown({15, 15}, 1, 0);
    EXPECT_EQ(std::vector<std::string>{"down root 15,15 1 0"}, tree.take());
}

TEST(WidgetTree, AnEndedWidgetLeavesNothingBehind)
{
    struct Case {
        const char* how;
        std::function<void(Tree&)> end;
        std::string hoverAfter;
    };
    const Case cases[] = {
        {"destroy() and the next callback", [](Tree& t) { t["w"].destroy(); t.window.timer(); }, "p"},
        {"deleted", [](Tree& t) { delete &t["w"]; }, "p"},
        {"its parent deleted", [](Tree& t) { delete &t["p"]; }, "root"},
    };
    for (const Case& c : cases) {
        Tree tree;
        Widget& p = tree.add("p", {0, 0, 100, 100});
        Widget& w = tree.add("w", p, {10, 10, 50, 50});
        w.grabFocus();
        w.grabMouse();
        tree.manager().setActiveWidget(&w);
        tree.window.mouseMoved({20, 20}, 0);
        ASSERT_EQ(&w, tree.manager().getHoverWidget());
        tree.take();

        c.end(tree);
        WidgetManager& m = tree.manager();
        EXPECT_EQ(nullptr, m.getFocusWidget()) << c.how;
        EXPECT_EQ(nullptr, m.getMouseWidget()) << c.how;
        EXPECT_EQ(nullptr, m.getHoverWidget()) << c.how;
        EXPECT_EQ(nullptr, m.getActiveWidget()) << c.how;
        EXPECT_FALSE(tree.window.hasKeyboard()) << c.how;
        tree.take();
        tree.window.mouseMoved({20, 20}, 0);
        tree.window.keyDown(0, 'x', 0);
        EXPECT_EQ((std::vector<std::string>{"enter " + c.hoverAfter, "move " + c.hoverAfter + " 20,20 0"}), tree.take()) << c.how;
    }
}

}  // namespace
}  // namespace OV::Testing
