#include "shell/hla2/PlugInAudio.h"

#include "shell/hla2/Boundary.h"

namespace OV::HLA2 {

PlugInAudio::PlugInAudio() : table{}
{
    table.NotifyAudioOn = [](HLA2PlugInAudio* t) {
        Guarded([&] { static_cast<PlugInAudio*>(t->object)->NotifyAudioOn(); });
    };
    table.NotifyAudioOff = [](HLA2PlugInAudio* t) {
        Guarded([&] { static_cast<PlugInAudio*>(t->object)->NotifyAudioOff(); });
    };
    table.object = this;
}

}  // namespace OV::HLA2
