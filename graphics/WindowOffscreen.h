#pragma once

#include "graphics/Color.h"
#include "graphics/PainterSW.h"
#include "graphics/Window.h"

#include <cstdint>
#include <vector>

namespace OV::CFW::Graphics {

// A window in memory: a 32-bit back buffer with a painter, which tests drive by delivering the
// calls a platform window would make, and inspect by its pixels and by what the callback
// asked of it (keyboard, cursor). Window thread only.
class WindowOffscreen : public Window {
public:
    // Calls Callback::created.
    WindowOffscreen(Device& device, Callback& callback, const BasicPoint<int>& size);
    // Calls Callback::closing unless close() did.
    ~WindowOffscreen() override;
    WindowOffscreen(const WindowOffscreen&) = delete;
    WindowOffscreen& operator=(const WindowOffscreen&) = delete;

    Device& getDevice() override { return device; }
    // Collected until redraw() paints them.
    void invalidate(const BasicRect<int>& rect) override;
    void grabKeyboard() override;
    void releaseKeyboard() override;
    void setCursorPosition(const BasicPoint<int>& point) override { cursorPosition = point; }
    BasicPoint<int> getCursorPosition() override { return cursorPosition; }
    void showCursor() override { cursorHidden = false; }
    void hideCursor() override { cursorHidden = true; }
    void setCursorShape(int shape) override { cursorShape = shape; }
    unsigned long nativeHandle() const override { return 0; }
    // When anything was invalidated: Callback::paint with the bounding rect of it all, cut to
    // the window, which is then clean.
    void redraw() override;

    // The calls of a platform window, delivered now.
    void mouseMoved(const BasicPoint<int>& point, int modifiers);
    void mouseDown(const BasicPoint<int>& point, int button, int modifiers);
    void mouseUp(const BasicPoint<int>& point, int button, int modifiers);
    void mouseWheel(const BasicPoint<int>& point, int steps, int modifiers);
    void doubleClick(const BasicPoint<int>& point, int button, int modifiers);
    void keyDown(int code, char character, int modifiers);
    void keyUp(int code, char character, int modifiers);
    void timer();
    void keyboardLost();
    // Callback::closing; the window takes no further calls from the test afterwards.
    void close();

    // What is to be seen.
    BasicPoint<int> size() const { return {width, height}; }
    Painter& painter() { return backPainter; }
    // The back buffer's pixel; the point must lie in the window.
    Color pixel(int x, int y) const { return pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x)]; }
    // Empty when nothing waits for redraw().
    const BasicRect<int>& dirtyRect() const { return dirty; }
    // What the callback asked.
    bool hasKeyboard() const { return keyboard; }
    int keyboardGrabs() const { return grabs; }
    int keyboardReleases() const { return releases; }
    bool isCursorHidden() const { return cursorHidden; }
    int getCursorShape() const { return cursorShape; }
    bool isClosed() const { return closed; }

private:
    Device& device;
    Callback& callback;
    int width;
    int height;
    std::vector<Color> pixels; // rows from the top, pitch width × 4
    PainterSW backPainter;
    BasicRect<int> dirty;
    BasicPoint<int> cursorPosition;
    int cursorShape = 0;
    bool cursorHidden = false;
    bool keyboard = false;
    int grabs = 0;
    int releases = 0;
    bool closed = false;
};

}  // namespace OV::CFW::Graphics
