#pragma once

namespace OV::Platform {

// The deepest element nesting that TinyXML's Parse reaches on `text` (zero-terminated),
// found without recursion by reading the text by the parser's own rules: stray closing tags,
// comments, CDATA, declarations and other unknown tags, quoted and unquoted attribute values,
// entities, and UTF-8 sequences that swallow the bytes after a lead byte. Where the parser would
// stop at an error the count may go on, so the result is never below the parser's depth.
// Counting stops as soon as it passes `stopAbove`.
int XmlNestingDepth(const char* text, int stopAbove);

}  // namespace OV::Platform
