#include "product/MainComponentSingleModule.h"

#include "docview/utils/BasicPrograms.h"
#include "product/ComponentContext.h"
#include "product/HLAConfig.h"
#include "product/MAFWrapper.h"
#include "product/MainAutomation.h"
#include "product/MainDocument.h"
#include "product/MainMAF.h"
#include "product/ModuleComponent.h"
#include "product/state/ProgramDocument.h"

#include <tinyxml.h>

namespace OV::Products::VN4 {

namespace {

// {2429F140-A34C-4C6C-BF23-3A5FBC13212E}
const Platform::Guid mainComponentId = {
    0x2429F140, 0xA34C, 0x4C6C, {0xBF, 0x23, 0x3A, 0x5F, 0xBC, 0x13, 0x21, 0x2E}};

class MainProgramsProfile : public CFW::DocView::ProgramsProfile {
public:
    static const MainProgramsProfile& Instance()
    {
        static const MainProgramsProfile profile;
        return profile;
    }
    int GetProgramCount() const override { return 16; }
};

// The host's programs, each starting as the instance's state at start-up.
class MainPrograms : public CFW::DocViewUtils::BasicPrograms {
public:
    MainPrograms(CFW::DocView::ComponentContext* context, CFW::DocView::Document* document)
        : BasicPrograms(&MainProgramsProfile::Instance(), context, document)
    {
        TiXmlElement initial("Program");
        document->Save(initial);
        for (int i = 0; i < MainProgramsProfile::Instance().GetProgramCount(); ++i) {
            names.push_back("Program " + std::to_string(i + 1));
            programs.push_back(initial);
        }
    }
};

}  // namespace

MainComponentProfileSingleModule& MainComponentProfileSingleModule::Instance()
{
    static MainComponentProfileSingleModule profile;
    return profile;
}

MainComponentProfileSingleModule::MainComponentProfileSingleModule()
    : BasicComponentProfile(mainComponentId, moduleName)
{
}

MainComponentSingleModule::MainComponentSingleModule(CFW::Res::ResourceSet* resources, const PresetFolders& presets)
    : BasicComponent(&MainComponentProfileSingleModule::Instance()), context(std::make_unique<ComponentContext>(resources))
{
    module = std::make_unique<ModuleComponent>(context.get());
    document = std::make_unique<MainDocumentSingleModule>(context->Find<CFW::DocView::DocumentContext>(), &module->GetDocument(),
                                                          presets.presetPath, presets.factoryPath);
    automation = std::make_unique<MainAutomationSingleModule>(&MainAutomationProfileSingleModule::Instance(),
                                                              context->Find<CFW::DocView::AutomationContext>(), document.get(),
                                                              module.get());
    // Host programs go through the decorator, so they carry the preset name and the automation map.
    programs = std::make_unique<MainPrograms>(context.get(), &document->GetProgramDocument());
    maf = std::make_unique<MainMAFSingle>(context->Find<CFW::DocView::MAFContext>(), document.get(), module.get());
    wrapper = std::make_unique<MAFWrapper>();
    audio = std::make_unique<MainAudioMAFSingleModule>(document.get(), maf.get(), wrapper.get());
    AddInterface(document.get());
    AddInterface(automation.get());
    AddInterface(programs.get());
    AddInterface(maf.get());
    AddInterface(audio.get());
    maf->Attach(wrapper.get(), "");
}

MainComponentSingleModule::~MainComponentSingleModule()
{
    context->GetScheduler()->Stop();
    maf->Detach();
    audio.reset();
    maf.reset();
    wrapper.reset();
    programs.reset();
    automation.reset();
    document.reset();
    module.reset();
}

}  // namespace OV::Products::VN4
