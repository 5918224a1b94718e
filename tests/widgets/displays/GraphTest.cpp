// The plot area on 101 × 51 pixels: a range's ends fall on the middles of the first and last
// columns (rows), 0.5 and 100.5 across, 50.5 and 0.5 up; a decade on a logarithmic scale of two
// decades is half the width.
#include "Bench.h"

#include "widgets/displays/Graph.h"

#include <cmath>
#include <limits>

namespace OV::Testing {
namespace {

using namespace CFW::Widgets;
using Position = Graph::Position;

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

void ExpectPosition(const Position& expected, const Position& actual, const std::string& what)
{
    for (const auto& [e, a] : {std::pair{expected.x, actual.x}, std::pair{expected.y, actual.y}}) {
        if (std::isnan(e))
            EXPECT_TRUE(std::isnan(a)) << what << ": " << a;
        else
            EXPECT_NEAR(e, a, 1e-9) << what;
    }
}

TEST(Graph, MapsUnitsToPixelsAndBack)
{
    struct Case {
        const char* scales;
        double x0, x1, y0, y1; // ranges
        Position units, pixels;
    };
    const Case cases[] = {
        {"", 0, 100, 0, 50, {0, 0}, {0.5, 50.5}},
        {"", 0, 100, 0, 50, {100, 50}, {100.5, 0.5}},
        {"", 0, 100, 0, 50, {25, 10}, {25.5, 40.5}},
        {"", 0, 100, 0, 50, {150, -10}, {150.5, 60.5}},
        {"", 100, 0, 0, 50, {25, 10}, {75.5, 40.5}},
        {R"(ScaleX="Log")", 10, 1000, 0, 50, {100, 25}, {50.5, 25.5}},
        {R"(ScaleX="Log")", 10, 1000, 0, 50, {std::sqrt(1000.0), 25}, {25.5, 25.5}},
        {R"(ScaleX="Log")", 10, 1000, 0, 50, {1000, 0}, {100.5, 50.5}},
        {R"(ScaleX="Logarithmic" ScaleY="Log")", 10, 1000, 1, 100, {316.22776601683796, 10}, {75.5, 25.5}},
        {R"(ScaleY="Log")", 0, 100, 1, 100, {50, 1}, {50.5, 50.5}},
        // What a scale cannot place.
        {R"(ScaleX="Log")", 10, 1000, 0, 50, {0, 25}, {notANumber, 25.5}},
        {R"(ScaleX="Log")", 10, 1000, 0, 50, {-5, 25}, {notANumber, 25.5}},
        {R"(ScaleX="Log")", -10, 1000, 0, 50, {100, 25}, {notANumber, 25.5}},
        {"", 5, 5, 0, 50, {5, 25}, {notANumber, 25.5}},
    };
    for (const Case& c : cases) {
        Bench bench;
        auto* graph = bench.build<Graph>(std::string(R"(<Graph SizeW="101" SizeH="51" )") + c.scales + "/>");
        ASSERT_NE(nullptr, graph) << c.scales;
        graph->setRangeX(c.x0, c.x1);
        graph->setRangeY(c.y0, c.y1);
        const std::string what = std::string(c.scales) + " at " + std::to_string(c.units.x) + ", " + std::to_string(c.units.y);
        ExpectPosition(c.pixels, graph->toPixels(c.units), what);
        if (!std::isnan(c.pixels.x))
            ExpectPosition(c.units, graph->toUnits(c.pixels), what + " back");
    }
}

TEST(Graph, DrawsCurvesOverItsBackgroundInsideItsBorder)
{
    Bench bench;
    bench.picture("stripes", {10, 10}, [](int x, int) { return 0xFF000000u + static_cast<unsigned>(x); });
    auto* graph = bench.build<Graph>(R"(<Graph Background="stripes" Tiled="1" SizeW="101" SizeH="51" BorderColorG="0" BorderColorB="0"/>)");
    graph->setRangeX(0, 100);
    graph->setRangeY(0, 50);
    // A level line at 25, on row 25, from column 10 to column 90.
    graph->setCurve(1, {{10, 25}, {90, 25}}, 0xFF00FF00);
    EXPECT_TRUE(SameColor(0xFF00FF00u, bench.pixel(50, 25)));
    EXPECT_TRUE(SameColor(0xFF000005u, bench.pixel(45, 24)));
    EXPECT_TRUE(SameColor(0xFF000005u, bench.pixel(45, 26)));
    EXPECT_TRUE(SameColor(0xFF000005u, bench.pixel(95, 25)));
    EXPECT_TRUE(SameColor(0xFFFF0000u, bench.pixel(0, 0)));
    EXPECT_TRUE(SameColor(0xFFFF0000u, bench.pixel(100, 50)));
    // A point that cannot be placed breaks the line; replaced and removed, the curve goes.
    graph->setCurve(2, {{10, 10}, {notANumber, 10}, {90, 10}}, 0xFF0000FF, 3.0);
    EXPECT_TRUE(SameColor(0xFF000000u, bench.pixel(50, 40)));
    graph->setCurve(1, {{10, 30}, {90, 30}}, 0xFF00FF00);
    EXPECT_TRUE(SameColor(0xFF000000u, bench.pixel(50, 25)));
    graph->removeCurve(1);
    EXPECT_TRUE(SameColor(0xFF000000u, bench.pixel(50, 20)));

    // Without a border colour, none; hostile points and widths draw what they can.
    auto* logarithmic = bench.build<Graph>(R"(<Graph SizeW="50" SizeH="50" PositionX="70" ScaleX="Log" ScaleY="Log"/>)");
    logarithmic->setCurve(0, {{-1, 5}, {1e300, 1e300}, {1e-300, 5}, {5, 0}, {5, 5}, {std::numeric_limits<double>::infinity(), 2}},
                          0xFFFFFFFF, notANumber);
    logarithmic->setCurve(1, {}, 0xFFFFFFFF, 1e9);
    logarithmic->setCurve(2, {{2, 2}}, 0xFFFFFFFF, -1);
    logarithmic->setRangeX(0, 0);
    bench.pixel(0, 0);
    logarithmic->setRangeX(1e-300, 1e300);
    bench.pixel(0, 0);
}

}  // namespace
}  // namespace OV::Testing
