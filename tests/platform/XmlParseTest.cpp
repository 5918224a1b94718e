#include "platform/XmlNesting.h"
#include "platform/XmlParse.h"

#include <pthread.h>
#include <tinyxml.h>

#include <cstring>
#include <functional>
#include <random>

#include <gtest/gtest.h>

namespace OV::Platform {
namespace {

std::string Repeated(const std::string& text, int count)
{
    std::string result;
    result.reserve(text.size() * static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i)
        result += text;
    return result;
}

std::string Nested(int depth)
{
    return Repeated("<e a=\"x\">", depth) + Repeated("</e>", depth);
}

bool Parses(const std::string& text)
{
    TiXmlDocument document;
    return ParseXml(document, text.c_str(), text.size());
}

// Well-formed documents whose elements nest exactly `depth` deep, each hiding markup where a
// scan that does not read as the parser does would see other nesting.
const std::pair<const char*, std::function<std::string(int)>> shapes[] = {
    {"plain", [](int depth) { return Nested(depth); }},
    {"closing tags before the root", [](int depth) { return Repeated("</x>", 64) + Nested(depth); }},
    {"comment opened by <!-->", [](int depth) { return "<!-->" + Repeated("</x>", 64) + "-->" + Nested(depth); }},
    {"tags in comments and CDATA",
     [](int depth) {
         return Repeated("<e><!--<e>--><![CDATA[<e>]]>", depth) + Repeated("<!--</e>--><![CDATA[</e>]]></e>", depth);
     }},
    {"declaration with '>' in a quoted value",
     [](int depth) { return "<?xml version=\"1.0\" standalone=\"" + Repeated("</x>", 64) + "\"?>" + Nested(depth); }},
    {"UTF-8 lead byte taking the closing quote",
     [](int depth) { return "<?xml version=\"1.0\"?><r a=\"\xE0\"><!--\" b=\"1\">" + Nested(depth - 1) + "</r>"; }},
    {"the same byte read alone in a legacy encoding",
     [](int depth) {
         return "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><r a=\"\xE0\" b=\"<!--\">" + Nested(depth - 1) + "</r>";
     }},
    {"quotes, slashes and '>' in attribute values, spaced end tags",
     [](int depth) { return Repeated("<e a=1 b=\"/>\" c='>'>", depth) + Repeated("</e \n>", depth); }},
    {"mixed",
     [](int depth) {
         return "\xEF\xBB\xBF<?xml version='1.0'?><!DOCTYPE x><?pi x?></x><!--></x>--></x><![CDATA[</x>]]>"
             + Repeated("<e>&lt;e&gt;<![CDATA[<e>]]><!--<e>-->", depth) + Repeated("</e>", depth);
     }},
};

// Text deep enough to overflow the parser's stack is refused too.
TEST(XmlParseTest, NestingIsCountedAsTheParserNestsItUpToTheLimit)
{
    const int depth = 300000;
    for (const auto& [name, shape] : shapes) {
        EXPECT_TRUE(Parses(shape(maxXmlDepth))) << name;
        EXPECT_FALSE(Parses(shape(maxXmlDepth + 1))) << name;
        EXPECT_FALSE(Parses(shape(depth))) << name;
    }
    // Unclosed: the parser recurses as deep before it finds the error.
    EXPECT_FALSE(Parses(Repeated("</x>", depth) + Repeated("<e>", depth)));
    EXPECT_FALSE(Parses("<?xml version=\"1.0\"?><r a=\"\xE0\"><!--\" b=\"1\">" + Repeated("<e>", depth)));
}

TEST(XmlParseTest, TextAtTheLimitParsesOnAThreadWithASmallStack)
{
    struct Job {
        std::string text;
        bool parsed;
    } job{Nested(maxXmlDepth), false};
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    pthread_attr_setstacksize(&attributes, 1 << 20);
    pthread_t thread;
    const auto run = [](void* context) -> void* {
        Job& job = *static_cast<Job*>(context);
        TiXmlDocument document;
        job.parsed = ParseXml(document, job.text.c_str(), job.text.size());
        return nullptr;
    };
    ASSERT_EQ(0, pthread_create(&thread, &attributes, run, &job));
    pthread_join(thread, nullptr);
    pthread_attr_destroy(&attributes);
    EXPECT_TRUE(job.parsed);
}

// The depth the parser itself reaches, and its error: each element it begins is linked into the
// document, even when it stops at an error, with the most attributes on one of its elements.
// Only for text too shallow to harm.
struct Parsed {
    int depth = 0, attributes = 0, error = 0;
};
Parsed ParsedShape(const std::string& text)
{
    TiXmlDocument document;
    document.Parse((text + std::string(3, '\0')).c_str());
    Parsed parsed;
    parsed.error = document.ErrorId();
    const std::function<int(const TiXmlNode&)> depth = [&](const TiXmlNode& node) {
        int deepest = 0;
        for (const TiXmlElement* child = node.FirstChildElement(); child != nullptr; child = child->NextSiblingElement()) {
            int attributes = 0;
            for (const TiXmlAttribute* a = child->FirstAttribute(); a != nullptr; a = a->Next())
                ++attributes;
            parsed.attributes = std::max(parsed.attributes, attributes);
            deepest = std::max(deepest, 1 + depth(*child));
        }
        return deepest;
    };
    parsed.depth = depth(document);
    return parsed;
}

XmlShape Counted(const std::string& text)
{
    return ScanXmlShape((text + std::string(3, '\0')).c_str(), 1000, 1000);
}
int CountedDepth(const std::string& text) { return Counted(text).depth; }

TEST(XmlParseTest, NestingIsCountedAsTheParserReachesItOrDeeperPastAWrongEndTag)
{
    for (const auto& [name, shape] : shapes) {
        for (int depth = 1; depth < 5; ++depth)
            EXPECT_EQ(depth, CountedDepth(shape(depth))) << name;
    }
    // Token soup, half of it inside an element: every mix of the markup that moves where
    // things end. The count checks neither end tag names nor repeated attributes, so it may go
    // on where the parser stops at one.
    const char* const tokens[] = {
        "<e>", "</e>", "<e/>", "<_>", "</_>", "<f a='1'>", "</f>", "<e a=\"", "\"", "'", ">", "/>", "<", "</", "< e>",
        "</e \n>", "<!--", "-->", "<!-->", "<![CDATA[", "]]>", "<!DOCTYPE ", "<?pi ", "<?xml version='1.0'?>", "<?xml ",
        "encoding=\"", "UTF-8", "UTF8", "latin1", "version=", "<?xml encoding='&#0;x'?>", "<?xml encoding='&#85;TF8'?>",
        "<?xml encoding='&UTF-8'?>", "\xEF\xBB\xBF", "\xE0", "\xC3", "\xF0", "&#x", "&#", "&lt;", "&", ";", "1", "x",
        "=", " ", "\n",
    };
    std::mt19937 random(20240611);
    for (int i = 0; i < 100000; ++i) {
        std::string text = i % 2 == 0 ? "<r>" : "";
        for (std::uint32_t count = 1 + random() % 40; count > 0; --count)
            text += tokens[random() % std::size(tokens)];
        const Parsed parsed = ParsedShape(text);
        const XmlShape counted = Counted(text);
        if (parsed.error == TiXmlBase::TIXML_ERROR_READING_END_TAG || parsed.error == TiXmlBase::TIXML_ERROR_PARSING_ELEMENT) {
            ASSERT_GE(counted.depth, parsed.depth) << text;
            ASSERT_GE(counted.attributes, parsed.attributes) << text;
        } else {
            ASSERT_EQ(counted.depth, parsed.depth) << text;
            ASSERT_EQ(counted.attributes, parsed.attributes) << text;
        }
    }
}

// Each attribute is checked against those before it: an element with very many would keep
// the parser busy for minutes, so the text is refused before it starts.
TEST(XmlParseTest, AttributesOnOneElementAreParsedUpToTheLimit)
{
    const auto element = [](int attributes) {
        std::string text = "<Root><e ";
        for (int i = 0; i < attributes; ++i)
            text += "a" + std::to_string(i) + "='1' ";
        return text + "/><e b='2'/></Root>";
    };
    EXPECT_TRUE(Parses(element(maxXmlAttributes)));
    EXPECT_FALSE(Parses(element(maxXmlAttributes + 1)));
    EXPECT_FALSE(Parses(element(200000)));
    // The same number spread over elements is fine.
    std::string many = "<Root>";
    for (int i = 0; i < 2000; ++i)
        many += "<e a='1' b='2' c='3'/>";
    EXPECT_TRUE(Parses(many + "</Root>"));
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
