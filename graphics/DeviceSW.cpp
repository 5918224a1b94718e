#include "graphics/DeviceSW.h"

#include "graphics/FontEPISW.h"
#include "graphics/FontFTSW.h"
#include "graphics/ImageReader.h"
#include "graphics/ImageSW.h"
#include "graphics/PainterSW.h"
#include "graphics/x11/WindowChildX11.h"
#include "graphics/x11/WindowTopLevelX11.h"

#include <new>

namespace OV::CFW::Graphics {

namespace {

std::unique_ptr<std::uint32_t[]> Pixels(const BasicPoint<int>& size)
{
    return std::unique_ptr<std::uint32_t[]>(new std::uint32_t[static_cast<std::size_t>(size.x) * static_cast<std::size_t>(size.y)]);
}

// A source pixel of `order` as a word 0xAARRGGBB.
std::uint32_t Convert(const std::uint8_t* p, int order)
{
    const auto word = [](std::uint32_t a, std::uint32_t r, std::uint32_t g, std::uint32_t b) { return MakeColor(a, r, g, b); };
    switch (order) {
    case Device::RGB: return word(0xff, p[0], p[1], p[2]);
    case Device::BGR: return word(0xff, p[2], p[1], p[0]);
    case Device::ARGB: return word(p[0], p[1], p[2], p[3]);
    case Device::BGRA: return word(p[3], p[2], p[1], p[0]);
    case Device::RGBA: return word(p[3], p[0], p[1], p[2]);
    default: return word(p[0], p[3], p[2], p[1]); // ABGR
    }
}

}  // namespace

Device* createDevice(int kind)
{
    return kind == 0 ? new (std::nothrow) DeviceSW : nullptr;
}

WindowTopLevel* DeviceSW::createWindowTopLevel(Window::Callback& callback, const BasicRect<int>& rect, const WindowStyle* style)
{
    return WindowTopLevelX11::create(*this, callback, rect, style);
}

WindowChild* DeviceSW::createWindowChild(Window::Callback& callback, const BasicRect<int>& rect, unsigned long parentHandle,
                                         bool mouseEnabled, bool keyboardEnabled)
{
    return WindowChildX11::create(*this, callback, rect, parentHandle, mouseEnabled, keyboardEnabled);
}

Image* DeviceSW::createImageFromBits(const std::uint8_t* bytes, const BasicPoint<int>& size, Color colorSet, Color colorClear)
{
    auto pixels = Pixels(size);
    const std::size_t count = static_cast<std::size_t>(size.x) * static_cast<std::size_t>(size.y);
    for (std::size_t i = 0; i < count; ++i)
        pixels[i] = bytes[i] != 0 ? colorSet : colorClear;
    const bool alpha = (AlphaOf(colorSet) & AlphaOf(colorClear)) < 255;
    return new (std::nothrow) ImageSW(std::move(pixels), size.x, size.y, alpha);
}

Image* DeviceSW::createImageFromPixels(const std::uint8_t* source, int pitch, const BasicPoint<int>& size, int order)
{
    auto pixels = Pixels(size);
    const int bytesPerPixel = order == RGB || order == BGR ? 3 : 4;
    for (int y = 0; y < size.y; ++y) {
        const std::uint8_t* row = source + static_cast<std::ptrdiff_t>(y) * pitch;
        for (int x = 0; x < size.x; ++x)
            pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(size.x) + static_cast<std::size_t>(x)] = Convert(row + x * bytesPerPixel, order);
    }
    return new (std::nothrow) ImageSW(std::move(pixels), size.x, size.y, bytesPerPixel == 4);
}

Image* DeviceSW::createImageFromStream(int kind, std::istream& stream, std::size_t)
{
    if (kind != 0)
        return new (std::nothrow) ImageSW(nullptr, 0, 0, false);
    ImageData data = ReadImage(stream);
    return new (std::nothrow) ImageSW(std::move(data.pixels), data.width, data.height, data.alpha);
}

Image* DeviceSW::createImage(const BasicPoint<int>& size)
{
    return new (std::nothrow) ImageSW(size);
}

Painter* DeviceSW::createPainter(Image& image)
{
    const auto [pixels, pitch] = image.lock();
    Painter* painter = new (std::nothrow) PainterSW(pixels, pitch, image.size());
    image.unlock();
    return painter;
}

Font* DeviceSW::createFontEPI(Image& image)
{
    return new (std::nothrow) FontEPISW(image);
}

Font* DeviceSW::createFontFT(const std::uint8_t* data, std::size_t dataSize, int height, int addInterline,
                             const std::string& faceName, int faceIndex)
{
    return new (std::nothrow) FontFTSW(data, dataSize, height, addInterline, faceName, faceIndex);
}

}  // namespace OV::CFW::Graphics
