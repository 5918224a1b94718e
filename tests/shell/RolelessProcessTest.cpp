// Every entry of the process table over a component without roles answers as it does for a
// missing role.
#include "shell/framework/Process.h"
#include "tests/shell/FakeRoles.h"
#include "tests/support/TestHost.h"

#include <cstring>

#include <gtest/gtest.h>

namespace OV::Testing {
namespace {

TEST(RolelessProcessTest, EveryEntryAnswersHarmlessly)
{
    TestHost host;
    CFW::HLAFramework::Process object(host.Callbacks(), new FakeComponent({}), 0, 2, 2);
    HLA2Process* p = HLA2::Process::ToTable(&object);
    char text[64];
    const auto untouched = [&] { return std::string(text, 3) == "###"; };
    const auto fill = [&] { std::memset(text, '#', sizeof text); };

    fill();
    p->GetName(p, text, sizeof text);
    EXPECT_STREQ("Fake Component", text);
    p->GetVendor(p, text, sizeof text);
    EXPECT_STREQ("Orvane Studio Production", text);
    EXPECT_EQ(0, p->GetPlugInType(p));
    EXPECT_EQ(2, p->GetInputCount(p));
    EXPECT_EQ(2, p->GetOutputCount(p));
    p->SetHostInputCount(p, 2);
    p->SetHostOutputCount(p, 2);
    p->Start(p);
    EXPECT_EQ(1, p->Stop(p));
    EXPECT_EQ(0, p->Stop(p));
    p->SetBlockSize(p, 64);
    EXPECT_EQ(0, p->SetSampleRate(p, 48000.0f));
    EXPECT_EQ(1, p->Resume(p));
    p->Suspend(p);
    EXPECT_EQ(0, p->GetLatency(p));

    float left[4] = {1, 2, 3, 4};
    float right[4] = {5, 6, 7, 8};
    float* channels[2] = {left, right};
    p->ProcessReplacing(p, channels, 4, nullptr);
    p->ProcessSeparate(p, channels, channels, 4, nullptr);
    EXPECT_EQ(3.0f, left[2]);
    EXPECT_EQ(8.0f, right[3]);
    EXPECT_EQ(2, host.TransportRequests()) << "the tempo step runs without an audio role";

    EXPECT_EQ(0, p->SendMIDI(p, nullptr, 0));
    EXPECT_EQ(0, p->GetParameterCount(p));
    fill();
    p->GetParameterName(p, 0, text, sizeof text);
    p->GetParameterDisplay(p, 0, text, sizeof text);
    p->GetParameterDisplayFor(p, 0, 0.5f, text, sizeof text);
    EXPECT_TRUE(untouched());
    EXPECT_EQ(0.0f, p->ToNormalized(p, 0, 3.0f));
    EXPECT_EQ(0.0f, p->GetParameterValue(p, 0));
    EXPECT_EQ(0.0f, p->GetParameterNormalized(p, 0));
    EXPECT_EQ(0, p->SetParameterValue(p, 0, 1.0f));
    EXPECT_EQ(0, p->SetParameterNormalized(p, 0, 1.0f));

    const char chunk[] = "<Bank><Program/></Bank>";
    p->SetBankChunk(p, chunk, sizeof chunk);
    void* out = &left;
    EXPECT_EQ(0, p->GetBankChunk(p, &out));
    EXPECT_EQ(static_cast<void*>(&left), out);
    p->FreeBankChunk(p);
    p->SetProgramChunk(p, chunk, sizeof chunk);
    EXPECT_EQ(0, p->GetProgramChunk(p, &out));
    p->FreeProgramChunk(p);

    EXPECT_EQ(1, p->GetProgramCount(p));
    EXPECT_EQ(0, p->SetProgram(p, 0));
    EXPECT_EQ(1, p->GetProgram(p));
    p->SetProgramName(p, 0, "Name");
    fill();
    p->GetProgramName(p, 0, text, sizeof text);
    EXPECT_TRUE(untouched());
    EXPECT_EQ(0, p->CopyProgram(p, 0, 0));
    EXPECT_EQ(nullptr, p->GetExtension(p, text));
    EXPECT_TRUE(host.Notifications().empty());
    EXPECT_EQ(1, p->Resume(p));  // and destroyed while resumed
}

}  // namespace
}  // namespace OV::Testing
