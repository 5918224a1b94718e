// The LV2 plug-in in the hosts people use: a lilv host of our own (blocks of any length, control
// changes, state into a second instance, factory presets), the LV2 tools, lv2apply against the
// offline renderer, and jalv under a JACK server with the dummy driver.
#include "hosts/common/HostedProcess.h"
#include "hosts/common/PresetFiles.h"
#include "tests/support/RunProgram.h"
#include "tests/support/ScratchFolder.h"
#include "tests/support/TestHost.h"

#include <lilv/lilv.h>
#include <lv2/atom/atom.h>
#include <lv2/buf-size/buf-size.h>
#include <lv2/options/options.h>
#include <lv2/urid/urid.h>
#include <sndfile.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <functional>
#include <limits>
#include <tuple>

#include <gtest/gtest.h>

namespace OV::Testing {
namespace {

const char* const pluginUri = "urn:orvane-studio:varnel4-lin-phase-eq";
constexpr int maxBlock = 4096;
constexpr unsigned firstSlotPort = 8;

using Channels = std::vector<std::vector<float>>;

// Stereo noise and tones from a fixed seed, as planar channels.
Channels Signal(int frames, std::uint32_t seed)
{
    Channels channels(2, std::vector<float>(static_cast<std::size_t>(frames)));
    for (int i = 0; i < frames; ++i) {
        for (int c = 0; c < 2; ++c) {
            seed = seed * 1664525u + 1013904223u;
            const double noise = static_cast<double>(seed >> 8) / double(1u << 24) - 0.5;
            channels[c][i] = static_cast<float>(0.3 * noise + 0.3 * std::sin(0.01 * (c + 1) * i));
        }
    }
    return channels;
}

// `frames` of each channel from `at` on.
Channels Slice(const Channels& input, int at, int frames)
{
    return {{input[0].begin() + at, input[0].begin() + at + frames}, {input[1].begin() + at, input[1].begin() + at + frames}};
}

std::vector<float> ReadSamples(const std::string& path)
{
    SF_INFO info{};
    SNDFILE* file = sf_open(path.c_str(), SFM_READ, &info);
    if (file == nullptr)
        return {};
    std::vector<float> samples(static_cast<std::size_t>(info.frames * info.channels));
    sf_readf_float(file, samples.data(), info.frames);
    sf_close(file);
    return samples;
}

// A minimal LV2 host: the world with our bundle, URID mapping and a block-length option.
class LilvHost {
public:
    LilvHost() : world(lilv_world_new())
    {
        LilvNode* bundle = lilv_new_file_uri(world, nullptr, (std::string(VARNEL4_LV2_BUNDLE) + "/").c_str());
        lilv_world_load_bundle(world, bundle);
        lilv_node_free(bundle);
        LilvNode* uri = lilv_new_uri(world, pluginUri);
        plugin = lilv_plugins_get_by_uri(lilv_world_get_all_plugins(world), uri);
        lilv_node_free(uri);
        options[0] = {LV2_OPTIONS_INSTANCE, 0, Map(LV2_BUF_SIZE__maxBlockLength), sizeof(int32_t), Map(LV2_ATOM__Int), &maxBlockLength};
    }
    ~LilvHost() { lilv_world_free(world); }

    LV2_URID Map(const char* uri)
    {
        if (std::find(uris.begin(), uris.end(), uri) == uris.end())
            uris.emplace_back(uri);
        return static_cast<LV2_URID>(std::find(uris.begin(), uris.end(), uri) - uris.begin() + 1);
    }

