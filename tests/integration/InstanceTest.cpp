// A whole instance through the library's exports: latency levels, the equaliser heard as set
// by a program chunk, chunk round trips and hostile chunks, and many instances in a row.
#include "platform/RegistryKey.h"
#include "tests/engine/dsp/EqOracle.h"
#include "tests/integration/InstanceRunner.h"

#include <dirent.h>
#include <tinyxml.h>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <cstdlib>
#include <functional>
#include <thread>

#include <gtest/gtest.h>

namespace OV::Testing {
namespace {

class InstanceTest : public testing::Test {
protected:
    void SetUp() override { setenv("XDG_CONFIG_HOME", config.Path().c_str(), 1); }

    void SetLatencyLevel(int level)
    {
        ASSERT_TRUE(Platform::RegistryKey("Varnel4 Lin Phase EQ", "Orvane Studio", 0)
                        .WriteString("Main.LatencyLevel", std::to_string(level)));
    }

    ScratchFolder config;
};

std::size_t Peak(const std::vector<float>& signal)
{
    std::size_t peak = 0;
    for (std::size_t i = 1; i < signal.size(); ++i) {
        if (std::fabs(signal[i]) > std::fabs(signal[peak]))
            peak = i;
    }
    return peak;
}

// Applies `edit` to every element of the given name in a chunk's text.
std::string EditElements(const std::string& text, const char* name, const std::function<void(TiXmlElement&)>& edit)
{
    TiXmlDocument document;
    document.Parse(text.c_str());
    std::function<void(TiXmlElement*)> walk = [&](TiXmlElement* element) {
        for (; element != nullptr; element = element->NextSiblingElement()) {
            if (std::string(element->Value()) == name)
                edit(*element);
            walk(element->FirstChildElement());
        }
    };
    walk(document.RootElement());
    TiXmlPrinter printer;
    document.Accept(&printer);
    return printer.Str();
}

TEST_F(InstanceTest, LatencyLevelsAreReportedAndHeard)
{
    const int expected[3] = {4, 132, 18564};
    for (int level = 0; level < 3; ++level) {
        SetLatencyLevel(level);
        const LibraryCopy copy;
        InstanceRunner runner(copy);
        EXPECT_EQ(expected[level], runner.Process()->GetLatency(runner.Process())) << level;
        std::vector<float> impulse(static_cast<std::size_t>(expected[level]) + 3000, 0.0f);
        impulse[0] = 1.0f;
        const auto out = runner.Run(impulse, impulse);
        EXPECT_EQ(static_cast<std::size_t>(expected[level]), Peak(out[0])) << "level " << level;
        EXPECT_EQ(out[0], out[1]);
    }
}

TEST_F(InstanceTest, BandsSetByAProgramChunkAreHeardInBothChannelModes)
{
    SetLatencyLevel(0);
    constexpr double rate = 48000.0;
    const Section peak = OracleSection(OraclePeak, 9.0, 1000.0, 2.0, rate);
    const Section shelf = OracleSection(OracleHiShelf, -6.0, 5000.0, 0.7, rate);
    for (const char* mode : {"L/R", "M/S"}) {
        SCOPED_TRACE(mode);
        const LibraryCopy copy;
        InstanceRunner runner(copy);
        runner.SetProgramChunk(EditElements(runner.GetProgramChunk(), "Module", [&](TiXmlElement& module) {
            module.SetAttribute("ChannelMode", mode);
            module.SetAttribute("LM_Band1Active", "1");
            module.SetAttribute("LM_Band1Mode", "Peaking");
            module.SetAttribute("LM_Band1Gain", "9");
            module.SetAttribute("LM_Band1Hz", "1000");
            module.SetAttribute("LM_Band1Q_Peaking", "2");
            module.SetAttribute("RS_Band2Active", "1");
            module.SetAttribute("RS_Band2Mode", "HighShelf");
            module.SetAttribute("RS_Band2Gain", "-6");
            module.SetAttribute("RS_Band2Hz", "5000");
            module.SetAttribute("RS_Band2Q_Shelving", "0.7");
        }));
        runner.GetProgramChunk(); // waits until the worker has loaded it
        runner.Run(std::vector<float>(1024, 0.0f), std::vector<float>(1024, 0.0f));

        // Left and right impulses of the same or opposite sign: in L/R the first set filters
        // left and the second right; in M/S the first filters mid (L = R) and the second side.
        const bool midSide = std::string(mode) == "M/S";
        for (float sign : {1.0f, -1.0f}) {
            std::vector<float> left(16384, 0.0f), right(16384, 0.0f);
            left[0] = 0.5f;
            right[0] = 0.5f * sign;
            const auto out = runner.Run(left, right);
            const std::vector<float> responseL(out[0].begin() + 4, out[0].end());
            const std::vector<float> responseR(out[1].begin() + 4, out[1].end());
            for (double f : TestFrequencies(25)) {
                const double expectedL = midSide ? SectionMagnitude(sign > 0 ? peak : shelf, f, rate) : SectionMagnitude(peak, f, rate);
                const double expectedR = midSide ? expectedL : SectionMagnitude(shelf, f, rate);
                EXPECT_NEAR(Db(0.5 * expectedL), Db(MeasuredMagnitude(responseL, f, rate)), 0.01) << f << " Hz, sign " << sign;
                EXPECT_NEAR(Db(0.5 * expectedR), Db(MeasuredMagnitude(responseR, f, rate)), 0.01) << f << " Hz, sign " << sign;
            }
            runner.Run(std::vector<float>(16384, 0.0f), std::vector<float>(16384, 0.0f));
        }
    }
}

// A NaN or an infinity from the host is silence at the entry: nothing keeps it, and the output
// is that of zeros in its place, bit for bit, in every latency level and channel mode.
TEST_F(InstanceTest, NonFiniteInputIsSilenceAtTheEntry)
{
    const int latency[3] = {4, 132, 18564};
    for (int level = 0; level < 3; ++level) {
        SetLatencyLevel(level);
        const LibraryCopy copy;
        for (const char* mode : {"L/R", "M/S"}) {
            SCOPED_TRACE(std::string(mode) + ", level " + std::to_string(level));
            const int frames = latency[level] + 12000;
            std::vector<float> left(static_cast<std::size_t>(frames)), right(left);
            std::uint32_t seed = 99;
            for (int i = 0; i < frames; ++i) {
                seed = seed * 1664525u + 1013904223u;
                left[i] = static_cast<float>(seed >> 8) / float(1u << 24) - 0.5f;
                right[i] = 0.5f * std::sin(0.02f * i);
            }
            std::vector<float> hostileLeft(left), hostileRight(right);
            hostileLeft[100] = std::nanf("");
            hostileRight[2000] = INFINITY;
            hostileLeft[2500] = -INFINITY;
            left[100] = right[2000] = left[2500] = 0.0f;

            std::vector<std::vector<float>> outputs[2];
            for (int run = 0; run < 2; ++run) {
                InstanceRunner runner(copy);
                runner.SetProgramChunk(EditElements(runner.GetProgramChunk(), "Module", [&](TiXmlElement& module) {
                    module.SetAttribute("ChannelMode", mode);
                    module.SetAttribute("LinearPhase", level == 2 ? "1" : "0");
                    module.SetAttribute("LM_Band1Active", "1");
                    module.SetAttribute("LM_Band1Gain", "9");
                    module.SetAttribute("RS_Band4Active", "1");
                    module.SetAttribute("RS_Band4Gain", "-6");
                }));
                runner.GetProgramChunk();  // waits until the worker has loaded it
                outputs[run] = run == 0 ? runner.Run(hostileLeft, hostileRight) : runner.Run(left, right);
            }
            for (int c = 0; c < 2; ++c) {
                EXPECT_TRUE(std::all_of(outputs[0][c].begin(), outputs[0][c].end(), [](float x) { return std::isfinite(x); }));
                EXPECT_TRUE(outputs[0][c] == outputs[1][c]) << "channel " << c;
            }
        }
    }
}

int AttributeCount(const TiXmlElement& element)
{
    int count = 0;
    for (const TiXmlAttribute* attribute = element.FirstAttribute(); attribute != nullptr; attribute = attribute->Next())
        ++count;
    return count;
}

std::string Printed(const TiXmlElement& element)
{
    TiXmlPrinter printer;
    element.Accept(&printer);
    return WithoutGuids(printer.Str());
}

TEST_F(InstanceTest, BankChunksCarryEveryProgramAndRoundTrip)
{
    const LibraryCopy copy;
    InstanceRunner runner(copy);
    // Program 3 gets a band of its own.
    runner.Process()->SetProgram(runner.Process(), 3);
    runner.SetProgramChunk(EditElements(runner.GetProgramChunk(), "Module", [](TiXmlElement& module) {
        module.SetAttribute("LM_Band4Gain", "-7.25");
        module.SetAttribute("RS_Band4Active", "1");
    }));
    const std::string bank = runner.GetBankChunk();

    TiXmlDocument parsed;
    parsed.Parse(bank.c_str());
    ASSERT_STREQ("Bank", parsed.RootElement()->Value());
    int programs = 0;
    for (const TiXmlElement* program = parsed.RootElement()->FirstChildElement("Program"); program != nullptr;
         program = program->NextSiblingElement("Program"), ++programs) {
        // The module's state thirteen times, and the automation map last.
        std::vector<const TiXmlElement*> children;
        for (const TiXmlElement* child = program->FirstChildElement(); child != nullptr; child = child->NextSiblingElement())
            children.push_back(child);
        ASSERT_EQ(14u, children.size());
        EXPECT_STREQ("Automation", children.back()->Value());
        children.pop_back();
        EXPECT_STREQ("Metering", children.back()->Value());
        for (const TiXmlElement* child : children) {
            const TiXmlElement* module = child->FirstChildElement("Module");
            ASSERT_NE(nullptr, module);
            EXPECT_EQ(89, AttributeCount(*module));
            EXPECT_EQ(Printed(*children.front()->FirstChildElement("Module")), Printed(*module));
        }
        if (programs == 3) {
            EXPECT_STREQ("-7.25", program->FirstChildElement("Slot5")->FirstChildElement("Module")->Attribute("LM_Band4Gain"));
        }
    }
    EXPECT_EQ(runner.Process()->GetProgramCount(runner.Process()), programs);

    // Another instance given the bank holds the same programs.
    const LibraryCopy other;
    InstanceRunner second(other);
    second.SetBankChunk(bank);
    EXPECT_EQ(WithoutGuids(bank), WithoutGuids(second.GetBankChunk()));
    second.Process()->SetProgram(second.Process(), 3);
    EXPECT_NE(std::string::npos, second.GetProgramChunk().find("LM_Band4Gain=\"-7.25\""));
}

// A saved session plays back bit for bit: the bank of an instance set by the host, loaded into
// a fresh one, sounds as the original.
TEST_F(InstanceTest, ABankPlaysBackBitForBit)
{
    const LibraryCopy copy;
    InstanceRunner original(copy);
    HLA2Process* p = original.Process();
    const std::pair<int, float> writes[] = {{2, 1.0f}, {0, 4.321f}, {3, 1234.567f}, {4, 0.777f},
                                            {26, 1.0f}, {24, -3.33f}, {27, 6543.21f}, {36, 1.7f}};
    for (const auto& [slot, value] : writes)
        p->SetParameterValue(p, slot, value);
    for (const auto& [slot, value] : {std::pair<int, float>{9, 0.3377f}, {10, 0.61f}, {30, 0.73f}})
        p->SetParameterNormalized(p, slot, value);
    original.SetProgramChunk(EditElements(original.GetProgramChunk(), "Module", [](TiXmlElement& module) {
        module.SetAttribute("ChannelMode", "M/S");
        module.SetAttribute("RS_Band2Active", "1");
    }));
    const std::string bank = original.GetBankChunk();
    InstanceRunner restored(copy);
    restored.SetBankChunk(bank);
    restored.GetProgramChunk();  // waits until the worker has loaded it

    std::vector<float> left(24000), right(24000);
    std::uint32_t seed = 5;
    for (std::size_t i = 0; i < left.size(); ++i) {
        seed = seed * 1664525u + 1013904223u;
        left[i] = static_cast<float>(seed >> 8) / float(1u << 24) - 0.5f;
        right[i] = 0.4f * std::sin(0.03f * static_cast<float>(i));
    }
    const auto a = original.Run(left, right);
    const auto b = restored.Run(left, right);
    for (int c = 0; c < 2; ++c) {
        float worst = 0.0f;
        for (std::size_t i = 0; i < a[c].size(); ++i)
            worst = std::max(worst, std::fabs(a[c][i] - b[c][i]));
        EXPECT_EQ(0.0f, worst) << "channel " << c;
    }
}

TEST_F(InstanceTest, HostileChunksLeaveTheStateWithinItsRanges)
{
    const LibraryCopy copy;
    InstanceRunner runner(copy);
    // Away from the defaults first, so that a chunk that wrongly resets shows.
    const std::string defaults = WithoutGuids(runner.GetProgramChunk());
    runner.SetProgramChunk(EditElements(runner.GetProgramChunk(), "Module", [](TiXmlElement& module) {
        module.SetAttribute("ChannelMode", "M/S");
        module.SetAttribute("LM_Band2Gain", "4.5");
        module.SetAttribute("RS_Band5Active", "1");
    }));
    const std::string original = WithoutGuids(runner.GetProgramChunk());
    ASSERT_NE(defaults, original);
    std::string deep;
    for (int i = 0; i < 200000; ++i)
        deep += "<a>";
    const std::string hostile[] = {
        "", "not xml at all", "<Program", "<Bank><Program Format=\"vn4p\"><Slot0>", original.substr(0, original.size() / 3),
        "<Wrong Format=\"vn4p\"/>", deep, std::string(3 << 20, 'x'), "<Program/>", "<Program Format=\"other\"/>",
    };
    for (const std::string& text : hostile) {
        runner.SetProgramChunk(text);
        runner.SetBankChunk(text);
        EXPECT_EQ(original, WithoutGuids(runner.GetProgramChunk())) << text.substr(0, 60);
    }
    // Unknown elements are ignored, however oddly deep they nest.
    std::string odd = EditElements(runner.GetProgramChunk(), "Module",
                                   [](TiXmlElement& module) { module.SetAttribute("LM_Band2Gain", "-3"); });
    std::string unknown;
    for (int i = 0; i < 200; ++i)
        unknown = "<Unknown>" + unknown + "</Unknown>";
    odd.insert(odd.rfind("</Program>"), unknown);
    runner.SetProgramChunk(odd);
    EXPECT_NE(runner.GetProgramChunk().find("LM_Band2Gain=\"-3\""), std::string::npos);
    // Values out of range are limited; unknown names take the default; missing ones too.
    runner.SetProgramChunk(EditElements(runner.GetProgramChunk(), "Module", [](TiXmlElement& module) {
        module.SetAttribute("LM_Band1Gain", "999");
        module.SetAttribute("LM_Band1Hz", "-5");
        module.SetAttribute("LM_Band1Mode", "Bandstop");
        module.SetAttribute("ChannelMode", "Quadro");
        module.RemoveAttribute("RS_Band2Gain");
        module.SetAttribute("RS_Band3Q_Peaking", "nan");
    }));
    TiXmlDocument result;
    const std::string text = runner.GetProgramChunk();
    result.Parse(text.c_str());
    const TiXmlElement* module = result.RootElement()->FirstChildElement("Slot0")->FirstChildElement("Module");
    ASSERT_NE(nullptr, module);
    EXPECT_STREQ("15", module->Attribute("LM_Band1Gain"));
    EXPECT_STREQ("10", module->Attribute("LM_Band1Hz"));
    EXPECT_STREQ("LowShelf", module->Attribute("LM_Band1Mode"));
    EXPECT_STREQ("L/R", module->Attribute("ChannelMode"));
    EXPECT_STREQ("0", module->Attribute("RS_Band2Gain"));
    double q = 0.0;
    ASSERT_EQ(TIXML_SUCCESS, module->QueryDoubleAttribute("RS_Band3Q_Peaking", &q));
    EXPECT_TRUE(q >= 0.2 && q <= 20.0) << q;
}

int ThreadCount()
{
    int count = 0;
    if (DIR* tasks = opendir("/proc/self/task")) {
        while (const dirent* entry = readdir(tasks))
            count += entry->d_name[0] != '.' ? 1 : 0;
        closedir(tasks);
    }
    return count;
}

TEST_F(InstanceTest, FiftyInstancesComeAndGoWithAudioRunning)
{
    const LibraryCopy copy;
    // One instance first, so that threads a sanitizer's runtime keeps are there already.
    { InstanceRunner warmUp(copy, 44100.0f, 256); }
    const int threadsBefore = ThreadCount();
    for (int i = 0; i < 50; ++i) {
        InstanceRunner runner(copy, 44100.0f, 256);
        std::atomic<bool> stop{false};
        std::thread audio([&] {
            std::vector<float> left(256, 0.1f), right(256, -0.1f), outL(256), outR(256);
            float* in[2] = {left.data(), right.data()};
            float* out[2] = {outL.data(), outR.data()};
            while (!stop.load())
                runner.Process()->ProcessSeparate(runner.Process(), in, out, 256, nullptr);
        });
        runner.Process()->SetParameterNormalized(runner.Process(), 0, 0.5f);
        runner.GetBankChunk();
        stop.store(true);
        audio.join();
    }
    EXPECT_EQ(threadsBefore, ThreadCount()) << "every instance's worker has ended";
}

}  // namespace
}  // namespace OV::Testing
