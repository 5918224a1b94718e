#include "product/HLAConfig.h"

#include "docview/utils/PreferencesManager.h"
#include "platform/RegistryKey.h"
#include "product/BuildCode.h"
#include "product/MainComponentSingleModule.h"
#include "shell/framework/GUI.h"
#include "shell/framework/PlugIn.h"
#include "shell/framework/Process.h"

namespace OV::Products::VN4 {

bool HLAConfig::Initialise()
{
    std::string downloadable;
    const Platform::RegistryKey key(moduleName, CFW::HLAFramework::makerName, 0);
    standalone = key.ReadString("Downloadable", downloadable) && downloadable == "1";
    CFW::DocViewUtils::PreferencesManager::Instance().SetRegistry(key);
    return true;
}

const char* HLAConfig::GetProductName() const
{
    return standalone ? moduleName : "Varnel4";
}

void HLAConfig::GetVersionStrings(std::string& version, std::string& build) const
{
    version = "3.1.2";
    build = MakeBuildCode(__DATE__);
}

HLA2::Process* HLAConfig::CreateProcess(HLA2Host* host, int)
{
    const CFW::HLAFramework::PlugIn& plugIn = CFW::HLAFramework::ThePlugIn();
    const PresetFolders presets{plugIn.GetPaths().GetPresetPath(), plugIn.GetPaths().GetFactoryPresetPath()};
    return new CFW::HLAFramework::Process(host, new MainComponentSingleModule(plugIn.GetResources(), presets), 0, 2, 2);
}

HLA2::GUI* HLAConfig::CreateGUI(HLA2::Process* process, void*)
{
    return new CFW::HLAFramework::GUI(process);
}

}  // namespace OV::Products::VN4

namespace OV::CFW::HLAFramework {

HLAConfig& ProductConfig()
{
    static Products::VN4::HLAConfig config;
    return config;
}

}  // namespace OV::CFW::HLAFramework
