// The router between the host's slots and the targets of a component tree: maps read from and
// written to a program by target name, slots without a target, notifications routed back, and
// maps replaced while other threads read through them.
#include "docview/utils/BasicAutomation.h"
#include "product/automationrouter/Automation.h"
#include "product/automationrouter/AutomationHelperSerializer.h"
#include "product/automationrouter/MapStore.h"
#include "tests/docview/utils/AutomationTestSetup.h"

#include <tinyxml.h>

#include <atomic>
#include <thread>

#include <gtest/gtest.h>

namespace OV::Testing {
namespace {

using namespace Comp::AutomationRouter;
using CFW::DocView::SourceInternal;
using Row = SlotDocumentProfile;

// Two components of the test slots, named "one" and "two" in the tree: a target's name is the
// component's, ":" and the slot's short name.
std::shared_ptr<TargetTree> MakeTree(CFW::DocView::Automation& one, CFW::DocView::Automation& two)
{
    auto root = std::make_shared<TargetTreeNode>("Module");
    for (auto [name, automation] : {std::pair{"one", &one}, std::pair{"two", &two}}) {
        auto node = std::make_shared<TargetTreeNode>(name);
        for (int slot = 0; slot < Slots().GetSlotCount(); ++slot) {
            const std::string shortName = Slots().GetSlotShortName(slot);
            node->AddChild(std::make_shared<TargetTreeLeaf>(
                std::string(name) + ":" + shortName,
                std::make_shared<Target>(Target{automation, slot, "Module", Slots().GetSlotName(slot), shortName})));
        }
        root->AddChild(node);
    }
    return root;
}

// The router offers the four slots of the test profile and installs maps at once.
struct Router {
    // Loads a program holding `automation` as its map element.
    void Load(const std::string& automation)
    {
        TiXmlDocument program;
        program.Parse(("<Program>" + automation + "</Program>").c_str());
        serializer.Load(*program.RootElement());
    }

    // The map element as a program saves it, or "" when none is written.
    std::string Save()
    {
        TiXmlElement program("Program");
        serializer.Save(program);
        const TiXmlElement* map = program.FirstChildElement();
        if (map == nullptr)
            return "";
        TiXmlPrinter printer;
        map->Accept(&printer);
        std::string text = printer.Str();
        return text.substr(0, text.find_last_not_of('\n') + 1);
    }

