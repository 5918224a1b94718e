#pragma once

#include <cstdint>
#include <string>
#include <vector>

struct _XDisplay;

namespace OV::Testing {

// What a window shows, as the server has it: pixels 0xFFRRGGBB, rows from the top.
struct Screenshot {
    int width = 0;
    int height = 0;
    std::vector<std::uint32_t> pixels;

    std::uint32_t at(int x, int y) const { return pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x)]; }
};

// Reads a window back with XGetImage. The window must be viewable and lie on the screen of a
// 24-bit TrueColor display; empty when the server gives no image.
Screenshot TakeScreenshot(_XDisplay* display, unsigned long window);

// TakeScreenshot as a PNG file; false when there is no image or the file cannot be written.
bool WriteScreenshot(_XDisplay* display, unsigned long window, const std::string& path);

}  // namespace OV::Testing
