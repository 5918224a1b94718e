// The offline renderer, run as a user runs it: its output against the library driven directly,
// alignment in every latency level, the response it measures against the band's formula,
// batches, memory over a long file, and every error with its code and no file left behind.
#include "hosts/common/HostedProcess.h"
#include "platform/RegistryKey.h"
#include "tests/engine/dsp/EqOracle.h"
#include "tests/support/RunProgram.h"
#include "tests/support/TestHost.h"

#include <signal.h>
#include <sndfile.h>

#include <algorithm>
#include <cmath>
#include <fstream>
#include <functional>
#include <sstream>
#include <thread>
#include <tuple>

#include <boost/algorithm/string/replace.hpp>
#include <boost/filesystem.hpp>
#include <gtest/gtest.h>

namespace OV::Testing {
namespace {

namespace fs = boost::filesystem;

struct Audio {
    int channels = 0;
    int rate = 0;
    std::vector<float> samples; // interleaved
};

// Writes `frames` that `fill` makes, interleaved, a block at a time: long inputs go straight
// to the file, as a forked child's peak memory counts what the test process holds at the fork.
void WriteAudio(const std::string& path, int channels, int rate, long long frames,
                const std::function<void(float* block, long long from, long long count)>& fill, int format = SF_FORMAT_WAV | SF_FORMAT_FLOAT)
{
    SF_INFO info{0, rate, channels, format, 0, 0};
    SNDFILE* file = sf_open(path.c_str(), SFM_WRITE, &info);
    ASSERT_NE(file, nullptr) << sf_strerror(nullptr);
    std::vector<float> block(static_cast<std::size_t>(4096 * channels));
    for (long long done = 0; done < frames; done += 4096) {
        const long long count = std::min<long long>(4096, frames - done);
        fill(block.data(), done, count);
        sf_writef_float(file, block.data(), count);
    }
    sf_close(file);
}

// Noise and a tone per channel, from a fixed seed.
void WriteTestSignal(const std::string& path, int channels, int rate, long long frames,
                     int format = SF_FORMAT_WAV | SF_FORMAT_FLOAT)
{
    std::uint32_t state = 12345u;
    WriteAudio(path, channels, rate, frames, [&](float* interleaved, long long from, long long count) {
        for (long long i = 0; i < count; ++i) {
            for (int c = 0; c < channels; ++c) {
                state = state * 1664525u + 1013904223u;
                const double noise = static_cast<double>(state >> 8) / double(1u << 24) - 0.5;
                const double tone = std::sin(2.0 * M_PI * (220.0 + 330.0 * c) * static_cast<double>(from + i) / rate);
                interleaved[i * channels + c] = static_cast<float>(0.2 * noise + 0.3 * tone);
            }
        }
    }, format);
}

Audio ReadAudio(const std::string& path)
{
    SF_INFO info{};
    SNDFILE* file = sf_open(path.c_str(), SFM_READ, &info);
    if (file == nullptr)
        return {};
    Audio audio{info.channels, info.samplerate, std::vector<float>(static_cast<std::size_t>(info.frames * info.channels))};
    sf_readf_float(file, audio.samples.data(), info.frames);
    sf_close(file);
    return audio;
}

long long FramesOf(const std::string& path)
{
    SF_INFO info{};
    SNDFILE* file = sf_open(path.c_str(), SFM_READ, &info);
    return file != nullptr && sf_close(file) == 0 ? info.frames : -1;
}

class RenderTest : public testing::Test {
protected:
    ProgramRun Render(const std::vector<std::string>& arguments)
    {
        return RunProgram(VARNEL4_RENDER_PATH, arguments, folder.Path());
    }
    std::string Path(const std::string& name) const { return folder.Path() + "/" + name; }
    // Everything in the folder, hidden files too.
    std::vector<std::string> Listing() const
    {
        std::vector<std::string> names;
        for (const auto& entry : fs::directory_iterator(folder.Path()))
            names.push_back(entry.path().filename().string());
        std::sort(names.begin(), names.end());
        return names;
    }

