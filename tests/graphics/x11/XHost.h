#pragma once

#include "graphics/DeviceSW.h"
#include "graphics/Painter.h"

#include <functional>
#include <memory>
#include <tuple>
#include <vector>

#include <gtest/gtest.h>

#include <X11/Xlib.h>

namespace OV::Testing {

namespace G = CFW::Graphics;
using CFW::BasicPoint;
using CFW::BasicRect;

// One call of Window::Callback. `value` is the button, the wheel steps or the key code.
struct Call {
    enum Kind { Created, Closing, Paint, Moved, Down, Up, Wheel, Double, KeyDown, KeyUp, Timer, KeyboardLost };
    Kind kind;
    BasicPoint<int> point{};
    int value = 0;
    int modifiers = 0;
    char character = 0;
    BasicRect<int> rect{};
};

// What tests compare of a call and of geometry, printable by GoogleTest.
inline std::tuple<int, int, int, int, int> Tie(const Call& c) { return {c.kind, c.point.x, c.point.y, c.value, c.modifiers}; }
inline std::tuple<int, int, int, int> Tie(const BasicRect<int>& r) { return {r.x, r.y, r.width, r.height}; }
inline std::pair<int, int> Tie(const BasicPoint<int>& p) { return {p.x, p.y}; }

// Records every call; paints the whole back buffer in `color`, whatever rect it is asked for.
class Recorder : public G::Window::Callback {
public:
    std::vector<Call> calls;
    G::Color color = 0xff000000;

    std::vector<Call> only(std::initializer_list<Call::Kind> kinds) const;
    int count(Call::Kind kind) const { return static_cast<int>(only({kind}).size()); }

    void created(G::Window&) override { calls.push_back({Call::Created}); }
    void closing(G::Window&) override { calls.push_back({Call::Closing}); }
    void paint(G::Window&, G::Painter& painter, const BasicRect<int>& rect) override;
    void mouseMoved(G::Window&, const BasicPoint<int>& p, int m) override { calls.push_back({Call::Moved, p, 0, m}); }
    void mouseDown(G::Window&, const BasicPoint<int>& p, int b, int m) override { calls.push_back({Call::Down, p, b, m}); }
    void mouseUp(G::Window&, const BasicPoint<int>& p, int b, int m) override { calls.push_back({Call::Up, p, b, m}); }
    void mouseWheel(G::Window&, const BasicPoint<int>& p, int s, int m) override { calls.push_back({Call::Wheel, p, s, m}); }
    void doubleClick(G::Window&, const BasicPoint<int>& p, int b, int m) override { calls.push_back({Call::Double, p, b, m}); }
    void keyDown(G::Window&, int code, char c, int m) override { calls.push_back({Call::KeyDown, {}, code, m, c}); }
    void keyUp(G::Window&, int code, char c, int m) override { calls.push_back({Call::KeyUp, {}, code, m, c}); }
    void timer(G::Window&) override { calls.push_back({Call::Timer}); }
    void keyboardLost(G::Window&) override { calls.push_back({Call::KeyboardLost}); }
};

// A plug-in host as far as X goes: a connection of its own with a counting error handler, and
// a top-level window of plain Xlib at (100, 100), 400 × 300, that takes key presses and button
// presses for itself. Every test ends with no X error on any connection of the process.
class XHost : public testing::Test {
protected:
    static constexpr int hostX = 100, hostY = 100, hostWidth = 400, hostHeight = 300;

    void SetUp() override;
    void TearDown() override;

    // A child of the host through the device, at (20, 30), 200 × 150 unless told.
    std::unique_ptr<G::WindowChild> makeChild(bool mouse = true, bool keyboard = true, BasicRect<int> rect = {20, 30, 200, 150});
    // Syncs our connection, then runs the window's pump until `done`, within a generous bound.
    bool pump(G::Window& window, const std::function<bool()>& done);
    // Waits for an event of `type` on the host window.
    bool hostEvent(int type, XEvent& event);
    // Where the window's client origin is on the screen, as the server says.
    BasicPoint<int> origin(unsigned long window);
    unsigned long focus();

    // Input through XTest, in root coordinates and key symbols.
    void moveTo(int x, int y);
    void button(unsigned button, bool press);
    void click(unsigned b)
    {
        button(b, true);
        button(b, false);
    }
    void key(unsigned long symbol, bool press);
    void tap(unsigned long symbol)
    {
        key(symbol, true);
        key(symbol, false);
    }

    Display* display = nullptr;
    ::Window host = 0;
    G::DeviceSW device;
    Recorder recorder;
};

}  // namespace OV::Testing
