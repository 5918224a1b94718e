#include "product/ModuleAutomation.h"

#include "docview/interfaces/Component.h"
#include "product/ModuleDocument.h"
#include "product/ModuleRegistry.h"

namespace OV::Products::VN4 {

using Comp::AutomationRouter::Target;
using Comp::AutomationRouter::TargetTreeLeaf;
using Comp::AutomationRouter::TargetTreeNode;

namespace {

// The automation profile of model `index`, or the slot's own empty one for a model without.
const CFW::DocView::AutomationProfile* ModelProfile(int index)
{
    const CFW::DocView::Profile* profile =
        Info::Instance().GetFactory().GetProfile(index).GetInterfaceProfile(typeid(CFW::DocView::AutomationProfile));
    if (const auto* automation = dynamic_cast<const CFW::DocView::AutomationProfile*>(profile))
        return automation;
    return &ModuleAutomationProfile::Instance();
}

}  // namespace

const ModuleAutomationProfile& ModuleAutomationProfile::Instance()
{
    static const ModuleAutomationProfile profile;
    return profile;
}

ModuleAutomationProfile::ModuleAutomationProfile() : BasicAutomationProfile("Module Selector") {}

ModuleAutomationSingleModule::ModuleAutomationSingleModule(CFW::DocView::AutomationContext* context, ModuleDocument* document)
    : BasicAutomation(&ModuleAutomationProfile::Instance(), context, document), document(document)
{
    for (int model = 0; model < Info::Instance().GetFactory().GetCount(); ++model)
        fakes.push_back(std::make_unique<CFW::DocViewUtils::FakeAutomation>(ModelProfile(model)));
    OnChildChanged(document->GetChild());
    document->AddChildListener(this);
}

// The stand-ins leave the child's automation before the reference that keeps it goes.
ModuleAutomationSingleModule::~ModuleAutomationSingleModule()
{
    document->RemoveChildListener(this);
    for (const std::unique_ptr<CFW::DocViewUtils::FakeAutomation>& fake : fakes)
        fake->SetTarget(nullptr);
}

void ModuleAutomationSingleModule::OnChildChanged(const std::shared_ptr<CFW::DocView::Component>& child)
{
    CFW::DocView::Automation* automation = child ? CFW::DocView::FindInterface<CFW::DocView::Automation>(*child) : nullptr;
    // Shares the child's ownership: the component outlives every stand-in's use of it.
    std::shared_ptr<CFW::DocView::Automation> held(child, automation);
    const int model = static_cast<int>(document->GetParameter(ModuleDocumentProfile::Model).AsEnum());
    for (int i = 0; i < GetFakeCount(); ++i)
        fakes[static_cast<std::size_t>(i)]->SetTarget(i == model ? automation : nullptr);
    childAutomation = std::move(held);
}

void ModuleAutomationSingleModule::AddTargets(TargetTreeNode& node, const std::string& path)
{
    const CFW::DocViewUtils::ComponentFactory& factory = Info::Instance().GetFactory();
    for (int model = 0; model < GetFakeCount(); ++model) {
        CFW::DocViewUtils::FakeAutomation& fake = GetFake(model);
        const CFW::DocView::AutomationProfile& slots = *fake.GetProfile();
        const CFW::DocView::ComponentProfile& component = factory.GetProfile(model);
        auto modelNode = std::make_shared<TargetTreeNode>(component.GetName());
        for (int slot = 0; slot < slots.GetSlotCount(); ++slot) {
            auto target = std::make_shared<Target>(
                Target{&fake, slot, "Module", slots.GetSlotName(slot), slots.GetSlotShortName(slot)});
            modelNode->AddChild(std::make_shared<TargetTreeLeaf>(
                Comp::AutomationRouter::MakeTargetPath(component.GetId(), target->shortName, path), target));
        }
        node.AddChild(std::move(modelNode));
    }
}

}  // namespace OV::Products::VN4
