#include "product/MainAutomation.h"

#include "product/MainDocument.h"
#include "product/ModuleComponent.h"
#include "product/ModuleRegistry.h"

#include <stdexcept>

namespace OV::Products::VN4 {

using namespace Comp::AutomationRouter;

namespace {

const CFW::DocView::AutomationProfile& FirstModelProfile()
{
    const CFW::DocView::Profile* profile =
        Info::Instance().GetFactory().GetProfile(0).GetInterfaceProfile(typeid(CFW::DocView::AutomationProfile));
    if (const auto* automation = dynamic_cast<const CFW::DocView::AutomationProfile*>(profile))
        return *automation;
    throw std::logic_error("The first module has no automation profile");
}

// Host slot i is the i-th target of the first model.
std::shared_ptr<const Map> DefaultMap(const TargetTree& root)
{
    const std::shared_ptr<TargetTree> model = root.GetChild(0);
    auto map = std::make_shared<Map>(model->GetChildCount());
    for (int i = 0; i < model->GetChildCount(); ++i)
        map->Assign(i, model->GetChild(i)->GetTarget());
    return map;
}

}  // namespace

const MainAutomationProfileSingleModule& MainAutomationProfileSingleModule::Instance()
{
    static const MainAutomationProfileSingleModule profile(FirstModelProfile());
    return profile;
}

MainAutomationProfileSingleModule::MainAutomationProfileSingleModule(const CFW::DocView::AutomationProfile& model)
    : model(model)
{
}

MainAutomationSingleModule::MainAutomationSingleModule(const MainAutomationProfileSingleModule* profile,
                                                       CFW::DocView::AutomationContext* context,
                                                       MainDocumentSingleModule* document, ModuleComponent* module)
    : Automation(profile, context), document(document)
{
    auto root = std::make_shared<TargetTreeNode>("Module");
    module->GetAutomation().AddTargets(*root, "");
    store = std::make_unique<MapStore>(*this, root);
    store->InstallNow(DefaultMap(*root));
    serializer = std::make_unique<AutomationHelperSerializer>(*store, "Automation");
    document->AddSerializable(serializer.get());
}

MainAutomationSingleModule::~MainAutomationSingleModule()
{
    document->RemoveSerializable(serializer.get());
}

}  // namespace OV::Products::VN4
