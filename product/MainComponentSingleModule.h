#pragma once

#include "docview/utils/BasicComponent.h"
#include "docview/utils/BasicComponentProfile.h"

#include <memory>
#include <string>

namespace OV::CFW::Res {
class ResourceSet;
}

namespace OV::CFW::DocViewUtils {
class BasicPrograms;
}

namespace OV::Products::VN4 {

class ComponentContext;
class MAFWrapper;
class MainAudioMAFSingleModule;
class MainAutomationSingleModule;
class MainDocumentSingleModule;
class MainMAFSingle;
class ModuleComponent;

// Where an instance finds its preset folders: the user's, and the factory presets it is seeded
// from on first use.
struct PresetFolders {
    std::string presetPath;
    std::string factoryPath;
};

// Declares the product's top component: its GUID, name and role profiles.
class MainComponentProfileSingleModule : public CFW::DocViewUtils::BasicComponentProfile {
public:
    static MainComponentProfileSingleModule& Instance();

private:
    MainComponentProfileSingleModule();
};

// The whole instance of the product: its context and scheduler thread, the module slot with
// the equaliser, the main document, the host's automation, programs, the MAF layer, the engine
// and the audio role.
// Main thread; built and destroyed while no audio runs through it.
class MainComponentSingleModule : public CFW::DocViewUtils::BasicComponent {
public:
    MainComponentSingleModule(CFW::Res::ResourceSet* resources, const PresetFolders& presets);
    ~MainComponentSingleModule() override;

    MainDocumentSingleModule& GetMainDocument() const { return *document; }
    ModuleComponent& GetModuleComponent() const { return *module; }
    MAFWrapper& GetWrapper() const { return *wrapper; }

private:
    std::unique_ptr<ComponentContext> context;
    std::unique_ptr<ModuleComponent> module;
    std::unique_ptr<MainDocumentSingleModule> document;
    std::unique_ptr<MainAutomationSingleModule> automation;
    std::unique_ptr<CFW::DocViewUtils::BasicPrograms> programs;
    std::unique_ptr<MainMAFSingle> maf;
    std::unique_ptr<MAFWrapper> wrapper;
    std::unique_ptr<MainAudioMAFSingleModule> audio;
};

}  // namespace OV::Products::VN4
