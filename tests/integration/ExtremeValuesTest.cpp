// Extreme values from every door of the exports (a chunk's attributes, plain and normalised
// slot writes), in every latency level and channel mode: the sound stays finite and bounded,
// and comes back when ordinary values return.
#include "tests/integration/InstanceRunner.h"

#include <cmath>
#include <limits>
#include <map>

#include <gtest/gtest.h>

namespace OV::Testing {
namespace {

using ExtremeValuesTest = InstanceFixture;

constexpr float infinity = std::numeric_limits<float>::infinity();
constexpr float nan = std::numeric_limits<float>::quiet_NaN();

// Enough blocks to pass the longest latency and hear the filters settle.
std::vector<std::vector<float>> Play(InstanceRunner& runner, int level)
{
    const std::size_t length = level == 2 ? 24000 : 4096;
    return runner.Run(Noise(length, 7), Noise(length, 8));
}

// Six bands and the output at +15 dB each can raise noise of amplitude 0.5 to about 9e4; more
// than that, or anything not finite, is a broken filter.
void ExpectSound(const std::vector<std::vector<float>>& out, const std::string& what)
{
    for (const std::vector<float>& channel : out) {
        for (std::size_t i = 0; i < channel.size(); ++i)
            ASSERT_TRUE(std::isfinite(channel[i]) && std::fabs(channel[i]) < 1e6f) << what << ": sample " << i << " is " << channel[i];
    }
}

TEST_F(ExtremeValuesTest, NoDoorLetsAValueBreakTheSound)
{
    const LibraryCopy copy;
    for (int level = 0; level < 3; ++level) {
        SetLatencyLevel(level);
        for (const char* mode : {"L/R", "M/S"}) {
            SCOPED_TRACE(testing::Message() << "level " << level << ", " << mode);
            InstanceRunner runner(copy);
            HLA2Process* p = runner.Process();
            // Every band on, one of each kind and two peaks, both channels.
            const char* kinds[6] = {"HighPass", "LowShelf", "Peaking", "Peaking", "HighShelf", "LowPass"};
            std::map<std::string, std::string> ordinary = {{"ChannelMode", mode}, {"LinearPhase", "1"}};
            for (int band = 1; band <= 6; ++band) {
                for (const char* set : {"LM_", "RS_"}) {
                    const std::string prefix = std::string(set) + "Band" + std::to_string(band);
                    ordinary[prefix + "Active"] = "1";
                    ordinary[prefix + "Mode"] = kinds[band - 1];
                }
            }
            const auto load = [&](const std::map<std::string, std::string>& values) {
                TiXmlDocument chunk;
                chunk.Parse(runner.GetProgramChunk().c_str());
                TiXmlElement* module = TiXmlHandle(&chunk).FirstChild("Program").FirstChild("Slot0").FirstChild("Module").ToElement();
                ASSERT_NE(nullptr, module);
                for (const auto& [name, value] : values)
                    module->SetAttribute(name, value);
                TiXmlPrinter printer;
                chunk.Accept(&printer);
                runner.SetProgramChunk(printer.Str());
                runner.GetProgramChunk(); // waits until the worker has loaded it
            };
            load(ordinary);

            // Every number of the module at once: not a number, infinities, far out, tiny.
            for (const char* extreme : {"nan", "inf", "-inf", "1e30", "-1e30", "1e-40"}) {
                std::map<std::string, std::string> values = ordinary;
                for (int band = 1; band <= 6; ++band) {
                    for (const char* set : {"LM_", "RS_"}) {
                        const std::string prefix = std::string(set) + "Band" + std::to_string(band);
                        for (const char* field : {"Gain", "Hz", "Q_Peaking", "Q_Shelving", "Resonance"})
                            values[prefix + field] = extreme;
                    }
                }
                values["LM_OutputLevel"] = values["RS_OutputLevel"] = extreme;
                load(values);
                ExpectSound(Play(runner, level), std::string("chunk values ") + extreme);
            }

            // Every slot at once, as plain values and as normalised ones.
            for (const float extreme : {nan, infinity, -infinity, 1e30f, -1e30f, 1e-40f}) {
                for (int slot = 0; slot < p->GetParameterCount(p); ++slot) {
                    p->SetParameterValue(p, slot, extreme);
                    p->SetParameterNormalized(p, slot, slot % 2 == 0 ? extreme : -extreme);
                }
                runner.GetProgramChunk();
                ExpectSound(Play(runner, level), "slot values " + std::to_string(extreme));
            }

            // Ordinary values again: the sound comes back, and a quiet input is quiet again.
            load(ordinary);
            ExpectSound(Play(runner, level), "ordinary values again");
            const std::vector<float> quiet(level == 2 ? 40000 : 4096, 1e-3f);
            const auto out = runner.Run(quiet, quiet);
            for (const std::vector<float>& channel : out)
                EXPECT_LT(std::fabs(channel.back()), 1.0f) << "the filters still ring";
        }
    }
}

}  // namespace
}  // namespace OV::Testing
