#include "engine/core/Handler.h"

#include <cmath>

#include <gtest/gtest.h>

namespace AudioEngine {
namespace {

TEST(ParameterTest, ValuesClampAndHoldFlagsKeepTheirExtreme)
{
    Parameter plain("P", "", -2.0f, 3.0f, 5.0f, 0);
    EXPECT_EQ(5.0f, plain.GetDefault()) << "kept as given";
    EXPECT_EQ(3.0f, plain.GetValue()) << "the default goes through the clamp";
    plain.SetValue(-2.5f);
    EXPECT_EQ(-2.0f, plain.GetValue());
    plain.SetValue(std::nanf(""));
    EXPECT_EQ(-2.0f, plain.GetValue()) << "NaN is ignored";
    plain.SetValue(1.25f);
    EXPECT_EQ(1.25f, plain.GetValue());
    EXPECT_EQ(1.25f, plain.GetValue()) << "a plain read is not destructive";

    Parameter floor("F", "", 0.0f, 10.0f, 4.0f, ParameterBase::FloorHold);
    floor.SetValue(7.0f);
    EXPECT_EQ(4.0f, floor.GetValue()) << "the smaller value is kept";
    EXPECT_EQ(10.0f, floor.GetValue()) << "a read re-arms to the maximum";
    floor.SetValue(6.0f);
    floor.SetValue(8.0f);
    EXPECT_EQ(6.0f, floor.GetValue());

    Parameter peak("K", "", 0.0f, 10.0f, 0.0f, ParameterBase::PeakHold);
    peak.SetValue(3.0f);
    peak.SetValue(2.0f);
    EXPECT_EQ(3.0f, peak.GetValue());
    EXPECT_EQ(0.0f, peak.GetValue()) << "a read re-arms to the minimum";
}

TEST(ParameterTest, StatesCountFromZeroInBuildingOrder)
{
    const Parameter mode("Mode_2", "", std::vector<std::string>{"HiPass", "LowShelving", "Peaking", "HiShelving", "LowPass"},
                         "Peaking", ParameterBase::Step);
    EXPECT_EQ(0.0f, mode.GetMin());
    EXPECT_EQ(4.0f, mode.GetMax());
    EXPECT_EQ(2.0f, mode.GetDefault());
    EXPECT_EQ(1.0f, mode.GetStates().at("LowShelving"));
    EXPECT_EQ(4.0f, mode.GetStates().at("LowPass"));
    Parameter copy("S", "", std::vector<std::string>{"Off", "On", "Auto"}, "On", 0);
    copy.SetValue(2.7f);
    EXPECT_EQ(2.0f, copy.GetValue());
    copy.SetValue(1.7f);
    EXPECT_EQ(1.7f, copy.GetValue()) << "only consumers truncate";

    EXPECT_EQ("Gain_3", BandName("Gain", 3));
    EXPECT_EQ(3, BandOf("Gain_3"));
    EXPECT_EQ(0, BandOf("Q_LPHP_0"));
}

// A handler that records the writes that reach it.
class RecordingHandler : public ParameterHandler {
public:
    explicit RecordingHandler(const char* name) : ParameterHandler(name)
    {
        AddParameter(std::make_unique<Parameter>("Gain", "output gain", -15.0f, 15.0f, 0.0f, 0));
        AddParameter(std::make_unique<Parameter>("Only", "", 0.0f, 1.0f, 0.0f, ParameterBase::OutputOnly));
    }
    void SetParameter(const std::string& name, float value) override
    {
        writes.push_back(name + "=" + std::to_string(static_cast<int>(value)));
        ParameterHandler::SetParameter(name, value);
    }
    std::vector<std::string> writes;
};

TEST(ParameterTest, LinksWriteThroughTheTargetHandler)
{
    RecordingHandler left("L");
    RecordingHandler right("R");
    ParameterLinked link(left, "Gain", "Gain_Module");
    EXPECT_EQ("Gain_Module", link.GetName());
    EXPECT_EQ("output gain", link.GetDescription());
    link.SetValue(20.0f);
    EXPECT_EQ(std::vector<std::string>{"Gain=20"}, left.writes) << "the handler sees the write";
    EXPECT_EQ(15.0f, link.GetValue());
    EXPECT_EQ(-15.0f, link.GetMin());
    EXPECT_EQ(ParameterBase::OutputOnly, ParameterLinked(left, "Only", "x").GetFlags());

    link.Retarget(right);
    link.SetValue(-4.0f);
    EXPECT_EQ(std::vector<std::string>{"Gain=-4"}, right.writes);
    EXPECT_EQ(-4.0f, link.GetValue());
    EXPECT_EQ(15.0f, left.GetParameter("Gain")->GetValue());

    ParameterMultiLink both({&left, &right}, "Gain");
    both.SetValue(7.0f);
    EXPECT_EQ("Gain=7", left.writes.back());
    EXPECT_EQ("Gain=7", right.writes.back());
    right.SetParameter("Gain", 1.0f);
    EXPECT_EQ(7.0f, both.GetValue()) << "reads come from the first handler";
    EXPECT_EQ("output gain", both.GetDescription());
}

}  // namespace
}  // namespace AudioEngine
