// Times LV2 plug-ins side by side in one process: each configuration runs the same stereo pink
// noise at 48 kHz in blocks, the configurations interleaved round by round, and the median of
// the rounds is printed as ns per stereo frame and as a ratio to the first configuration.
//
//   v4_lv2_timing [block ...]      (default: 32 256 1024)
//
// Our configurations set the latency level through the registry folder named by
// XDG_CONFIG_HOME, which the caller points at a scratch folder.
#include "bench/PinkNoise.h"
#include "platform/RegistryKey.h"

#include <lilv/lilv.h>
#include <lv2/atom/atom.h>
#include <lv2/buf-size/buf-size.h>
#include <lv2/options/options.h>
#include <lv2/urid/urid.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace {

using OV::Bench::PinkNoise;

constexpr double sampleRate = 48000.0;
constexpr int maxBlock = 4096;
constexpr int rounds = 15;
const char* const lspUri = "http://lsp-plug.in/plugins/lv2/para_equalizer_x16_stereo";
const char* const ourUri = "urn:orvane-studio:varnel4-lin-phase-eq";

struct Configuration {
    std::string name;
    const char* uri;
    std::map<std::string, float> controls;
    int latencyLevel = -1; // ours only
};

std::vector<Configuration> Configurations()
{
    // Low shelf 100 Hz +6 dB; peaks 300 Hz -6, 1 kHz +6, 3 kHz -6, 8 kHz +6 at Q 1.41; high
    // shelf 12 kHz -6: on every band of both channels.
    const float hz[6] = {100, 300, 1000, 3000, 8000, 12000};
    const float db[6] = {6, -6, 6, -6, 6, -6};
    const float lspType[6] = {5, 1, 1, 1, 1, 3}; // lo-shelf, bell, high-shelf
    std::map<std::string, float> lsp = {{"enabled", 1}, {"g_in", 1}, {"g_out", 1}};
    std::map<std::string, float> ours;
    for (int band = 0; band < 6; ++band) {
        const std::string b = std::to_string(band);
        lsp["ft_" + b] = lspType[band];
        lsp["f_" + b] = hz[band];
        lsp["g_" + b] = static_cast<float>(std::pow(10.0, db[band] / 20.0));
        lsp["q_" + b] = 1.41f;
        const std::string o = "band_" + std::to_string(band + 1) + "_";
        ours[o + "active"] = 1;
        ours[o + "freq"] = hz[band];
        ours[o + "gain"] = db[band];
        ours[o + "q_peaking"] = 1.41f;
        ours[o + "q_shelving"] = 1.0f;
    }
    std::map<std::string, float> lspFir = lsp;
    lsp["mode"] = 0;
    lspFir["mode"] = 1;
    return {{"LSP x16 stereo, IIR", lspUri, lsp},
            {"LSP x16 stereo, FIR", lspUri, lspFir},
            {"ours, level Low", ourUri, ours, 0},
            {"ours, level Mid", ourUri, ours, 1},
            {"ours, level High, linear phase", ourUri, ours, 2}};
}

class UridMap {
public:
    LV2_URID Map(const char* uri)
    {
        const auto found = ids.find(uri);
        if (found != ids.end())
            return found->second;
        const LV2_URID id = static_cast<LV2_URID>(ids.size() + 1);
        ids.emplace(uri, id);
        return id;
    }
    LV2_URID_Map feature{this, [](LV2_URID_Map_Handle self, const char* uri) { return static_cast<UridMap*>(self)->Map(uri); }};

private:
    std::map<std::string, LV2_URID> ids;
};

