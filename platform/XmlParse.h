#pragma once

#include <cstddef>

class TiXmlDocument;

namespace OV::Platform {

// Deepest element nesting that is parsed. The parser recurses once per level, about 230 bytes
// of stack each (measured, the same under the sanitizers, which do not instrument it), so the
// limit takes under half a megabyte: room to spare on a host thread with a small stack, and far
// above what any document of ours, unknown elements included, could need.
constexpr int maxXmlDepth = 2000;

// Parses `length` bytes of text, cut at the first zero byte, into `document`. False, with the
// document left empty, for text that is not well-formed, has no root element, or nests deeper
// than maxXmlDepth.
bool ParseXml(TiXmlDocument& document, const char* text, std::size_t length);

}  // namespace OV::Platform
