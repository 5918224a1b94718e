#include "graphics/WindowOffscreen.h"

#include <algorithm>

namespace OV::CFW::Graphics {

WindowOffscreen::WindowOffscreen(Device& device, Callback& callback, const BasicPoint<int>& size)
    : device(device), callback(callback), width(std::max(size.x, 0)), height(std::max(size.y, 0)),
      pixels(static_cast<std::size_t>(width) * static_cast<std::size_t>(height)), backPainter(pixels.data(), width * 4, {width, height})
{
    callback.created(*this);
}

WindowOffscreen::~WindowOffscreen()
{
    close();
}

void WindowOffscreen::invalidate(const BasicRect<int>& rect)
{
    dirty = Bounding(dirty, Intersect(rect, {0, 0, width, height}));
}

void WindowOffscreen::grabKeyboard()
{
    keyboard = true;
    ++grabs;
}

void WindowOffscreen::releaseKeyboard()
{
    keyboard = false;
    ++releases;
}

void WindowOffscreen::redraw()
{
    if (closed || IsEmpty(dirty))
        return;
    const BasicRect<int> rect = dirty;
    dirty = {};
    callback.paint(*this, backPainter, rect);
}

void WindowOffscreen::mouseMoved(const BasicPoint<int>& point, int modifiers)
{
    if (!closed)
        callback.mouseMoved(*this, point, modifiers);
}

void WindowOffscreen::mouseDown(const BasicPoint<int>& point, int button, int modifiers)
{
    if (!closed)
        callback.mouseDown(*this, point, button, modifiers);
}

void WindowOffscreen::mouseUp(const BasicPoint<int>& point, int button, int modifiers)
{
    if (!closed)
        callback.mouseUp(*this, point, button, modifiers);
}

void WindowOffscreen::mouseWheel(const BasicPoint<int>& point, int steps, int modifiers)
{
    if (!closed)
        callback.mouseWheel(*this, point, steps, modifiers);
}

void WindowOffscreen::doubleClick(const BasicPoint<int>& point, int button, int modifiers)
{
    if (!closed)
        callback.doubleClick(*this, point, button, modifiers);
}

void WindowOffscreen::keyDown(int code, char character, int modifiers)
{
    if (!closed)
        callback.keyDown(*this, code, character, modifiers);
}

void WindowOffscreen::keyUp(int code, char character, int modifiers)
{
    if (!closed)
        callback.keyUp(*this, code, character, modifiers);
}

void WindowOffscreen::timer()
{
    if (!closed)
        callback.timer(*this);
}

void WindowOffscreen::keyboardLost()
{
    if (!closed)
        callback.keyboardLost(*this);
}

void WindowOffscreen::close()
{
    if (closed)
        return;
    closed = true;
    callback.closing(*this);
}

}  // namespace OV::CFW::Graphics
