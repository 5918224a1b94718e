#pragma once

namespace OV::Platform {

// What TinyXML's Parse would build from `text` (zero-terminated): the deepest element nesting
// it reaches, and the most attributes on one element (the parser compares each attribute with
// those before it, so many on one element cost time by their square). Found without recursion
// by reading the text by the parser's own rules: stray closing tags, comments, CDATA,
// declarations and other unknown tags, quoted and unquoted attribute values, entities, and
// UTF-8 sequences that swallow the bytes after a lead byte. Where the parser would stop at an
// error the count may go on, so the results are never below the parser's. The scan stops as
// soon as either passes its limit.
struct XmlShape {
    int depth = 0;
    int attributes = 0;
};
XmlShape ScanXmlShape(const char* text, int depthLimit, int attributeLimit);

}  // namespace OV::Platform
