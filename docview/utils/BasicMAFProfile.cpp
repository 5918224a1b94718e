#include "docview/utils/BasicMAFProfile.h"

#include <stdexcept>

namespace OV::CFW::DocViewUtils {

BasicMAFProfile::BasicMAFProfile(std::string name) : name(std::move(name)) {}

void BasicMAFProfile::AddCreator(std::unique_ptr<MAFParamMediator::Creator> creator)
{
    if (creator == nullptr)
        throw std::invalid_argument("Null pointer in 'push_back()'");
    creators.push_back(std::move(creator));
}

}  // namespace OV::CFW::DocViewUtils
