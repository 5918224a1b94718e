#include "platform/XmlParse.h"

#include <tinyxml.h>

#include <cstring>

#include <gtest/gtest.h>

namespace OV::Platform {
namespace {

std::string Nested(int depth)
{
    std::string text;
    for (int i = 0; i < depth; ++i)
        text += "<e a=\"x\">";
    for (int i = 0; i < depth; ++i)
        text += "</e>";
    return text;
}

bool Parses(const std::string& text)
{
    TiXmlDocument document;
    return ParseXml(document, text.c_str(), text.size());
}

TEST(XmlParseTest, AcceptsWellFormedTextUpToTheDepthLimit)
{
    EXPECT_TRUE(Parses("<?xml version=\"1.0\"?><Bank><Program a=\"1\"/></Bank>"));
    EXPECT_TRUE(Parses(Nested(maxXmlDepth)));
    EXPECT_FALSE(Parses(Nested(maxXmlDepth + 1)));
    EXPECT_FALSE(Parses(Nested(100000))) << "deep nesting is refused before the parser recurses";
    // Angle brackets inside comments, CDATA and attribute values are not tags.
    const std::string comment = "<!--" + std::string(500, '<') + "-->";
    const std::string quoted = "<r a=\"" + std::string(200, '>') + "\" b='/>'>" + Nested(maxXmlDepth - 1) + "</r>";
    EXPECT_TRUE(Parses(comment + "<r/>"));
    EXPECT_TRUE(Parses("<r><![CDATA[" + std::string(500, '<') + "]]></r>"));
    EXPECT_TRUE(Parses(quoted));
}

// Shapes that nest far past the limit once the parser has stepped over what comes before each
// opening tag. Parsed, any of them would overflow the stack; the guard refuses them first.
TEST(XmlParseTest, RefusesHostileNestingWhateverSurroundsTheTags)
{
    const int n = 300000;
    const auto repeated = [](const std::string& piece, int times) {
        std::string text;
        for (int i = 0; i < times; ++i)
            text += piece;
        return text;
    };
    const std::string hostile[] = {
        repeated("</x>", n) + repeated("<e>", n),  // stray closing tags before the root
        repeated("<e><!--</e>-->", n),
        repeated("<e><![CDATA[</e>]]>", n),
        "<?xml version=\"1.0\"?><!DOCTYPE e>" + repeated("<?p </e>?><e>", n),
        repeated("<e a='</e>'>", n),
        repeated("</x><e><!-- </e> --></y><e b=\"/>\">", n),
    };
    for (const std::string& text : hostile)
        EXPECT_FALSE(Parses(text)) << text.substr(0, 60);
}

TEST(XmlParseTest, RefusesBrokenOrEmptyText)
{
    for (const char* text : {"", "   ", "no xml", "<a>", "<a></b>", "<a b=\"1></a>", "<?xml version=\"1.0\"?>"})
        EXPECT_FALSE(Parses(text)) << text;
    TiXmlDocument document;
    EXPECT_FALSE(ParseXml(document, nullptr, 10));
}

TEST(XmlParseTest, ReadsNoFurtherThanLengthOrZeroByte)
{
    const char text[] = "<a/><b/>";
    TiXmlDocument document;
    ASSERT_TRUE(ParseXml(document, text, 4));
    EXPECT_STREQ("a", document.RootElement()->Value());
    EXPECT_EQ(nullptr, document.RootElement()->NextSiblingElement());

    const char zero[] = "<a><c/></a>\0<b>";
    ASSERT_TRUE(ParseXml(document, zero, sizeof zero));
    EXPECT_STREQ("c", document.RootElement()->FirstChildElement()->Value());

    // Exactly the bytes given, with no terminator after them.
    char unterminated[4];
    std::memcpy(unterminated, "<a/>", 4);
    EXPECT_TRUE(ParseXml(document, unterminated, sizeof unterminated));
}

}  // namespace
}  // namespace OV::Platform
