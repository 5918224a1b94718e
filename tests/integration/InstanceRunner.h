#pragma once

// A process of the built library with the host side around it: the library acquired, channel
// counts, rate and block size set, blocks run, chunks taken and given; all undone at the end.
#include "tests/support/TestHost.h"

#include <string>
#include <vector>

namespace OV::Testing {

class InstanceRunner {
public:
    explicit InstanceRunner(const LibraryCopy& library, float rate = 48000.0f, int block = 512);
    ~InstanceRunner();
    InstanceRunner(const InstanceRunner&) = delete;
    InstanceRunner& operator=(const InstanceRunner&) = delete;

    HLA2Process* Process() const { return process; }
    TestHost& Host() { return host; }
    // Runs both channels through in blocks; returns the outputs.
    std::vector<std::vector<float>> Run(const std::vector<float>& left, const std::vector<float>& right);
    std::string GetProgramChunk();
    std::string GetBankChunk();
    void SetProgramChunk(const std::string& text);
    void SetBankChunk(const std::string& text);

private:
    const LibraryCopy& library;
    TestHost host;
    HLA2PlugIn* plugIn;
    HLA2Process* process;
    int block;
};

}  // namespace OV::Testing
