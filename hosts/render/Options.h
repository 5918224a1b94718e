#pragma once

#include <string>
#include <vector>

namespace OV::Hosts::Render {

// What the command line asks for, as given; Settings and the render check the values.
struct Options {
    struct SlotSetting {
        std::string slot;  // a name or a number
        std::string value;
        bool normalised;
    };

    std::vector<std::string> inputs;
    std::string output;        // one input, or the demo
    std::string outputFolder;  // several inputs
    std::string preset;        // a file, or a name in the preset folders
    std::string chunk;         // a file holding a program or a bank
    std::vector<SlotSetting> settings;
    std::string latency;       // empty: the user's preference
    std::string channelMode;   // empty: as the state has it
    std::string container;     // empty: from the output's name
    std::string depth;         // empty: the input's
    std::string response;      // a CSV file
    std::string library;
    int block = 1024;
    int jobs = 0;  // 0: one per core
    bool align = false;
    bool force = false;
    bool quiet = false;
    bool listSlots = false;
    bool listPresets = false;
    bool help = false;
};

// Throws std::invalid_argument with a message for the user.
Options ParseOptions(int argc, char** argv);

extern const char* const usageText;

}  // namespace OV::Hosts::Render
