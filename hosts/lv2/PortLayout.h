#pragma once

#include <cmath>

// The LV2 plug-in's ports and names, shared by the plug-in and the generator of its turtle.
namespace OV::Hosts::Lv2 {

constexpr const char* pluginUri = "urn:orvane-studio:varnel4-lin-phase-eq";
constexpr const char* programChunkUri = "urn:orvane-studio:varnel4-lin-phase-eq#programChunk";
constexpr const char* binaryName = "varnel4-lv2.so";
constexpr const char* libraryName = "libvarnel4.so";

enum Port : unsigned {
    InputLeft,
    InputRight,
    OutputLeft,
    OutputRight,
    Latency,       // output: the latency the library reports, in frames
    LatencyLevel,  // output: 0 low, 1 mid, 2 high
    MeterLeft,     // output: the block's output peak in dBFS
    MeterRight,
    FirstSlot,  // one input per automation slot from here
};

constexpr float meterFloor = -90.0f;

inline float PeakToDecibels(float peak)
{
    return peak > 0.0f ? std::fmax(20.0f * std::log10(peak), meterFloor) : meterFloor;
}

// The latency level from the reported latency: 4, 132 and 18564 frames at low, mid and high.
inline int LatencyLevelOf(int latency)
{
    return latency > 132 ? 2 : latency > 4 ? 1 : 0;
}

}  // namespace OV::Hosts::Lv2
