#include "shell/framework/PlugIn.h"

#include "graphics/Device.h"
#include "graphics/res/ResourceSet.h"
#include "shell/framework/PlugInAudio.h"
#include "shell/hla2/GUI.h"
#include "shell/hla2/Process.h"

#include <cstring>

namespace OV::CFW::HLAFramework {

PlugIn::PlugIn(HLAConfig& config)
    : config(&config), paths(config.GetProductName(), makerName)
{
}

PlugIn::~PlugIn()
{
    DeleteProcesses();
}

bool PlugIn::StartUp()
{
    device.reset(Graphics::createDevice(0));
    resources = std::make_unique<Res::ResourceSet>(*device);
    Res::Provider& provider = resources->getProvider();
    int index = 0;
    for (std::string path; !(path = paths.GetResPath(index)).empty(); ++index)
        provider.addPath(path);
    if (index == 0)
        provider.addPath(paths.GetResPath());

    if (config->Initialise())
        return true;
    provider.clear();
    DeleteProcesses();
    resources.reset();
    device.reset();
    return false;
}

void PlugIn::TearDown()
{
    if (resources)
        resources->getProvider().clear();
    config->Finalise();
    DeleteProcesses();
    resources.reset();
    device.reset();
}

void PlugIn::DeleteProcesses()
{
    // A host should have destroyed its processes; those left are deleted and forgotten, so a
    // late DestroyProcess finds nothing to delete twice.
    for (auto& [process, entry] : processes) {
        delete entry.gui;
        delete process;
    }
    processes.clear();
}

int PlugIn::GetProcessCount()
{
    return config->GetProcessCount();
}

HLA2::Process* PlugIn::CreateProcess(HLA2Host* host, int kind)
{
    if (kind != 0)
        return nullptr;
    HLA2::Process* process = config->CreateProcess(host, kind);
    if (process != nullptr)
        processes[process] = Entry();
    return process;
}

void PlugIn::DestroyProcess(HLA2::Process* process)
{
    const auto found = processes.find(process);
    if (found == processes.end())
        return;
    delete found->second.gui;
    delete found->first;
    processes.erase(found);
}

HLA2::GUI* PlugIn::GetGUI(HLA2::Process* process)
{
    const auto found = processes.find(process);
    if (found == processes.end())
        return nullptr;
    Entry& entry = found->second;
    if (entry.gui == nullptr)
        entry.gui = config->CreateGUI(process, entry.first);
    return entry.gui;
}

HLA2::PlugInAudio* PlugIn::GetPlugInAudio()
{
    return &PlugInAudio::Instance();
}

void PlugIn::GetVersionStrings(char* version, char* build)
{
    std::string first;
    std::string second;
    config->GetVersionStrings(first, second);
    // Exactly the characters, no terminator: the host passes zeroed buffers.
    if (version != nullptr)
        std::memcpy(version, first.data(), first.size());
    if (build != nullptr)
        std::memcpy(build, second.data(), second.size());
}

}  // namespace OV::CFW::HLAFramework
