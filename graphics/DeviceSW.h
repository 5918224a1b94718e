#pragma once

#include "graphics/Device.h"

namespace OV::CFW::Graphics {

// The software device: every picture is plain 32-bit memory. It holds no state.
class DeviceSW : public Device {
public:
    // X11 windows, each on a connection of its own; null when one cannot be made.
    WindowTopLevel* createWindowTopLevel(Window::Callback& callback, const BasicRect<int>& rect, const WindowStyle* style) override;
    WindowChild* createWindowChild(Window::Callback& callback, const BasicRect<int>& rect, unsigned long parentHandle,
                                   bool mouseEnabled, bool keyboardEnabled) override;
    Image* createImageFromBits(const std::uint8_t* bytes, const BasicPoint<int>& size, Color colorSet, Color colorClear) override;
    Image* createImageFromPixels(const std::uint8_t* pixels, int pitch, const BasicPoint<int>& size, int order) override;
    Image* createImageFromStream(int kind, std::istream& stream, std::size_t length) override;
    Image* createImage(const BasicPoint<int>& size) override;
    Painter* createPainter(Image& image) override;
    Font* createFontEPI(Image& image) override;
    Font* createFontFT(const std::uint8_t* data, std::size_t dataSize, int height, int addInterline,
                       const std::string& faceName, int faceIndex) override;
};

}  // namespace OV::CFW::Graphics
