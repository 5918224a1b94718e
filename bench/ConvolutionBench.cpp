// The low-pass kernel of the rate converters at the oversampled rate, in the engine's internal
// blocks of 64 samples, and its direct head alone with each accumulate kernel.
#include "engine/dsp/convolution/DirectFir.h"
#include "engine/dsp/convolution/LowPassKernel.h"
#include "bench/FrameCounters.h"

#include <vector>

#include <benchmark/benchmark.h>

namespace {

using namespace AudioEngine::Convolution;

constexpr double sampleRate = 96000.0;
constexpr int block = 64;

std::vector<float> Signal()
{
    std::vector<float> x(block);
    for (int i = 0; i < block; ++i)
        x[static_cast<std::size_t>(i)] = static_cast<float>((i * 37 % 64) - 32) / 32.0f;
    return x;
}

void LowPassKernelProcess(benchmark::State& state)
{
    LowPassKernel kernel(static_cast<int>(state.range(0)), 20600.0, sampleRate);
    const std::vector<float> in = Signal();
    std::vector<float> out(block);
    for (auto _ : state) {
        kernel.Process(out.data(), in.data(), block);
        benchmark::DoNotOptimize(out.data());
    }
    OV::Bench::SetFrameCounters(state, block, sampleRate);
}
BENCHMARK(LowPassKernelProcess)->Arg(256)->Arg(4096)->ArgName("taps");

// 128 taps: the head of the product's kernel, by accumulate kernel.
void DirectFirProcess(benchmark::State& state)
{
    const std::vector<float> taps = LowPassKernel::DesignTaps(256, 20600.0, sampleRate);
    const DirectFir::Kernel kernels[] = {DirectFir::Kernel::Packed4, DirectFir::Kernel::Packed8, DirectFir::Kernel::ScalarDouble};
    const DirectFir::Kernel kernel = kernels[state.range(0)];
    if (!DirectFir::Runs(kernel)) {
        state.SkipWithError("this processor cannot run that kernel");
        return;
    }
    DirectFir fir(taps.data(), 128, kernel);
    const std::vector<float> in = Signal();
    std::vector<float> out(block);
    for (auto _ : state) {
        fir.Process(out.data(), in.data(), block);
        benchmark::DoNotOptimize(out.data());
    }
    OV::Bench::SetFrameCounters(state, block, sampleRate);
}
BENCHMARK(DirectFirProcess)->DenseRange(0, 2)->ArgName("kernel"); // 4 floats a step, 8, scalar double

}  // namespace

BENCHMARK_MAIN();
