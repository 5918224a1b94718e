#pragma once

#include "hosts/render/Settings.h"
#include "hosts/render/Source.h"

#include <atomic>
#include <mutex>
#include <string>
#include <vector>

namespace OV::Hosts::Render {

// What every render of one run shares. The plug-in's main-thread entries (making, setting up
// and destroying processes) are taken one at a time under `mainThread`; only the audio of
// several files runs at once.
struct RenderContext {
    HLA2PlugIn* plugIn;
    std::mutex* mainThread;
    const Settings* settings;
    int block;
    bool align;
    bool force;
    std::atomic<long long>* framesDone;  // across all files, for progress
    const std::atomic<bool>* interrupted;
};

struct RenderResult {
    long long frames = 0;
    int sampleRate = 0;
    int channels = 0;
    int latency = 0;
    double seconds = 0.0;      // wall time of the processing
    std::vector<float> peaks;  // of the output, per channel
};

// Runs `source` through a process of its own into `output` (libsndfile `format`). Without
// align the output is what a host would record, as long as the input; with align the first
// `latency` frames are dropped and as many frames of silence follow the input, so that the
// output lines up with the input sample for sample. Throws HostError.
RenderResult Render(const RenderContext& context, Source& source, const std::string& output, int format);

// A process with the settings of the run, made and destroyed under the main-thread lock.
class SetUpProcess {
public:
    SetUpProcess(const RenderContext& context, float rate, int channels);
    ~SetUpProcess();
    SetUpProcess(const SetUpProcess&) = delete;
    SetUpProcess& operator=(const SetUpProcess&) = delete;

    HostedProcess& operator*() { return *process; }
    HostedProcess* operator->() { return process.get(); }

private:
    std::mutex& mainThread;
    std::unique_ptr<HostedProcess> process;
};

}  // namespace OV::Hosts::Render