// One instance with every port connected: audio to the noise and the output buffers, controls
// to values, atom ports to empty sequences.
class Instance {
public:
    Instance(LilvWorld* world, const LilvPlugin* plugin, const Configuration& config, UridMap& urids)
        : sequenceType(urids.Map(LV2_ATOM__Sequence))
    {
        options[0] = {LV2_OPTIONS_INSTANCE, 0, urids.Map(LV2_BUF_SIZE__maxBlockLength), sizeof(int32_t),
                      urids.Map(LV2_ATOM__Int), &maxBlockLength};
        options[1] = {LV2_OPTIONS_INSTANCE, 0, urids.Map(LV2_BUF_SIZE__minBlockLength), sizeof(int32_t),
                      urids.Map(LV2_ATOM__Int), &minBlockLength};
        options[2] = {LV2_OPTIONS_INSTANCE, 0, 0, 0, 0, nullptr};
        const LV2_Feature mapFeature = {LV2_URID__map, &urids.feature};
        const LV2_Feature optionsFeature = {LV2_OPTIONS__options, options};
        const LV2_Feature boundedFeature = {LV2_BUF_SIZE__boundedBlockLength, nullptr};
        const LV2_Feature* features[] = {&mapFeature, &optionsFeature, &boundedFeature, nullptr};
        instance = lilv_plugin_instantiate(plugin, sampleRate, features);
        if (instance == nullptr)
            return;
        LilvNode* audio = lilv_new_uri(world, LILV_URI_AUDIO_PORT);
        LilvNode* control = lilv_new_uri(world, LILV_URI_CONTROL_PORT);
        LilvNode* input = lilv_new_uri(world, LILV_URI_INPUT_PORT);
        LilvNode* atom = lilv_new_uri(world, LV2_ATOM__AtomPort);
        const unsigned count = lilv_plugin_get_num_ports(plugin);
        values.assign(count, 0.0f);
        atoms.resize(count);
        for (unsigned p = 0; p < count; ++p) {
            const LilvPort* port = lilv_plugin_get_port_by_index(plugin, p);
            const std::string symbol = lilv_node_as_string(lilv_port_get_symbol(plugin, port));
            const bool isInput = lilv_port_is_a(plugin, port, input);
            if (lilv_port_is_a(plugin, port, audio)) {
                const bool left = symbol.back() == 'l' || symbol.back() == 'L';
                (isInput ? audioIn : audioOut)[left ? 0 : 1] = p;
            } else if (lilv_port_is_a(plugin, port, control)) {
                if (symbol == "latency")
                    latencyPort = static_cast<int>(p);
                LilvNode* fallback = nullptr;
                lilv_port_get_range(plugin, port, &fallback, nullptr, nullptr);
                values[p] = fallback != nullptr ? lilv_node_as_float(fallback) : 0.0f;
                lilv_node_free(fallback);
                const auto set = config.controls.find(symbol);
                if (set != config.controls.end())
                    values[p] = set->second;
                lilv_instance_connect_port(instance, p, &values[p]);
            } else if (lilv_port_is_a(plugin, port, atom)) {
                atoms[p].assign(8192 / sizeof(std::uint64_t), 0);
                atomInputs.push_back(isInput);
                atomPorts.push_back(p);
                lilv_instance_connect_port(instance, p, atoms[p].data());
            } else {
                lilv_instance_connect_port(instance, p, nullptr);
            }
        }
        for (LilvNode* node : {audio, control, input, atom})
            lilv_node_free(node);
        lilv_instance_activate(instance);
    }
    ~Instance()
    {
        if (instance != nullptr) {
            lilv_instance_deactivate(instance);
            lilv_instance_free(instance);
        }
    }
    bool Ready() const { return instance != nullptr; }
    // The reported latency in frames, or -1 without a latency port.
    int Latency() const { return latencyPort < 0 ? -1 : static_cast<int>(values[static_cast<std::size_t>(latencyPort)]); }

