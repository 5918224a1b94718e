#include "graphics/WindowPainterSW.h"

#include "platform/DebugOutput.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <new>

#include <sys/ipc.h>
#include <sys/shm.h>

#include <X11/Xlib-xcb.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/extensions/XShm.h>
#include <xcb/shm.h>

namespace OV::CFW::Graphics {

struct WindowPainterSW::Segment {
    XShmSegmentInfo info{};
};

namespace {

// Our pixels are words 0xAARRGGBB in little-endian memory: the server must take them as they
// are, as 24-bit TrueColor with 32-bit pixels, low byte first.
bool SupportedVisual(Display* display, int screen)
{
    const Visual* visual = DefaultVisual(display, screen);
    if (DefaultDepth(display, screen) != 24 || visual->c_class != TrueColor || visual->red_mask != 0xff0000
        || visual->green_mask != 0xff00 || visual->blue_mask != 0xff || ImageByteOrder(display) != LSBFirst)
        return false;
    int count = 0;
    XPixmapFormatValues* formats = XListPixmapFormats(display, &count);
    bool found = false;
    for (int i = 0; i < count; ++i)
        found = found || (formats[i].depth == 24 && formats[i].bits_per_pixel == 32);
    XFree(formats);
    return found;
}

// The server can map a segment of ours only when it runs on this machine.
bool LocalConnection(Display* display)
{
    const char* name = DisplayString(display);
    return name[0] == ':' || std::strncmp(name, "unix:", 5) == 0;
}

}  // namespace

std::unique_ptr<WindowPainterSW> WindowPainterSW::create(Display* display, int screen, int width, int height,
                                                         bool sharedMemory)
{
    if (!SupportedVisual(display, screen)) {
        Platform::DebugOutput("FAIL: the X screen is not 24-bit TrueColor at 32 bits a pixel; no window made");
        return nullptr;
    }
    std::unique_ptr<WindowPainterSW> buffer(new (std::nothrow) WindowPainterSW(display, width, height));
    if (!buffer)
        return nullptr;
    const bool ready = (sharedMemory && buffer->attachSegment(screen)) || buffer->allocate(screen);
    if (!ready)
        return nullptr;
    buffer->surfacePainter.reset(new (std::nothrow) PainterSW(buffer->bits, width * 4, {width, height}));
    return buffer->surfacePainter ? std::move(buffer) : nullptr;
}

WindowPainterSW::WindowPainterSW(Display* display, int width, int height) : display(display), width(width), height(height) {}

WindowPainterSW::~WindowPainterSW()
{
    if (image) {
        // The pixels are ours or the segment's, never Xlib's to free.
        image->data = nullptr;
        image->obdata = nullptr;
        XDestroyImage(image);
    }
    if (segment) {
        XShmDetach(display, &segment->info);
        shmdt(segment->info.shmaddr);
    }
}

// The segment is marked for removal as soon as the server holds it, so it goes with the last
// detach even if the process dies. Its attachment is a checked request: a server that cannot
// map it answers with an error that comes back here instead of to the host's error handler.
bool WindowPainterSW::attachSegment(int screen)
{
    if (!XShmQueryExtension(display) || !LocalConnection(display))
        return false;
    const std::size_t bytes = static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 4;
    const int id = shmget(IPC_PRIVATE, bytes, IPC_CREAT | 0600);
    if (id < 0)
        return false;
    void* address = shmat(id, nullptr, 0);
    if (address == reinterpret_cast<void*>(-1)) {
        shmctl(id, IPC_RMID, nullptr);
        return false;
    }
    xcb_connection_t* connection = XGetXCBConnection(display);
    const std::uint32_t seg = xcb_generate_id(connection);
    xcb_generic_error_t* error = xcb_request_check(connection, xcb_shm_attach_checked(connection, seg, static_cast<std::uint32_t>(id), 1));
    shmctl(id, IPC_RMID, nullptr);
    if (error) {
        std::free(error);
        shmdt(address);
        return false;
    }
    auto attached = std::unique_ptr<Segment>(new (std::nothrow) Segment);
    if (attached) {
        attached->info = {seg, id, static_cast<char*>(address), True};
        image = XShmCreateImage(display, DefaultVisual(display, screen), 24, ZPixmap, attached->info.shmaddr,
                                &attached->info, static_cast<unsigned>(width), static_cast<unsigned>(height));
    }
    if (!image || image->bytes_per_line != width * 4) {
        if (image) {
            image->data = nullptr;
            image->obdata = nullptr;
            XDestroyImage(image);
            image = nullptr;
        }
        xcb_shm_detach(connection, seg);
        shmdt(address);
        return false;
    }
    segment = std::move(attached);
    bits = reinterpret_cast<std::uint32_t*>(address);
    return true;
}

bool WindowPainterSW::allocate(int screen)
{
    ownedBits.reset(new (std::nothrow) std::uint32_t[static_cast<std::size_t>(width) * static_cast<std::size_t>(height)]());
    if (!ownedBits)
        return false;
    bits = ownedBits.get();
    image = XCreateImage(display, DefaultVisual(display, screen), 24, ZPixmap, 0, reinterpret_cast<char*>(bits),
                         static_cast<unsigned>(width), static_cast<unsigned>(height), 32, width * 4);
    return image != nullptr;
}

void WindowPainterSW::blit(unsigned long drawable, GC gc, int left, int top, int right, int bottom)
{
    left = std::max(left, 0);
    top = std::max(top, 0);
    right = std::min(right, width);
    bottom = std::min(bottom, height);
    if (right <= left || bottom <= top)
        return;
    const auto w = static_cast<unsigned>(right - left);
    const auto h = static_cast<unsigned>(bottom - top);
    if (segment) {
        XShmPutImage(display, drawable, gc, image, left, top, left, top, w, h, False);
        // The server reads the segment while it runs the request: wait for that, so the next
        // paint cannot change pixels it has not read yet.
        XSync(display, False);
    } else {
        XPutImage(display, drawable, gc, image, left, top, left, top, w, h);
        XFlush(display);
    }
}

}  // namespace OV::CFW::Graphics
