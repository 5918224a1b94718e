// The painter's hot paths on a surface of the editor's size: a full fill, a blended image and an
// anti-aliased polyline.
#include "graphics/ImageSW.h"
#include "graphics/PainterSW.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

#include <benchmark/benchmark.h>

namespace {

using namespace OV::CFW::Graphics;
using OV::CFW::BasicPoint;

constexpr int width = 1000;
constexpr int height = 600;

struct Surface {
    std::vector<std::uint32_t> pixels = std::vector<std::uint32_t>(width * height, 0xFF202020u);
    PainterSW painter{pixels.data(), width * 4, {width, height}};
};

void SetPixelRate(benchmark::State& state, double pixelsPerCall)
{
    state.counters["pixels/s"] = benchmark::Counter(pixelsPerCall * static_cast<double>(state.iterations()), benchmark::Counter::kIsRate);
}

void FillRect(benchmark::State& state)
{
    Surface surface;
    for (auto _ : state) {
        surface.painter.fillRect(0x80C08040u, {0, 0, width, height});
        benchmark::DoNotOptimize(surface.pixels.data());
    }
    SetPixelRate(state, width * height);
}
BENCHMARK(FillRect)->Unit(benchmark::kMicrosecond);

void DrawImageAlpha(benchmark::State& state)
{
    Surface surface;
    constexpr int side = 256;
    ImageSW image({side, side});
    std::uint32_t* bits = image.lock().first;
    for (int y = 0; y < side; ++y)
        for (int x = 0; x < side; ++x)
            bits[y * side + x] = static_cast<std::uint32_t>(x << 24 | y << 16 | (x ^ y) << 8 | 0x40);
    image.unlock();
    for (auto _ : state) {
        surface.painter.drawImage(image, {372, 172}, {0, 0, side, side});
        benchmark::DoNotOptimize(surface.pixels.data());
    }
    SetPixelRate(state, side * side);
}
BENCHMARK(DrawImageAlpha)->Unit(benchmark::kMicrosecond);

void DrawImageOpaque(benchmark::State& state)
{
    // A panel background over the whole surface: rows copied.
    Surface surface;
    std::unique_ptr<std::uint32_t[]> bits(new std::uint32_t[width * height]);
    std::fill_n(bits.get(), width * height, 0xFF303338u);
    ImageSW image(std::move(bits), width, height, false);
    for (auto _ : state) {
        surface.painter.drawImage(image, {0, 0}, {0, 0, width, height});
        benchmark::DoNotOptimize(surface.pixels.data());
    }
    SetPixelRate(state, width * height);
}
BENCHMARK(DrawImageOpaque)->Unit(benchmark::kMicrosecond);

void DrawPolyline(benchmark::State& state)
{
    // A response-like curve across the whole width; pixels counted as the points' span.
    Surface surface;
    constexpr int count = 2048;
    std::vector<BasicPoint<double>> points(count);
    for (int i = 0; i < count; ++i) {
        const double x = i * (width - 1.0) / (count - 1);
        points[static_cast<std::size_t>(i)] = {x, 300.0 + 200.0 * std::sin(x * 0.02) * std::cos(x * 0.0031)};
    }
    for (auto _ : state) {
        surface.painter.drawPolyline(0xFFE0C040u, points.data(), count, 1.5);
        benchmark::DoNotOptimize(surface.pixels.data());
    }
    SetPixelRate(state, width);
}
BENCHMARK(DrawPolyline)->Unit(benchmark::kMicrosecond);

}  // namespace
