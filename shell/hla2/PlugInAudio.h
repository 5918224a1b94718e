#pragma once

#include "shell/include/varnel4/hla2.h"

namespace OV::HLA2 {

// Process-wide audio notifications, as a table for the host.
class PlugInAudio {
public:
    PlugInAudio();
    PlugInAudio(const PlugInAudio&) = delete;
    PlugInAudio& operator=(const PlugInAudio&) = delete;

    virtual void NotifyAudioOn() = 0;
    virtual void NotifyAudioOff() = 0;
    virtual ~PlugInAudio() = default;

    static HLA2PlugInAudio* ToTable(PlugInAudio* object) { return object ? &object->table : nullptr; }

private:
    HLA2PlugInAudio table;
};

}  // namespace OV::HLA2
