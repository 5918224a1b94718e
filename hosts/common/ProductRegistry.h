#pragma once

#include "platform/RegistryKey.h"

namespace OV::Hosts {

// The registry key under which the plug-in keeps its paths and the user's preferences.
inline Platform::RegistryKey ProductRegistry()
{
    return Platform::RegistryKey("Varnel4 Lin Phase EQ", "Orvane Studio", 0);
}

// The preference that holds the latency level: "0" low, "1" mid, "2" high.
constexpr const char* latencyLevelPreference = "Main.LatencyLevel";

}  // namespace OV::Hosts
