#pragma once

// Runs a module as the root of a host over whole signals.
#include "engine/core/ModuleHost.h"
#include "engine/core/ParametersManager.h"

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
    void Set(const std::string& name, float value) { host.GetRoot().SetParameter(name, value); }

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

}  // namespace OV::Testing
