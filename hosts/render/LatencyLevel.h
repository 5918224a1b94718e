#pragma once

#include <string>

namespace OV::Hosts::Render {

// The plug-in's latency level is a preference of the user, shared by every instance and kept
// in the registry. A render that asks for a level of its own gets a private registry for this
// process, so the user's preference stays as it is. Make it before the library is loaded.
class LatencyLevel {
public:
    // "low", "mid" (or "med") or "high", any case. Throws HostError(BadArgument) for another
    // name and HostError(Failed) when the private registry cannot be made.
    explicit LatencyLevel(const std::string& level);
    // Removes the private registry.
    ~LatencyLevel();
    LatencyLevel(const LatencyLevel&) = delete;
    LatencyLevel& operator=(const LatencyLevel&) = delete;

private:
    std::string folder;
};

}  // namespace OV::Hosts::Render
