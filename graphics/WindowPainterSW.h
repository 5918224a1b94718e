#pragma once

#include "graphics/PainterSW.h"

#include <cstdint>
#include <memory>

struct _XDisplay;
struct _XGC;
struct _XImage;

namespace OV::CFW::Graphics {

// A window's back buffer: width × height 32-bit pixels, rows from the top, pitch width × 4, with
// a painter on them. Its contents persist between paints, so only dirty parts are redrawn. Rects
// of it go to the window through a shared memory segment (MIT-SHM) when the server is local and
// attaches one, else over the connection with XPutImage.
class WindowPainterSW {
public:
    // Null, with a debug line, when the screen's default visual is not 24-bit TrueColor at 32
    // bits a pixel in this machine's byte order, or when memory fails. `sharedMemory` false keeps
    // to XPutImage.
    static std::unique_ptr<WindowPainterSW> create(_XDisplay* display, int screen, int width, int height,
                                                   bool sharedMemory = true);
    ~WindowPainterSW();
    WindowPainterSW(const WindowPainterSW&) = delete;
    WindowPainterSW& operator=(const WindowPainterSW&) = delete;

    Painter& painter() { return *surfacePainter; }
    std::uint32_t* pixels() const { return bits; }
    bool usesSharedMemory() const { return segment != nullptr; }
    // Copies [left, right) × [top, bottom), limited to the buffer, to the same place of
    // `drawable`. When it returns the server has the pixels, or they are on their way.
    void blit(unsigned long drawable, _XGC* gc, int left, int top, int right, int bottom);

private:
    struct Segment; // the shared memory segment and its id on the server

    WindowPainterSW(_XDisplay* display, int width, int height);
    bool attachSegment(int screen);
    bool allocate(int screen);

    _XDisplay* display;
    int width;
    int height;
    std::uint32_t* bits = nullptr;
    std::unique_ptr<std::uint32_t[]> ownedBits; // without a segment
    std::unique_ptr<Segment> segment;
    _XImage* image = nullptr;
    std::unique_ptr<PainterSW> surfacePainter;
};

}  // namespace OV::CFW::Graphics
