#pragma once

#include "shell/framework/HLAConfig.h"
#include "shell/framework/InstallPaths.h"
#include "shell/hla2/PlugIn.h"

#include <map>
#include <memory>

namespace OV::CFW::Graphics {
class Device;
}

namespace OV::CFW::Res {
class ResourceSet;
}

namespace OV::CFW::HLAFramework {

// The library's one plug-in: start-up and tear-down of the shared resources and the map of
// live processes with their editors. Main thread, no lock: hosts create, destroy and open
// editors there.
class PlugIn : public HLA2::PlugIn {
public:
    explicit PlugIn(HLAConfig& config);
    ~PlugIn() override;

    // The first acquire: device, resources, resource paths, the product's Initialise. On failure
    // nothing stays allocated.
    bool StartUp();
    // The last release: the product's Finalise, any processes the host left behind, resources
    // and device.
    void TearDown();

    int GetProcessCount() override;
    HLA2::Process* CreateProcess(HLA2Host* host, int kind) override;
    // Deletes the process's editor and then the process; unknown processes are ignored.
    void DestroyProcess(HLA2::Process* process) override;
    // The process's one editor, made on first request; null for an unknown process.
    HLA2::GUI* GetGUI(HLA2::Process* process) override;
    HLA2::PlugInAudio* GetPlugInAudio() override;
    void GetVersionStrings(char* version, char* build) override;

    const InstallPaths& GetPaths() const { return paths; }
    Res::ResourceSet* GetResources() const { return resources.get(); }
    const char* GetProductName() const { return config->GetProductName(); }

private:
    struct Entry {
        void* first = nullptr;
        HLA2::GUI* gui = nullptr;
    };

    void DeleteProcesses();

    HLAConfig* config;
    std::map<HLA2::Process*, Entry> processes;
    InstallPaths paths;
    std::unique_ptr<Graphics::Device> device;
    std::unique_ptr<Res::ResourceSet> resources;
};

// The library's single plug-in object.
PlugIn& ThePlugIn();

}  // namespace OV::CFW::HLAFramework
