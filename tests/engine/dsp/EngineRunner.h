#pragma once

// Runs a module as the root of a host over whole signals.
#include "engine/core/ModuleHost.h"
#include "engine/core/ParametersManager.h"
#include "tests/engine/dsp/EqOracle.h"

#include <algorithm>
#include <vector>

namespace OV::Testing {

template <typename Module>
struct RootTraits {
    using Root = Module;
    using Manager = AudioEngine::ParametersManager;
    static constexpr float rampTime = 0.1f;
};

template <typename Module>
class EngineRunner {
public:
    explicit EngineRunner(float rate = 48000.0f)
    {
        host.SetSampleRate(rate);
        static_cast<AudioEngine::Module&>(host.GetRoot()).SampleRateChanged();
    }

    Module& Root() { return host.GetRoot(); }
    AudioEngine::ModuleHost<RootTraits<Module>>& Host() { return host; }
    AudioEngine::ParametersManager& Queue() { return host.GetParametersManager(); }
    void Set(const std::string& name, float value) { host.GetRoot().SetParameter(name, value); }
    float Get(const std::string& name) { return host.GetRoot().GetParameter(name)->GetValue(); }

    // Runs the channels through in host blocks of `block` samples; returns the outputs.
    std::vector<std::vector<float>> Run(std::vector<std::vector<float>> inputs, int block = 512, int outputs = -1)
    {
        const std::size_t length = inputs.front().size();
        const std::size_t channels = outputs < 0 ? inputs.size() : static_cast<std::size_t>(outputs);
        std::vector<std::vector<float>> result(channels, std::vector<float>(length));
        std::vector<float*> in(inputs.size()), out(channels);
        for (std::size_t done = 0; done < length;) {
            const int count = static_cast<int>(std::min<std::size_t>(static_cast<std::size_t>(block), length - done));
            for (std::size_t c = 0; c < inputs.size(); ++c)
                in[c] = inputs[c].data() + done;
            for (std::size_t c = 0; c < channels; ++c)
                out[c] = result[c].data() + done;
            host.ProcessHostBlock(in.data(), out.data(), count);
            done += static_cast<std::size_t>(count);
        }
        return result;
    }

    std::vector<float> RunMono(const std::vector<float>& input, int block = 512) { return Run({input}, block)[0]; }
    // `length` samples of `level` on both inputs of a stereo root; returns the left output.
    std::vector<float> RunDc(float level, std::size_t length = 64, int block = 64)
    {
        const std::vector<float> dc(length, level);
        return Run({dc, dc}, block)[0];
    }

private:
    AudioEngine::ModuleHost<RootTraits<Module>> host;
};

// The host's re-framing delays everything by this much.
constexpr int hostDelay = 4;

inline std::vector<float> Impulse(std::size_t length, std::size_t at = 0)
{
    std::vector<float> signal(length, 0.0f);
    signal[at] = 1.0f;
    return signal;
}

inline std::vector<float> Sine(std::size_t length, double frequency, double rate, float amplitude = 0.5f)
{
    std::vector<float> signal(length);
    for (std::size_t i = 0; i < length; ++i)
        signal[i] = amplitude * static_cast<float>(std::sin(2.0 * M_PI * frequency * static_cast<double>(i) / rate));
    return signal;
}

// A band of a filter chain; q is the Q or slope of the band's type.
struct Band {
    int type;
    float gain, frequency, q;
};

template <typename Runner>
void SetBand(Runner& runner, int index, const Band& band)
{
    const char* q = band.type == OraclePeak ? "Q_Peaking"
        : band.type == OracleLowShelf || band.type == OracleHiShelf ? "Q_Shelving" : "Q_LPHP";
    runner.Set(AudioEngine::BandName("Active", index), 1.0f);
    runner.Set(AudioEngine::BandName("Mode", index), static_cast<float>(band.type));
    runner.Set(AudioEngine::BandName("Gain", index), band.gain);
    runner.Set(AudioEngine::BandName("F", index), band.frequency);
    runner.Set(AudioEngine::BandName(q, index), band.q);
}

}  // namespace OV::Testing
