#include "docview/datafilter/FloatConverter.h"
#include "docview/datafilter/FloatRange.h"

#include <cmath>
#include <limits>

#include <gtest/gtest.h>

namespace OV::CFW::DataFilter {
namespace {

using Make = std::unique_ptr<FloatConverter> (*)();
std::unique_ptr<FloatConverter> Norm() { return MakeNorm(20.0f, 20000.0f); }
std::unique_ptr<FloatConverter> Log() { return MakeLogNorm(20.0f, 20000.0f); }
std::unique_ptr<FloatConverter> Square() { return MakePowNorm(2.0f, 0.0f, 100.0f); }
std::unique_ptr<FloatConverter> Cube() { return MakePowNorm(3.0f, -10.0f, 10.0f); }
std::unique_ptr<FloatConverter> Step0() { return MakeStep(0); }
std::unique_ptr<FloatConverter> Step1() { return MakeStep(1); }
std::unique_ptr<FloatConverter> Step2() { return MakeStep(2); }
std::unique_ptr<FloatConverter> Ramp() { return MakeCustom({{0.0f, 0.0f}, {1.0f, 10.0f}}); }
std::unique_ptr<FloatConverter> Raised() { return MakeCustom({{1.0f, 4.0f}, {2.0f, 8.0f}}); }
std::unique_ptr<FloatConverter> Tent() { return MakeCustom({{0.0f, 0.0f}, {1.0f, 10.0f}, {3.0f, 0.0f}}); }

// Each value is checked on a fresh converter and on a clone that outlived its original.
TEST(FloatConverterTest, HandWorkedValuesAlsoThroughClones)
{
    enum Direction { ToValue, ToNormalized };
    // tolerance 0: the float nearest `expected`, exactly
    const struct { const char* name; Make make; Direction direction; float input; double expected, tolerance; } cases[] = {
        {"null", MakeNull, ToValue, 0.3f, 0.3f, 0},      {"null", MakeNull, ToNormalized, -7.25f, -7.25, 0},
        {"norm", Norm, ToValue, 0.0f, 20.0, 0},          {"norm", Norm, ToValue, 0.5f, 10010.0, 0},
        {"norm", Norm, ToValue, 1.0f, 20000.0, 0},       {"norm", Norm, ToNormalized, 5015.0f, 0.25, 0},
        {"log", Log, ToValue, 0.0f, 20.0, 0},            {"log", Log, ToValue, 1.0f, 20000.0, 2e-3},
        {"log", Log, ToValue, 0.5f, 632.455532, 1e-3},   // 20 * sqrt(1000)
        {"log", Log, ToNormalized, 200.0f, 1.0 / 3, 1e-7},
        {"pow2", Square, ToValue, 0.5f, 25.0, 0},        {"pow2", Square, ToNormalized, 25.0f, 0.5, 0},
        {"pow3", Cube, ToValue, 0.5f, -7.5, 0},          {"pow3", Cube, ToNormalized, -7.5f, 0.5, 1e-7},
        {"dB", MakedB, ToValue, -6.0f, 0.501187, 1e-6},  {"dB", MakedB, ToValue, 20.0f, 10.0, 1e-6},
        {"dB", MakedB, ToNormalized, 1.0f, 0.0, 0},      {"dB", MakedB, ToNormalized, 0.5f, -6.0206, 1e-4},
        {"step1", Step1, ToValue, 2.96f, 2.9f, 0},       {"step1", Step1, ToValue, 2.9995f, 3.0, 0},
        {"step1", Step1, ToValue, -2.96f, -2.9f, 0},     {"step1", Step1, ToNormalized, -2.9995f, -3.0, 0},
        {"step0", Step0, ToValue, 2.98f, 2.0, 0},        {"step0", Step0, ToValue, 2.995f, 3.0, 0},
        {"step0", Step0, ToNormalized, -1.5f, -1.0, 0},  {"step2", Step2, ToValue, 0.129f, 0.12f, 0},
        {"ramp", Ramp, ToNormalized, 0.5f, 5.0, 0},      {"ramp", Ramp, ToNormalized, 2.0f, 10.0, 0},
        {"ramp", Ramp, ToNormalized, -1.0f, 0.0, 0},     {"ramp", Ramp, ToValue, 0.5f, 0.0, 0},
        {"raised", Raised, ToNormalized, 0.0f, 4.0, 0},  {"raised", Raised, ToNormalized, 1.5f, 6.0, 0},
        {"raised", Raised, ToNormalized, 5.0f, 8.0, 0},  {"tent", Tent, ToNormalized, 1.0f, 10.0, 0},
        {"tent", Tent, ToNormalized, 2.5f, 2.5, 0},      {"tent", Tent, ToNormalized, 0.25f, 2.5, 0},
    };
    for (const auto& [name, make, direction, input, expected, tolerance] : cases) {
        std::unique_ptr<FloatConverter> clone;
        make()->Clone(clone);
        for (const auto& converter : {make(), std::move(clone)}) {
            const float result = direction == ToValue ? converter->ToValue(input) : converter->ToNormalized(input);
            if (tolerance == 0)
                EXPECT_EQ(static_cast<float>(expected), result) << name << " at " << input;
            else
                EXPECT_NEAR(expected, result, tolerance) << name << " at " << input;
        }
    }
    EXPECT_EQ(-std::numeric_limits<float>::infinity(), MakedB()->ToNormalized(0.0f));
    EXPECT_TRUE(std::isnan(MakedB()->ToNormalized(-1.0f)));
}

// Ranges where a float plain value pins the normalised one to about 1e-6; a curve that is flat
// at an end far from zero (a cube on -10..10) does not.
TEST(FloatConverterTest, NormalizedRoundTripsAcrossRanges)
{
    const Make ranges[] = {Norm, Log, Square, [] { return MakePowNorm(3.0f, 0.0f, 10.0f); },
                           [] { return MakeLogNorm(0.1f, 10.0f); },
                           [] { return MakePowNorm(0.5f, -24.0f, 24.0f); }, [] { return MakeNorm(1.0f, -1.0f); }};
    for (Make make : ranges) {
        const auto converter = make();
        for (int i = 0; i <= 40; ++i) {
            const float x = static_cast<float>(i) / 40.0f;
            EXPECT_NEAR(x, converter->ToNormalized(converter->ToValue(x)), 2e-6) << &make - ranges << " at " << x;
        }
    }
}

// Checked on a clone that outlived its original.
TEST(FloatRangeTest, ConstrainClampsToTheClosedInterval)
{
    const float inf = std::numeric_limits<float>::infinity();
    const struct { float minimum, maximum, value, expected; } cases[] = {
        {-24, 24, -30, -24}, {-24, 24, 30, 24}, {-24, 24, 24, 24}, {-24, 24, -24, -24},
        {-24, 24, 3.5, 3.5}, {20, 20000, -inf, 20}, {20, 20000, inf, 20000}, {0, 0, 1, 0}};
    for (const auto& [minimum, maximum, value, expected] : cases) {
        std::unique_ptr<FloatRange> copy;
        MakeRange(minimum, maximum)->Clone(copy);
        ASSERT_NE(nullptr, copy);
        EXPECT_EQ(expected, copy->Constrain(value)) << value;
        EXPECT_TRUE(copy->GetMinimum() == minimum && copy->GetMaximum() == maximum) << value;
    }
}

}  // namespace
}  // namespace OV::CFW::DataFilter
