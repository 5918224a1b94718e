#include "shell/hla2/PlugIn.h"

#include "shell/hla2/Boundary.h"
#include "shell/hla2/GUI.h"
#include "shell/hla2/PlugInAudio.h"
#include "shell/hla2/Process.h"

namespace OV::HLA2 {

namespace {

PlugIn* Self(HLA2PlugIn* table)
{
    return static_cast<PlugIn*>(table->object);
}

}  // namespace

PlugIn::PlugIn() : table{}
{
    table.GetProcessCount = [](HLA2PlugIn* t) {
        return Guarded(0, [&] { return Self(t)->GetProcessCount(); });
    };
    table.CreateProcess = [](HLA2PlugIn* t, HLA2Host* host, int kind) {
        return Guarded<HLA2Process*>(nullptr, [&] {
            return Process::ToTable(Self(t)->CreateProcess(host, kind));
        });
    };
    table.DestroyProcess = [](HLA2PlugIn* t, HLA2Process* process) {
        Guarded([&] { Self(t)->DestroyProcess(Process::FromTable(process)); });
    };
    table.GetGUI = [](HLA2PlugIn* t, HLA2Process* process) {
        return Guarded<HLA2GUI*>(nullptr, [&] {
            return GUI::ToTable(Self(t)->GetGUI(Process::FromTable(process)));
        });
    };
    table.GetPlugInAudio = [](HLA2PlugIn* t) {
        return Guarded<HLA2PlugInAudio*>(nullptr, [&] {
            return PlugInAudio::ToTable(Self(t)->GetPlugInAudio());
        });
    };
    table.GetVersionStrings = [](HLA2PlugIn* t, char* version, char* build) {
        Guarded([&] { Self(t)->GetVersionStrings(version, build); });
    };
    table.object = this;
}

}  // namespace OV::HLA2
