#pragma once

#include "graphics/Color.h"
#include "graphics/Geometry.h"
#include "graphics/Window.h"

#include <cstddef>
#include <cstdint>
#include <istream>
#include <string>

namespace OV::CFW::Graphics {

class Font;
class Image;
class Painter;

// The factory of everything drawn: windows, images, painters, fonts. The caller owns every
// object returned. Window thread only.
class Device {
public:
    // The byte order of a source of createImageFromPixels.
    enum PixelOrder { RGB = 0, BGR = 1, ARGB = 2, BGRA = 3, RGBA = 4, ABGR = 5 };

    virtual ~Device() = default;
    // Null `style`: a caption alone.
    virtual WindowTopLevel* createWindowTopLevel(Window::Callback& callback, const BasicRect<int>& rect, const WindowStyle* style) = 0;
    virtual WindowChild* createWindowChild(Window::Callback& callback, const BasicRect<int>& rect, unsigned long parentHandle,
                                           bool mouseEnabled, bool keyboardEnabled) = 0;
    // One byte a pixel, rows tightly packed: non-zero gives `colorSet`, zero `colorClear`.
    virtual Image* createImageFromBits(const std::uint8_t* bytes, const BasicPoint<int>& size, Color colorSet, Color colorClear) = 0;
    // Rows `pitch` bytes apart, converted by `order`.
    virtual Image* createImageFromPixels(const std::uint8_t* pixels, int pitch, const BasicPoint<int>& size, int order) = 0;
    // Kind 0 reads an image file (Image::LoadError on failure); any other kind gives an empty
    // image. `length` is not needed by the reader, which finds its own end.
    virtual Image* createImageFromStream(int kind, std::istream& stream, std::size_t length) = 0;
    // Pixels uninitialised, alpha true.
    virtual Image* createImage(const BasicPoint<int>& size) = 0;
    // A painter on the image's pixels; the image must outlive it.
    virtual Painter* createPainter(Image& image) = 0;
    // A bitmap font cut from the strip, which it rewrites as a coverage mask; the image must
    // outlive the font.
    virtual Font* createFontEPI(Image& image) = 0;
    // An outline font on the font file in `data`, which must outlive it.
    virtual Font* createFontFT(const std::uint8_t* data, std::size_t dataSize, int height, int addInterline,
                               const std::string& faceName, int faceIndex) = 0;
};

// A new software device for `kind` 0; null for any other kind.
Device* createDevice(int kind);

}  // namespace OV::CFW::Graphics
