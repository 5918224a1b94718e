#include "platform/XmlParse.h"

#include "platform/XmlNesting.h"

#include <tinyxml.h>

#include <cstring>
#include <string>

namespace OV::Platform {

bool ParseXml(TiXmlDocument& document, const char* text, std::size_t length)
{
    document.Clear();
    if (text == nullptr)
        return false;
    // In UTF-8 mode the parser steps over a whole sequence even when the text ends inside it,
    // up to three bytes past the end: those bytes are zeros, as the nesting count assumes.
    std::string padded(text, strnlen(text, length));
    padded.append(3, '\0');
    const XmlShape shape = ScanXmlShape(padded.c_str(), maxXmlDepth, maxXmlAttributes);
    if (shape.depth > maxXmlDepth || shape.attributes > maxXmlAttributes)
        return false;
    document.Parse(padded.c_str());
    if (document.Error() || document.RootElement() == nullptr) {
        document.Clear();
        return false;
    }
    return true;
}

}  // namespace OV::Platform
