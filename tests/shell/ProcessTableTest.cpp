// The non-audio entries of the process table over roles that record what reaches them.
#include "shell/framework/Process.h"
#include "tests/shell/FakeRoles.h"
#include "tests/support/TestHost.h"

#include <cstring>

#include <gtest/gtest.h>

namespace OV::Testing {
namespace {

using CFW::HLAFramework::Process;

struct Fixture {
    // The buffer after `entry` wrote into its first `size` bytes.
    std::string Text(void (*entry)(HLA2Process*, int, char*, int), int index, int size)
    {
        std::string buffer(static_cast<std::size_t>(std::max(size, 1)) + 4, '#');
        entry(table, index, buffer.data(), size);
        return buffer;
    }

    TestHost host;
    FakeAutomation* automation = new FakeAutomation;
    FakePrograms* programs = new FakePrograms;
    FakeDocument* document = new FakeDocument;
    Process process{host.Callbacks(), new FakeComponent({document, automation, programs}), 0, 2, 2};
    HLA2Process* table = HLA2::Process::ToTable(&process);
};

TEST(ProcessTableTest, TextEntriesCopyWithinTheBuffer)
{
    Fixture f;
    struct Case {
        const char* what;
        void (*entry)(HLA2Process*, int, char*, int);
        int index;
        int size;
        std::string expected; // the buffer after the call
    };
    const Case cases[] = {
        {"whole name", f.table->GetParameterName, 1, 32, std::string("Slot number 1\0", 14)},
        {"cut name", f.table->GetParameterName, 2, 5, std::string("Slot\0####", 9)},
        {"one byte", f.table->GetParameterName, 0, 1, std::string("\0####", 5)},
        {"no room", f.table->GetParameterName, 0, 0, "#####"},
        {"bad index", f.table->GetParameterName, 3, 8, "############"},
        {"past the names", f.table->GetParameterDisplay, 5, 16, std::string("display 5\0", 10)},
        {"display", f.table->GetParameterDisplay, 2, 16, std::string("display 2\0", 10)},
        {"program", f.table->GetProgramName, 1, 16, std::string("Second\0", 7)},
        {"no program", f.table->GetProgramName, 2, 4, "########"},
    };
    for (const Case& c : cases) {
        const std::string buffer = f.Text(c.entry, c.index, c.size);
        EXPECT_EQ(c.expected, buffer.substr(0, c.expected.size())) << c.what;
    }

    char name[64] = {};
    f.table->GetVendor(f.table, name, 7);
    EXPECT_STREQ("Orvane", name);
    f.table->GetParameterDisplayFor(f.table, 1, 42.0f, name, sizeof name);
    EXPECT_STREQ("1:42", name);
}

// Values go to the automation for every slot: it answers for those past the named ones. (The
// named ones are read through the table in the integration tests.)
TEST(ProcessTableTest, ParameterEntriesForwardEverySlot)
{
    Fixture f;
    EXPECT_EQ(6.0f, f.table->GetParameterValue(f.table, 3));
    EXPECT_EQ(-0.5f, f.table->ToNormalized(f.table, -1, 5.0f));

    EXPECT_EQ(1, f.table->SetParameterValue(f.table, 0, 7.5f));
    EXPECT_EQ(1, f.table->SetParameterNormalized(f.table, 1, 0.25f));
    EXPECT_EQ(0, f.table->SetParameterNormalized(f.table, 2, 0.5f)) << "a refused queue answers 0";
    EXPECT_EQ(1, f.table->SetParameterValue(f.table, 3, 1.0f));
    const std::vector<std::pair<int, float>> queued = {{0, 7.5f}, {1, 0.25f}, {2, 0.5f}, {3, 1.0f}};
    EXPECT_EQ(queued, f.automation->queued);
}

TEST(ProcessTableTest, ListenerReportsAllButTheHostsOwnChanges)
{
    Fixture f;
    EXPECT_EQ(0, f.table->Stop(f.table));
    f.table->Start(f.table);
    f.table->Start(f.table);
    EXPECT_EQ(1, f.automation->listenerSets);
    ASSERT_EQ(&f.process, dynamic_cast<Process*>(f.automation->listener));

    for (int source : {0, 1, 2, 3, 5})
        f.automation->listener->OnSlotChanged(source, 10.0f + static_cast<float>(source), 0.5f, source);
    const std::vector<TestHost::Notification> heard = f.host.Notifications();
    ASSERT_EQ(4u, heard.size());
    for (const TestHost::Notification& notification : heard)
        EXPECT_NE(3, notification.slot) << "source 3 is the host itself";
    EXPECT_EQ(15.0f, heard.back().plain);

    EXPECT_EQ(1, f.table->Stop(f.table));
    EXPECT_EQ(0, f.table->Stop(f.table));
    EXPECT_EQ(&f.process, dynamic_cast<Process*>(f.automation->listener)) << "Stop leaves the listener attached";
    f.table->Start(f.table);
    EXPECT_EQ(2, f.automation->listenerSets);
}

TEST(ProcessTableTest, CapabilityFlagIsAskedOnceAndHandedToTheDocument)
{
    for (bool capable : {false, true}) {
        TestHost host;
        host.SetCapability(capable);
        FakeDocument* document = new FakeDocument;
        Process process(host.Callbacks(), new FakeComponent({document}), 0, 2, 2);
        EXPECT_EQ(1, host.CapabilityRequests());
        EXPECT_EQ(std::vector<bool>{capable}, document->hostFlags);
    }
}

TEST(ProcessTableTest, ChunksAreBareXmlOfThePrograms)
{
    Fixture f;
    void* text = nullptr;
    const std::string bank = "<?xml version=\"1.0\" encoding=\"UTF-8\" ?>"
                             "<Bank><Program Gain=\"1.5\" /><Program Gain=\"-3\" /></Bank>";
    ASSERT_EQ(static_cast<int>(bank.size()), f.table->GetBankChunk(f.table, &text));
    EXPECT_EQ(bank, std::string(static_cast<const char*>(text), bank.size()));

    f.programs->current = 1;
    const std::string program = "<?xml version=\"1.0\" encoding=\"UTF-8\" ?><Program Gain=\"-3\" />";
    ASSERT_EQ(static_cast<int>(program.size()), f.table->GetProgramChunk(f.table, &text));
    EXPECT_EQ(program, std::string(static_cast<const char*>(text), program.size()));
    f.table->FreeProgramChunk(f.table);

    // Setting a bank back restores both programs; the size counts, a zero byte also ends it.
    const std::string changed = "<Bank><Program Gain=\"6\" /><Program Gain=\"7\" /><Program Gain=\"8\" /></Bank>";
    f.table->SetBankChunk(f.table, changed.c_str(), static_cast<int>(changed.size()));
    EXPECT_STREQ("6", f.programs->elements[0].Attribute("Gain"));
    EXPECT_STREQ("7", f.programs->elements[1].Attribute("Gain"));
    f.table->SetBankChunk(f.table, bank.c_str(), static_cast<int>(bank.size()) + 1);
    EXPECT_STREQ("1.5", f.programs->elements[0].Attribute("Gain"));

    const std::string one = "<Program Gain=\"0.5\" />";
    f.table->SetProgramChunk(f.table, one.c_str(), static_cast<int>(one.size()));
    EXPECT_STREQ("0.5", f.programs->elements[1].Attribute("Gain")) << "a program chunk goes to the current program";

    // Text that is not a whole document reaches no program at all.
    const int loads = f.programs->loads;
    for (const std::string& bad : {std::string(""), std::string("<Bank>"), std::string("<Bank><Program></Bank>"),
                                   std::string("garbage"), bank.substr(0, bank.size() / 2)}) {
        f.table->SetBankChunk(f.table, bad.c_str(), static_cast<int>(bad.size()));
        f.table->SetProgramChunk(f.table, bad.c_str(), static_cast<int>(bad.size()));
    }
    f.table->SetBankChunk(f.table, nullptr, 10);
    f.table->SetBankChunk(f.table, bank.c_str(), -5);
    EXPECT_EQ(loads, f.programs->loads);
    EXPECT_STREQ("1.5", f.programs->elements[0].Attribute("Gain"));
}

TEST(ProcessTableTest, ProgramEntriesStayWithinTheProgramCount)
{
    Fixture f;
    EXPECT_EQ(2, f.table->GetProgramCount(f.table));
    EXPECT_EQ(1, f.table->SetProgram(f.table, 1));
    EXPECT_EQ(1, f.table->GetProgram(f.table));
    EXPECT_EQ(0, f.table->SetProgram(f.table, 2));
    EXPECT_EQ(1, f.table->GetProgram(f.table));

    f.table->SetProgramName(f.table, 0, "Renamed");
    f.table->SetProgramName(f.table, 5, "Nowhere");
    f.table->SetProgramName(f.table, 1, nullptr);
    EXPECT_EQ((std::vector<std::string>{"Renamed", "Second"}), f.programs->names);

    EXPECT_EQ(1, f.table->CopyProgram(f.table, 1, 0));
    EXPECT_STREQ("-3", f.programs->elements[0].Attribute("Gain"));
    EXPECT_EQ(0, f.table->CopyProgram(f.table, 0, 2));
}

}  // namespace
}  // namespace OV::Testing
