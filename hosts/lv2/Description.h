#pragma once

#include "hosts/common/HostedProcess.h"

#include <string>
#include <vector>

namespace OV::Hosts::Lv2 {

// What the plug-in's turtle says of one automation slot, as the library answers for it.
struct SlotPort {
    std::string name;
    std::string symbol;
    float minimum;
    float maximum;
    float value;  // in a fresh process: the default
    bool toggled;
    bool logarithmic;
    const char* unit;  // an LV2 units name, or null
};

struct Preset {
    std::string label;  // "Folder/Name"
    std::string uri;
    std::vector<float> values;  // per slot
    std::string programChunk;
};

// Every slot of `process`, which the probing may change.
std::vector<SlotPort> DescribeSlots(HostedProcess& process);
// Each file as the program chunk and slot values a fresh process ends with after loading it.
std::vector<Preset> DescribePresets(HLA2PlugIn* plugIn, const std::vector<std::string>& labels,
                                    const std::vector<std::string>& paths);
// Lower case, words joined by '_': "Band 1 LP/HP Resonance" gives "band_1_lp_hp_resonance".
std::string SymbolOf(const std::string& name);

}  // namespace OV::Hosts::Lv2
