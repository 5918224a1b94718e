// Host programs: stored elements, one live in the document, switched and read on the worker.
#include "docview/utils/BasicDocument.h"
#include "docview/utils/BasicPrograms.h"
#include "tests/docview/utils/WorkerTestSetup.h"

#include <functional>

#include <gtest/gtest.h>

namespace OV::Testing {
namespace {

using CFW::DocViewUtils::BasicDocument;

struct ThreePrograms : CFW::DocView::ProgramsProfile {
    int GetProgramCount() const override { return 3; }
};

// Programs that start as saves of the document with gains 1, 2, 3.
class TestPrograms : public CFW::DocViewUtils::BasicPrograms {
public:
    TestPrograms(TestContext& context, BasicDocument& document) : BasicPrograms(&profile, &context, &document)
    {
        for (int i = 0; i < 3; ++i) {
            names.push_back("Program " + std::to_string(i + 1));
            programs.emplace_back("Program");
            programs.back().SetAttribute("Gain", std::to_string(i + 1));
        }
        // The document starts with the first program, as a product's start-up makes it.
        document.Load(programs.front());
    }
    std::function<void()> onHandOver = [] {};

private:
    void HandedOver() override { onHandOver(); }
    ThreePrograms profile;
};

// The gain in the first Program element under `element`, or in `element` itself.
float GainOf(const TiXmlElement& element)
{
    const TiXmlElement* program = element.FirstChildElement("Program") ? element.FirstChildElement("Program") : &element;
    EXPECT_STREQ("Program", program->Value());
    double gain = -99.0;
    program->QueryDoubleAttribute("Gain", &gain);
    return static_cast<float>(gain);
}

// The document counts its loads.
struct Fixture {
    Fixture() { document.ConnectLoaded([this](CFW::DocView::Document&) { ++loads; }); }
    float Gain(int index)
    {
        TiXmlElement element("Anything");
        programs.SaveProgram(index, element);
        return GainOf(element);
    }
    float Live() const { return document.GetParameter(TestDocumentProfile::Gain).AsFloat(); }

    TestContext context;
    BasicDocument document{&Profile(), &context.documents};
    TestPrograms programs{context, document};
    std::atomic<int> loads{0};
};

TEST(BasicProgramsTest, SwitchingSavesTheOutgoingAndLoadsTheIncoming)
{
    Fixture f;
    f.programs.SetCurrent(0);
    Drain(f.context);
    EXPECT_EQ(0, f.loads.load()) << "setting the present program posts nothing";
    EXPECT_EQ(2.0f, f.Gain(1)) << "the stored program as it stands";

    f.programs.SetCurrent(1);
    f.programs.SetCurrent(2);
    EXPECT_EQ(2, f.programs.GetCurrent());
    Drain(f.context);
    EXPECT_EQ(3.0f, f.Gain(2));
    EXPECT_EQ(2, f.loads.load());
    EXPECT_EQ(3.0f, f.Live());

    // An edit of the live program is in its next save; the others keep theirs.
    // Reading the live program hands over to the worker, after the queued edit.
    f.document.QueueSetParameter(TestDocumentProfile::Gain, Parameter::FromFloat(-7.0f), 3);
    EXPECT_EQ(-7.0f, f.Gain(2));
    EXPECT_EQ(2.0f, f.Gain(1));
    f.programs.Copy(2, 0);
    EXPECT_EQ(-7.0f, f.Gain(0));
    f.programs.SetName(1, "Renamed");
    EXPECT_EQ("Renamed", f.programs.GetName(1));

    // A copy onto the live program reaches the document, and so outlives the next switch.
    f.programs.Copy(1, 2);
    Drain(f.context);
    EXPECT_EQ(2.0f, f.Live());
    f.programs.SetCurrent(0);
    EXPECT_EQ(2.0f, f.Gain(2));
}

// Reads and copies right after a switch, while the worker has not run it yet: the worker is
// held until the read has handed over, so the switch and the read meet in the worst order.
TEST(BasicProgramsTest, NoProgramIsWrittenWithAnothersStateAcrossASwitch)
{
    const std::pair<const char*, std::function<float(Fixture&)>> cases[] = {
        {"SaveProgram", [](Fixture& f) { return f.Gain(0); }},
        {"SaveBank", [](Fixture& f) { TiXmlElement bank("Bank"); f.programs.SaveBank(bank); return GainOf(bank); }},
        {"Copy", [](Fixture& f) { f.programs.Copy(0, 2); return f.Gain(2); }},
    };
    for (const auto& [what, programZeroAfter] : cases) {
        SCOPED_TRACE(what);
        Fixture f;
        Gate gate;
        f.context.GetScheduler()->Enqueue(&gate);
        f.programs.SetCurrent(1);
        f.programs.onHandOver = [&] { gate.Open(); };
        EXPECT_EQ(1.0f, programZeroAfter(f));
        f.programs.onHandOver = [] {};
        Drain(f.context);
        EXPECT_EQ(1.0f, f.Gain(0));
        EXPECT_EQ(2.0f, f.Live());
    }
}

TEST(BasicProgramsTest, BanksLoadProgramByProgram)
{
    Fixture f;
    TiXmlDocument root, bank;
    root.Parse(R"(<Root><Program Gain="10"/></Root>)");
    f.programs.LoadBank(*root.RootElement());
    EXPECT_EQ(1.0f, f.Gain(0)) << "a root other than Bank changes nothing";

    bank.Parse(R"(<Bank><Program Gain="10"/><Program Gain="11"/><Program Gain="12"/><Program Gain="13"/><Program Gain="14"/></Bank>)");
    f.programs.LoadBank(*bank.RootElement());
    Drain(f.context);
    EXPECT_EQ(10.0f, f.Gain(0)) << "the live program loaded into the document";
    EXPECT_EQ(11.0f, f.Gain(1));
    EXPECT_EQ(12.0f, f.Gain(2));
    EXPECT_EQ(10.0f, f.Live());

    TiXmlElement saved("Root");
    f.programs.SaveBank(saved);
    EXPECT_STREQ("Bank", saved.Value());
    int count = 0;
    for (const TiXmlElement* program = saved.FirstChildElement("Program"); program != nullptr; program = program->NextSiblingElement())
        ++count;
    EXPECT_EQ(3, count) << "surplus programs were ignored";
    f.programs.LoadProgram(1, TiXmlElement("NotAProgram"));
    EXPECT_EQ(11.0f, f.Gain(1));
}

}  // namespace
}  // namespace OV::Testing
