#pragma once

#include "graphics/res/Provider.h"

#include <memory>

namespace OV::CFW::Res {

// The resources of the plug-in: the search provider, shared with whoever is given it.
class ResourceSet {
public:
    explicit ResourceSet(std::shared_ptr<Provider> provider = nullptr);
    ResourceSet(const ResourceSet&) = delete;
    ResourceSet& operator=(const ResourceSet&) = delete;

    Provider& getProvider() { return *provider; }

private:
    std::shared_ptr<Provider> provider;
};

}  // namespace OV::CFW::Res
