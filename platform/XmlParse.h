#pragma once

#include <cstddef>

class TiXmlDocument;

namespace OV::Platform {

// Deepest element nesting that is parsed. The parser recurses once per level, about 230 bytes
// of stack each (measured, the same under the sanitizers, which do not instrument it), so the
// limit takes under half a megabyte: room to spare on a host thread with a small stack, and far
// above what any document of ours, unknown elements included, could need.
constexpr int maxXmlDepth = 2000;
// Most attributes on one element that are parsed. The parser checks each against those before
// it, so the time goes with their square: at this limit a 4 MB text of such elements parses in
// about a second; the widest element of ours has about 110.
constexpr int maxXmlAttributes = 512;

// Parses `length` bytes of text, cut at the first zero byte, into `document`. False, with the
// document left empty, for text that is not well-formed, has no root element, nests deeper
// than maxXmlDepth or has an element with more than maxXmlAttributes attributes.
bool ParseXml(TiXmlDocument& document, const char* text, std::size_t length);

}  // namespace OV::Platform
