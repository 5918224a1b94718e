#pragma once

#include "docview/interfaces/Document.h"

#include <vector>

namespace OV::CFW::DocViewUtils {

// A document's rows at fixed indices chosen by the product, declared in any order.
class BasicDocumentProfile : public DocView::DocumentProfile {
public:
    int GetParameterCount() const override { return static_cast<int>(parameters.size()); }
    const DocView::ParameterInfo& GetParameterInfo(int index) const override
    {
        return parameters[static_cast<std::size_t>(index)];
    }

protected:
    // Set-up only: grows the table to index + 1 with undefined rows, and enters the row.
    void SetParameter(int index, const DocView::ParameterInfo& info);

private:
    std::vector<DocView::ParameterInfo> parameters;
};

}  // namespace OV::CFW::DocViewUtils
