// The other displays' layout elements, and what each does on the off-screen window, against
// places and values worked out by hand.
#include "Bench.h"

#include "widgets/displays/AnalogMeter.h"
#include "widgets/displays/ChainView.h"
#include "widgets/displays/CorrelationMeter.h"
#include "widgets/displays/Graph.h"
#include "widgets/displays/Meter.h"
#include "widgets/displays/PhaseScope.h"
#include "widgets/displays/QM3Matrix.h"
#include "widgets/displays/SimpleWindow.h"
#include "widgets/displays/TapDelayDisplay.h"
#include "widgets/displays/Tuner.h"
#include "widgets/menus/OVMenu2.h"
#include "widgets/menus/OldMenu.h"

#include <cmath>
#include <limits>
#include <typeinfo>

namespace OV::Testing {
namespace {

using namespace CFW::Widgets;
using CFW::BasicPoint;
using CFW::Graphics::Color;

std::vector<int> RectOf(const CFW::BasicRect<int>& r)
{
    return {r.x, r.y, r.width, r.height};
}

TEST(DisplayBuilders, ClassesRequirementsAndSizes)
{
    struct Case {
        const char* xml;
        const std::type_info* type; // null for no widget
        std::vector<int> rect;
    };
    const Case cases[] = {
        {R"(<Meter ImageOn="led"/>)", nullptr, {}},
        {R"(<Meter ImageOff="led" ImageOn="led" PositionX="3"/>)", &typeid(Meter), {3, 0, 12, 7}},
        {R"(<Tuner ImageOff="led"/>)", nullptr, {}},
        {R"(<Tuner ImageOff="led" ImageOn="led" SizeW="30"/>)", &typeid(Tuner), {0, 0, 30, 7}},
        {R"(<AnalogMeter Background="led" PositionY="4"/>)", &typeid(AnalogMeter), {0, 4, 12, 7}},
        {R"(<AnalogMeter SizeW="30" SizeH="20"/>)", &typeid(AnalogMeter), {0, 0, 30, 20}},
        {R"(<Graph Background="led"/>)", &typeid(Graph), {0, 0, 12, 7}},
        {R"(<SimpleWindow ResRectX="1"/>)", nullptr, {}},
        {R"(<SimpleWindow Image="led" SizeW="40"/>)", &typeid(SimpleWindow), {0, 0, 40, 7}},
        {R"(<PhaseScope Background="led"/>)", &typeid(PhaseScope), {0, 0, 12, 7}},
        {R"(<CorrelationMeter SizeW="50" SizeH="8"/>)", &typeid(CorrelationMeter), {0, 0, 50, 8}},
        {R"(<TapDelayDisplay Backgrund="led"/>)", &typeid(TapDelayDisplay), {0, 0, 12, 7}},
        {R"(<TapDelayDisplay Background="led"/>)", &typeid(TapDelayDisplay), {0, 0, 0, 0}},
        {R"(<ChainView SizeW="10" SizeH="9"/>)", &typeid(ChainView), {0, 0, 10, 9}},
        {R"(<QM3Matrix PositionX="2" SizeW="10" SizeH="9"/>)", &typeid(QM3Matrix), {2, 0, 10, 9}},
        {R"(<OVMenu PositionX="2"/>)", &typeid(OVMenu), {2, 0, 0, 0}},
        {R"(<OVMenu2/>)", &typeid(OVMenu2), {0, 0, 0, 0}},
        {R"(<OldMenu/>)", &typeid(OldMenu), {0, 0, 0, 0}},
    };
    for (const Case& c : cases) {
        Bench bench;
        bench.plain("led", {12, 7}, 0xFF00FF00);
        const CFW::GUI::Widget* widget = bench.build(c.xml);
        ASSERT_EQ(c.type != nullptr, widget != nullptr) << c.xml;
        if (!widget)
            continue;
        EXPECT_EQ(*c.type, typeid(*widget)) << c.xml;
        EXPECT_EQ(c.rect, RectOf(widget->getRect())) << c.xml;
        bench.pixel(0, 0);
    }
}

TEST(SimpleWindow, DragsByItsAreaWithinItsParent)
{
    // 40 × 30 at (10, 10), dragged by its top 8 rows; the parent is 128 × 128.
    struct Case {
        BasicPoint<int> press, to;
        std::vector<int> position;
    };
    const Case cases[] = {
        {{15, 12}, {35, 42}, {30, 40}},
        {{15, 12}, {200, 200}, {88, 98}},
        {{15, 12}, {-50, 5}, {0, 3}},
        {{15, 25}, {35, 42}, {10, 10}}, // below the drag area
    };
    for (const Case& c : cases) {
        Bench bench;
        // A border of 4 around a middle of another colour, the middle stretched.
        bench.picture("panel", {12, 12}, [](int x, int y) { return x < 4 || x >= 8 || y < 4 || y >= 8 ? 0xFF0000FFu : 0xFF00FF00u; });
        auto* window = bench.build<SimpleWindow>(R"(<SimpleWindow Image="panel" ResRectX="4" ResRectY="4" ResRectW="4" ResRectH="4")"
                                                 R"( PositionX="10" PositionY="10" SizeW="40" SizeH="30")"
                                                 R"( DragAreaX="0" DragAreaY="0" DragAreaW="40" DragAreaH="8"/>)");
        bench.window.mouseDown(c.press, 1, 0);
        bench.move(c.to);
        bench.window.mouseUp(c.to, 1, 0);
        EXPECT_EQ(c.position, (std::vector<int>{window->getPosition().x, window->getPosition().y})) << c.to.x << "," << c.to.y;
        const BasicPoint<int> at = window->getPosition();
        EXPECT_TRUE(SameColor(0xFF0000FFu, bench.pixel(at.x + 1, at.y + 15)));
        EXPECT_TRUE(SameColor(0xFF00FF00u, bench.pixel(at.x + 20, at.y + 15)));
        EXPECT_TRUE(SameColor(0xFF0000FFu, bench.pixel(at.x + 38, at.y + 28)));
    }
    // A press brings it before a window built after it.
    Bench bench;
    bench.plain("a", {20, 20}, 0xFFAA0000);
    bench.plain("b", {20, 20}, 0xFF00BB00);
    bench.build(R"(<SimpleWindow Image="a"/>)");
    bench.build(R"(<SimpleWindow Image="b" PositionX="10" PositionY="10"/>)");
    EXPECT_TRUE(SameColor(0xFF00BB00u, bench.pixel(15, 15)));
    bench.click({5, 5});
    EXPECT_TRUE(SameColor(0xFFAA0000u, bench.pixel(15, 15)));
}

TEST(PhaseScope, PointsAppearAtTheTickAndFadeOverThePersistence)
{
    // 101 × 101: a full-scale square of half side 50.5 about (50.5, 50.5). Mono at half scale is
    // 25.25 above the middle, opposite phase at half scale 25.25 left of it. 80 ms keeps a tick's
    // points for two more ticks, at 2/3 and 1/3.
    const std::pair<int, unsigned> cases[] = {{0, 0}, {1, 0xFF}, {2, 0xAA}, {3, 0x55}, {4, 0}};
    for (const auto& [ticks, green] : cases) {
        Bench bench;
        auto* scope = bench.build<PhaseScope>(R"(<PhaseScope SizeW="101" SizeH="101" DisplayMode="Dots" Persistance="80")"
                                              R"( ColorR="0" ColorB="0"/>)");
        const float left[] = {0.5f, 0.5f, std::numeric_limits<float>::quiet_NaN()};
        const float right[] = {0.5f, -0.5f, 0.3f};
        scope->addSamples(left, right, 3);
        for (int i = 0; i < ticks; ++i)
            bench.window.timer();
        for (const auto& [x, y] : {std::pair{50, 25}, std::pair{25, 50}})
            EXPECT_NEAR(green, (bench.pixel(x, y) >> 8) & 0xFF, 1) << ticks << " ticks at " << x << "," << y;
        EXPECT_TRUE(SameColor(0xFF000000u, bench.pixel(50, 50))) << ticks;
    }
    // Gone, it paints no more; lines join the points; nothing hostile hurts.
    Bench bench;
    auto* scope = bench.build<PhaseScope>(R"(<PhaseScope SizeW="101" SizeH="101" Persistance="-5" ColorR="0" ColorB="0"/>)");
    const float up[] = {-1.0f, 1.0f};
    scope->addSamples(up, up, 2);
    bench.window.timer();
    EXPECT_TRUE(SameColor(0xFF00FF00u, bench.pixel(50, 60)));
    bench.window.timer();
    bench.pixel(0, 0);
    bench.window.timer();
    EXPECT_TRUE(CFW::IsEmpty(bench.window.dirtyRect()));
    std::vector<float> wild(100000, 1e9f);
    wild[7] = -std::numeric_limits<float>::infinity();
    scope->addSamples(wild.data(), wild.data(), wild.size());
    bench.window.timer();
    bench.pixel(0, 0);
    bench.build<PhaseScope>(R"(<PhaseScope SizeW="0" Persistance="1000000000"/>)")->addSamples(up, up, 2);
    bench.window.timer();
    bench.pixel(0, 0);
}

TEST(CorrelationMeter, MeasuresBlocksAndHoldsItsExtremes)
{
    std::vector<float> sine(480), cosine(480), minus(480), silence(480, 0.0f);
    for (std::size_t i = 0; i < sine.size(); ++i) {
        sine[i] = static_cast<float>(std::sin(2.0 * M_PI * i / 48.0));
        cosine[i] = static_cast<float>(std::cos(2.0 * M_PI * i / 48.0));
        minus[i] = -sine[i];
    }
    struct Case {
        const char* what;
        const std::vector<float>& left;
        const std::vector<float>& right;
        double correlation;
    };
    const Case cases[] = {
        {"mono", sine, sine, 1.0},
        {"opposite", sine, minus, -1.0},
        {"in quadrature", sine, cosine, 0.0},
        {"one side silent", sine, silence, 0.5}, // unchanged
    };
    for (const Case& c : cases) {
        Bench bench;
        auto* meter = bench.build<CorrelationMeter>(R"(<CorrelationMeter SizeW="101" SizeH="10"/>)");
        meter->setCorrelation(0.5);
        meter->addSamples(c.left.data(), c.right.data(), c.left.size());
        EXPECT_NEAR(c.correlation, meter->getCorrelation(), 1e-6) << c.what;
    }

    // Held two ticks, then half the way to the value each tick.
    Bench bench;
    auto* meter = bench.build<CorrelationMeter>(R"(<CorrelationMeter SizeW="101" SizeH="10" Persistance="80")"
                                                R"( ColorMaxR="0" ColorMaxB="0" ColorR="0" ColorG="0"/>)");
    meter->setCorrelation(0.8);
    meter->setCorrelation(-0.6);
    meter->setCorrelation(std::numeric_limits<double>::quiet_NaN());
    const std::vector<std::pair<double, double>> held = {{-0.6, 0.8}, {-0.6, 0.8}, {-0.6, 0.8}, {-0.6, 0.1}, {-0.6, -0.25}};
    for (std::size_t tick = 0; tick < held.size(); ++tick) {
        if (tick > 0)
            bench.window.timer();
        EXPECT_NEAR(held[tick].first, meter->getMinimum(), 1e-12) << tick;
        EXPECT_NEAR(held[tick].second, meter->getMaximum(), 1e-12) << tick;
    }
    EXPECT_DOUBLE_EQ(-0.6, meter->getCorrelation());
    // On 101 pixels: the value at 20, the highest at 37.5, rounded to 38.
    EXPECT_TRUE(SameColor(0xFF0000FFu, bench.pixel(20, 5)));
    EXPECT_TRUE(SameColor(0xFF00FF00u, bench.pixel(38, 5)));
    meter->setCorrelation(-0.601);
    EXPECT_TRUE(CFW::IsEmpty(bench.window.dirtyRect()));
}

TEST(TapDelayDisplay, SelectsAndScrollsItsTaps)
{
    Bench bench;
    auto* display = bench.build<TapDelayDisplay>(
        R"(<TapDelayDisplay SizeW="100" SizeH="40" NumberOfRows="4" NumberOfTaps="6" DelayRowColorR="0" DelayRowColorG="0")"
        R"( DelayRowSelectedColorG="0" DelayRowSelectedColorB="0"/>)");
    std::vector<int> selected;
    display->tapSelected.connect([&selected](TapDelayDisplay*, int tap) { selected.push_back(tap); });
    for (int tap = 0; tap < 6; ++tap)
        display->setTap(tap, 0.5, "");
    display->setTap(6, 1.0, "beyond");
    display->setTap(0, std::numeric_limits<double>::quiet_NaN(), "");
    // Rows 10 high; bars half the width.
    bench.click({10, 25});
    EXPECT_TRUE(SameColor(0xFFFF0000u, bench.pixel(10, 25)));
    EXPECT_TRUE(SameColor(0xFF0000FFu, bench.pixel(10, 15)));
    EXPECT_FALSE(SameColor(0xFF0000FFu, bench.pixel(60, 15)));
    EXPECT_FALSE(SameColor(0xFF0000FFu, bench.pixel(5, 5))); // the first bar has no length
    bench.window.mouseWheel({10, 10}, -1, 0);
    bench.click({10, 5});
    bench.click({10, 35}); // the last tap's row
    bench.click({10, 39});
    EXPECT_EQ((std::vector<int>{2, 1, 4}), selected);
    display->setSelectedTap(0);
    EXPECT_EQ(0, display->tapAt({10, 5}));
    display->setSelectedTap(5);
    EXPECT_EQ(2, display->tapAt({10, 5}));
    EXPECT_EQ(5, display->tapAt({10, 35}));
    EXPECT_EQ((std::vector<int>{2, 1, 4}), selected);
    // Absurd counts.
    for (const char* counts : {R"(NumberOfRows="0" NumberOfTaps="-3")", R"(NumberOfRows="1000000000" NumberOfTaps="1000000000")"}) {
        auto* odd = bench.build<TapDelayDisplay>(std::string(R"(<TapDelayDisplay SizeW="50" SizeH="50" )") + counts + "/>");
        odd->setSelectedTap(3);
        bench.click({20, 20});
        bench.window.mouseWheel({20, 20}, 5, 0);
        bench.pixel(0, 0);
        odd->destroy();
    }
}

TEST(ChainView, LaysItsNodesOutInRows)
{
    // Boxes of 40 × 20, 10 apart: two to a row of 100.
    Bench bench;
    auto* chain = bench.build<ChainView>(R"(<ChainView SizeW="100" SizeH="100" NodeDistX="40" NodeDistY="20")"
                                         R"( NodeDistSpacingX="10" NodeDistSpacingY="10"/>)");
    chain->setNodes({"In", "EQ", "Dyn", "Lim", "Out"});
    std::vector<int> clicked;
    chain->nodeClicked.connect([&clicked](ChainView*, int node) { clicked.push_back(node); });
    const std::vector<std::vector<int>> rects = {{0, 0, 40, 20}, {50, 0, 40, 20}, {0, 30, 40, 20}, {50, 30, 40, 20}, {0, 60, 40, 20}};
    for (int i = 0; i < 5; ++i)
        EXPECT_EQ(rects[static_cast<std::size_t>(i)], RectOf(chain->nodeRect(i))) << i;
    for (const BasicPoint<int>& at : {BasicPoint<int>{60, 40}, BasicPoint<int>{45, 5}, BasicPoint<int>{5, 75}, BasicPoint<int>{60, 75}})
        bench.click(at);
    EXPECT_EQ((std::vector<int>{3, 4}), clicked);
    EXPECT_TRUE(SameColor(0xFFFFFFFFu, bench.pixel(0, 0)));
    // Absurd sizes and many nodes.
    auto* odd = bench.build<ChainView>(
        R"(<ChainView SizeW="100" SizeH="100" NodeDistX="-4" NodeDistY="1000000000" NodeDistSpacingX="-9"/>)");
    odd->setNodes(std::vector<std::string>(10000, "n"));
    EXPECT_EQ(4096, odd->getNodeCount());
    bench.pixel(0, 0);
}

TEST(QM3Matrix, ShowsAWindowOnItsCells)
{
    // Arrows of 10 on every side leave 80 × 40 for 4 × 2 cells of 20 × 20, from (10, 10).
    Bench bench;
    bench.plain("arrow", {10, 10}, 0xFFFFFF00);
    auto* matrix = bench.build<QM3Matrix>(R"(<QM3Matrix SizeW="100" SizeH="60" NumberOfCellsX="4" NumberOfCellsY="2")"
                                          R"( ArrowLeftImg="arrow" ArrowRightImg="arrow" ArrowUpImg="arrow" ArrowDownImg="arrow")"
                                          R"( OnCellColorR="0" OnCellColorG="0" SelectedCellColorG="0" SelectedCellColorB="0"/>)");
    matrix->setMatrixSize(6, 3);
    matrix->setCell(1, 0, {"A", "B", true, 0.5f});
    matrix->setCell(9, 9, {"", "", true, 0.0f});
    std::vector<std::vector<int>> clicked;
    matrix->cellClicked.connect([&clicked](QM3Matrix*, int column, int row) { clicked.push_back({column, row}); });
    EXPECT_TRUE(SameColor(0xFF0000FFu, bench.pixel(40, 15)));
    EXPECT_TRUE(SameColor(0xFFFFFF00u, bench.pixel(95, 30))); // more to the right
    EXPECT_FALSE(SameColor(0xFFFFFF00u, bench.pixel(5, 30)));  // nothing to the left
    struct Step {
        BasicPoint<int> click;
        std::vector<int> scroll;
    };
    const Step steps[] = {
        {{35, 35}, {0, 0}}, {{95, 30}, {1, 0}}, {{95, 30}, {2, 0}}, {{95, 30}, {2, 0}},
        {{50, 55}, {2, 1}}, {{50, 55}, {2, 1}}, {{15, 15}, {2, 1}}, {{5, 30}, {1, 1}},
    };
    for (const Step& step : steps) {
        bench.click(step.click);
        EXPECT_EQ(step.scroll, (std::vector<int>{matrix->getScroll().x, matrix->getScroll().y})) << step.click.x << "," << step.click.y;
    }
    EXPECT_EQ((std::vector<std::vector<int>>{{1, 1}, {2, 1}}), clicked);
    matrix->setSelected(0, 0);
    EXPECT_EQ((std::vector<int>{0, 0}), (std::vector<int>{matrix->getScroll().x, matrix->getScroll().y}));
    EXPECT_TRUE(SameColor(0xFFFF0000u, bench.pixel(20, 15)));
    matrix->setSelected(5, 2);
    EXPECT_EQ((std::vector<int>{2, 1}), (std::vector<int>{matrix->getScroll().x, matrix->getScroll().y}));
    matrix->setMatrixSize(1, 1);
    EXPECT_EQ((std::vector<int>{-1, -1, 0, 0}), (std::vector<int>{matrix->getSelected().x, matrix->getSelected().y,
                                                                  matrix->getScroll().x, matrix->getScroll().y}));
    EXPECT_EQ(nullptr, matrix->getCell(1, 0));
    // Absurd sizes.
    auto* odd = bench.build<QM3Matrix>(R"(<QM3Matrix SizeW="5" SizeH="5" NumberOfCellsX="-3" NumberOfCellsY="1000000000"/>)");
    odd->setMatrixSize(-1, 1000000000);
    odd->setCell(0, 0, {"x", "y", true, std::numeric_limits<float>::quiet_NaN()});
    bench.click({2, 2});
    bench.pixel(0, 0);
}

}  // namespace
}  // namespace OV::Testing
