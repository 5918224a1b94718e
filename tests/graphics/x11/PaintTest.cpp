// What reaches the screen: the rects a paint is asked for, the pixels the server then shows (read
// back with XGetImage), both ways of copying the back buffer, and the tick.
#include "graphics/WindowPainterSW.h"
#include "tests/graphics/x11/XHost.h"
#include "tests/support/XScreenshot.h"

#include <chrono>
#include <optional>
#include <thread>

namespace OV::Testing {
namespace {

// Every pixel inside `area` is `color`, every other one as in `before`.
void ExpectPainted(const Screenshot& after, const Screenshot& before, const std::optional<BasicRect<int>>& area, G::Color color)
{
    ASSERT_EQ(after.pixels.size(), before.pixels.size());
    int wrong = 0;
    for (int y = 0; y < after.height; ++y)
        for (int x = 0; x < after.width; ++x)
            wrong += after.at(x, y) != (area && area->contains(x, y) ? (color | 0xff000000u) : before.at(x, y));
    EXPECT_EQ(wrong, 0);
}

TEST_F(XHost, PaintGetsTheInvalidatedRectsAndOnlyTheyChange)
{
    struct Case {
        std::vector<BasicRect<int>> invalidated;
        std::optional<BasicRect<int>> painted; // none: no paint at all
    };
    const Case cases[] = {
        {{{10, 20, 30, 40}}, BasicRect<int>{10, 20, 30, 40}},
        {{{10, 20, 30, 40}, {100, 5, 10, 10}}, BasicRect<int>{10, 5, 100, 55}}, // their union
        {{{-5, -5, 20, 20}}, BasicRect<int>{0, 0, 15, 15}},                   // limited to the window
        {{{190, 140, 50, 50}}, BasicRect<int>{190, 140, 10, 10}},
        {{{300, 300, 10, 10}, {10, 10, 0, 5}}, std::nullopt},               // outside, or empty
    };
    auto child = makeChild();
    ASSERT_TRUE(child);
    // The first exposure asks for the whole window.
    recorder.color = 0x102030;
    ASSERT_TRUE(pump(*child, [&] { return recorder.count(Call::Paint) > 0; }));
    EXPECT_EQ(Tie(recorder.only({Call::Paint})[0].rect), Tie(BasicRect<int>{0, 0, 200, 150}));

    G::Color color = 0x00ff00;
    for (const Case& c : cases) {
        const Screenshot before = TakeScreenshot(display, child->nativeHandle());
        recorder.calls.clear();
        recorder.color = color += 0x000011; // each case in a colour of its own
        for (const BasicRect<int>& r : c.invalidated)
            child->invalidate(r);
        child->redraw();
        const auto paints = recorder.only({Call::Paint});
        ASSERT_EQ(paints.size(), c.painted ? 1u : 0u);
        if (c.painted) {
            EXPECT_EQ(Tie(paints[0].rect), Tie(*c.painted));
        }
        ExpectPainted(TakeScreenshot(display, child->nativeHandle()), before, c.painted, recorder.color);
    }
}

// A window over part of the child and away again: the part it covered is painted.
TEST_F(XHost, UncoveredPartIsPainted)
{
    auto child = makeChild();
    ASSERT_TRUE(child);
    ASSERT_TRUE(pump(*child, [&] { return recorder.count(Call::Paint) > 0; }));
    const BasicPoint<int> corner = origin(child->nativeHandle());
    XSetWindowAttributes attributes{};
    attributes.override_redirect = True;
    const ::Window cover = XCreateWindow(display, DefaultRootWindow(display), corner.x + 150, corner.y - 10, 100, 60, 0, CopyFromParent,
                                         InputOutput, CopyFromParent, CWOverrideRedirect, &attributes);
    XMapWindow(display, cover);
    XSync(display, False);
    recorder.calls.clear();
    XDestroyWindow(display, cover);
    ASSERT_TRUE(pump(*child, [&] { return recorder.count(Call::Paint) > 0; }));
    EXPECT_EQ(Tie(recorder.only({Call::Paint})[0].rect), Tie(BasicRect<int>{150, 0, 50, 50}));
}

// Both ways of copying give the same pixels, and a rect reaching past the buffer is cut to it.
TEST_F(XHost, BlitCopiesTheRectThroughSharedMemoryOrNot)
{
    for (const bool shared : {true, false}) {
        XSetWindowAttributes attributes{};
        attributes.background_pixel = 0x445566;
        const ::Window target = XCreateWindow(display, host, 10, 10, 64, 48, 0, CopyFromParent, InputOutput, CopyFromParent,
                                              CWBackPixel, &attributes);
        XMapWindow(display, target);
        const GC gc = XCreateGC(display, target, 0, nullptr);
        auto buffer = G::WindowPainterSW::create(display, DefaultScreen(display), 64, 48, shared);
        ASSERT_TRUE(buffer);
        EXPECT_EQ(buffer->usesSharedMemory(), shared); // Xvfb is local and offers MIT-SHM
        const auto pattern = [](int x, int y) { return 0xff000000u | static_cast<G::Color>(x) << 16 | static_cast<G::Color>(y) << 8 | 0x5a; };
        for (int y = 0; y < 48; ++y)
            for (int x = 0; x < 64; ++x)
                buffer->pixels()[y * 64 + x] = pattern(x, y);
        buffer->blit(target, gc, -10, -10, 40, 30);
        XSync(display, False);
        const Screenshot shot = TakeScreenshot(display, target);
        int wrong = 0;
        for (int y = 0; y < 48; ++y)
            for (int x = 0; x < 64; ++x)
                wrong += shot.at(x, y) != (x < 40 && y < 30 ? pattern(x, y) : 0xff445566u);
        EXPECT_EQ(wrong, 0) << (shared ? "shared memory" : "XPutImage");
        buffer.reset();
        XFreeGC(display, gc);
        XDestroyWindow(display, target);
    }
}

TEST_F(XHost, TickComesAfterFortyMillisecondsAndOncePerPump)
{
    const auto start = std::chrono::steady_clock::now();
    auto child = makeChild();
    ASSERT_TRUE(child);
    ASSERT_TRUE(pump(*child, [&] { return recorder.count(Call::Timer) == 1; }));
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(40));
    // Long past due: still one tick for one pump.
    std::this_thread::sleep_for(std::chrono::milliseconds(150));
    child->redraw();
    EXPECT_EQ(recorder.count(Call::Timer), 2);
}

}  // namespace
}  // namespace OV::Testing
