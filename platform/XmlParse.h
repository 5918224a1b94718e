#pragma once

#include <cstddef>

class TiXmlDocument;

namespace OV::Platform {

// Deepest element nesting that is parsed. The parser recurses once per level, about 230 bytes of
// stack each: at this depth under half a megabyte, which a host's smallest threads still hold.
constexpr int maxXmlDepth = 2048;

// Parses `length` bytes of text, cut at the first zero byte, into `document`. False, with the
// document left empty, for text that is not well-formed, has no root element, or nests deeper
// than maxXmlDepth.
bool ParseXml(TiXmlDocument& document, const char* text, std::size_t length);

}  // namespace OV::Platform
