#include "platform/XmlParse.h"

#include <tinyxml.h>

#include <cstring>
#include <string>

namespace OV::Platform {

namespace {

// Counts element nesting as the parser will nest it, without recursion. Comments, CDATA,
// declarations and quoted attribute values are stepped over, so a '<' inside them is not taken
// for a tag. A closing tag ends the open element; with none open the parser keeps it as an
// unknown node, so it ends nothing. Any other '<' counts as an opening, which errs on the safe
// side.
bool NestingWithin(const std::string& text, int limit)
{
    int depth = 0;
    std::size_t i = 0;
    const auto skipPast = [&](const char* end) {
        const std::size_t found = text.find(end, i);
        i = found == std::string::npos ? text.size() : found + std::strlen(end);
    };
    while ((i = text.find('<', i)) != std::string::npos) {
        if (text.compare(i, 4, "<!--") == 0) {
            skipPast("-->");
        } else if (text.compare(i, 9, "<![CDATA[") == 0) {
            skipPast("]]>");
        } else if (text.compare(i, 2, "<?") == 0 || text.compare(i, 2, "<!") == 0) {
            skipPast(">");
        } else if (text.compare(i, 2, "</") == 0) {
            depth = depth > 0 ? depth - 1 : 0;
            skipPast(">");
        } else {
            char quote = 0;
            std::size_t j = i + 1;
            for (; j < text.size(); ++j) {
                const char c = text[j];
                if (quote != 0) {
                    if (c == quote)
                        quote = 0;
                } else if (c == '"' || c == '\'') {
                    quote = c;
                } else if (c == '>') {
                    break;
                }
            }
            if (j >= text.size() || text[j - 1] != '/') {
                if (++depth > limit)
                    return false;
            }
            i = j + 1;
        }
    }
    return true;
}

}  // namespace

bool ParseXml(TiXmlDocument& document, const char* text, std::size_t length)
{
    document.Clear();
    if (text == nullptr)
        return false;
    const std::string bounded(text, strnlen(text, length));
    if (!NestingWithin(bounded, maxXmlDepth))
        return false;
    document.Parse(bounded.c_str());
    if (document.Error() || document.RootElement() == nullptr) {
        document.Clear();
        return false;
    }
    return true;
}

}  // namespace OV::Platform
