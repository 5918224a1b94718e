// A full repaint of an editor-sized back buffer to its window, in µs a call: the copy alone, and
// a paint of the whole buffer before it, each through MIT-SHM and through XPutImage. Each call
// waits until the server has the pixels. Needs an X display that does not reset between the
// benchmarks' connections, e.g.
//   xvfb-run -a -s "-screen 0 1280x1024x24 -noreset" bin/v4_window_bench
#include "graphics/WindowPainterSW.h"

#include <memory>

#include <benchmark/benchmark.h>

#include <X11/Xlib.h>

namespace {

namespace G = OV::CFW::Graphics;

constexpr int width = 1000;
constexpr int height = 600;

// A mapped window of the buffer's size on a connection of its own.
struct Target {
    explicit Target(bool sharedMemory)
    {
        if (!display)
            return;
        window = XCreateSimpleWindow(display, DefaultRootWindow(display), 0, 0, width, height, 0, 0, 0);
        XMapWindow(display, window);
        gc = XCreateGC(display, window, 0, nullptr);
        XSync(display, False);
        buffer = G::WindowPainterSW::create(display, DefaultScreen(display), width, height, sharedMemory);
    }
    ~Target()
    {
        buffer.reset();
        if (!display)
            return;
        XFreeGC(display, gc);
        XDestroyWindow(display, window);
        XCloseDisplay(display);
    }
    Target(const Target&) = delete;
    Target& operator=(const Target&) = delete;

    // Why the benchmark cannot run, or null.
    const char* unusable(bool sharedMemory) const
    {
        if (!display)
            return "no X display";
        if (!buffer)
            return "not a 24-bit TrueColor screen";
        return sharedMemory && !buffer->usesSharedMemory() ? "the server takes no shared memory from us" : nullptr;
    }

    Display* display = XOpenDisplay(nullptr);
    ::Window window = 0;
    GC gc = nullptr;
    std::unique_ptr<G::WindowPainterSW> buffer;
};

void Repaint(benchmark::State& state, bool paint)
{
    const bool shared = state.range(0) != 0;
    Target target(shared);
    if (const char* reason = target.unusable(shared)) {
        state.SkipWithError(reason);
        return;
    }
    state.SetLabel(shared ? "MIT-SHM" : "XPutImage");
    for (auto _ : state) {
        if (paint)
            target.buffer->painter().fillRect(0x80C08040u, {0, 0, width, height});
        target.buffer->blit(target.window, target.gc, 0, 0, width, height);
        XSync(target.display, False);
    }
}

void Blit(benchmark::State& state)
{
    Repaint(state, false);
}
BENCHMARK(Blit)->Arg(1)->Arg(0)->Unit(benchmark::kMicrosecond);

void PaintAndBlit(benchmark::State& state)
{
    Repaint(state, true);
}
BENCHMARK(PaintAndBlit)->Arg(1)->Arg(0)->Unit(benchmark::kMicrosecond);

}  // namespace
