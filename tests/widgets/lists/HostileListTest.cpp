// Lists and bars against what should not happen to them: thousands of items, none, no size,
// items nested past the limit, and bars or lists that go before their partner.
#include "Bench.h"

#include "widgets/lists/ScrollBar.h"
#include "widgets/lists/TextList.h"
#include "widgets/lists/TextTree.h"

#include <chrono>

namespace OV::Testing {
namespace {

using namespace CFW::Widgets;
namespace Key = CFW::Graphics::KeyboardButton;

// Everything a user can do to a widget at `at`, a few times over.
void Pound(Bench& bench, const CFW::BasicPoint<int>& at)
{
    for (int i = 0; i < 3; ++i) {
        bench.click(at, i * 8);
        bench.window.doubleClick(at, 1, 0);
        for (int code : {Key::Down, Key::End, Key::Up, Key::Home, Key::Left, Key::Right, Key::Return})
            bench.key(code, 16);
        bench.window.mouseWheel(at, i % 2 ? 1000000 : -1000000, i * 16);
        bench.window.mouseDown(at, 1, 0);
        bench.window.mouseMoved({at.x + 5000, at.y + 5000}, 1);
        bench.window.timer();
        bench.window.mouseUp(at, 1, 0);
        bench.window.redraw();
    }
}

TEST(HostileLists, ManyNoneAndNoSize)
{
    for (const int count : {50000, 0, 1}) {
        for (const int size : {80, 0}) {
            Bench bench;
            auto* list = new TextList(bench.root, {0, 0, size, size}, TextLook(bench.font), SelectionPolicy::MultiSelection);
            auto* bar = new ScrollBar(bench.root, {110, 0, 10, size}, {}, true, false);
            list->setScrollBars(bar, bar, bar); // one bar for all three: odd, but allowed
            const auto start = std::chrono::steady_clock::now();
            list->setItems(std::vector<std::string>(static_cast<std::size_t>(count), "item"));
            Pound(bench, {10, 10});
            Pound(bench, {115, 10});
            EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20)) << count;
            EXPECT_LE(list->getScroll().y, std::max(count * 16 - size, 0)) << count;
        }
    }
}

TEST(HostileLists, ItemsNestedPastTheLimit)
{
    Bench bench;
    // 100 levels of "Item": the first 33 are read.
    std::string nested;
    for (int i = 0; i < 100; ++i)
        nested = "<Item Text=\"" + std::to_string(99 - i) + "\">" + nested + "</Item>";
    bench.file("Fonts/DejaVuSans.ttf", ReadFile(VARNEL4_DEJAVU_SANS));
    bench.file("f.xml", R"(<Font Source="Fonts/DejaVuSans.ttf"/>)");
    const auto layout = bench.build(R"(<TextTree Name="T" UnselectedFont="f.xml" SizeW="50" SizeH="50">)" + nested + R"(</TextTree>
        <MultiTextList UnselectedFont="f.xml"><Column Width="999999999"/></MultiTextList>)");
    auto& tree = Scene::widget<TextTree>(*layout, "T");
    for (int row = 0; row < tree.getRowCount(); ++row)
        tree.setOpen(tree.getRowItem(row), true);
    EXPECT_EQ(33, tree.getRowCount());
    Pound(bench, {10, 10});
}

TEST(HostileLists, PartnersThatGoFirst)
{
    for (const bool barFirst : {true, false}) {
        Bench bench;
        auto* list = new TextList(bench.root, {0, 0, 100, 80}, TextLook(bench.font), SelectionPolicy::SingleSelection);
        auto* bar = new ScrollBar(bench.root, {110, 0, 10, 80}, {}, true, false);
        auto* corner = new CFW::GUI::Widget(bench.root, {110, 80, 10, 10});
        list->setScrollBars(nullptr, bar, corner);
        list->setItems(std::vector<std::string>(30, "x"));
        if (barFirst) {
            bar->destroy();
            corner->destroy();
            bench.window.timer(); // the end of a callback deletes them
            Pound(bench, {10, 10});
        } else {
            list->destroy();
            bench.window.timer();
            Pound(bench, {115, 10});
            EXPECT_GT(bar->getScrollPosition(), 0);
        }
    }
}

}  // namespace
}  // namespace OV::Testing
