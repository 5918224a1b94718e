#include "docview/utils/MAFParamMediator.h"
#include "tests/docview/utils/RecordingWrapper.h"

#include <cmath>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace OV::CFW::DocViewUtils {
namespace {

using DocView::Parameter;
using TestDoubles::RecordingWrapper;
using Lines = std::vector<std::string>;
using MakeCreator = std::function<std::unique_ptr<MAFParamMediator::Creator>()>;
using Bool = MAFParamMediatorBool::Creator;
using Enum = MAFParamMediatorEnum::Creator;
using Float = MAFParamMediatorFloat::Creator;
using Texts = std::vector<std::string>;
using Values = std::vector<float>;

struct Received : MAFParamMediator::Listener {
    void OnValue(int index, Parameter value) override { values.emplace_back(index, value); }
    std::vector<std::pair<int, Parameter>> values;
};

template <typename C, typename... Arguments>
MakeCreator Make(Arguments... arguments)
{
    return [=] { return std::make_unique<C>(arguments...); };
}

TEST(MAFParamMediatorTest, DocumentValuesBecomeEngineValuesUnderTheirEngineNames)
{
    const struct {
        const char* name;
        MakeCreator make;
        const char* prefix;
        Parameter value;
        const char* expected;
    } cases[] = {
        {"bool on", Make<Bool>(0, "B"), "", Parameter::FromBool(true), "F B=1"},
        {"bool off, prefixed", Make<Bool>(0, "Gain_3L"), "Module", Parameter::FromBool(false), "F Gain_3L_Module=0"},
        {"bool values", Make<Bool>(0, "B", -1.0f, 5.0f), "", Parameter::FromBool(true), "F B=5"},
        {"bool texts", Make<Bool>(0, "B", std::string("Off"), std::string("On")), "", Parameter::FromBool(false), "S B=Off"},
        {"enum as integer, no name", Make<Enum>(0, ""), "LinearPhaseEQ_Module", Parameter::FromEnum(3), "F LinearPhaseEQ_Module=3"},
        {"bool row as integer", Make<Enum>(0, "E"), "A_B", Parameter::FromBool(true), "F E_A_B=1"},
        {"enum by values", Make<Enum>(0, "E", Values{10, 20, 40}), "", Parameter::FromEnum(1), "F E=20"},
        {"enum past the values", Make<Enum>(0, "E", Values{10, 20, 40}), "", Parameter::FromEnum(7), "F E=40"},
        {"enum by texts", Make<Enum>(0, "E", Texts{"Low", "High"}), "", Parameter::FromEnum(0), "S E=Low"},
        {"enum past the texts", Make<Enum>(0, "E", Texts{"Low", "High"}), "", Parameter::FromEnum(5), "S E=High"},
        {"float as is", Make<Float>(0, "X"), "", Parameter::FromFloat(-3.25f), "F X=-3.25"},
        // (10010 - 20) / 19980
        {"float normalised", [] { return std::make_unique<Float>(0, "X", *DataFilter::MakeNorm(20, 20000)); }, "",
         Parameter::FromFloat(10010), "F X=0.5"},
        // (2508.75 - 10) / 19990 = 0.125, whose cube root is 0.5
        {"float cube", [] { return std::make_unique<Float>(0, "X", *DataFilter::MakePowNorm(3, 10, 20000)); }, "",
         Parameter::FromFloat(2508.75f), "F X=0.5"},
    };
    for (const auto& test : cases) {
        Received listener;
        RecordingWrapper wrapper;
        const auto mediator = test.make()->Create(listener);
        mediator->OnParameter(0, test.value); // not attached yet: nothing
        mediator->Attach(&wrapper, "Stale");
        mediator->Attach(&wrapper, test.prefix); // the last Attach names it
        mediator->OnParameter(0, test.value);
        mediator->Attach(nullptr, "");
        mediator->OnParameter(0, test.value); // detached: nothing
        EXPECT_EQ(Lines{test.expected}, wrapper.Log()) << test.name;
        EXPECT_TRUE(listener.values.empty()) << test.name;
    }
}

// Each case polls twice: the name is resolved once, and the same value is sent both times.
TEST(MAFParamMediatorTest, EngineReadingsBecomeDocumentValues)
{
    const Parameter none{99, 0};
    const struct {
        const char* name;
        MakeCreator make;
        float engine;
        Parameter expected; // `none`: nothing is sent
        float tolerance;
    } cases[] = {
        {"bool on", Make<Bool>(7, "V"), 1.0f, Parameter::FromBool(true), 0},
        {"bool near on", Make<Bool>(7, "V"), 0.999f, Parameter::FromBool(false), 0},
        {"bool custom on", Make<Bool>(7, "V", -1.0f, 5.0f), 5.0f, Parameter::FromBool(true), 0},
        {"bool custom, 1 is off", Make<Bool>(7, "V", -1.0f, 5.0f), 1.0f, Parameter::FromBool(false), 0},
        {"enum truncates", Make<Enum>(7, "V"), 2.7f, Parameter::FromEnum(2), 0},
        {"enum negative", Make<Enum>(7, "V"), -1.0f, none, 0},
        {"enum NaN", Make<Enum>(7, "V"), std::nanf(""), none, 0},
        {"enum by values", Make<Enum>(7, "V", Values{10, 20, 40}), 20.9f, Parameter::FromEnum(1), 0},
        {"enum not among values", Make<Enum>(7, "V", Values{10, 20, 40}), 30.0f, none, 0},
        {"float as is", Make<Float>(7, "V"), 0.25f, Parameter::FromFloat(0.25f), 0},
        // 10^(-6 / 20)
        {"float from decibels", [] { return std::make_unique<Float>(7, "V", *DataFilter::MakedB()); }, -6.0f,
         Parameter::FromFloat(0.501187f), 1e-6f},
    };
    for (const auto& test : cases) {
        Received listener;
        RecordingWrapper wrapper;
        wrapper.values["V_Module"] = test.engine;
        const auto mediator = test.make()->Create(listener);
        mediator->Poll(); // not attached: nothing
        mediator->Attach(&wrapper, "Module");
        mediator->Poll();
        mediator->Poll();
        EXPECT_EQ(1, wrapper.resolves) << test.name;
        ASSERT_EQ(2u, wrapper.calls.size()) << test.name;
        EXPECT_EQ(&wrapper.values["V_Module"], wrapper.calls[1].handle) << test.name; // the cached handle
        if (test.expected == none) {
            EXPECT_TRUE(listener.values.empty()) << test.name;
            continue;
        }
        ASSERT_EQ(2u, listener.values.size()) << test.name;
        for (const auto& sent : listener.values) {
            EXPECT_EQ(7, sent.first) << test.name;
            EXPECT_EQ(test.expected.type, sent.second.type) << test.name;
            if (test.tolerance == 0)
                EXPECT_EQ(test.expected.payload, sent.second.payload) << test.name;
            else
                EXPECT_NEAR(test.expected.AsFloat(), sent.second.AsFloat(), test.tolerance) << test.name;
        }
    }
}

TEST(MAFParamMediatorTest, ProcessStateFollowsItsPriorities)
{
    enum Row { Disable = 4, Bypass = 5, Mute = 6 };
    const struct {
        const char* name;
        std::vector<std::pair<int, bool>> changes;
        Lines expected;
    } cases[] = {
        {"first state", {{Disable, false}, {Bypass, false}, {Mute, false}}, {"Normal", "Normal", "Normal"}},
        {"mute over bypass", {{Bypass, true}, {Mute, true}, {Mute, false}}, {"Bypass", "Mute", "Bypass"}},
        {"disabled hides both", {{Disable, true}, {Bypass, true}, {Mute, true}, {Mute, false}, {Disable, false}},
         {"Stop", "Bypass"}},
        {"disabled, then what the others want", {{Mute, true}, {Disable, true}, {Bypass, true}, {Disable, false}},
         {"Mute", "Stop", "Mute"}},
        {"muted hides bypass", {{Mute, true}, {Bypass, true}, {Bypass, false}, {Mute, false}}, {"Mute", "Normal"}},
        {"other rows do nothing", {{3, true}, {7, true}}, {}},
    };
    for (const auto& test : cases) {
        Received listener;
        RecordingWrapper wrapper;
        const auto mediator = MAFParamMediatorProcess::Creator(Disable, Bypass, Mute).Create(listener);
        mediator->Attach(&wrapper, "Module");
        for (const auto& change : test.changes)
            mediator->OnParameter(change.first, Parameter::FromBool(change.second));
        Lines expected;
        for (const std::string& text : test.expected)
            expected.push_back("S Process_Module=" + text);
        EXPECT_EQ(expected, wrapper.Log()) << test.name;
    }
}

}  // namespace
}  // namespace OV::CFW::DocViewUtils
