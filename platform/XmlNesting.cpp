#include "platform/XmlNesting.h"

#include <tinyxml.h>

#include <algorithm>
#include <cctype>
#include <cstring>
#include <string>

namespace OV::Platform {

namespace {

// Each step below reads as the parser's function of the same purpose does, character classes
// included (the same C library calls, so the same locale), since a difference in where a tag,
// a quote or a comment ends is a difference in what gets nested.

bool IsWhiteSpace(char c)
{
    return std::isspace(static_cast<unsigned char>(c)) != 0 || c == '\n' || c == '\r';
}

bool IsAlpha(unsigned char c)
{
    return c < 127 ? std::isalpha(c) != 0 : true;
}

bool IsNameChar(char c)
{
    const auto byte = static_cast<unsigned char>(c);
    return (byte < 127 ? std::isalnum(byte) != 0 : true) || c == '_' || c == '-' || c == '.' || c == ':';
}

// The bytes the parser takes as one character in UTF-8 mode, by the first.
int SequenceLength(unsigned char lead)
{
    if (lead >= 0xc2 && lead <= 0xdf)
        return 2;
    if (lead >= 0xe0 && lead <= 0xef)
        return 3;
    if (lead >= 0xf0 && lead <= 0xf4)
        return 4;
    return 1;
}

class NestingScan {
public:
    NestingScan(const char* text, int stopAbove, int attributeLimit)
        : text(text), end(text + std::strlen(text)), stopAbove(stopAbove), attributeLimit(attributeLimit)
    {
    }

    XmlShape Run();

private:
    enum class Node { None, Declaration, Comment, CData, Unknown, Element };

    // Null stands for where the parser stops. A `value`, where given, receives the text as the
    // parser decodes it outside UTF-8 mode, the only mode in which one is asked for.
    const char* SkipWhiteSpace(const char* p) const;
    bool StartsWith(const char* p, const char* tag, bool ignoreCase) const;
    Node Identify(const char* p) const;
    const char* ReadName(const char* p) const;
    const char* NextChar(const char* p, std::string* value) const;
    const char* Entity(const char* p, std::string* value) const;
    const char* ReadText(const char* p, const char* endTag, bool trimWhiteSpace, std::string* value = nullptr) const;
    const char* Attribute(const char* p, std::string* value = nullptr) const;
    const char* Declaration(const char* p, std::string* encoding) const;
    const char* Other(Node node, const char* p) const;
    const char* Element(const char* p);
    const char* StartTag(const char* p);
    const char* EndTag(const char* p);