    LilvWorld* world;
    const LilvPlugin* plugin = nullptr;
    LV2_URID_Map map{this, [](LV2_URID_Map_Handle self, const char* uri) { return static_cast<LilvHost*>(self)->Map(uri); }};
    const LV2_Feature* const* Features() const { return features; }

private:
    std::vector<std::string> uris;
    const int32_t maxBlockLength = maxBlock;
    LV2_Options_Option options[2] = {};
    LV2_Feature mapFeature{LV2_URID__map, &map};
    LV2_Feature optionsFeature{LV2_OPTIONS__options, options};
    const LV2_Feature* features[3] = {&mapFeature, &optionsFeature, nullptr};
};

// One instance with its port buffers; `inPlace` hands the same buffers for input and output.
class Lv2Instance {
public:
    // `beforeActivation` sets controls as a host does before it starts the instance.
    Lv2Instance(LilvHost& host, bool inPlace, const std::function<void(Lv2Instance&)>& beforeActivation = {})
        : host(host), inPlace(inPlace), instance(lilv_plugin_instantiate(host.plugin, 48000.0, host.Features()))
    {
        if (instance == nullptr)
            return;
        controls.resize(lilv_plugin_get_num_ports(host.plugin));
        lilv_plugin_get_port_ranges_float(host.plugin, nullptr, nullptr, controls.data());
        for (unsigned port = 0; port < controls.size(); ++port) {
            controls[port] = std::isnan(controls[port]) ? 0.0f : controls[port];
            if (port >= 4)
                lilv_instance_connect_port(instance, port, &controls[port]);
        }
        if (beforeActivation)
            beforeActivation(*this);
        lilv_instance_activate(instance);
    }
    ~Lv2Instance()
    {
        if (instance != nullptr) {
            lilv_instance_deactivate(instance);
            lilv_instance_free(instance);
        }
    }
    bool Valid() const { return instance != nullptr; }

    float& Control(const char* symbol) { return controls[Index(symbol)]; }
    unsigned Index(const char* symbol)
    {
        LilvNode* node = lilv_new_string(host.world, symbol);
        const LilvPort* port = lilv_plugin_get_port_by_symbol(host.plugin, node);
        lilv_node_free(node);
        return lilv_port_get_index(host.plugin, port);
    }

    // Runs `frames` of `input` from `at` and appends the output.
    void Run(const Channels& input, int at, int frames, Channels& output)
    {
        Channels in = Slice(input, at, frames), out(2, std::vector<float>(static_cast<std::size_t>(frames)));
        for (int c = 0; c < 2; ++c) {
            lilv_instance_connect_port(instance, c, in[c].data());
            lilv_instance_connect_port(instance, 2 + c, inPlace ? in[c].data() : out[c].data());
        }
        lilv_instance_run(instance, static_cast<uint32_t>(frames));
        for (int c = 0; c < 2; ++c)
            output[c].insert(output[c].end(), (inPlace ? in : out)[c].begin(), (inPlace ? in : out)[c].end());
    }