    // The whole signal in blocks; seconds of wall time.
    double Run(const std::vector<float>& left, const std::vector<float>& right, int block)
    {
        std::vector<float> outL(static_cast<std::size_t>(block)), outR(outL.size());
        const auto start = std::chrono::steady_clock::now();
        for (std::size_t done = 0; done + static_cast<std::size_t>(block) <= left.size(); done += static_cast<std::size_t>(block)) {
            for (std::size_t a = 0; a < atomPorts.size(); ++a) {
                auto* sequence = reinterpret_cast<LV2_Atom_Sequence*>(atoms[atomPorts[a]].data());
                sequence->atom.type = atomInputs[a] ? sequenceType : 0;
                sequence->atom.size = atomInputs[a] ? sizeof(LV2_Atom_Sequence_Body) : 8192 - sizeof(LV2_Atom);
                sequence->body = {0, 0};
            }
            lilv_instance_connect_port(instance, audioIn[0], const_cast<float*>(left.data() + done));
            lilv_instance_connect_port(instance, audioIn[1], const_cast<float*>(right.data() + done));
            lilv_instance_connect_port(instance, audioOut[0], outL.data());
            lilv_instance_connect_port(instance, audioOut[1], outR.data());
            lilv_instance_run(instance, static_cast<uint32_t>(block));
        }
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    }

private:
    LilvInstance* instance = nullptr;
    int32_t maxBlockLength = maxBlock;
    int32_t minBlockLength = 1;
    LV2_Options_Option options[3];
    LV2_URID sequenceType;
    std::vector<float> values;
    std::vector<std::vector<std::uint64_t>> atoms;
    std::vector<unsigned> atomPorts;
    std::vector<bool> atomInputs;
    unsigned audioIn[2] = {};
    unsigned audioOut[2] = {};
    int latencyPort = -1;
};

}  // namespace

int main(int argc, char** argv)
{
    std::vector<int> blocks;
    for (int i = 1; i < argc; ++i) {
        const int block = std::atoi(argv[i]);
        if (block < 1 || block > maxBlock) {
            std::fprintf(stderr, "v4_lv2_timing: a block is 1 to %d frames, not '%s'\n", maxBlock, argv[i]);
            return 2;
        }
        blocks.push_back(block);
    }
    if (blocks.empty())
        blocks = {32, 256, 1024};

    LilvWorld* world = lilv_world_new();
    lilv_world_load_all(world);
    UridMap urids;
    const std::vector<Configuration> configurations = Configurations();
    std::vector<std::unique_ptr<Instance>> instances;
    for (const Configuration& config : configurations) {
        if (config.latencyLevel >= 0)
            OV::Platform::RegistryKey("Varnel4 Lin Phase EQ", "Orvane Studio", 0)
                .WriteString("Main.LatencyLevel", std::to_string(config.latencyLevel));
        LilvNode* uri = lilv_new_uri(world, config.uri);
        const LilvPlugin* plugin = lilv_plugins_get_by_uri(lilv_world_get_all_plugins(world), uri);
        lilv_node_free(uri);
        instances.push_back(plugin != nullptr ? std::make_unique<Instance>(world, plugin, config, urids) : nullptr);
        if (instances.back() == nullptr || !instances.back()->Ready())
            std::fprintf(stderr, "v4_lv2_timing: cannot load %s (%s)\n", config.name.c_str(), config.uri);
    }

    const std::vector<float> left = PinkNoise(static_cast<std::size_t>(sampleRate) * 4, 1);
    const std::vector<float> right = PinkNoise(left.size(), 2);
    for (const int block : blocks) {
        const double frames = static_cast<double>(left.size() / static_cast<std::size_t>(block) * static_cast<std::size_t>(block));
        std::vector<std::vector<double>> times(configurations.size());
        for (int round = 0; round < rounds; ++round) {
            for (std::size_t c = 0; c < configurations.size(); ++c) {
                if (instances[c] != nullptr && instances[c]->Ready())
                    times[c].push_back(instances[c]->Run(left, right, block) / frames * 1e9);
            }
        }
        std::printf("block %d, median of %d interleaved rounds, ns per stereo frame:\n", block, rounds);
        if (block == blocks.front()) {
            for (std::size_t c = 0; c < configurations.size(); ++c) {
                if (instances[c] != nullptr && instances[c]->Latency() >= 0)
                    std::printf("  (%s reports a latency of %d frames)\n", configurations[c].name.c_str(), instances[c]->Latency());
            }
        }
        double reference = 0.0;
        for (std::size_t c = 0; c < configurations.size(); ++c) {
            if (times[c].empty())
                continue;
            std::nth_element(times[c].begin(), times[c].begin() + rounds / 2, times[c].end());
            const double median = times[c][rounds / 2];
            if (reference == 0.0)
                reference = median;
            std::printf("  %-34s %8.1f  %5.2fx  %7.0fx realtime\n", configurations[c].name.c_str(), median,
                        median / reference, 1e9 / median / sampleRate);
        }
    }
    instances.clear();
    lilv_world_free(world);
    return 0;
}
