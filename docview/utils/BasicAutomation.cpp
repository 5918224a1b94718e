#include "docview/utils/BasicAutomation.h"

namespace OV::CFW::DocViewUtils {

BasicAutomation::BasicAutomation(const BasicAutomationProfile* profile, DocView::AutomationContext* context,
                                 DocView::Document* document)
    : profile(profile), context(context), mediator(std::make_unique<AutomationMediator>(*profile, *document))
{
}

BasicAutomation::~BasicAutomation() = default;

}  // namespace OV::CFW::DocViewUtils
