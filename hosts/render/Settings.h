#pragma once

#include "hosts/common/HostedProcess.h"
#include "hosts/common/PresetFiles.h"
#include "hosts/render/Options.h"

#include <string>
#include <vector>

namespace OV::Hosts::Render {

// The state the command line asks for, checked once against the plug-in, then applied to the
// process of each file.
class Settings {
public:
    // Reads the chunk and preset files and finds the slots and their values, through `probe`,
    // a process the check may change. Throws HostError: BadPreset for a file that is not a
    // preset or chunk, BadArgument for an unknown slot, a value out of range or a bad mode.
    static Settings Resolve(const Options& options, const PresetFolders& folders, HostedProcess& probe);

    // Hands everything to the process and waits until it has taken it all.
    void ApplyTo(HostedProcess& process) const;

private:
    struct SlotWrite {
        int slot;
        float value;
        bool normalised;
    };

    std::string chunk;
    bool chunkIsBank = false;
    std::string preset;       // as a program chunk
    std::string channelMode;  // "L/R", "M/S" or empty
    std::vector<SlotWrite> writes;
};

// Finds a slot by number or by name (without regard to case). Throws HostError(BadArgument).
int FindSlot(HostedProcess& process, const std::string& slot);

}  // namespace OV::Hosts::Render
