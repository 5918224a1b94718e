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

// A process over an audio role (FakeAudio's arithmetic) and, unless told not, a document.
struct Fixture {
    explicit Fixture(int engineInputs = 2, int engineOutputs = 2, int* stopCounter = nullptr)
        : audio(new FakeAudio(engineInputs, engineOutputs, stopCounter != nullptr ? stopCounter : &stops)),
          process(host.Callbacks(), new FakeComponent({audio, document}), 0, 2, 2), table(HLA2::Process::ToTable(&process))
    {
    }
    void SetUp(unsigned block, int hostInputs, int hostOutputs)
    {
        table->SetBlockSize(table, block);
        table->SetHostInputCount(table, hostInputs);
        table->SetHostOutputCount(table, hostOutputs);
    }

    TestHost host;
    int stops = 0;
    FakeAudio* audio;
    FakeDocument* document = new FakeDocument;
    Process process;
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
        f.SetUp(frames, c.hostIn, c.hostOut);
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
            EXPECT_EQ(c.out1 != nullptr ? c.out1(inL[i], r) : 99.0f, outR[i]) << i << " (an unused host channel stays as it was)";
        }
    }
}

TEST(ProcessAudioTest, LongerBlocksThanAnnouncedFoldInPieces)
{
    Fixture f;
    f.SetUp(4, 1, 1);
    std::vector<float> in = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10}, out(10);
    float* inputs[1] = {in.data()};
    float* outputs[1] = {out.data()};
    f.table->ProcessSeparate(f.table, inputs, outputs, 10, nullptr);
    EXPECT_EQ((std::vector<int>{4, 4, 2}), f.audio->seenFrames);
    for (int i = 0; i < 10; ++i)
        EXPECT_EQ(-0.5f * in[i], out[i]);
}

TEST(ProcessAudioTest, ProcessReplacingWorksInPlaceOnceTheHostGaveBothChannelCounts)
{
    Fixture f;
    f.table->SetBlockSize(f.table, 3);
    std::vector<float> left = {1, 2, 3}, right = {4, 5, 6};
    float* channels[2] = {left.data(), right.data()};
    f.table->ProcessReplacing(f.table, channels, 3, nullptr);
    f.table->SetHostInputCount(f.table, 2);
    f.table->ProcessReplacing(f.table, channels, 3, nullptr);
    EXPECT_TRUE(f.audio->seenFrames.empty()) << "without both counts the host gets its buffers back";
    EXPECT_EQ((std::vector<float>{1, 2, 3}), left);
    EXPECT_EQ((std::vector<float>{4, 5, 6}), right);
    EXPECT_EQ(2u, f.audio->tempos.size()) << "the tempo step runs all the same";

    f.table->SetHostOutputCount(f.table, 2);
    f.table->ProcessReplacing(f.table, channels, 3, nullptr);
    EXPECT_EQ((std::vector<float>{2, 4, 6}), left);
    EXPECT_EQ((std::vector<float>{-12, -15, -18}), right);
}

TEST(ProcessAudioTest, TempoIsQueuedOnlyWhenItChanges)
{
    Fixture f;
    const float nan = std::nanf("");
    // Tempo and whether it is queued. The first block always queues, since the last tempo
    // starts at -1; NaN never equals.
    const std::pair<float, bool> steps[] = {{120, true}, {120, false}, {90.5f, true}, {nan, true},
                                            {nan, true}, {90.5f, true}, {90.5f, false}};
    std::size_t expected = 0;
    for (const auto& [tempo, queued] : steps) {
        f.host.SetTempo(tempo);
        f.table->ProcessSeparate(f.table, nullptr, nullptr, 0, nullptr);
        expected += queued ? 1 : 0;
        ASSERT_EQ(expected, f.document->queuedTempos.size());
    }
    EXPECT_EQ(120.0f, f.document->queuedTempos[0]);
    EXPECT_EQ(std::vector<int>(expected, 0), f.document->sources) << "the host's tempo is source 0";
    EXPECT_EQ(std::size(steps), f.audio->tempos.size()) << "the transport reaches the audio role every block";
    EXPECT_EQ(static_cast<int>(std::size(steps)), f.host.TransportRequests());
}

TEST(ProcessAudioTest, BlocksLeaveFlushToZeroAndDenormalsAreZeroSet)
{
    Fixture f;
    const unsigned saved = _mm_getcsr();
    _mm_setcsr(saved & ~0x8040u);
    f.table->ProcessSeparate(f.table, nullptr, nullptr, 0, nullptr);
    const unsigned after = _mm_getcsr();
    _mm_setcsr(saved);
    EXPECT_EQ(0x8040u, after & 0x8040u);
}

TEST(ProcessAudioTest, SettingsReachTheAudioRoleOnceAndSuspendStopsItOnlyAfterResume)
{
    int stopsAtDestruction = 0;
    {
        Fixture f;
        for (unsigned block : {256u, 256u, 64u})
            f.table->SetBlockSize(f.table, block);
        EXPECT_EQ((std::vector<unsigned>{256, 64}), f.audio->blockSizes);
        EXPECT_EQ(1, f.table->SetSampleRate(f.table, 96000.0f));
        EXPECT_EQ(std::vector<float>{96000.0f}, f.audio->rates);

        f.table->Suspend(f.table);
        EXPECT_EQ(0, f.stops);
        EXPECT_EQ(1, f.table->Resume(f.table));
        f.table->Suspend(f.table);
        f.table->Suspend(f.table);
        EXPECT_EQ(1, f.stops);
        // A process destroyed while resumed stops its audio on the way out.
        Fixture g(2, 2, &stopsAtDestruction);
        g.table->Resume(g.table);
    }
    EXPECT_EQ(1, stopsAtDestruction);
}

}  // namespace
}  // namespace OV::Testing
