#pragma once

#include <cstddef>

class TiXmlDocument;

namespace OV::Platform {

// Deepest element nesting that is parsed; the parser recurses once per level, and a host's
// thread may have a small stack.
constexpr int maxXmlDepth = 128;

// Parses `length` bytes of text, cut at the first zero byte, into `document`. False, with the
// document left empty, for text that is not well-formed, has no root element, or nests deeper
// than maxXmlDepth.
bool ParseXml(TiXmlDocument& document, const char* text, std::size_t length);

}  // namespace OV::Platform
