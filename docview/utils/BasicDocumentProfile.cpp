#include "docview/utils/BasicDocumentProfile.h"

namespace OV::CFW::DocViewUtils {

void BasicDocumentProfile::SetParameter(int index, const DocView::ParameterInfo& info)
{
    if (static_cast<std::size_t>(index) >= parameters.size())
        parameters.resize(static_cast<std::size_t>(index) + 1);
    DocView::ParameterInfo& row = parameters[static_cast<std::size_t>(index)];
    row = info;
    row.index = index;
}

}  // namespace OV::CFW::DocViewUtils
