#include "graphics/res/ResourceSet.h"

namespace OV::CFW::Res {

ResourceSet::ResourceSet(std::shared_ptr<Provider> shared)
    : provider(shared ? std::move(shared) : std::make_shared<Provider>())
{
}

}  // namespace OV::CFW::Res
