// The equaliser's 180 rows against the tables, worked out by hand.
#include "equaliser/DocumentProfile.h"

#include <cmath>
#include <set>

#include <gtest/gtest.h>

namespace OV::Testing {
namespace {

using CFW::DocView::Parameter;
using CFW::DocView::ParameterInfo;
using Comp::ModuleLinearPhaseEq::DocumentProfile;
using Names = std::vector<std::string>;

const ParameterInfo& Row(int index)
{
    return DocumentProfile::Instance().GetParameterInfo(index);
}

TEST(DocumentProfileTest, RowsAsTabled)
{
    constexpr std::uint32_t B = Parameter::Bool, E = Parameter::Enum, F = Parameter::Float;
    const Names modes = {"HighPass", "LowShelf", "Peaking", "HighShelf", "LowPass"};
    struct Case {
        int index;
        const char* name;
        std::uint32_t type;
        std::uint32_t flags;
        float defaultValue; // 0 or 1, the index, or the float
        float maximum;      // floats: the range's top; enums: the names below
        Names names;
    };
    const Case cases[] = {
        {0, "EngineStopped", B, 0, 0, 0, {}},
        {1, "CurrentChannel", E, 1, 1, 0, {"L|M", "=", "R|S"}},
        {2, "ChannelMode", E, 1, 0, 0, {"L/R", "M/S"}},
        {3, "Band1Gain", F, 4, 0, 15, {}},
        {4, "Band1Resonance", F, 4, 0.7f, 2, {}},
        {5, "Band1Mode", E, 4, 1, 0, modes},
        {6, "Band1Active", B, 4, 0, 0, {}},
        {7, "Band1Hz", F, 4, 130, 20000, {}},
        {8, "Band1Q_Peaking", F, 4, 1, 20, {}},
        {9, "Band1Q_Shelving", F, 4, 1, 3, {}},
        {12, "Band2Mode", E, 4, 2, 0, modes},
        {14, "Band2Hz", F, 4, 250, 20000, {}},
        {35, "Band5Hz", F, 4, 7000, 20000, {}},
        {40, "Band6Mode", E, 4, 3, 0, modes},
        {42, "Band6Hz", F, 4, 3000, 20000, {}},
        {44, "Band6Q_Shelving", F, 4, 0.25f, 3, {}},
        {45, "OutputLevel", F, 4, 0, 15, {}},
        {49, "LM_Band1Active", B, 1, 0, 0, {}},
        {88, "LM_OutputLevel", F, 1, 0, 15, {}},
        {129, "RS_Band6Q_Peaking", F, 1, 0.25f, 20, {}},
        {150, "Linked_Band3Hz", F, 4, 1000, 20000, {}},
        {174, "Linked_OutputLevel", F, 4, 0, 15, {}},
        {175, "LinearPhase", B, 1, 1, 0, {}},
        {176, "Oversample", E, 0, 1, 0, {"Off", "2x"}},
        {177, "Main.LatencyLevel", E, 16, 0, 0, {"Low", "Mid", "High"}},
        {179, "OutputMeterR", F, 2, 0, 100000, {}},
    };
    ASSERT_EQ(180, DocumentProfile::Instance().GetParameterCount());
    for (const Case& c : cases) {
        SCOPED_TRACE(c.index);
        const ParameterInfo& row = Row(c.index);
        EXPECT_EQ(c.name, row.name);
        EXPECT_EQ(c.type, row.type);
        EXPECT_EQ(c.flags, row.flags);
        EXPECT_FLOAT_EQ(c.defaultValue, row.GetDefault().ToNumber());
        if (c.type == F) {
            EXPECT_FLOAT_EQ(c.maximum, row.AsFloat()->range->GetMaximum());
        } else if (c.type == E) {
            EXPECT_EQ(c.names, row.AsEnum()->names);
        }
    }
}

// Normalised and plain values at points worked out from each mapping's formula.
TEST(DocumentProfileTest, ValueMappings)
{
    struct Case {
        int index;
        float normalized;
        float value;
    };
    const Case cases[] = {
        {7, 0.0f, 10.0f},     {7, 0.5f, 2508.75f},  // Hz: 10 + 19990 n^3
        {94, 0.5f, 2.0f},     {8, 1.0f, 20.0f},     // Q_Peaking: 0.2 * 100^n
        {9, 0.5f, 0.7745967f}, {52, 0.0f, 0.2f},    // Q_Shelving: 0.2 * 15^n
        {3, 0.75f, 7.5f},     {4, 0.5f, 1.15f},     // Gain, Resonance: linear over the range
        {178, 20.0f, 10.0f},  {179, -6.0f, 0.5011872f}, // meters: decibels to gain
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.index);
        const CFW::DataFilter::FloatConverter& converter = *Row(c.index).AsFloat()->converter;
        EXPECT_NEAR(c.value, converter.ToValue(c.normalized), 1e-5f * std::max(1.0f, std::abs(c.value)));
        EXPECT_NEAR(c.normalized, converter.ToNormalized(c.value), 1e-5f * std::max(1.0f, std::abs(c.normalized)));
    }
}

// Row + 43, + 86, + 129 is the same parameter of the next set, under the set's prefix.
TEST(DocumentProfileTest, SetsAreCopiesOfTheSetOnView)
{
    const char* prefixes[] = {"LM_", "RS_", "Linked_"};
    const std::uint32_t flags[] = {1, 1, 4};
    for (int index = 3; index <= 45; ++index) {
        for (int set = 1; set <= 3; ++set) {
            SCOPED_TRACE(index + 43 * set);
            const ParameterInfo& row = Row(index + 43 * set);
            EXPECT_EQ(prefixes[set - 1] + Row(index).name, row.name);
            EXPECT_EQ(flags[set - 1], row.flags);
            EXPECT_EQ(Row(index).GetDefault(), row.GetDefault());
            if (row.type == Parameter::Float) {
                EXPECT_EQ(Row(index).AsFloat()->converter->ToValue(0.3f), row.AsFloat()->converter->ToValue(0.3f));
            }
        }
    }
    std::set<std::string> names;
    for (int index = 0; index < 180; ++index)
        names.insert(Row(index).name);
    EXPECT_EQ(180u, names.size()) << "every row declared, every name once";
}

}  // namespace
}  // namespace OV::Testing
