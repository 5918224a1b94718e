// The factory presets as a host hears them: each file given as a program chunk does what its
// name promises, and holds exactly the saved parameters in their saved form.
#include "tests/engine/dsp/EqOracle.h"
#include "tests/integration/InstanceRunner.h"

#include <set>

#include <boost/filesystem.hpp>
#include <gtest/gtest.h>

namespace OV::Testing {
namespace {

constexpr double rate = 48000.0;

// What a preset must do to a channel, in dB relative to the input, at a frequency.
struct Expectation {
    double hz;
    double lowest;
    double highest;
};

// `mid` for L/R presets is both channels alike; M/S presets have `side` as well.
struct Design {
    const char* file;
    std::vector<Expectation> mid;
    std::vector<Expectation> side;
};

const Design designs[] = {
    {"Vocals/Low Cut", {{30, -99, -15}, {90, -4, -2}, {1000, -0.2, 0.2}, {10000, -0.2, 0.2}}, {}},
    {"Vocals/Presence Lift", {{40, -99, -9}, {3200, 2.6, 3.2}, {500, -0.3, 0.6}}, {}},
    {"Vocals/De-Mud", {{30, -99, -9}, {320, -3.8, -3}, {3000, -0.4, 0.4}}, {}},
    {"Vocals/Air", {{16000, 2, 3.1}, {1000, -0.3, 0.3}, {100, -0.2, 0.2}}, {}},
    {"Vocals/Sibilance Soften", {{6500, -3.1, -2.7}, {1000, -0.2, 0.2}, {15000, -0.5, 0.2}}, {}},
    {"Drums & Bass/Bass Tighten", {{15, -99, -9}, {80, 1, 2.5}, {250, -3.3, -2.3}, {3000, -0.3, 0.3}}, {}},
    {"Drums & Bass/Kick Punch", {{60, 2.4, 3.3}, {350, -4.3, -3.3}, {4000, 2.6, 3.3}, {1200, -1.5, 1.5}}, {}},
    {"Drums & Bass/Overhead Clean", {{60, -99, -18}, {600, -2.5, -1.2}, {15000, 1.5, 2.3}}, {}},
    {"Instruments/Acoustic Sparkle", {{30, -99, -12}, {200, -2.4, -1.4}, {12000, 2, 2.7}}, {}},
    {"Instruments/Guitar Bite", {{40, -99, -12}, {500, -2.4, -1.2}, {2500, 2, 3}, {16000, -99, -6}}, {}},
    {"Mastering/Tilt Bright", {{40, -1.7, -1.1}, {1000, -0.6, 0.6}, {16000, 1.1, 1.7}}, {}},
    {"Mastering/Tilt Warm", {{40, 1.1, 1.7}, {1000, -0.6, 0.6}, {16000, -1.7, -1.1}}, {}},
    {"Mastering/Sub Clean Up", {{10, -99, -9}, {100, -0.3, 0.3}, {5000, -0.1, 0.1}}, {}},
    {"Mastering/Gentle Smile", {{30, -0.2, 0.8}, {800, -2.4, -1.6}, {16000, 0, 0.8}}, {}},
    {"Mid-Side/Mid-Side Widening", {{60, -0.1, 0.1}, {10000, -0.1, 0.1}},
     {{60, -99, -8}, {3000, 0.7, 2}, {12000, 2, 3.7}}},
    {"Mid-Side/Mono Bass", {{50, -0.1, 0.1}, {5000, -0.1, 0.1}}, {{50, -99, -14}, {1000, -0.3, 0.1}}},
    {"Mid-Side/Focus Centre", {{2500, 1.3, 1.6}, {100, -0.2, 0.2}}, {{2500, -1.6, -1.3}, {100, -0.2, 0.2}}},
    {"Effects/Telephone Band", {{100, -99, -20}, {1500, 3, 6}, {8000, -99, -12}}, {}},
    {"Effects/AM Radio", {{60, -99, -12}, {2000, 2, 4}, {14000, -99, -12}}, {}},
    {"Effects/Lo-Fi Dark", {{10000, -99, -18}, {500, 1.6, 2.4}, {20, -99, -6}}, {}},
};

std::string PresetFile(const char* name)
{
    return ReadFile(std::string(VARNEL4_FACTORY_PRESETS) + "/" + name + ".vn4m");
}

// A preset file as a host's program chunk: the same element under the chunk's root name.
std::string AsProgramChunk(const std::string& preset)
{
    TiXmlDocument document;
    document.Parse(preset.c_str());
    document.RootElement()->SetValue("Program");
    TiXmlPrinter printer;
    document.Accept(&printer);
    return printer.Str();
}

using FactoryPresetTest = InstanceFixture;

TEST_F(FactoryPresetTest, EachDoesWhatItsNameSays)
{
    SetLatencyLevel(0);
    const LibraryCopy copy;
    InstanceRunner runner(copy);
    for (const Design& design : designs) {
        SCOPED_TRACE(design.file);
        const std::string text = PresetFile(design.file);
        ASSERT_FALSE(text.empty());
        runner.SetProgramChunk(AsProgramChunk(text));
        runner.GetProgramChunk(); // waits until the worker has loaded it
        runner.RunSilence(8192);

        // Equal impulses are all mid, opposite ones all side; in L/R both channels filter alike.
        for (float sign : {1.0f, -1.0f}) {
            const auto out = runner.Run(Impulse(32768, 1.0f), Impulse(32768, sign));
            for (const Expectation& e : sign > 0 || design.side.empty() ? design.mid : design.side) {
                const double db = Db(MeasuredMagnitude(Response(out[0]), e.hz, rate));
                EXPECT_GE(db, e.lowest) << e.hz << " Hz, sign " << sign;
                EXPECT_LE(db, e.highest) << e.hz << " Hz, sign " << sign;
            }
            runner.RunSilence(32768);
        }
    }
}

TEST_F(FactoryPresetTest, EveryShippedPresetHasItsDesignHere)
{
    std::set<std::string> shipped, designed;
    const boost::filesystem::path root(VARNEL4_FACTORY_PRESETS);
    for (boost::filesystem::recursive_directory_iterator entry(root), end; entry != end; ++entry) {
        if (boost::filesystem::is_regular_file(entry->path()))
            shipped.insert(entry->path().lexically_relative(root).replace_extension().string());
    }
    for (const Design& design : designs)
        designed.insert(design.file);
    EXPECT_EQ(shipped, designed);
}

TEST_F(FactoryPresetTest, EachHoldsTheSavedParametersInTheirSavedForm)
{
    SetLatencyLevel(2); // the mastering presets ask for linear phase, which needs it
    const LibraryCopy copy;
    InstanceRunner runner(copy);
    for (const Design& design : designs) {
        SCOPED_TRACE(design.file);
        TiXmlDocument file;
        file.Parse(PresetFile(design.file).c_str());
        ASSERT_FALSE(file.Error());
        const TiXmlElement* slot = file.RootElement()->FirstChildElement("Slot");
        ASSERT_NE(slot, nullptr);
        EXPECT_STREQ(file.RootElement()->Attribute("Format"), "vn4m");
        EXPECT_STREQ(slot->Attribute("Model"), "f8fd5639-da16-4332-86c3-e1e0e7272048");
        const auto saved = AttributesOf(slot->FirstChildElement("Module"));
        EXPECT_EQ(saved.size(), 89u);
        runner.SetProgramChunk(AsProgramChunk(PresetFile(design.file)));
        EXPECT_EQ(saved, ModuleOf(runner.GetProgramChunk()));
    }
}

}  // namespace
}  // namespace OV::Testing
