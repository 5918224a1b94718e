#pragma once

#include "hosts/common/HostedProcess.h"

#include <string>
#include <vector>

class TiXmlDocument;

namespace OV::Hosts {

// Where the plug-in keeps presets: the user's folder and the factory set.
struct PresetFolders {
    std::string user;
    std::string factory;

    // As the plug-in's registry names them.
    static PresetFolders FromRegistry();
    // Every preset file under both, as "Folder/Name" relative to its root, sorted.
    std::vector<std::string> List() const;
    // A path as given, or a name ("Vocals/Air", or "Air" when only one preset has that name).
    // Throws HostError(BadPreset) when there is none, or several.
    std::string Find(const std::string& preset) const;
};

// A state file read whole; `what` names it in the HostError(BadPreset) thrown when it cannot be
// read or is too large to be one.
std::string ReadStateFile(const std::string& path, const char* what);

std::string PrintXml(const TiXmlDocument& document);

// A preset file (".vn4m" or ".vn4p") as the program chunk that loads it, with the preset's
// name. Throws HostError(BadPreset) for a file that is not a preset.
std::string PresetAsProgram(const std::string& path);

// The range of a slot in plain values, found by asking the plug-in for both ends.
struct SlotRange {
    float lowest;
    float highest;
};
SlotRange FindRange(HostedProcess& probe, int slot);

}  // namespace OV::Hosts
