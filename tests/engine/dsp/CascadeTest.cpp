// The cascade runs its sections as a pipeline; its output must be exactly that of running
// each active section over the block in turn.
#include "engine/dsp/equaliser/LinearPhaseEqFilterChain.h"

#include <random>

#include <gtest/gtest.h>

namespace OV::Testing {
namespace {

using AudioEngine::AudioAlgorithm::Biquad;
using AudioEngine::AudioAlgorithm::EqChain;

TEST(CascadeTest, PipelinedCascadeEqualsSectionsOneAfterAnother)
{
    const unsigned seed = 1729u;  // fixed, so that a failure repeats
    SCOPED_TRACE(testing::Message() << "seed " << seed);
    std::mt19937 random(seed);
    std::uniform_real_distribution<float> sample(-1.0f, 1.0f);
    std::uniform_int_distribution<int> length(0, 70);
    for (int run = 0; run < 64; ++run) {
        EqChain chain;
        chain.SetSampleRate(48000.0f);
        chain.linearized = run % 2 == 0;
        const int activeMask = run; // every subset of the six bands
        for (int band = 0; band < EqChain::bandCount; ++band) {
            auto& settings = chain.bands[static_cast<std::size_t>(band)];
            settings.active = (activeMask >> band) % 2 == 1;
            settings.type = band % 5;
            settings.gain = 12.0f * sample(random);
            settings.frequency = 60.0f * static_cast<float>(band + 1) * (2.0f + sample(random));
            chain.Design(band);
        }
        // The oracle: the plain sections, each over the whole block.
        std::array<Biquad, EqChain::bandCount> oracle = chain.sections;
        for (int block = 0; block < 20; ++block) {
            std::vector<float> signal(static_cast<std::size_t>(length(random)));
            for (float& x : signal)
                x = sample(random);
            std::vector<float> expected = signal;
            for (int band = 0; band < EqChain::bandCount; ++band) {
                if (chain.bands[static_cast<std::size_t>(band)].active)
                    oracle[static_cast<std::size_t>(band)].Process(expected.data(), expected.data(), static_cast<int>(expected.size()));
            }
            const std::array<Biquad, EqChain::bandCount> before = chain.sections;
            std::vector<float> out(signal.size());
            chain.Process(signal.data(), out.data(), static_cast<int>(signal.size()));
            ASSERT_EQ(expected, out) << "mask " << activeMask << ", block " << block;
            // In place, from the same state, gives the same.
            chain.sections = before;
            chain.Process(signal.data(), signal.data(), static_cast<int>(signal.size()));
            ASSERT_EQ(expected, signal) << "in place, mask " << activeMask << ", block " << block;
        }
    }
}

}  // namespace
}  // namespace OV::Testing