    ScratchFolder folder;
};

// The renderer's output equals the library's, driven here with a block size of its own, for
// the same preset, slot, channel mode and latency level.
TEST_F(RenderTest, RendersEqualTheLibraryDrivenDirectly)
{
    const auto setLatencyLevel = [](const char* index) {
        ASSERT_TRUE(Platform::RegistryKey("Varnel4 Lin Phase EQ", "Orvane Studio", 0).WriteString("Main.LatencyLevel", index));
    };
    // Channels, the renderer's latency level and the library's.
    const std::tuple<int, const char*, const char*> cases[] = {{2, "low", "0"}, {1, "low", "0"}, {2, "high", "2"}};
    for (const auto& [channels, level, levelIndex] : cases) {
        SCOPED_TRACE(std::to_string(channels) + " channels, level " + level);
        WriteTestSignal(Path("in.wav"), channels, 44100, 30000);
        const Audio input = ReadAudio(Path("in.wav"));
        const ProgramRun run = Render({"in.wav", "-o", "out.wav", "--bits", "float", "-p", "Vocals/Presence Lift", "-s",
                                       "Band 3 Gain=4.5", "-m", "ms", "-l", level, "-f"});
        ASSERT_EQ(run.code, 0) << run.err;

        setLatencyLevel(levelIndex);
        const LibraryCopy library;
        std::vector<float> expected(input.samples.size());
        {
            Hosts::HostedProcess process(library.Acquire(), 44100.0f, 333, channels);
            std::string preset = ReadFile(std::string(VARNEL4_FACTORY_PRESETS) + "/Vocals/Presence Lift.vn4m");
            boost::algorithm::replace_all(preset, "Preset", "Program");
            process.SetProgramChunk(preset);
            process.SetSlotValue(12, 4.5f);
            std::string state = process.GetProgramChunk();
            boost::algorithm::replace_all(state, "ChannelMode=\"L/R\"", "ChannelMode=\"M/S\"");
            process.SetProgramChunk(state);
            process.Settle();
            std::vector<float> in[2] = {std::vector<float>(333), std::vector<float>(333)}, out[2] = {in[0], in[1]};
            float* inputs[2] = {in[0].data(), in[1].data()};
            float* outputs[2] = {out[0].data(), out[1].data()};
            for (std::size_t done = 0; done < expected.size(); done += std::size_t(333 * channels)) {
                const int count = std::min(333, static_cast<int>(expected.size() - done) / channels);
                for (int s = 0; s < count * channels; ++s)
                    in[s % channels][s / channels] = input.samples[done + std::size_t(s)];
                process.Process(inputs, outputs, count);
                for (int s = 0; s < count * channels; ++s)
                    expected[done + std::size_t(s)] = out[s % channels][s / channels];
            }
        }
        library.Library().Release();
        setLatencyLevel("0");
        const Audio output = ReadAudio(Path("out.wav"));
        EXPECT_EQ(output.channels, channels);
        EXPECT_EQ(output.rate, 44100);
        EXPECT_TRUE(output.samples == expected) << "not sample for sample";
        EXPECT_NE(output.samples, input.samples) << "the settings were heard";
    }
}

// With all bands off, --align gives the input back in place: exactly without oversampling, and
// through the oversampling filters within their ripple, nothing cut at the end.
TEST_F(RenderTest, AlignedOutputLinesUpWithTheInputInEveryLevel)
{
    const int frames = 40000;
    std::vector<float> input(2 * frames, 0.0f);
    for (const int at : {1000, frames - 10}) { // impulses near both ends
        input[2 * at] = 0.9f;
        input[2 * at + 1] = -0.9f;
    }
    for (int i = 5000; i < 30000; ++i)
        input[2 * i] = input[2 * i + 1] = static_cast<float>(0.5 * std::sin(2.0 * M_PI * 440.0 * i / 48000.0));
    WriteAudio(Path("in.wav"), 2, 48000, frames,
               [&](float* block, long long from, long long count) { std::copy_n(input.begin() + 2 * from, 2 * count, block); });
    for (const char* level : {"low", "mid", "high"}) {
        SCOPED_TRACE(level);
        const ProgramRun run = Render({"in.wav", "-o", "out.wav", "--bits", "float", "-l", level, "-a", "-f"});
        ASSERT_EQ(run.code, 0) << run.err;
        const std::vector<float> output = ReadAudio(Path("out.wav")).samples;
        ASSERT_EQ(output.size(), input.size());
        if (std::string(level) == "low") {
            EXPECT_TRUE(output == input);
            continue;
        }
        for (const int at : {1000, frames - 10}) {
            const auto from = output.begin() + 2 * (at - 50), to = output.begin() + 2 * std::min(at + 50, frames);
            const auto peak = std::max_element(from, to, [](float a, float b) { return std::fabs(a) < std::fabs(b); });
            EXPECT_EQ(peak - output.begin(), 2 * at) << "the impulse at " << at;
        }
        float worst = 0.0f;
        for (int i = 6000; i < 29000; ++i)
            worst = std::max(worst, std::fabs(output[2 * i] - input[2 * i]));
        EXPECT_LT(worst, 2e-3f) << "the tone in place";
    }
}

// The measured response of a peaking band equals the band's own formula.
TEST_F(RenderTest, ResponseFollowsTheBandsFormula)
{
    const ProgramRun run = Render({"--response", "response.csv", "-s", "Band 3 Active=On", "-s", "Band 3 Gain=6",
                                   "-s", "Band 3 Freq=1000", "-s", "Band 3 Q (Peaking)=1.5"});
    ASSERT_EQ(run.code, 0) << run.err;
    std::ifstream csv(Path("response.csv"));
    std::string line;
    std::getline(csv, line);
    EXPECT_EQ(line, "hz,left_db,right_db");
    const Section band = OracleSection(OraclePeak, 6.0, 1000.0, 1.5, 48000.0);
    std::vector<double> frequencies;
    while (std::getline(csv, line)) {
        double hz = 0.0, left = 0.0, right = 0.0;
        char comma = 0;
        std::istringstream(line) >> hz >> comma >> left >> comma >> right;
        EXPECT_NEAR(left, Db(SectionMagnitude(band, hz, 48000.0)), 0.01) << hz;
        EXPECT_NEAR(right, left, 1e-9) << hz;
        frequencies.push_back(hz);
    }
    ASSERT_EQ(frequencies.size(), 240u);  // about 24 an octave over the ten octaves
    EXPECT_EQ(frequencies.front(), 20.0);
    EXPECT_EQ(frequencies.back(), 20000.0);
}

// Several files in one call render at once, each as it would alone.
TEST_F(RenderTest, ABatchRendersEachFileAsAlone)
{
    fs::create_directory(Path("batch"));
    const std::vector<std::string> names = {"in0.wav", "in1.wav", "in2.wav"}, settings = {"-p", "Mastering/Tilt Warm", "--bits", "float"};
    for (int i = 0; i < 3; ++i)
        WriteTestSignal(Path(names[i]), 2, 48000, 20000 + 7000 * i);
    std::vector<std::string> arguments = names;
    arguments.insert(arguments.end(), settings.begin(), settings.end());
    arguments.insert(arguments.end(), {"-d", "batch", "-j", "3"});
    const ProgramRun batch = Render(arguments);
    ASSERT_EQ(batch.code, 0) << batch.err;
    for (const std::string& name : names) {
        std::vector<std::string> alone = {name, "-o", "alone.wav", "-f"};
        alone.insert(alone.end(), settings.begin(), settings.end());
        ASSERT_EQ(Render(alone).code, 0);
        EXPECT_TRUE(ReadAudio(Path("batch/" + name)).samples == ReadAudio(Path("alone.wav")).samples) << name;
    }
}

// Memory does not grow with the length of the file.
TEST_F(RenderTest, MemoryStaysFlatOverLongFiles)
{
    long peaks[2] = {};
    const long long lengths[2] = {10LL * 48000, 240LL * 48000};
    for (int i = 0; i < 2; ++i) {
        WriteTestSignal(Path("in.wav"), 2, 48000, lengths[i], SF_FORMAT_WAV | SF_FORMAT_PCM_16);
        const ProgramRun run = Render({"in.wav", "-o", "out.flac", "-f", "-q"});
        ASSERT_EQ(run.code, 0) << run.err;
        EXPECT_EQ(FramesOf(Path("out.flac")), lengths[i]);
        peaks[i] = run.peakKilobytes;
    }
    // Four minutes of stereo float are 92 MB: none of it may stay.
    EXPECT_LT(peaks[1] - peaks[0], 8 * 1024) << peaks[0] << " kB, then " << peaks[1] << " kB";
}

TEST_F(RenderTest, TheDemoIsTheMainJob)
{
    for (int run = 0; run < 2; ++run) {  // the second run replaces the demo's own file
        const ProgramRun demo = Render({});
        ASSERT_EQ(demo.code, 0) << demo.err;
        EXPECT_NE(demo.out.find("Mastering/Gentle Smile"), std::string::npos) << demo.out;
    }
    const Audio audio = ReadAudio(Path("varnel4-demo.wav"));
    EXPECT_EQ(audio.channels, 2);
    EXPECT_EQ(audio.samples.size(), 2u * 8 * 48000);
    const float peak = *std::max_element(audio.samples.begin(), audio.samples.end());
    EXPECT_GT(peak, 0.1f);
    EXPECT_LT(peak, 1.0f);

    EXPECT_NE(Render({"--list-slots"}).out.find("  36  OutputLevel"), std::string::npos);
    EXPECT_NE(Render({"--list-presets"}).out.find("Vocals/Air\n"), std::string::npos);
}

TEST_F(RenderTest, ErrorsSayWhatIsWrongAndLeaveNoFile)
{
    WriteTestSignal(Path("in.wav"), 2, 48000, 4800);
    WriteTestSignal(Path("six.wav"), 6, 48000, 4800);
    WriteTestSignal(Path("low.wav"), 2, 16000, 1600);
    folder.Write("noise.vn4m", "<Preset><Slot");
    folder.Write("chunk.xml", "<Preset Format=\"vn4m\"/>");
    folder.Write("existing.wav", "keep me");
    fs::create_directory(Path("locked"));
    fs::permissions(Path("locked"), fs::owner_read | fs::owner_exe);
    // Arguments, exit code and message.
    const std::tuple<std::vector<std::string>, int, const char*> cases[] = {
        {{"missing.wav", "-o", "out.wav"}, 3, "cannot read 'missing.wav'"},
        {{"noise.vn4m", "-o", "out.wav"}, 3, "cannot read 'noise.vn4m'"},
        {{"six.wav", "-o", "out.wav"}, 3, "has 6 channels"},
        {{"in.wav", "-o", "out.wav", "-s", "Band 7 Gain=1"}, 2, "unknown slot 'Band 7 Gain'"},
        {{"in.wav", "-o", "out.wav", "-s", "Band 1 Gain=16"}, 2, "16 is out of range for 'Band 1 Gain' (-15 to 15)"},
        {{"in.wav", "-o", "out.wav", "-n", "3=1.5"}, 2, "out of range"},
        {{"in.wav", "-o", "out.wav", "-s", "Band 1 Active=maybe"}, 2, "'maybe' is not a value for 'Band 1 Active'"},
        {{"in.wav", "-o", "out.wav", "-l", "extreme"}, 2, "unknown latency level 'extreme'"},
        {{"low.wav", "-o", "out.wav", "-l", "mid"}, 2, "the oversampled latency levels need 22050 Hz or more"},
        {{"in.wav", "-o", "out.wav", "--frobnicate"}, 2, "unknown option '--frobnicate'"},
        {{"in.wav"}, 2, "give --output"},
        {{"in.wav", "-o", "out.mp3"}, 2, "cannot tell the format"},
        {{"in.wav", "-o", "out.flac", "--bits", "float"}, 2, "cannot hold float"},
        {{"in.wav", "-o", "out.wav", "-p", "noise.vn4m"}, 4, "'noise.vn4m' is not a preset file"},
        {{"in.wav", "-o", "out.wav", "-p", "No Such Preset"}, 4, "no preset 'No Such Preset'"},
        {{"in.wav", "-o", "out.wav", "-c", "chunk.xml"}, 4, "not a state chunk"},
        {{"in.wav", "-o", "existing.wav"}, 5, "'existing.wav' exists (--force replaces it)"},
        {{"in.wav", "-o", "in.wav", "-f"}, 5, "is the input itself"},
        {{"in.wav", "-o", "locked/out.wav"}, 5, "cannot write in the folder of 'locked/out.wav'"},
        {{"in.wav", "-o", "nowhere/out.wav"}, 5, "cannot write in the folder of 'nowhere/out.wav'"},
    };
    const std::vector<std::string> before = Listing();
    for (const auto& [arguments, code, message] : cases) {
        SCOPED_TRACE(arguments.back());
        if (geteuid() == 0 && arguments.back() == "locked/out.wav")
            continue;  // root writes anywhere
        const ProgramRun run = Render(arguments);
        EXPECT_EQ(run.code, code) << run.err;
        EXPECT_NE(run.err.find(message), std::string::npos) << run.err;
        EXPECT_EQ(Listing(), before);
    }
    EXPECT_EQ(ReadFile(Path("existing.wav")), "keep me");
    EXPECT_TRUE(fs::is_empty(Path("locked")));

    // Stopped in the middle: no file, not even a partial one.
    WriteTestSignal(Path("long.wav"), 2, 48000, 120LL * 48000, SF_FORMAT_WAV | SF_FORMAT_PCM_16);
    const std::vector<std::string> withLong = Listing();
    std::string where = folder.Path();
    const ProgramRun stopped = RunProgram(
        VARNEL4_RENDER_PATH, {"long.wav", "-o", "out.wav", "-l", "high"}, folder.Path(),
        [](int pid, void* context) {
            // Interrupt once the partial file is there.
            for (bool partial = false; !partial; std::this_thread::sleep_for(std::chrono::milliseconds(10))) {
                for (const auto& entry : fs::directory_iterator(*static_cast<std::string*>(context)))
                    partial = partial || entry.path().filename().string().rfind(".out.wav.", 0) == 0;
            }
            kill(pid, SIGINT);
        },
        &where);
    EXPECT_EQ(stopped.code, 130) << stopped.err;
    EXPECT_EQ(Listing(), withLong);
}

}  // namespace
}  // namespace OV::Testing
