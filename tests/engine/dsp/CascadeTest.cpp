// Every cascade kernel this machine runs gives, bit for bit, what running each active section
// over the block in turn gives: outputs, signed zeros and non-finite values alike, and the
// sections' states after each block.
#include "engine/dsp/equaliser/CascadeKernels.h"
#include "engine/dsp/equaliser/LinearPhaseEqFilterChain.h"

#include <cstring>
#include <random>

#include <gtest/gtest.h>

namespace OV::Testing {
namespace {

using AudioEngine::AudioAlgorithm::Biquad;
using AudioEngine::AudioAlgorithm::CascadeKernels;
using AudioEngine::AudioAlgorithm::EqChain;

bool SameBits(const std::vector<float>& a, const std::vector<float>& b)
{
    return a.size() == b.size() && (a.empty() || std::memcmp(a.data(), b.data(), a.size() * sizeof(float)) == 0);
}

bool SameStates(const EqChain& a, const EqChain& b)
{
    for (int j = 0; j < EqChain::bandCount; ++j) {
        const Biquad& x = a.sections[static_cast<std::size_t>(j)];
        const Biquad& y = b.sections[static_cast<std::size_t>(j)];
        const double mine[4] = {x.x1, x.x2, x.y1, x.y2};
        const double theirs[4] = {y.x1, y.x2, y.y1, y.y2};
        if (std::memcmp(mine, theirs, sizeof mine) != 0)
            return false;
    }
    return true;
}

struct Random {
    explicit Random(unsigned seed) : engine(seed) {}
    float Uniform(float low, float high) { return std::uniform_real_distribution<float>(low, high)(engine); }
    int Int(int low, int high) { return std::uniform_int_distribution<int>(low, high)(engine); }
    // Mostly noise, sometimes a value that tests the edges of the arithmetic.
    float Sample()
    {
        switch (Int(0, 40)) {
        case 0: return -0.0f;
        case 1: return 1e-41f; // a float denormal
        case 2: return -3e-39f;
        case 3: return 3e37f; // a section's gain can take its float output past the float range
        default: return Uniform(-1.0f, 1.0f);
        }
    }
    std::mt19937 engine;
};

void Design(EqChain& chain, Random& random, int activeMask)
{
    chain.SetSampleRate(random.Int(0, 1) == 0 ? 48000.0f : 96000.0f);
    chain.linearized = random.Int(0, 1) == 0;
    for (int band = 0; band < EqChain::bandCount; ++band) {
        auto& settings = chain.bands[static_cast<std::size_t>(band)];
        settings.active = (activeMask >> band) % 2 == 1;
        settings.type = random.Int(0, 4);
        settings.gain = random.Uniform(-15.0f, 15.0f);
        settings.frequency = random.Uniform(10.0f, 20000.0f);
        settings.qPeaking = random.Uniform(0.2f, 20.0f);
        settings.qShelving = random.Uniform(0.2f, 3.0f);
        settings.qLowHighPass = random.Uniform(0.3f, 2.0f);
        chain.Design(band);
    }
}

// Between blocks a band may be redesigned (its state kept), as a parameter change does.
void MaybeChange(EqChain& chain, EqChain& twin, Random& random)
{
    if (random.Int(0, 2) != 0)
        return;
    const int band = random.Int(0, 5);
    for (EqChain* c : {&chain, &twin}) {
        c->bands[static_cast<std::size_t>(band)].gain = static_cast<float>(band) - 2.5f;
        c->Design(band);
    }
}

TEST(CascadeTest, EveryKernelEqualsTheSectionsOneAfterAnother)
{
    const unsigned seed = 1729u; // fixed, so that a failure repeats
    for (const CascadeKernels* kernels : AudioEngine::AudioAlgorithm::RunnableCascadeKernels()) {
        SCOPED_TRACE(testing::Message() << kernels->name << " kernels, seed " << seed);
        Random random(seed);
        for (int run = 0; run < 160; ++run) {
            // Every subset of the six bands on the left, a random one on the right.
            const int masks[2] = {1 + run % 63, random.Int(1, 63)};
            EqChain fast[2], plain[2];
            for (int c = 0; c < 2; ++c) {
                Design(fast[c], random, masks[c]);
                plain[c] = fast[c];
            }
            const bool inPlace = run % 3 == 0;
            for (int block = 0; block < 12; ++block) {
                const int frames = random.Int(0, 9) == 0 ? random.Int(100, 600) : random.Int(0, 70);
                std::vector<float> in[2], expected[2], out[2];
                for (int c = 0; c < 2; ++c) {
                    in[c].resize(static_cast<std::size_t>(frames));
                    for (float& x : in[c])
                        x = random.Sample();
                    expected[c] = in[c];
                    Biquad* running[EqChain::bandCount];
                    const int k = plain[c].RunningSections(running);
                    for (int j = 0; j < k; ++j)
                        running[j]->Process(expected[c].data(), expected[c].data(), frames);
                    out[c] = inPlace ? in[c] : std::vector<float>(static_cast<std::size_t>(frames));
                }
                Biquad* runningL[EqChain::bandCount];
                Biquad* runningR[EqChain::bandCount];
                const int kL = fast[0].RunningSections(runningL);
                const int kR = fast[1].RunningSections(runningR);
                if (block % 2 == 0) {
                    kernels->stereo(runningL, kL, runningR, kR, (inPlace ? out : in)[0].data(), (inPlace ? out : in)[1].data(),
                                    out[0].data(), out[1].data(), frames);
                } else {
                    kernels->mono(runningL, kL, (inPlace ? out : in)[0].data(), out[0].data(), frames);
                    kernels->mono(runningR, kR, (inPlace ? out : in)[1].data(), out[1].data(), frames);
                }
                for (int c = 0; c < 2; ++c) {
                    ASSERT_TRUE(SameBits(expected[c], out[c]))
                        << (block % 2 == 0 ? "stereo" : "mono") << ", run " << run << ", block " << block << ", channel " << c;
                    ASSERT_TRUE(SameStates(plain[c], fast[c])) << "run " << run << ", block " << block << ", channel " << c;
                    MaybeChange(fast[c], plain[c], random);
                }
            }
        }
    }
}

// A section's result right at the float range's lower edge: FLT_MIN - 2^-150 rounds up to
// FLT_MIN and is kept, a hair less rounds to a subnormal and is flushed, in a cascade's output
// and in what a section hands the next.
TEST(CascadeTest, OutputsAtTheLowerEdgeOfTheFloatRangeAreKeptOrFlushedAlike)
{
    const double edge = 1.0 - 0x1p-24; // FLT_MIN * edge = FLT_MIN - 2^-150
    const double gains[] = {edge, edge - 0x1p-50, edge + 0x1p-50, 1.0, 0.5, -edge};
    const std::vector<float> in = {0x1p-126f, -0x1p-126f, 0x1p-125f, 0.0f, -0.0f, 0x1p-126f, 1.0f, 0x1p-126f};
    const int frames = static_cast<int>(in.size());
    const auto scaling = [](double b0) {
        Biquad section;
        section.SetCoefficients(b0, 0.0, 0.0, 0.0, 0.0);
        return section;
    };
    for (const CascadeKernels* kernels : AudioEngine::AudioAlgorithm::RunnableCascadeKernels()) {
        for (const double gain : gains) {
            // Left: the scaling section alone; right: it, then one that passes its input on.
            Biquad left[1] = {scaling(gain)};
            Biquad right[2] = {scaling(gain), scaling(1.0)};
            Biquad oracle[3] = {left[0], right[0], right[1]};
            std::vector<float> expected[2] = {in, in}, out[2] = {in, in};
            oracle[0].Process(expected[0].data(), expected[0].data(), frames);
            oracle[1].Process(expected[1].data(), expected[1].data(), frames);
            oracle[2].Process(expected[1].data(), expected[1].data(), frames);
            Biquad* l[1] = {&left[0]};
            Biquad* r[2] = {&right[0], &right[1]};
            kernels->stereo(l, 1, r, 2, out[0].data(), out[1].data(), out[0].data(), out[1].data(), frames);
            EXPECT_TRUE(SameBits(expected[0], out[0])) << kernels->name << ", gain " << gain << ", one section";
            EXPECT_TRUE(SameBits(expected[1], out[1])) << kernels->name << ", gain " << gain << ", two sections";
        }
    }
}

}  // namespace
}  // namespace OV::Testing
