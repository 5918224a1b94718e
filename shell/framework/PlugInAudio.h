#pragma once

#include "shell/hla2/PlugInAudio.h"

#include <boost/signals2/signal.hpp>

namespace OV::CFW::HLAFramework {

// Process-wide audio on/off notice from the host. Any thread.
class PlugInAudio : public HLA2::PlugInAudio {
public:
    // Made on first request; lives until the library is unloaded.
    static PlugInAudio& Instance();

    void NotifyAudioOn() override;
    void NotifyAudioOff() override;

    boost::signals2::signal<void(bool)> audioChanged;

private:
    PlugInAudio() = default;
    friend struct std::default_delete<PlugInAudio>;
    ~PlugInAudio() override = default;
};

}  // namespace OV::CFW::HLAFramework
