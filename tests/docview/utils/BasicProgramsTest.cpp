// Host programs: stored elements, one live in the document, switched and read on the worker.
#include "docview/utils/BasicDocument.h"
#include "docview/utils/BasicPrograms.h"
#include "tests/docview/utils/DocumentTestProfile.h"
#include "tests/docview/utils/WorkerTestSetup.h"

#include <functional>

#include <gtest/gtest.h>

namespace OV::Testing {
namespace {

using CFW::DocViewUtils::BasicDocument;

struct ThreePrograms : CFW::DocView::ProgramsProfile {
    int GetProgramCount() const override { return 3; }
};

// Programs that start as saves of the document with gains 1, 2, 3, and count the document's
// loads.
class TestPrograms : public CFW::DocViewUtils::BasicPrograms {
public:
    TestPrograms(TestContext& context, BasicDocument& document) : BasicPrograms(&profile, &context, &document)
    {
        for (int i = 0; i < 3; ++i) {
            names.push_back("Program " + std::to_string(i + 1));
            TiXmlElement program("Program");
            program.SetAttribute("Gain", std::to_string(i + 1));
            programs.push_back(program);
        }
        // The document starts with the first program, as a product's start-up makes it.
        document.Load(programs.front());
    }

    std::function<void()> onHandOver;

private:
    void HandedOver() override
    {
        if (onHandOver)
            onHandOver();
    }

    ThreePrograms profile;
};

const TestDocumentProfile& Profile()
{
    static const TestDocumentProfile profile;
    return profile;
}

float Gain(TestPrograms& programs, int index)
{
    TiXmlElement element("Anything");
    programs.SaveProgram(index, element);
    EXPECT_STREQ("Program", element.Value());
    double gain = -99.0;
    element.QueryDoubleAttribute("Gain", &gain);
    return static_cast<float>(gain);
}

struct Fixture {
    Fixture() : document(&Profile(), &context.documents), programs(context, document)
    {
        document.ConnectLoaded([this](CFW::DocView::Document&) { ++loads; });
    }
    TestContext context;
    BasicDocument document;
    TestPrograms programs;
    std::atomic<int> loads{0};
};

TEST(BasicProgramsTest, SwitchingSavesTheOutgoingAndLoadsTheIncoming)
{
    Fixture f;
    f.programs.SetCurrent(0);
    Drain(f.context);
    EXPECT_EQ(0, f.loads.load()) << "setting the present program posts nothing";
    EXPECT_EQ(2.0f, Gain(f.programs, 1)) << "the stored program as it stands";

    f.programs.SetCurrent(1);
    f.programs.SetCurrent(2);
    EXPECT_EQ(2, f.programs.GetCurrent());
    Drain(f.context);
    EXPECT_EQ(3.0f, Gain(f.programs, 2));
    EXPECT_EQ(2, f.loads.load());
    EXPECT_EQ(3.0f, f.document.GetParameter(TestDocumentProfile::Gain).AsFloat());

    // An edit of the live program is in its next save; the others keep theirs.
    // Reading the live program hands over to the worker, after the queued edit.
    f.document.QueueSetParameter(TestDocumentProfile::Gain, Parameter::FromFloat(-7.0f), 3);
    EXPECT_EQ(-7.0f, Gain(f.programs, 2));
    EXPECT_EQ(2.0f, Gain(f.programs, 1));
    f.programs.Copy(2, 0);
    EXPECT_EQ(-7.0f, Gain(f.programs, 0));
    f.programs.SetName(1, "Renamed");
    EXPECT_EQ("Renamed", f.programs.GetName(1));

    // A copy onto the live program reaches the document, and so outlives the next switch.
    f.programs.Copy(1, 2);
    Drain(f.context);
    EXPECT_EQ(2.0f, f.document.GetParameter(TestDocumentProfile::Gain).AsFloat());
    f.programs.SetCurrent(0);
    EXPECT_EQ(2.0f, Gain(f.programs, 2));
}

// Reads and copies right after a switch, while the worker has not run it yet: the worker is
// held until the read has handed over, so the switch and the read meet in the worst order.
TEST(BasicProgramsTest, NoProgramIsWrittenWithAnothersStateAcrossASwitch)
{
    struct Case {
        const char* what;
        std::function<float(TestPrograms&)> programZeroAfter;
    };
    const Case cases[] = {
        {"SaveProgram", [](TestPrograms& programs) { return Gain(programs, 0); }},
        {"SaveBank",
         [](TestPrograms& programs) {
             TiXmlElement bank("Bank");
             programs.SaveBank(bank);
             double gain = -99.0;
             bank.FirstChildElement("Program")->QueryDoubleAttribute("Gain", &gain);
             return static_cast<float>(gain);
         }},
        {"Copy",
         [](TestPrograms& programs) {
             programs.Copy(0, 2);
             return Gain(programs, 2);
         }},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        Fixture f;
        Gate gate;
        f.context.GetScheduler()->Enqueue(&gate);
        f.programs.SetCurrent(1);
        f.programs.onHandOver = [&] { gate.Open(); };
        EXPECT_EQ(1.0f, c.programZeroAfter(f.programs));
        f.programs.onHandOver = nullptr;
        Drain(f.context);
        EXPECT_EQ(1.0f, Gain(f.programs, 0));
        EXPECT_EQ(2.0f, f.document.GetParameter(TestDocumentProfile::Gain).AsFloat());
    }
}

TEST(BasicProgramsTest, BanksLoadProgramByProgram)
{
    Fixture f;
    TiXmlElement bank("Bank");
    for (int i = 0; i < 5; ++i) {
        TiXmlElement program("Program");
        program.SetAttribute("Gain", std::to_string(10 + i));
        bank.InsertEndChild(program);
    }
    TiXmlElement root("Root");
    root.InsertEndChild(*bank.FirstChildElement());
    f.programs.LoadBank(root);
    EXPECT_EQ(1.0f, Gain(f.programs, 0)) << "a root other than Bank changes nothing";

    f.programs.LoadBank(bank);
    Drain(f.context);
    EXPECT_EQ(10.0f, Gain(f.programs, 0)) << "the live program loaded into the document";
    EXPECT_EQ(11.0f, Gain(f.programs, 1));
    EXPECT_EQ(12.0f, Gain(f.programs, 2));
    EXPECT_EQ(10.0f, f.document.GetParameter(TestDocumentProfile::Gain).AsFloat());

    TiXmlElement saved("Root");
    f.programs.SaveBank(saved);
    EXPECT_STREQ("Bank", saved.Value());
    int count = 0;
    for (const TiXmlElement* program = saved.FirstChildElement("Program"); program != nullptr; program = program->NextSiblingElement())
        ++count;
    EXPECT_EQ(3, count) << "surplus programs were ignored";
    f.programs.LoadProgram(1, TiXmlElement("NotAProgram"));
    EXPECT_EQ(11.0f, Gain(f.programs, 1));
}

}  // namespace
}  // namespace OV::Testing
