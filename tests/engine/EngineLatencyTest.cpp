// The whole engine: the delay of an impulse is the latency the settings ask for, plus the 4
// samples of the host's re-framing, for every combination of linear phase, oversampling and
// pad, at 48 and at 96 kHz (where oversampling is always off).
#include "engine/ModuleHostEngine.h"
#include "tests/support/ScratchFolder.h"

#include <algorithm>
#include <cmath>

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

}  // namespace
}  // namespace OV::Testing