    LilvState* Save()
    {
        return lilv_state_new_from_instance(
            host.plugin, instance, &host.map, nullptr, nullptr, nullptr, nullptr,
            [](const char* symbol, void* self, uint32_t* size, uint32_t* type) -> const void* {
                auto& me = *static_cast<Lv2Instance*>(self);
                *size = sizeof(float);
                *type = me.host.Map(LV2_ATOM__Float);
                return me.Index(symbol) < firstSlotPort ? nullptr : &me.controls[me.Index(symbol)];
            },
            this, 0, host.Features());
    }
    void Restore(const LilvState* state)
    {
        lilv_state_restore(
            state, instance,
            [](const char* symbol, void* self, const void* value, uint32_t size, uint32_t) {
                if (size == sizeof(float))
                    static_cast<Lv2Instance*>(self)->Control(symbol) = *static_cast<const float*>(value);
            },
            this, 0, host.Features());
    }
    void Reset()
    {
        lilv_instance_deactivate(instance);
        lilv_instance_activate(instance);
    }

private:
    LilvHost& host;
    bool inPlace;
    LilvInstance* instance;
    std::vector<float> controls;
};

// Processes `frames` of `input` from `at` straight through the library, appending the output.
void RunDirect(Hosts::HostedProcess& process, const Channels& input, int at, int frames, Channels& output)
{
    Channels in = Slice(input, at, frames), out(2, std::vector<float>(static_cast<std::size_t>(frames)));
    float* inputs[2] = {in[0].data(), in[1].data()};
    float* outputs[2] = {out[0].data(), out[1].data()};
    process.Process(inputs, outputs, frames);
    for (int c = 0; c < 2; ++c)
        output[c].insert(output[c].end(), out[c].begin(), out[c].end());
}

TEST(Lv2Test, ALilvHostRunsAnyBlockLengthAndCarriesStateToASecondInstance)
{
    LilvHost host;
    ASSERT_NE(host.plugin, nullptr);
    // Controls set before activation hold from the first frame: the adapter adds nothing to the
    // library driven directly, whatever the block lengths.
    // Symbol, slot and value.
    const std::tuple<const char*, int, float> controls[] = {{"band_3_active", 14, 1.0f}, {"band_3_gain", 12, 6.0f}, {"band_3_freq", 15, 2500.0f},
                                {"band_1_active", 2, 1.0f},  {"band_1_gain", 0, -4.5f}, {"output_level", 36, -2.0f}};
    const LibraryCopy library;
    Hosts::HostedProcess direct(library.Acquire(), 48000.0f, maxBlock, 2);
    for (const auto& [symbol, slot, value] : controls)
        direct.SetSlotValue(slot, value);
    direct.Settle();
    Lv2Instance first(host, false, [&](Lv2Instance& instance) {
        for (const auto& [symbol, slot, value] : controls)
            instance.Control(symbol) = value;
    });
    Lv2Instance second(host, true);
    ASSERT_TRUE(first.Valid() && second.Valid());

    const Channels input = Signal(20000, 7);
    Channels viaLv2(2), expected(2);
    int at = 0;
    for (const int frames : {0, 1, 17, 64, 4096, 333}) {
        first.Run(input, at, frames, viaLv2);
        RunDirect(direct, input, at, frames, expected);
        at += frames;
    }
    EXPECT_TRUE(viaLv2 == expected);
    EXPECT_EQ(first.Control("latency"), 4.0f);
    EXPECT_EQ(first.Control("latency_level"), 0.0f);
    EXPECT_GT(first.Control("meter_l"), -30.0f);

    // Changes between blocks, then the saved state into the in-place second instance: from a
    // reset both play alike. The output gain glides from 0 dB wherever a state sets it, so it
    // goes back there first.
    first.Control("band_1_gain") = 3.0f;
    first.Run(input, at, 64, viaLv2);
    first.Control("band_5_active") = 1.0f;
    first.Control("output_level") = 0.0f;
    first.Run(input, at + 64, 17, viaLv2);
    // Control writes reach the library's document on its worker: a save waits for it, and the
    // next block takes them, the gain's glide included.
    lilv_state_free(first.Save());
    first.Run(input, at + 81, 4096, viaLv2);
    LilvState* state = first.Save();
    ASSERT_NE(state, nullptr);
    second.Restore(state);
    lilv_state_free(state);
    EXPECT_EQ(second.Control("band_1_gain"), 3.0f);
    first.Reset();
    second.Reset();
    Channels a(2), b(2);
    for (int start = 0; start + 256 <= 8192; start += 256) {
        first.Run(input, start, 256, a);
        second.Run(input, start, 256, b);
    }
    EXPECT_TRUE(a == b) << "the second instance does not play as the first";
    EXPECT_FALSE(a[0] == std::vector<float>(input[0].begin(), input[0].begin() + 8192)) << "the settings were heard";
}

// Whatever a host writes into the control ports, the sound stays finite and bounded, and
// ordinary values bring it back.
TEST(Lv2Test, ExtremeControlValuesNeverBreakTheSound)
{
    LilvHost host;
    ASSERT_NE(host.plugin, nullptr);
    Lv2Instance instance(host, false);
    ASSERT_TRUE(instance.Valid());
    const Channels input = Signal(4096, 3);
    const float infinity = std::numeric_limits<float>::infinity();
    const unsigned ports = lilv_plugin_get_num_ports(host.plugin);
    for (const float extreme : {std::numeric_limits<float>::quiet_NaN(), infinity, -infinity, 1e30f, -1e30f, 1e-40f, 0.0f}) {
        for (unsigned port = firstSlotPort; port < ports; ++port)
            instance.Control(lilv_node_as_string(lilv_port_get_symbol(host.plugin, lilv_plugin_get_port_by_index(host.plugin, port)))) = extreme;
        Channels out(2);
        for (int at = 0; at + 512 <= 4096; at += 512)
            instance.Run(input, at, 512, out);
        for (const std::vector<float>& channel : out) {
            for (const float y : channel)
                ASSERT_TRUE(std::isfinite(y) && std::fabs(y) < 1e6f) << "ports at " << extreme << ": " << y;
        }
    }
}

TEST(Lv2Test, FactoryPresetsPlayAsThePresetFiles)
{
    LilvHost host;
    Lv2Instance instance(host, false);
    ASSERT_TRUE(instance.Valid());
    LilvNode* preset = lilv_new_uri(host.world, (std::string(pluginUri) + "#preset-mastering_gentle_smile").c_str());
    lilv_world_load_resource(host.world, preset);
    LilvState* state = lilv_state_new_from_world(host.world, &host.map, preset);
    lilv_node_free(preset);
    ASSERT_NE(state, nullptr);
    instance.Restore(state);
    lilv_state_free(state);

    const LibraryCopy library;
    Hosts::HostedProcess direct(library.Acquire(), 48000.0f, maxBlock, 2);
    direct.SetProgramChunk(Hosts::PresetAsProgram(std::string(VARNEL4_FACTORY_PRESETS) + "/Mastering/Gentle Smile.vn4m"));
    direct.Settle();
    instance.Reset();
    const Channels input = Signal(4096, 11);
    Channels viaLv2(2), expected(2);
    instance.Run(input, 0, 4096, viaLv2);
    RunDirect(direct, input, 0, 4096, expected);
    EXPECT_TRUE(viaLv2 == expected);
}

class Lv2ToolsTest : public testing::Test {
protected:
    void SetUp() override
    {
        setenv("LV2_PATH", (std::string(VARNEL4_LV2_BUNDLE) + "/..:/usr/lib/lv2").c_str(), 1);
#ifdef VARNEL4_SANITIZER_RUNTIME
        // The tools are not instrumented; the plug-in they load is.
        setenv("LD_PRELOAD", VARNEL4_SANITIZER_RUNTIME, 1);
        setenv("ASAN_OPTIONS", "detect_leaks=0:verify_asan_link_order=0", 1);
#endif
    }
    void TearDown() override { unsetenv("LD_PRELOAD"); }

