// Module trees: set-up order, the default chain, links upward, defaults through SetParameter,
// replacing a child, and the in-place choice.
#include "engine/core/ModuleHost.h"
#include "tests/engine/TestModules.h"

#include <sstream>
#include <tuple>

#include <gtest/gtest.h>

namespace OV::Testing {
namespace {

using AudioEngine::Module;
using AudioEngine::ModuleStructured;

// Two scalers in a default chain: Out = B(A(In)); or no children at all.
template <bool withChildren>
class Chain : public ModuleStructured {
public:
    Chain() : ModuleStructured(ModuleInfo{0, "Chain", ""}) {}
    StereoScale& A() const { return static_cast<StereoScale&>(*GetChild("A")); }
    StereoScale& B() const { return static_cast<StereoScale&>(*GetChild("B")); }

protected:
    void CreateChildren() override
    {
        if (withChildren) {
            AddChild("A", std::make_unique<StereoScale>());
            AddChild("B", std::make_unique<StereoScale>());
        }
    }
    void CreateInputs() override { AddInput("InL"); AddInput("InR"); }
    void CreateOutputs() override { AddOutputHierarchic("OutL"); AddOutputHierarchic("OutR"); }
};

TEST(ModuleTest, DefaultChainRunsChildrenInOrderWithLinkedParameters)
{
    EngineRunner<Chain<true>> runner;
    Chain<true>& chain = runner.Root();
    ASSERT_NE(nullptr, chain.GetParameter("Scale_A"));
    ASSERT_NE(nullptr, chain.GetParameter("Gain_B"));
    EXPECT_EQ(10, chain.GetParameterCount()) << "five parameters of each child, linked upward";

    // Defaults reached each child through its SetParameter, once from the child's own pass and
    // once from the parent's links.
    EXPECT_EQ(10, chain.A().writes);
    EXPECT_EQ(10, chain.B().writes);

    chain.SetParameter("Scale_A", 2.0f);
    chain.SetParameter("Scale_B", -3.0f);
    EXPECT_EQ("Scale", chain.A().WriteName(10));
    const auto out = runner.Run({{1, 2, 3, 4, 5, 6, 7, 8}, std::vector<float>(8, 1.0f)});
    EXPECT_EQ((std::vector<float>{0, 0, 0, 0, -6, -12, -18, -24}), out[0]);
    EXPECT_EQ((std::vector<float>{0, 0, 0, 0, -6, -6, -6, -6}), out[1]);

    std::ostringstream dump;
    runner.Host().Dump(dump);
    EXPECT_NE(std::string::npos, dump.str().find("Chain.B.OutR"));
}

// Counts its destructions.
class Counted : public StereoScale {
public:
    explicit Counted(int& destroyed) : destroyed(destroyed) {}
    ~Counted() override { ++destroyed; }

private:
    int& destroyed;
};

TEST(ModuleTest, ReaddingAChildDestroysTheFirst)
{
    AudioEngine::ModuleStructuredDetails::ModuleMap<Module> children;
    int destroyed = 0;
    children.Add("X", std::make_unique<Counted>(destroyed));
    children.Add("Y", std::make_unique<Counted>(destroyed));
    Module& second = children.Add("X", std::make_unique<Counted>(destroyed));
    EXPECT_EQ(1, destroyed);
    EXPECT_EQ(2, children.Size());
    EXPECT_EQ(&second, children.Find("X"));
    EXPECT_EQ("Y", children.begin()->first) << "the new child goes to the end";
}

TEST(ModuleTest, ModuleWithoutChildrenGivesSilence)
{
    EngineRunner<Chain<false>> runner;
    EXPECT_EQ(std::vector<float>(100, 0.0f), runner.RunDc(1.0f, 100));
}

// An environment with a chosen buffer policy, for the in-place choice.
class PolicyEnvironment : public AudioEngine::EnvironmentLocal {
public:
    explicit PolicyEnvironment(int policy) : policy(policy) {}
    int GetTransactionState() const override { return 0; }
    int GetMaxBlockSize() const override { return 64; }
    float GetSampleRate() const override { return 48000.0f; }
    int GetBufferPolicy() const override { return policy; }
    int GetBlockSize() const override { return 64; }

private:
    int policy;
};

class Copier : public AudioEngine::ModuleBasic {
public:
    explicit Copier(unsigned flags) : ModuleBasic(ModuleInfo{flags, "Copier", ""}) {}
    void BindPorts() override {}

protected:
    void CreateInputs() override { AddInput("In"); }
    void CreateOutputsBuffered() override { AddOutputBuffered("Out"); }
    void CreateOutputsInPlace() override { AddOutputShared("Out", "In"); }
    void CreateParameters() override {}
    void ProcessBlock() override {}
};

TEST(ModuleTest, InPlaceChoiceFollowsPolicyAndFlags)
{
    const std::tuple<int, unsigned, bool> cases[] = {
        {0, 5, false}, {1, 5, true}, {1, 1, false}, {1, 4, false}, {2, 1, true},
        {2, 4, false}, {3, 1, true}, {3, 0, false}, {7, 5, false},
    };
    for (const auto& [policy, flags, inPlace] : cases) {
        PolicyEnvironment environment(policy);
        Copier copier(flags);
        copier.Setup(&environment);
        const bool shared = dynamic_cast<AudioEngine::AudioContainers::OutputInPlace*>(copier.GetOutput("Out")) != nullptr;
        EXPECT_EQ(inPlace, shared) << "policy " << policy << " flags " << flags;
    }
}

}  // namespace
}  // namespace OV::Testing
