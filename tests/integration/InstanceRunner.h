#pragma once

// A process of the built library with the host side around it: the library acquired, channel
// counts, rate and block size set, blocks run, chunks taken and given; all undone at the end.
// Beside it, what the tests through the exports share.
#include "tests/support/TestHost.h"

#include <tinyxml.h>

#include <cstdint>
#include <initializer_list>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace OV::Testing {

// Attribute names and values; a null value removes the attribute.
using AttributeEdits = std::initializer_list<std::pair<const char*, const char*>>;

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
    void RunSilence(std::size_t frames) { Run(std::vector<float>(frames), std::vector<float>(frames)); }
    std::string GetProgramChunk() { return Chunk(process->GetProgramChunk); }
    std::string GetBankChunk() { return Chunk(process->GetBankChunk); }
    void SetProgramChunk(const std::string& text) { process->SetProgramChunk(process, text.c_str(), int(text.size())); }
    void SetBankChunk(const std::string& text) { process->SetBankChunk(process, text.c_str(), int(text.size())); }
    // Gives back the present program with the module's attributes edited (without waiting).
    void EditProgram(AttributeEdits edits);

private:
    std::string Chunk(int (*get)(HLA2Process*, void**));

    const LibraryCopy& library;
    TestHost host;
    HLA2PlugIn* plugIn;
    HLA2Process* process;
    int block;
};

// The chunk with `edits` made on every element of the given name.
std::string Edited(const std::string& chunk, AttributeEdits edits, const char* name = "Module");
std::map<std::string, std::string> AttributesOf(const TiXmlElement* element);
// The attributes of the module in a program chunk's first slot.
std::map<std::string, std::string> ModuleOf(const std::string& chunk);
// Uniform noise in [-0.5, 0.5) from a fixed seed.
std::vector<float> Noise(std::size_t frames, std::uint32_t seed);
std::vector<float> Impulse(std::size_t frames, float height);
// A channel's output from the latency of level 0 on: the response to an impulse at 0.
inline std::vector<float> Response(const std::vector<float>& channel) { return {channel.begin() + 4, channel.end()}; }

// Each test with a configuration folder of its own, where the latency level is set.
class InstanceFixture : public testing::Test {
protected:
    void SetUp() override;
    void SetLatencyLevel(int level);

    ScratchFolder config;
};

}  // namespace OV::Testing
