#pragma once

#include "hosts/common/HostedProcess.h"
#include "hosts/common/PlugInLibrary.h"

#include <memory>
#include <string>
#include <vector>

namespace OV::Hosts::Lv2 {

// One instance of the LV2 plug-in: a process of the library behind the LV2 ports. Control
// inputs become slot writes only when they change; any run length is cut into the blocks the
// process was set up for.
//
// Run and ConnectPort are the audio thread's; the rest, the host's instantiation thread.
class Lv2Plugin {
public:
    // Throws std::runtime_error when the library in `bundle` cannot be loaded or refuses.
    Lv2Plugin(const std::string& bundle, double rate, int blockSize);
    ~Lv2Plugin();

    void ConnectPort(unsigned port, void* data);
    // Starts the process afresh, no memory of earlier audio, with the controls as they are now.
    void Activate();
    void Run(unsigned frames);

    std::string GetProgramChunk();
    void SetProgramChunk(const std::string& text);

private:
    void ApplyControls();
    // After the library's state changed from outside the ports.
    void ReadBack();

    PlugInLibrary library;
    std::unique_ptr<HostedProcess> process;
    int blockSize;
    float* audio[4] = {};
    float* latencyOut = nullptr;
    float* levelOut = nullptr;
    float* meters[2] = {};
    std::vector<const float*> controls;
    std::vector<float> lastControls;
    std::vector<float> scratch[2];  // the input when the host processes in place
    int latency = 0;
};

}  // namespace OV::Hosts::Lv2
