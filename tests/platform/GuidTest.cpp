#include "platform/Guid.h"

#include <regex>
#include <set>

#include <gtest/gtest.h>

namespace OV::Platform {
namespace {

TEST(GuidTest, PrintsFieldsInTheFixedForm)
{
    const Guid main = {0x2429F140, 0xA34C, 0x4C6C, {0xBF, 0x23, 0x3A, 0x5F, 0xBC, 0x13, 0x21, 0x2E}};
    EXPECT_EQ("2429f140-a34c-4c6c-bf23-3a5fbc13212e", FormatGuid(main));
    const Guid small = {0x1, 0x2, 0x3, {0, 1, 2, 3, 4, 5, 6, 0xff}};
    EXPECT_EQ("00000001-0002-0003-0001-0203040506ff", FormatGuid(small));
}

TEST(GuidTest, CreatedGuidsAreRandomVersionFour)
{
    const std::regex form("[0-9a-f]{8}-[0-9a-f]{4}-4[0-9a-f]{3}-[89ab][0-9a-f]{3}-[0-9a-f]{12}");
    std::set<std::string> seen;
    for (int i = 0; i < 200; ++i) {
        const std::string text = FormatGuid(CreateGuid());
        EXPECT_TRUE(std::regex_match(text, form)) << text;
        seen.insert(text);
    }
    EXPECT_EQ(200u, seen.size());
}

}  // namespace
}  // namespace OV::Platform
