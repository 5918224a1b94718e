// A whole instance through the library's exports: latency levels, the equaliser heard as set
// by a program chunk, chunk round trips and hostile chunks, and many instances in a row.
#include "tests/engine/dsp/EqOracle.h"
#include "tests/integration/InstanceRunner.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <thread>

#include <boost/filesystem.hpp>

namespace OV::Testing {
namespace {

using InstanceTest = InstanceFixture;

constexpr int latencies[3] = {4, 132, 18564};

TEST_F(InstanceTest, LatencyLevelsAreReportedAndHeard)
{
    for (int level = 0; level < 3; ++level) {
        SetLatencyLevel(level);
        const LibraryCopy copy;
        InstanceRunner runner(copy);
        EXPECT_EQ(latencies[level], runner.Process()->GetLatency(runner.Process())) << level;
        const std::vector<float> impulse = Impulse(std::size_t(latencies[level]) + 3000, 1.0f);
        const auto out = runner.Run(impulse, impulse);
        const auto peak = std::max_element(out[0].begin(), out[0].end(), [](float a, float b) { return std::fabs(a) < std::fabs(b); });
        EXPECT_EQ(latencies[level], peak - out[0].begin()) << "level " << level;
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
        runner.EditProgram({{"ChannelMode", mode}, {"LM_Band1Active", "1"}, {"LM_Band1Mode", "Peaking"},
                            {"LM_Band1Gain", "9"}, {"LM_Band1Hz", "1000"}, {"LM_Band1Q_Peaking", "2"},
                            {"RS_Band2Active", "1"}, {"RS_Band2Mode", "HighShelf"}, {"RS_Band2Gain", "-6"},
                            {"RS_Band2Hz", "5000"}, {"RS_Band2Q_Shelving", "0.7"}});
        runner.GetProgramChunk(); // waits until the worker has loaded it
        runner.RunSilence(1024);

        // Left and right impulses of the same or opposite sign: in L/R the first set filters
        // left and the second right; in M/S the first filters mid (L = R) and the second side.
        const bool midSide = std::string(mode) == "M/S";
        for (float sign : {1.0f, -1.0f}) {
            const auto out = runner.Run(Impulse(16384, 0.5f), Impulse(16384, 0.5f * sign));
            const Section& left = midSide && sign < 0 ? shelf : peak;
            const Section* expected[2] = {&left, midSide ? &left : &shelf};
            for (int c = 0; c < 2; ++c) {
                for (double f : TestFrequencies(25))
                    EXPECT_NEAR(Db(0.5 * SectionMagnitude(*expected[c], f, rate)), Db(MeasuredMagnitude(Response(out[c]), f, rate)),
                                0.01) << f << " Hz, sign " << sign << ", channel " << c;
            }
            runner.RunSilence(16384);
        }
    }
}

// A NaN or an infinity from the host is silence at the entry: nothing keeps it, and the output
// is that of zeros in its place, bit for bit, in every latency level and channel mode.
TEST_F(InstanceTest, NonFiniteInputIsSilenceAtTheEntry)
{
    for (int level = 0; level < 3; ++level) {
        SetLatencyLevel(level);
        const LibraryCopy copy;
        for (const char* mode : {"L/R", "M/S"}) {
            SCOPED_TRACE(std::string(mode) + ", level " + std::to_string(level));
            const std::size_t frames = std::size_t(latencies[level]) + 12000;
            std::vector<float> left = Noise(frames, 99), right = Noise(frames, 98);
            std::vector<float> hostileLeft(left), hostileRight(right);
            hostileLeft[100] = std::nanf("");
            hostileRight[2000] = INFINITY;
            hostileLeft[2500] = -INFINITY;
            left[100] = right[2000] = left[2500] = 0.0f;

            std::vector<std::vector<float>> outputs[2];
            for (int run = 0; run < 2; ++run) {
                InstanceRunner runner(copy);
                runner.EditProgram({{"ChannelMode", mode}, {"LinearPhase", level == 2 ? "1" : "0"}, {"LM_Band1Active", "1"},
                                    {"LM_Band1Gain", "9"}, {"RS_Band4Active", "1"}, {"RS_Band4Gain", "-6"}});
                runner.GetProgramChunk(); // waits until the worker has loaded it
                outputs[run] = run == 0 ? runner.Run(hostileLeft, hostileRight) : runner.Run(left, right);
            }
            for (int c = 0; c < 2; ++c) {
                EXPECT_TRUE(std::all_of(outputs[0][c].begin(), outputs[0][c].end(), [](float x) { return std::isfinite(x); }));
                EXPECT_TRUE(outputs[0][c] == outputs[1][c]) << "channel " << c;
            }
        }
    }
}

TEST_F(InstanceTest, BankChunksCarryEveryProgramAndRoundTrip)
{
    const LibraryCopy copy;
    InstanceRunner runner(copy);
    // Program 3 gets a band of its own.
    runner.Process()->SetProgram(runner.Process(), 3);
    runner.EditProgram({{"LM_Band4Gain", "-7.25"}, {"RS_Band4Active", "1"}});
    const std::string bank = runner.GetBankChunk();

    TiXmlDocument parsed;
    parsed.Parse(bank.c_str());
    ASSERT_STREQ("Bank", parsed.RootElement()->Value());
    int programs = 0;
    for (const TiXmlElement* program = parsed.RootElement()->FirstChildElement("Program"); program != nullptr;
         program = program->NextSiblingElement("Program"), ++programs) {
        // The module's state thirteen times, the same in each, and the automation map last.
        std::vector<std::string> names, modules;
        for (const TiXmlElement* child = program->FirstChildElement(); child != nullptr; child = child->NextSiblingElement()) {
            names.push_back(child->Value());
            if (const TiXmlElement* module = child->FirstChildElement("Module")) {
                EXPECT_EQ(89u, AttributesOf(module).size());
                TiXmlPrinter printer;
                module->Accept(&printer);
                modules.push_back(WithoutGuids(printer.Str()));
            }
        }
        ASSERT_EQ(14u, names.size());
        EXPECT_EQ("Metering", names[12]);
        EXPECT_EQ("Automation", names[13]);
        ASSERT_EQ(13u, modules.size());
        EXPECT_EQ(std::vector<std::string>(13, modules[0]), modules);
        if (programs == 3) {
            EXPECT_NE(std::string::npos, modules[5].find("LM_Band4Gain=\"-7.25\""));
        }
    }
    EXPECT_EQ(runner.Process()->GetProgramCount(runner.Process()), programs);

    // Another instance given the bank holds the same programs.
    const LibraryCopy other;
    InstanceRunner second(other);
    second.SetBankChunk(bank);
    EXPECT_EQ(WithoutGuids(bank), WithoutGuids(second.GetBankChunk()));
    second.Process()->SetProgram(second.Process(), 3);
    EXPECT_EQ("-7.25", ModuleOf(second.GetProgramChunk())["LM_Band4Gain"]);
}

// A saved session plays back bit for bit: the bank of an instance set by the host, loaded into
// a fresh one, sounds as the original.
TEST_F(InstanceTest, ABankPlaysBackBitForBit)
{
    const LibraryCopy copy;
    InstanceRunner original(copy);
    HLA2Process* p = original.Process();
    for (const auto& [slot, value] : {std::pair{2, 1.0f}, {0, 4.321f}, {3, 1234.567f}, {4, 0.777f}, {26, 1.0f},
                                      {24, -3.33f}, {27, 6543.21f}, {36, 1.7f}})
        p->SetParameterValue(p, slot, value);
    for (const auto& [slot, value] : {std::pair{9, 0.3377f}, {10, 0.61f}, {30, 0.73f}})
        p->SetParameterNormalized(p, slot, value);
    original.EditProgram({{"ChannelMode", "M/S"}, {"RS_Band2Active", "1"}});
    const std::string bank = original.GetBankChunk();
    InstanceRunner restored(copy);
    restored.SetBankChunk(bank);
    restored.GetProgramChunk(); // waits until the worker has loaded it

    const std::vector<float> left = Noise(24000, 5), right = Noise(24000, 6);
    const auto a = original.Run(left, right);
    const auto b = restored.Run(left, right);
    for (int c = 0; c < 2; ++c)
        EXPECT_TRUE(a[c] == b[c]) << "channel " << c;
}

TEST_F(InstanceTest, HostileChunksLeaveTheStateWithinItsRanges)
{
    const LibraryCopy copy;
    InstanceRunner runner(copy);
    // Away from the defaults first, so that a chunk that wrongly resets shows.
    const std::string defaults = WithoutGuids(runner.GetProgramChunk());
    runner.EditProgram({{"ChannelMode", "M/S"}, {"LM_Band2Gain", "4.5"}, {"RS_Band5Active", "1"}});
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
    std::string odd = Edited(runner.GetProgramChunk(), {{"LM_Band2Gain", "-3"}});
    std::string unknown;
    for (int i = 0; i < 200; ++i)
        unknown = "<Unknown>" + unknown + "</Unknown>";
    odd.insert(odd.rfind("</Program>"), unknown);
    runner.SetProgramChunk(odd);
    EXPECT_EQ("-3", ModuleOf(runner.GetProgramChunk())["LM_Band2Gain"]);
    // Values out of range are limited; unknown names take the default; missing ones too.
    runner.EditProgram({{"LM_Band1Gain", "999"}, {"LM_Band1Hz", "-5"}, {"LM_Band1Mode", "Bandstop"},
                        {"ChannelMode", "Quadro"}, {"RS_Band2Gain", nullptr}, {"RS_Band3Q_Peaking", "nan"}});
    auto module = ModuleOf(runner.GetProgramChunk());
    EXPECT_EQ("15", module["LM_Band1Gain"]);
    EXPECT_EQ("10", module["LM_Band1Hz"]);
    EXPECT_EQ("LowShelf", module["LM_Band1Mode"]);
    EXPECT_EQ("L/R", module["ChannelMode"]);
    EXPECT_EQ("0", module["RS_Band2Gain"]);
    const double q = std::strtod(module["RS_Band3Q_Peaking"].c_str(), nullptr);
    EXPECT_TRUE(q >= 0.2 && q <= 20.0) << q;
}

int ThreadCount()
{
    return int(std::distance(boost::filesystem::directory_iterator("/proc/self/task"), {}));
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
