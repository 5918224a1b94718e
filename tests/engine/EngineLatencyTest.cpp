// The whole engine: the delay of an impulse is the latency the settings ask for, plus the 4
// samples of the host's re-framing, for every combination of linear phase, oversampling and
// pad, at 48 and at 96 kHz (where oversampling is always off).
#include "engine/ModuleHostEngine.h"
#include "engine/dsp/latency/DelayLine.h"
#include "tests/engine/convolution/ConvolutionOracle.h"
#include "tests/engine/dsp/EngineRunner.h"
#include "tests/support/ScratchFolder.h"

#include <algorithm>
#include <cmath>
#include <random>

#include <gtest/gtest.h>

namespace OV::Testing {
namespace {

using AudioEngine::VN4::ModuleHostEngine;

// Index of the largest output sample for an impulse at sample 0.
int MeasureDelay(ModuleHostEngine& engine, int length)
{
    std::vector<float> inL(static_cast<std::size_t>(length), 0.0f), inR(inL), outL(inL), outR(inL);
    inL[0] = inR[0] = 1.0f;
    for (int done = 0; done < length; done += 512) {
        float* in[2] = {inL.data() + done, inR.data() + done};
        float* out[2] = {outL.data() + done, outR.data() + done};
        engine.ProcessHostBlock(in, out, std::min(512, length - done));
    }
    EXPECT_EQ(outL, outR);
    return static_cast<int>(std::max_element(outL.begin(), outL.end(), [](float a, float b) { return std::fabs(a) < std::fabs(b); })
                            - outL.begin());
}

TEST(EngineLatencyTest, DelayIsTheLatencyTablePlusFour)
{
    for (float rate : {48000.0f, 96000.0f}) {
        for (bool linear : {false, true}) {
            for (bool oversample : {false, true}) {
                for (float pad : {0.0f, 0.4f, 0.5f, 128.0f, 18560.0f, 40000.0f}) {
                    ModuleHostEngine engine;
                    engine.SetSampleRate(rate);
                    engine.GetRoot().SampleRateChanged();
                    engine.GetRoot().SetParameter("Linearize_Module", linear ? 1.0f : 0.0f);
                    engine.GetRoot().SetParameter("GlobalOversample", oversample ? 1.0f : 0.0f);
                    engine.GetRoot().SetParameter("PadLatency", pad);
                    const bool inForce = oversample && rate <= 48000.0f;
                    const unsigned floor = linear ? (inForce ? 36864 / 2 + 128 : 36864) : (inForce ? 128 : 0);
                    const unsigned padSamples = static_cast<unsigned>(std::lround(std::floor(pad + 0.5f)));
                    const int expected = static_cast<int>(std::max(floor, padSamples)) + 4;
                    EXPECT_EQ(expected, MeasureDelay(engine, expected + 600))
                        << rate << " Hz, linear " << linear << ", oversample " << oversample << ", pad " << pad;
                }
            }
        }
    }
}

TEST(EngineLatencyTest, ConstructionTellsTheKernelsChosen)
{
    const std::string printed = CaptureStandardError([] { ModuleHostEngine engine; });
    EXPECT_TRUE(printed == "Katmai Optimizaions\n" || printed == "Blend Optimizaions\n") << printed;
}

// The pad's delay line, run as the engine cuts blocks, equals a ring written and read a sample
// at a time, through delay jumps between blocks, a delay of 0 and delays up to its capacity.
TEST(EngineLatencyTest, DelayLineEqualsARingWrittenAndReadSampleBySample)
{
    constexpr int maxDelay = 40;
    EngineRunner<AudioEngine::DelayLine<maxDelay, 0>> runner;
    std::mt19937 random(31);
    std::vector<float> ring(maxDelay + 1, 0.0f);
    int read = 0, write = 0;
    std::vector<float> input(static_cast<std::size_t>(hostDelay), 0.0f); // what the line sees: the host's pad first
    for (int block = 0; block < 400; ++block) {
        if (block % 3 == 0) {
            const int delay = std::uniform_int_distribution<int>(0, 3)(random) == 0 ? maxDelay - block % 2
                                                                                  : std::uniform_int_distribution<int>(0, maxDelay)(random);
            runner.Set("DelaySamples", static_cast<float>(delay));
            write = (read + delay) % (maxDelay + 1);
        }
        // Multiples of 4, so the host's pad stays full and the line has seen every sample given.
        const std::vector<float> x = Noise(random, 4 * static_cast<std::size_t>(std::uniform_int_distribution<int>(1, 25)(random)));
        const std::vector<float> y = runner.RunMono(x, static_cast<int>(x.size()));
        for (std::size_t i = 0; i < x.size(); ++i) {
            input.push_back(x[i]);
            ring[static_cast<std::size_t>(write)] = input[input.size() - 1 - static_cast<std::size_t>(hostDelay)];
            ASSERT_EQ(ring[static_cast<std::size_t>(read)], y[i]) << "block " << block << ", sample " << i;
            write = (write + 1) % (maxDelay + 1);
            read = (read + 1) % (maxDelay + 1);
        }
    }
}

}  // namespace
}  // namespace OV::Testing
