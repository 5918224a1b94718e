// Meters against pixels and positions worked out by hand: LED bars in each direction, the
// needle's end, the tuner's spot, and levels no meter should choke on.
#include "Bench.h"

#include "widgets/displays/AnalogMeter.h"
#include "widgets/displays/Meter.h"
#include "widgets/displays/Tuner.h"

#include <cmath>
#include <limits>

namespace OV::Testing {
namespace {

using namespace CFW::Widgets;

constexpr CFW::Graphics::Color dark = 0xFF101010;
constexpr CFW::Graphics::Color lit = 0xFF00C000;
constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();

TEST(Meter, LightsTheLedsOfTheLevel)
{
    // Ten LEDs on a bar of 100 from pictures of 104 × 10 (or 10 × 104), 2 in from the ends and 1
    // from the sides: an LED is 10 pixels, a half 5, and the bar runs from 2 to 101.
    struct Case {
        const char* orientation;
        bool half;
        float level;
        int steps;
        int first, last; // lit along the bar; first > last for none
    };
    const Case cases[] = {
        {"LeftToRight", false, 0.35f, 3, 2, 31},   {"LeftToRight", true, 0.35f, 7, 2, 36},
        {"RightToLeft", false, 0.35f, 3, 72, 101}, {"RightToLeft", true, 0.99f, 19, 7, 101},
        {"BottomToTop", false, 0.3f, 3, 72, 101},  {"BottomToTop", true, 0.05f, 1, 97, 101},
        {"TopToBottom", false, 1.0f, 10, 2, 101},  {"TopToBottom", true, 0.04f, 0, 1, 0},
        {"", false, 0.7f, 7, 2, 71}, // left to right when not told
    };
    for (const Case& c : cases) {
        Bench bench;
        const bool vertical = c.orientation[0] == 'B' || c.orientation[0] == 'T';
        const CFW::BasicPoint<int> size = vertical ? CFW::BasicPoint<int>{10, 104} : CFW::BasicPoint<int>{104, 10};
        bench.plain("off", size, dark);
        bench.plain("on", size, lit);
        const std::string xml = std::string(R"(<Meter ImageOff="off" ImageOn="on" NumOfLeds="10" Orientation=")") + c.orientation +
                                "\" HalfLeds=\"" + (c.half ? "1" : "0") + (vertical ? R"(" LedsOffsetX="1" LedsOffsetY="2"/>)"
                                                                                      : R"(" LedsOffsetX="2" LedsOffsetY="1"/>)");
        auto* meter = bench.build<Meter>(xml);
        ASSERT_NE(nullptr, meter) << xml;
        meter->setLevel(c.level);
        EXPECT_EQ(c.steps, meter->getLitSteps()) << xml;
        for (int along = 0; along < 104; ++along) {
            const bool on = along >= c.first && along <= c.last;
            EXPECT_EQ(on ? lit : dark, vertical ? bench.pixel(5, along) : bench.pixel(along, 5)) << xml << " at " << along;
            // The margin beside the bar stays dark.
            EXPECT_EQ(dark, vertical ? bench.pixel(0, along) : bench.pixel(along, 0)) << xml << " at " << along;
        }
    }
}

TEST(Meter, TakesAnyLevelAndRepaintsOnlyOnAChange)
{
    struct Case {
        const char* attributes;
        float level;
        int steps;
    };
    const Case cases[] = {
        {R"(NumOfLeds="10")", notANumber, 0},
        {R"(NumOfLeds="10")", 1e9f, 10},
        {R"(NumOfLeds="10")", -1e9f, 0},
        {R"(NumOfLeds="10")", std::numeric_limits<float>::infinity(), 10},
        {R"(NumOfLeds="10" MinValue="0.5" MaxValue="1")", 0.75f, 5},
        {R"(NumOfLeds="10" MinValue="0.5" MaxValue="0.5")", 0.6f, 10},
        {R"(NumOfLeds="10" MinValue="0.5" MaxValue="0.5")", 0.5f, 0},
        {R"(NumOfLeds="0")", 0.5f, 0},
        {R"(NumOfLeds="-5" HalfLeds="1")", 0.5f, 0},
        {R"(NumOfLeds="1000000000" LedsOffsetX="1000000000" LedsOffsetY="-7")", 0.5f, 32768},
    };
    for (const Case& c : cases) {
        Bench bench;
        bench.plain("off", {104, 10}, dark);
        bench.plain("on", {104, 10}, lit);
        auto* meter = bench.build<Meter>(std::string(R"(<Meter ImageOff="off" ImageOn="on" )") + c.attributes + "/>");
        ASSERT_NE(nullptr, meter) << c.attributes;
        meter->setLevel(c.level);
        EXPECT_EQ(c.steps, meter->getLitSteps()) << c.attributes;
        bench.pixel(0, 0);
    }
    // Within the same LED nothing is painted again.
    Bench bench;
    bench.plain("off", {104, 10}, dark);
    bench.plain("on", {104, 10}, lit);
    auto* meter = bench.build<Meter>(R"(<Meter ImageOff="off" ImageOn="on" NumOfLeds="10"/>)");
    meter->setLevel(0.35f);
    bench.pixel(0, 0);
    meter->setLevel(0.39f);
    EXPECT_TRUE(CFW::IsEmpty(bench.window.dirtyRect()));
    meter->setLevel(0.4f);
    EXPECT_FALSE(CFW::IsEmpty(bench.window.dirtyRect()));
    // Without both pictures there is no meter.
    EXPECT_EQ(nullptr, bench.build(R"(<Meter ImageOff="off" NumOfLeds="10"/>)"));
}

TEST(AnalogMeter, NeedleEndsWhereTheLevelPointsIt)
{
    // About (50, 50) from the left point to the right one: clockwise over the top, the other way
    // under the bottom, 40 long.
    const std::string across = R"(ArrowOriginX="50" ArrowOriginY="50" ArrowMinX="10" ArrowMinY="50" ArrowMaxX="90" ArrowMaxY="50")";
    const double diagonal = 40.0 * std::sqrt(0.5);
    struct Case {
        std::string attributes;
        float level;
        double x, y;
    };
    const Case cases[] = {
        {across, 0.0f, 10, 50},
        {across, 1.0f, 90, 50},
        {across, 0.5f, 50, 10},
        {across + R"( CCW="1")", 0.5f, 50, 90},
        {across + R"( CCW="1")", 0.25f, 50 - diagonal, 50 + diagonal},
        {across, 0.25f, 50 - diagonal, 50 - diagonal},
        {across + R"( MinValue="0.2" MaxValue="0.6")", 0.4f, 50, 10},
        {across, notANumber, 10, 50},
        {across, 1e9f, 90, 50},
        // A quarter turn from 10 long to 20 long: half way, 15 long at 45°.
        {R"(ArrowMinX="10" ArrowMaxY="20")", 0.5f, 15 * std::sqrt(0.5), 15 * std::sqrt(0.5)},
    };
    for (const Case& c : cases) {
        Bench bench;
        auto* meter = bench.build<AnalogMeter>("<AnalogMeter SizeW=\"100\" SizeH=\"100\" " + c.attributes + "/>");
        ASSERT_NE(nullptr, meter) << c.attributes;
        meter->setLevel(c.level);
        EXPECT_NEAR(c.x, meter->needleEnd().x, 1e-4) << c.attributes << " at " << c.level;
        EXPECT_NEAR(c.y, meter->needleEnd().y, 1e-4) << c.attributes << " at " << c.level;
    }
}

TEST(AnalogMeter, DrawsNeedleShadowAndCover)
{
    Bench bench;
    bench.plain("dial", {100, 100}, 0xFF000000);
    bench.plain("cap", {6, 6}, 0xFFFF0000);
    auto* meter = bench.build<AnalogMeter>(R"(<AnalogMeter Background="dial" Cover="cap" CoverX="47" CoverY="47")"
                                           R"( ArrowOriginX="50" ArrowOriginY="50" ArrowMinX="10" ArrowMinY="50" ArrowMaxX="90")"
                                           R"( ArrowMaxY="50" Thickness="2" ArrowColorR="0" ArrowColorB="0" ShadowMaxOffsetY="6")"
                                           R"( ShadowColorR="0" ShadowColorG="0"/>)");
    meter->setLevel(1.0f);
    // The needle along y 50 from 50 to 90, its shadow 6 below, the cap over the origin.
    EXPECT_TRUE(SameColor(0xFFFF0000u, bench.pixel(50, 50)));
    EXPECT_TRUE(SameColor(0xFF00FF00u, bench.pixel(70, 49)));
    EXPECT_TRUE(SameColor(0xFF00FF00u, bench.pixel(70, 50)));
    EXPECT_TRUE(SameColor(0xFF0000FFu, bench.pixel(70, 56)));
    EXPECT_TRUE(SameColor(0xFF000000u, bench.pixel(70, 30)));
    // A move too small to see paints nothing.
    meter->setLevel(1.0f - 1e-6f);
    EXPECT_TRUE(CFW::IsEmpty(bench.window.dirtyRect()));
    meter->setLevel(0.5f);
    EXPECT_TRUE(SameColor(0xFF00FF00u, bench.pixel(50, 30)));
    EXPECT_TRUE(SameColor(0xFF000000u, bench.pixel(70, 50)));
}

TEST(Tuner, LightsASpotThatFades)
{
    // -50 to 50 over 101 pixels, the spot 2 either side at 2/3 and 1/3 of full strength.
    struct Case {
        bool vertical;
        float value;
        int spot;
    };
    const Case cases[] = {{false, 0.0f, 50}, {false, -50.0f, 0}, {false, 1e9f, 100}, {false, notANumber, -1},
                          {true, -50.0f, 100}, {true, 25.0f, 25}};
    for (const Case& c : cases) {
        Bench bench;
        const CFW::BasicPoint<int> size = c.vertical ? CFW::BasicPoint<int>{10, 101} : CFW::BasicPoint<int>{101, 10};
        bench.plain("off", size, 0xFF000000);
        bench.plain("on", size, 0xFFFFFFFF);
        auto* tuner = bench.build<Tuner>(R"(<Tuner ImageOff="off" ImageOn="on" MinValue="-50" MaxValue="50" Feather="2"/>)");
        tuner->setValue(c.value);
        EXPECT_EQ(c.spot, tuner->getSpot()) << c.value;
        for (int along = 0; along < 101; ++along) {
            const int distance = c.spot < 0 ? 3 : std::abs(along - c.spot);
            const unsigned blue = (c.vertical ? bench.pixel(5, along) : bench.pixel(along, 5)) & 0xFF;
            const unsigned expected = distance == 0 ? 255 : distance == 1 ? 169 : distance == 2 ? 84 : 0;
            EXPECT_NEAR(expected, blue, 2) << c.value << " at " << along;
        }
    }
}

}  // namespace
}  // namespace OV::Testing
