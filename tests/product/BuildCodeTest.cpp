#include "product/BuildCode.h"

#include <gtest/gtest.h>

namespace OV::Products::VN4 {
namespace {

TEST(BuildCodeTest, YearDigitMonthLetterAndDay)
{
    const std::pair<const char*, const char*> cases[] = {
        {"Jul  7 2010", "0G07"}, {"Jan  1 2026", "6A01"}, {"Dec 31 2029", "9L31"},
        {"Nov 22 2026", "6K22"}, {"Xyz 15 2021", "1M15"}, {"jul  7 2010", "0M07"},
    };
    for (const auto& [date, code] : cases)
        EXPECT_EQ(code, MakeBuildCode(date)) << date;
    EXPECT_EQ(4u, MakeBuildCode("").size());
}

}  // namespace
}  // namespace OV::Products::VN4
