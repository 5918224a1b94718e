#include "docview/utils/BasicMAF.h"

#include "docview/utils/ExchangeRing.h"

namespace OV::CFW::DocViewUtils {

BasicMAF::BasicMAF(const BasicMAFProfile* profile, DocView::MAFContext* context, DocView::Document* document)
    : profile(profile), context(context), document(document),
      mediator(std::make_unique<MAFMediator>(*profile, *document, context->GetExchangeRing()))
{
}

void BasicMAF::Attach(DocView::MAFWrapper* wrapper, const std::string& prefix)
{
    mediator->Attach(wrapper, prefix);
    attached = true;
}

void BasicMAF::Detach()
{
    mediator->Attach(nullptr, std::string());
    attached = false;
}

}  // namespace OV::CFW::DocViewUtils