    const char* const text;
    const char* const end;
    const int stopAbove;
    const int attributeLimit;
    bool utf8 = false;
    int depth = 0;
    int deepest = 0;
    int widest = 0; // the most attributes on one element
};

const char* NestingScan::SkipWhiteSpace(const char* p) const
{
    if (p == nullptr || *p == '\0')
        return nullptr;
    while (*p != '\0') {
        const auto* byte = reinterpret_cast<const unsigned char*>(p);
        // In UTF-8 mode byte order marks and two non-characters count as white space.
        if (utf8 && byte[0] == 0xef
            && ((byte[1] == 0xbb && byte[2] == 0xbf) || (byte[1] == 0xbf && (byte[2] == 0xbe || byte[2] == 0xbf)))) {
            p += 3;
            continue;
        }
        if (!IsWhiteSpace(*p))
            break;
        ++p;
    }
    return p;
}

bool NestingScan::StartsWith(const char* p, const char* tag, bool ignoreCase) const
{
    if (p == nullptr || *p == '\0')
        return false;
    // The parser lowers a character of int value at least 128 only outside UTF-8 mode.
    const auto lower = [this](char c) {
        const int value = c;
        return utf8 && value >= 128 ? value : std::tolower(value);
    };
    for (; *p != '\0' && *tag != '\0'; ++p, ++tag) {
        if (ignoreCase ? lower(*p) != lower(*tag) : *p != *tag)
            return false;
    }
    return *tag == '\0';
}

NestingScan::Node NestingScan::Identify(const char* p) const
{
    if (p == nullptr || *p != '<')
        return Node::None;
    if (StartsWith(p, "<?xml", true))
        return Node::Declaration;
    if (StartsWith(p, "<!--", false))
        return Node::Comment;
    if (StartsWith(p, "<![CDATA[", false))
        return Node::CData;
    if (StartsWith(p, "<!", false))
        return Node::Unknown;
    if (IsAlpha(static_cast<unsigned char>(p[1])) || p[1] == '_')
        return Node::Element;
    return Node::Unknown;
}

const char* NestingScan::ReadName(const char* p) const
{
    if (p == nullptr || *p == '\0' || !(IsAlpha(static_cast<unsigned char>(*p)) || *p == '_'))
        return nullptr;
    while (*p != '\0' && IsNameChar(*p))
        ++p;
    return p;
}

const char* NestingScan::NextChar(const char* p, std::string* value) const
{
    const int length = utf8 ? SequenceLength(static_cast<unsigned char>(*p)) : 1;
    if (length > 1) {
        // A sequence cut off by the end steps past it, into the zeros that follow the text.
        return end - p < length ? end : p + length;
    }
    if (*p == '&')
        return Entity(p, value);
    if (value != nullptr)
        value->push_back(*p);
    return p + 1;
}

const char* NestingScan::Entity(const char* p, std::string* value) const
{
    if (p[1] == '#' && p[2] != '\0') {
        // "&#x...;" or "&#...;", read backwards from the first ';' to the 'x' or '#'.
        const bool hex = p[2] == 'x';
        if (hex && p[3] == '\0')
            return nullptr;
        const char* q = std::strchr(p + (hex ? 3 : 2), ';');
        if (q == nullptr)
            return nullptr;
        const char* const after = q + 1;
        unsigned long code = 0;
        unsigned weight = 1;
        for (--q; *q != (hex ? 'x' : '#'); --q) {
            unsigned digit = 0;
            if (*q >= '0' && *q <= '9')
                digit = static_cast<unsigned>(*q - '0');
            else if (hex && *q >= 'a' && *q <= 'f')
                digit = static_cast<unsigned>(*q - 'a' + 10);
            else if (hex && *q >= 'A' && *q <= 'F')
                digit = static_cast<unsigned>(*q - 'A' + 10);
            else
                return nullptr;
            code += weight * digit;
            weight *= hex ? 16 : 10;
        }
        if (value != nullptr)
            value->push_back(static_cast<char>(code));
        return after;
    }
    static const std::pair<const char*, char> named[] = {
        {"&amp;", '&'}, {"&lt;", '<'}, {"&gt;", '>'}, {"&quot;", '"'}, {"&apos;", '\''}};
    for (const auto& [name, character] : named) {
        const std::size_t length = std::strlen(name);
        if (std::strncmp(name, p, length) == 0) {
            if (value != nullptr)
                value->push_back(character);
            return p + length;
        }
    }
    // An '&' that starts no entity is dropped from the value.
    return p + 1;
}

const char* NestingScan::ReadText(const char* p, const char* endTag, bool trimWhiteSpace, std::string* value) const
{
    if (!trimWhiteSpace || !TiXmlBase::IsWhiteSpaceCondensed()) {
        while (p != nullptr && *p != '\0' && !StartsWith(p, endTag, false))
            p = NextChar(p, value);
    } else {
        p = SkipWhiteSpace(p);
        while (p != nullptr && *p != '\0' && !StartsWith(p, endTag, false))
            p = IsWhiteSpace(*p) ? p + 1 : NextChar(p, nullptr);
    }
    if (p != nullptr && *p != '\0')
        p += std::strlen(endTag);
    return p != nullptr && *p != '\0' ? p : nullptr;
}

const char* NestingScan::Attribute(const char* p, std::string* value) const
{
    if (value != nullptr)
        value->clear();
    p = ReadName(SkipWhiteSpace(p));
    if (p == nullptr || *p == '\0')
        return nullptr;
    p = SkipWhiteSpace(p);
    if (p == nullptr || *p != '=')
        return nullptr;
    p = SkipWhiteSpace(p + 1);
    if (p == nullptr || *p == '\0')
        return nullptr;
    if (*p == '\'' || *p == '"') {
        const char quote[2] = {*p, '\0'};
        return ReadText(p + 1, quote, false, value);
    }
    for (; *p != '\0' && !IsWhiteSpace(*p) && *p != '/' && *p != '>'; ++p) {
        if (*p == '\'' || *p == '"')
            return nullptr;
        if (value != nullptr)
            value->push_back(*p);
    }
    return p;
}

// Its version, encoding and standalone values are read as attributes, quotes and all.
const char* NestingScan::Declaration(const char* p, std::string* encoding) const
{
    for (p += 5; p != nullptr && *p != '\0';) {
        if (*p == '>')
            return p + 1;
        p = SkipWhiteSpace(p);
        if (StartsWith(p, "version", true) || StartsWith(p, "standalone", true)) {
            p = Attribute(p);
        } else if (StartsWith(p, "encoding", true)) {
            p = Attribute(p, encoding);
        } else {
            while (p != nullptr && *p != '\0' && *p != '>' && !IsWhiteSpace(*p))
                ++p;
        }
    }
    return nullptr;
}

const char* NestingScan::Other(Node node, const char* p) const
{
    switch (node) {
    case Node::Declaration:
        return Declaration(p, nullptr);
    case Node::Comment:
        for (p += 4; *p != '\0' && !StartsWith(p, "-->", false);)
            ++p;
        return *p != '\0' ? p + 3 : p;
    case Node::CData:
        for (p += 9; *p != '\0' && !StartsWith(p, "]]>", false);)
            ++p;
        return ReadText(p, "]]>", false);
    case Node::Unknown:
        for (++p; *p != '\0' && *p != '>';)
            ++p;
        return *p == '>' ? p + 1 : p;
    default:
        return nullptr;
    }
}

// An element and everything in it, one level of the count per open element rather than one
// level of recursion.
const char* NestingScan::Element(const char* p)
{
    const int outer = depth;
    p = StartTag(p);
    while (p != nullptr && depth > outer) {
        p = SkipWhiteSpace(p);
        if (p == nullptr || *p == '\0')
            return nullptr;
        if (*p != '<') {
            p = ReadText(p, "<", true);
            p = p != nullptr && *p != '\0' ? p - 1 : nullptr;
        } else if (StartsWith(p, "</", false)) {
            p = EndTag(p);
        } else {
            const Node node = Identify(p);
            p = node == Node::Element ? StartTag(p) : Other(node, p);
        }
    }
    return p;
}

// Opens a level; an empty element closes it again at once.
const char* NestingScan::StartTag(const char* p)
{
    int attributes = 0;
    deepest = std::max(deepest, ++depth);
    if (depth > stopAbove)
        return nullptr;
    p = ReadName(SkipWhiteSpace(p + 1));
    if (p == nullptr || *p == '\0')
        return nullptr;
    for (;;) {
        p = SkipWhiteSpace(p);
        if (p == nullptr || *p == '\0')
            return nullptr;
        if (*p == '/') {
            if (p[1] != '>')
                return nullptr;
            --depth;
            return p + 2;
        }
        if (*p == '>')
            return p + 1;
        p = Attribute(p);
        if (p == nullptr || *p == '\0')
            return nullptr;
        if (++attributes > widest && (widest = attributes) > attributeLimit)
            return nullptr;
    }
}

// The parser also stops at an end tag of another name; the count goes on, which can only make
// it larger than the parser's.
const char* NestingScan::EndTag(const char* p)
{
    for (p += 2; *p != '\0' && IsNameChar(*p);)
        ++p;
    p = SkipWhiteSpace(p);
    if (p == nullptr || *p != '>')
        return nullptr;
    --depth;
    return p + 1;
}

XmlShape NestingScan::Run()
{
    if (*text == '\0')
        return {};
    const auto* byte = reinterpret_cast<const unsigned char*>(text);
    bool encodingKnown = byte[0] == 0xef && byte[1] == 0xbb && byte[2] == 0xbf;
    utf8 = encodingKnown;
    for (const char* p = SkipWhiteSpace(text); p != nullptr && *p != '\0'; p = SkipWhiteSpace(p)) {
        const Node node = Identify(p);
        if (node == Node::None)
            break;
        if (node == Node::Declaration && !encodingKnown) {
            // The first declaration says whether what follows is read as UTF-8: when it names
            // no encoding (up to a zero an entity may have put in), or one starting "UTF-8" or
            // "UTF8" in any case.
            std::string encoding;
            p = Declaration(p, &encoding);
            encodingKnown = true;
            const char* const name = encoding.c_str();
            utf8 = *name == '\0' || StartsWith(name, "UTF-8", true) || StartsWith(name, "UTF8", true);
        } else {
            p = node == Node::Element ? Element(p) : Other(node, p);
        }
        if (deepest > stopAbove || widest > attributeLimit)
            break;
    }
    return {deepest, widest};
}

}  // namespace

XmlShape ScanXmlShape(const char* text, int depthLimit, int attributeLimit)
{
    return NestingScan(text, depthLimit, attributeLimit).Run();
}

}  // namespace OV::Platform
