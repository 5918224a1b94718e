// The audio entries of the process table: tempo step, processor flags, channel folding.
#include "shell/framework/Process.h"
#include "tests/shell/FakeRoles.h"
#include "tests/support/TestHost.h"

#include <xmmintrin.h>

#include <cmath>

#include <gtest/gtest.h>

namespace OV::Testing {
namespace {

using CFW::HLAFramework::Process;

// out0 = 2 * in0; out1 = -3 * in1 (or -3 * in0 for a mono input).
void Render(float** in, float** out, int frames, int inputs, int outputs)
{
    for (int i = 0; i < frames; ++i) {
        const float first = in[0][i];
        const float second = inputs > 1 ? in[1][i] : first;
        out[0][i] = 2.0f * first;
        if (outputs > 1)
            out[1][i] = -3.0f * second;
    }
}

struct Fixture {
    Fixture(int engineInputs, int engineOutputs, bool withDocument = true)
        : audio(new FakeAudio(engineInputs, engineOutputs)), document(withDocument ? new FakeDocument : nullptr)
    {
        audio->render = [=](float** in, float** out, int frames) {
            Render(in, out, frames, engineInputs, engineOutputs);
        };
        std::vector<CFW::DocView::Interface*> roles = {audio};
        if (document != nullptr)
            roles.push_back(document);
        process = std::make_unique<Process>(host.Callbacks(), new FakeComponent(roles), 0, 2, 2);
        table = HLA2::Process::ToTable(process.get());
    }

    TestHost host;
    FakeAudio* audio;
    FakeDocument* document;
    std::unique_ptr<Process> process;
    HLA2Process* table;
};

TEST(ProcessAudioTest, ChannelsFoldBetweenOneAndTwo)
{
    struct Case {
        int engineIn, engineOut, hostIn, hostOut;
        // Expected host outputs from host inputs left (l) and right (r; equal to l for one input).
        float (*out0)(float l, float r);
        float (*out1)(float l, float r);
    };
    const Case cases[] = {
        {2, 2, 2, 2, [](float l, float) { return 2 * l; }, [](float, float r) { return -3 * r; }},
        {2, 2, 1, 1, [](float l, float) { return (2 * l + -3 * l) * 0.5f; }, nullptr},
        {1, 1, 2, 2, [](float l, float r) { return 2 * ((l + r) * 0.5f); }, [](float l, float r) { return 2 * ((l + r) * 0.5f); }},
        {1, 1, 1, 1, [](float l, float) { return 2 * l; }, nullptr},
        {1, 2, 2, 1, [](float l, float r) { return (2 * ((l + r) * 0.5f) + -3 * ((l + r) * 0.5f)) * 0.5f; }, nullptr},
        {2, 1, 1, 2, [](float l, float) { return 2 * l; }, [](float l, float) { return 2 * l; }},
    };
    constexpr int frames = 37;
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << "engine " << c.engineIn << "/" << c.engineOut << ", host "
                                        << c.hostIn << "/" << c.hostOut);
        Fixture f(c.engineIn, c.engineOut);
        f.table->SetBlockSize(f.table, frames);
        f.table->SetHostInputCount(f.table, c.hostIn);
        f.table->SetHostOutputCount(f.table, c.hostOut);

        std::vector<float> inL(frames), inR(frames), outL(frames, 99.0f), outR(frames, 99.0f);
        for (int i = 0; i < frames; ++i) {
            inL[i] = std::sin(0.3f * static_cast<float>(i));
            inR[i] = 0.01f * static_cast<float>(i) - 0.2f;
        }
        float* inputs[2] = {inL.data(), inR.data()};
        float* outputs[2] = {outL.data(), outR.data()};
        f.table->ProcessSeparate(f.table, inputs, outputs, frames, nullptr);

        ASSERT_EQ(std::vector<int>{frames}, f.audio->seenFrames);
        if (c.engineIn == 2 && c.hostIn == 1) {
            EXPECT_EQ(inL.data(), f.audio->seenInputs[0]);
            EXPECT_EQ(inL.data(), f.audio->seenInputs[1]) << "one host input feeds both engine inputs";
        }
        for (int i = 0; i < frames; ++i) {
            const float r = c.hostIn > 1 ? inR[i] : inL[i];
            EXPECT_EQ(c.out0(inL[i], r), outL[i]) << i;
            if (c.out1 != nullptr)
                EXPECT_EQ(c.out1(inL[i], r), outR[i]) << i;
            else
                EXPECT_EQ(99.0f, outR[i]) << "an unused host channel stays as it was";
        }
    }
}

TEST(ProcessAudioTest, LongerBlocksThanAnnouncedFoldInPieces)
{
    Fixture f(2, 2);
    f.table->SetBlockSize(f.table, 4);
    f.table->SetHostInputCount(f.table, 1);
    f.table->SetHostOutputCount(f.table, 1);
    std::vector<float> in(10), out(10);
    for (int i = 0; i < 10; ++i)
        in[i] = static_cast<float>(i + 1);
    float* inputs[1] = {in.data()};
    float* outputs[1] = {out.data()};
    f.table->ProcessSeparate(f.table, inputs, outputs, 10, nullptr);
    EXPECT_EQ((std::vector<int>{4, 4, 2}), f.audio->seenFrames);
    for (int i = 0; i < 10; ++i)
        EXPECT_EQ(-0.5f * in[i], out[i]);
}

