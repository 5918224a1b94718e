#include "equaliser/Component.h"

#include "docview/interfaces/DocumentContext.h"
#include "docview/interfaces/MAFContext.h"
#include "docview/interfaces/RoleContexts.h"
#include "equaliser/AutomationProfile.h"

namespace OV::Comp::ModuleLinearPhaseEq {

namespace {

template <typename C>
C* FindContext(CFW::DocView::ComponentContext* context)
{
    return context != nullptr ? context->Find<C>() : nullptr;
}

}  // namespace

Component::Component(CFW::DocView::ComponentContext* context) : BasicComponent(&ComponentProfile::Instance())
{
    document = std::make_unique<Document>(&DocumentProfile::Instance(), FindContext<CFW::DocView::DocumentContext>(context));
    // The editor (GUIContext) is made here, with the document.
    if (CFW::DocView::AutomationContext* automationContext = FindContext<CFW::DocView::AutomationContext>(context))
        automation = std::make_unique<CFW::DocViewUtils::BasicAutomation>(&AutomationProfile::Instance(), automationContext,
                                                                           document.get());
    if (CFW::DocView::MAFContext* mafContext = FindContext<CFW::DocView::MAFContext>(context))
        maf = std::make_unique<MAF>(&MAFProfile::Instance(), mafContext, document.get());

    AddInterface(document.get());
    // The editor is added here.
    if (automation != nullptr)
        AddInterface(automation.get());
    if (maf != nullptr)
        AddInterface(maf.get());
}

Component::~Component() = default;

}  // namespace OV::Comp::ModuleLinearPhaseEq