    SpyDocument firstDocument, secondDocument;
    CFW::DocViewUtils::BasicAutomation one{&Slots(), nullptr, &firstDocument};
    CFW::DocViewUtils::BasicAutomation two{&Slots(), nullptr, &secondDocument};
    Automation router{&Slots(), nullptr};
    MapStore store{router, MakeTree(one, two)};
    AutomationHelperSerializer serializer{store, "Automation"};
};

TEST(RouterTest, SavedMapsFindTheirTargetsByName)
{
    Router r;
    // Before any map: nothing is routed, and nothing is saved.
    EXPECT_EQ(0.0f, r.router.ToNormalized(1, 5.0f));
    EXPECT_EQ("", r.Save());

    r.Load(R"(<Automation Slots="3" Slot1="two:Q" Slot2="one:Nowhere" Slot5="one:G"/>)");
    EXPECT_EQ(R"(<Automation Slots="3" Slot1="two:Q" />)", r.Save());
    // Slot 1 is the second component's Q (default 2, log scale 0.2 to 20).
    EXPECT_FLOAT_EQ(2.0f, r.router.GetValue(1));
    EXPECT_NEAR(0.5f, r.router.GetNormalized(1), 1e-6);
    EXPECT_NEAR(0.75f, r.router.ToNormalized(1, 6.324555f), 1e-5);
    EXPECT_EQ("2.000000", Display(r.router, 1));
    r.router.SetValue(1, 5.0f);
    EXPECT_FLOAT_EQ(5.0f, r.secondDocument.GetParameter(Row::Q).AsFloat());
    EXPECT_FLOAT_EQ(2.0f, r.firstDocument.GetParameter(Row::Q).AsFloat());

    // Slots without a target keep what the host writes, up to slot 1023; beyond, 0.
    const struct { int slot; float written, readBack; bool accepted; } empty[] = {
        {0, 0.25f, 0.25f, true},    {2, 0.5f, 0.5f, true},      {36, 0.125f, 0.125f, true},
        {1023, 0.75f, 0.75f, true}, {1024, 0.75f, 0.0f, false}, {-1, 0.5f, 0.0f, false}};
    for (const auto& [slot, written, readBack, accepted] : empty) {
        SCOPED_TRACE(slot);
        EXPECT_EQ(accepted, r.router.QueueNormalized(slot, written));
        EXPECT_EQ(readBack, r.router.GetNormalized(slot));
        EXPECT_EQ(readBack, r.router.GetValue(slot));
        EXPECT_EQ("", Display(r.router, slot));
        EXPECT_EQ(0.3f, r.router.ToNormalized(slot, 0.3f));
    }
    EXPECT_TRUE(r.firstDocument.TakeQueued().empty());
    EXPECT_TRUE(r.secondDocument.TakeQueued().empty());

    // A program without the element, or with no slots, keeps the map; a map of empty slots
    // saves its size alone.
    for (const char* kept : {"", R"(<Automation Slots="0" Slot0="one:G"/>)", R"(<Automation Slot0="one:G"/>)"}) {
        r.Load(kept);
        EXPECT_EQ(R"(<Automation Slots="3" Slot1="two:Q" />)", r.Save()) << kept;
    }
    r.Load(R"(<Automation Slots="2" Slot0="" Slot1="three:Q"/>)");
    EXPECT_EQ(R"(<Automation Slots="2" />)", r.Save());
    EXPECT_EQ("", Display(r.router, 1));
}

TEST(RouterTest, TargetChangesComeBackUnderTheirSlot)
{
    Router r;
    RecordingListener host;
    // Slots 0 and 2 both on the first component's gain: the later one reports it.
    r.Load(R"(<Automation Slots="4" Slot0="one:G" Slot1="two:M" Slot2="one:G" Slot3="one:A"/>)");
    r.router.SetListener(&host);
    const auto first = host.Take();
    ASSERT_EQ(3u, first.size());
    for (const auto& told : first)
        EXPECT_EQ(SourceInternal, told.source);

    using P = CFW::DocView::Parameter;
    const struct { SpyDocument* document; int row; P value; std::vector<RecordingListener::Told> told; } changes[] = {
        {&r.firstDocument, Row::Gain, P::FromFloat(6.0f), {{2, 6.0f, 0.7f, SourceInternal}}},
        {&r.secondDocument, Row::Mix, P::FromFloat(25.0f), {{1, 25.0f, 0.25f, SourceInternal}}},
        {&r.firstDocument, Row::Active, P::FromBool(true), {{3, 0.5f, 0.5f, SourceInternal}}},
        {&r.firstDocument, Row::Mix, P::FromFloat(25.0f), {}},   // no slot on it
        {&r.secondDocument, Row::Gain, P::FromFloat(3.0f), {}},  // no slot on it
    };
    for (const auto& [document, row, value, told] : changes) {
        SCOPED_TRACE(row);
        document->SetParameter(row, value, SourceInternal);
        ExpectTold(told, host.Take());
    }

    // A new map: the old targets fall silent, the new ones tell their values at once.
    r.Load(R"(<Automation Slots="1" Slot0="two:G"/>)");
    ExpectTold({{0, 3.0f, 0.6f, SourceInternal}}, host.Take());
    r.firstDocument.SetParameter(Row::Gain, CFW::DocView::Parameter::FromFloat(-6.0f), SourceInternal);
    EXPECT_TRUE(host.Take().empty());
}

TEST(RouterTest, MapsAreReplacedWhileOtherThreadsReadThem)
{
    Router r;
    r.firstDocument.SetParameter(Row::Gain, CFW::DocView::Parameter::FromFloat(-6.0f), SourceInternal);
    r.secondDocument.SetParameter(Row::Gain, CFW::DocView::Parameter::FromFloat(6.0f), SourceInternal);
    const std::string maps[] = {R"(<Automation Slots="1" Slot0="one:G"/>)", R"(<Automation Slots="1" Slot0="two:G"/>)",
                                R"(<Automation Slots="1"/>)"};
    r.Load(maps[0]);

    // Every read sees one whole map: slot 0 is one gain or the other, or the fallback's 0.
    std::atomic<bool> stop{false};
    std::atomic<int> wrong{0};
    auto read = [&] {
        while (!stop.load()) {
            const float value = r.router.GetValue(0);
            if (value != -6.0f && value != 6.0f && value != 0.0f)
                ++wrong;
            std::string text;
            r.router.GetDisplay(text, 0);
            if (text != "-6.00 dB" && text != "6.00 dB" && !text.empty())
                ++wrong;
        }
    };
    std::thread readers[] = {std::thread(read), std::thread(read)};
    for (int round = 0; round <= 3000; ++round)
        r.Load(maps[round % 3]);
    stop = true;
    for (std::thread& reader : readers)
        reader.join();
    EXPECT_EQ(0, wrong.load());
    EXPECT_EQ(R"(<Automation Slots="1" Slot0="one:G" />)", r.Save());
}

}  // namespace
}  // namespace OV::Testing
