#include "docview/datafilter/FloatRange.h"

#include <limits>

#include <gtest/gtest.h>

namespace OV::CFW::DataFilter {
namespace {

TEST(FloatRangeTest, ConstrainClampsToTheClosedInterval)
{
    const float inf = std::numeric_limits<float>::infinity();
    const struct {
        float minimum, maximum, value, expected;
    } cases[] = {{-24, 24, -30, -24}, {-24, 24, 30, 24}, {-24, 24, 24, 24},     {-24, 24, -24, -24},
                 {-24, 24, 3.5, 3.5}, {20, 20000, -inf, 20}, {20, 20000, inf, 20000}, {0, 0, 1, 0}};
    for (const auto& test : cases) {
        auto original = MakeRange(test.minimum, test.maximum);
        std::unique_ptr<FloatRange> copy;
        original->Clone(copy);
        original.reset();
        ASSERT_NE(nullptr, copy);
        EXPECT_EQ(test.expected, copy->Constrain(test.value)) << test.value;
        EXPECT_EQ(test.minimum, copy->GetMinimum());
        EXPECT_EQ(test.maximum, copy->GetMaximum());
    }
}

}  // namespace
}  // namespace OV::CFW::DataFilter
