#pragma once

#include "docview/interfaces/MAF.h"
#include "docview/utils/MAFParamMediator.h"

#include <memory>
#include <string>
#include <vector>

namespace OV::CFW::DocViewUtils {

// A MAF layer's declaration: its name and the creators of its parameter mediators, owned, in
// the order the mediators are made. Filled in the concrete profile's constructor; read-only
// after that, from any thread.
class BasicMAFProfile : public DocView::MAFProfile {
public:
    explicit BasicMAFProfile(std::string name);

    const std::string& GetName() const override { return name; }
    int GetCreatorCount() const { return static_cast<int>(creators.size()); }
    // No bound check: index < GetCreatorCount().
    const MAFParamMediator::Creator& GetCreator(int index) const { return *creators[static_cast<std::size_t>(index)]; }

protected:
    // Set-up only; throws std::invalid_argument for null.
    void AddCreator(std::unique_ptr<MAFParamMediator::Creator> creator);

private:
    std::string name;
    std::vector<std::unique_ptr<MAFParamMediator::Creator>> creators;
};

}  // namespace OV::CFW::DocViewUtils