    ProgramRun Shell(const std::string& script) { return RunProgram("/bin/sh", {"-c", script}, folder.Path()); }
    std::string Path(const std::string& name) const { return folder.Path() + "/" + name; }

    ScratchFolder folder;
};

TEST_F(Lv2ToolsTest, ToolsListDescribeAndValidateIt)
{
    EXPECT_NE(RunProgram("/usr/bin/lv2ls", {}).out.find(pluginUri), std::string::npos);

    const ProgramRun info = RunProgram("/usr/bin/lv2info", {pluginUri});
    ASSERT_EQ(info.code, 0) << info.err;
    EXPECT_NE(info.out.find("Has latency:       yes, reported by port 4"), std::string::npos) << info.out;
    EXPECT_NE(info.out.find("Mastering/Gentle Smile"), std::string::npos);
    const LibraryCopy library;
    {
        Hosts::HostedProcess process(library.Acquire(), 48000.0f, 512, 2);
        ASSERT_EQ(process.GetSlotCount(), 37);
        for (int slot = 0; slot < process.GetSlotCount(); ++slot) {
            const std::string port = "Port " + std::to_string(firstSlotPort + slot) + ":";
            const std::string::size_type at = info.out.find(port);
            ASSERT_NE(at, std::string::npos) << port;
            const std::string description = info.out.substr(at, info.out.find("\n\n", at) - at);
            EXPECT_NE(description.find("Name:        " + process.GetSlotName(slot) + "\n"), std::string::npos) << description;
            const Hosts::SlotRange range = Hosts::FindRange(process, slot);
            char ends[96];
            std::snprintf(ends, sizeof ends, "Minimum:     %f\n\t\tMaximum:     %f\n", range.lowest, range.highest);
            EXPECT_NE(description.find(ends), std::string::npos) << description;
        }
    }
    library.Library().Release();

    const ProgramRun validation = Shell("sord_validate /usr/lib/lv2/*/*.ttl '" + std::string(VARNEL4_LV2_BUNDLE) + "'/*.ttl");
    EXPECT_NE((validation.out + validation.err).find("Found 0 errors"), std::string::npos)
        << validation.err.substr(0, 2000);
}

// lv2apply runs one frame at a time: so does the renderer here.
TEST_F(Lv2ToolsTest, Lv2applyRendersAsTheOfflineRenderer)
{
    const Channels input = Signal(30000, 3);
    std::vector<float> interleaved;
    for (int i = 0; i < 30000; ++i)
        interleaved.insert(interleaved.end(), {input[0][i], input[1][i]});
    SF_INFO format{0, 44100, 2, SF_FORMAT_WAV | SF_FORMAT_FLOAT, 0, 0};
    SNDFILE* file = sf_open(Path("in.wav").c_str(), SFM_WRITE, &format);
    ASSERT_NE(file, nullptr);
    sf_writef_float(file, interleaved.data(), 30000);
    sf_close(file);

    const ProgramRun lv2 = RunProgram("/usr/bin/lv2apply",
                                      {"-i", "in.wav", "-o", "lv2.wav", "-c", "band_2_active", "1", "-c", "band_2_gain",
                                       "-7.5", "-c", "band_2_q_peaking", "3", "-c", "output_level", "1.5", pluginUri},
                                      folder.Path());
    ASSERT_EQ(lv2.code, 0) << lv2.err;
    const ProgramRun render = RunProgram(VARNEL4_RENDER_PATH,
                                         {"in.wav", "-o", "render.wav", "--bits", "float", "--block", "1", "-s", "Band 2 Active=On", "-s",
                                          "Band 2 Gain=-7.5", "-s", "Band 2 Q (Peaking)=3", "-s", "OutputLevel=1.5"},
                                         folder.Path());
    ASSERT_EQ(render.code, 0) << render.err;
    const std::vector<float> viaLv2 = ReadSamples(Path("lv2.wav"));
    EXPECT_EQ(viaLv2.size(), interleaved.size());
    EXPECT_TRUE(viaLv2 == ReadSamples(Path("render.wav")));
    EXPECT_FALSE(viaLv2 == interleaved) << "the settings were heard";
}

TEST_F(Lv2ToolsTest, JalvRunsItUnderJack)
{
    // A JACK server of this test's own, on the dummy driver; jalv reads its commands from the
    // pipe and quits at its end.
    const std::string server = "v4test" + std::to_string(getpid());
    const ProgramRun run = Shell(
        "export JACK_NO_AUDIO_RESERVATION=1 JACK_DEFAULT_SERVER=" + server + "\n"
        "jackd --no-realtime -n " + server + " -d dummy -r 48000 -p 256 >jackd.log 2>&1 &\n"
        "jack=$!\n"
        "trap 'kill $jack; wait $jack' EXIT\n"
        "jack_wait -s " + server + " -w -t 30 >/dev/null || exit 90\n"
        "(printf 'band_3_active = 1\\n'; for i in $(seq 50); do printf 'monitors\\n'; sleep 0.1; done) | jalv -n v4 "
        + std::string(pluginUri) + "\n");
    if (run.code == 90)
        GTEST_SKIP() << "no JACK server could start here: " << ReadFile(Path("jackd.log"));
    EXPECT_EQ(run.code, 0) << run.err << ReadFile(Path("jackd.log"));
    EXPECT_NE(run.out.find("band_3_active = 1.000000"), std::string::npos) << run.out.substr(0, 3000);
    EXPECT_NE(run.out.find("latency = 4.000000"), std::string::npos) << run.out.substr(0, 3000);
}

}  // namespace
}  // namespace OV::Testing