TEST(ProcessAudioTest, HostWithoutChannelCountsGetsBuffersBack)
{
    Fixture f(2, 2);
    f.table->SetBlockSize(f.table, 8);
    std::vector<float> left(8, 1.0f), right(8, 2.0f);
    float* channels[2] = {left.data(), right.data()};
    f.table->ProcessReplacing(f.table, channels, 8, nullptr);
    f.table->SetHostInputCount(f.table, 2);
    f.table->ProcessReplacing(f.table, channels, 8, nullptr);
    EXPECT_TRUE(f.audio->seenFrames.empty());
    EXPECT_EQ(std::vector<float>(8, 1.0f), left);
    EXPECT_EQ(std::vector<float>(8, 2.0f), right);
    EXPECT_EQ(2u, f.audio->tempos.size()) << "the tempo step runs all the same";
}

TEST(ProcessAudioTest, ProcessReplacingWorksInPlace)
{
    Fixture f(2, 2);
    f.table->SetBlockSize(f.table, 3);
    f.table->SetHostInputCount(f.table, 2);
    f.table->SetHostOutputCount(f.table, 2);
    std::vector<float> left = {1, 2, 3}, right = {4, 5, 6};
    float* channels[2] = {left.data(), right.data()};
    f.table->ProcessReplacing(f.table, channels, 3, nullptr);
    EXPECT_EQ((std::vector<float>{2, 4, 6}), left);
    EXPECT_EQ((std::vector<float>{-12, -15, -18}), right);
}

TEST(ProcessAudioTest, TempoIsQueuedOnlyWhenItChanges)
{
    Fixture f(2, 2);
    const float nan = std::nanf("");
    struct Step {
        float tempo;
        bool queued;
    };
    // The first block always queues, since the last tempo starts at -1; NaN never equals.
    const Step steps[] = {{120, true}, {120, false}, {90.5f, true}, {nan, true}, {nan, true}, {90.5f, true}, {90.5f, false}};
    std::size_t expected = 0;
    for (const Step& step : steps) {
        f.host.SetTempo(step.tempo);
        f.table->ProcessSeparate(f.table, nullptr, nullptr, 0, nullptr);
        expected += step.queued ? 1 : 0;
        ASSERT_EQ(expected, f.document->queuedTempos.size());
    }
    EXPECT_EQ(120.0f, f.document->queuedTempos[0]);
    EXPECT_EQ(std::vector<int>(expected, 0), f.document->sources) << "the host's tempo is source 0";
    EXPECT_EQ(std::size(steps), f.audio->tempos.size()) << "the transport reaches the audio role every block";
    EXPECT_EQ(static_cast<int>(std::size(steps)), f.host.TransportRequests());
}

TEST(ProcessAudioTest, BlocksLeaveFlushToZeroAndDenormalsAreZeroSet)
{
    Fixture f(2, 2);
    const unsigned saved = _mm_getcsr();
    _mm_setcsr(saved & ~0x8040u);
    f.table->ProcessSeparate(f.table, nullptr, nullptr, 0, nullptr);
    const unsigned after = _mm_getcsr();
    _mm_setcsr(saved);
    EXPECT_EQ(0x8040u, after & 0x8040u);
}

TEST(ProcessAudioTest, BlockSizeAndRateReachTheAudioRoleOnce)
{
    Fixture f(2, 2);
    f.table->SetBlockSize(f.table, 256);
    f.table->SetBlockSize(f.table, 256);
    f.table->SetBlockSize(f.table, 64);
    EXPECT_EQ((std::vector<unsigned>{256, 64}), f.audio->blockSizes);
    EXPECT_EQ(1, f.table->SetSampleRate(f.table, 96000.0f));
    EXPECT_EQ(std::vector<float>{96000.0f}, f.audio->rates);
    EXPECT_EQ(123, f.table->GetLatency(f.table));
}

TEST(ProcessAudioTest, SuspendStopsAudioOnlyAfterResume)
{
    Fixture f(2, 2);
    f.table->Suspend(f.table);
    EXPECT_EQ(0, f.audio->stops);
    EXPECT_EQ(1, f.table->Resume(f.table));
    f.table->Suspend(f.table);
    f.table->Suspend(f.table);
    EXPECT_EQ(1, f.audio->stops);

    // A process destroyed while resumed stops its audio on the way out.
    int stopsAtDestruction = 0;
    {
        Fixture g(2, 2);
        g.audio->stopCounter = &stopsAtDestruction;
        g.table->Resume(g.table);
    }
    EXPECT_EQ(1, stopsAtDestruction);
}

}  // namespace
}  // namespace OV::Testing
