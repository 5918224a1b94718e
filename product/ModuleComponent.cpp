#include "product/ModuleComponent.h"

#include "docview/interfaces/MAFContext.h"
#include "docview/interfaces/RoleContexts.h"

namespace OV::Products::VN4 {

namespace {

// {3BC74C36-8C40-44A4-BCDF-BAE761F52305}
const Platform::Guid moduleComponentId = {0x3BC74C36, 0x8C40, 0x44A4, {0xBC, 0xDF, 0xBA, 0xE7, 0x61, 0xF5, 0x23, 0x05}};

class ModuleMAFProfile : public CFW::DocViewUtils::BasicMAFProfile {
public:
    static const ModuleMAFProfile& Instance()
    {
        static const ModuleMAFProfile profile;
        return profile;
    }

private:
    ModuleMAFProfile() : BasicMAFProfile("Module") {}
};

}  // namespace

ModuleComponentProfile& ModuleComponentProfile::Instance()
{
    static ModuleComponentProfile profile;
    return profile;
}

ModuleComponentProfile::ModuleComponentProfile() : BasicComponentProfile(moduleComponentId, "Module") {}

ModuleMAF::ModuleMAF(CFW::DocView::MAFContext* context, ModuleDocument* document)
    : BasicMAF(&ModuleMAFProfile::Instance(), context, document), document(document)
{
    TakeChild(document->GetChild());
    document->AddChildListener(this);
}

ModuleMAF::~ModuleMAF()
{
    document->RemoveChildListener(this);
}

void ModuleMAF::OnChildChanged(const std::shared_ptr<CFW::DocView::Component>& next)
{
    if (childMAF != nullptr && engine != nullptr)
        childMAF->Detach();
    TakeChild(next);
    if (childMAF != nullptr && engine != nullptr)
        childMAF->Attach(engine, name);
}

void ModuleMAF::TakeChild(const std::shared_ptr<CFW::DocView::Component>& next)
{
    child = next;
    childMAF = child ? CFW::DocView::FindInterface<CFW::DocView::MAF>(*child) : nullptr;
}

void ModuleMAF::Attach(CFW::DocView::MAFWrapper* wrapper, const std::string& prefix)
{
    engine = wrapper;
    name = prefix;
    BasicMAF::Attach(wrapper, prefix);
    if (childMAF != nullptr)
        childMAF->Attach(wrapper, prefix);
}

void ModuleMAF::Detach()
{
    engine = nullptr;
    BasicMAF::Detach();
    if (childMAF != nullptr)
        childMAF->Detach();
}

void ModuleMAF::Update()
{
    BasicMAF::Update();
    if (childMAF != nullptr)
        childMAF->Update();
}

void ModuleMAF::Poll()
{
    BasicMAF::Poll();
    if (childMAF != nullptr)
        childMAF->Poll();
}

void ModuleMAF::Idle()
{
    BasicMAF::Idle();
    if (childMAF != nullptr)
        childMAF->Idle();
}

ModuleComponent::ModuleComponent(CFW::DocView::ComponentContext* mainContext)
    : BasicComponent(&ModuleComponentProfile::Instance()), context(mainContext->CreateLocal(mainContext))
{
    document = std::make_unique<ModuleDocument>(context->Find<CFW::DocView::DocumentContext>(), context.get());
    automation = std::make_unique<ModuleAutomationSingleModule>(context->Find<CFW::DocView::AutomationContext>(), document.get());
    maf = std::make_unique<ModuleMAF>(context->Find<CFW::DocView::MAFContext>(), document.get());
    AddInterface(document.get());
    AddInterface(automation.get());
    AddInterface(maf.get());
}

// The MAF and the automation go first: they listen to the document.
ModuleComponent::~ModuleComponent()
{
    maf.reset();
    automation.reset();
    document.reset();
}

}  // namespace OV::Products::VN4
