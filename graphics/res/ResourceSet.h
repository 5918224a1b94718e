#pragma once

#include "graphics/res/Factories.h"
#include "graphics/res/Manager.h"
#include "graphics/res/Provider.h"

#include <memory>

namespace OV::CFW::Res {

// The resources of one plug-in instance: the search provider (shared with whoever gave it),
// the factories and a manager for each kind of resource. The device must outlive the set.
class ResourceSet {
public:
    // Makes a provider of its own when none is given.
    explicit ResourceSet(Graphics::Device& device, std::shared_ptr<Provider> provider = nullptr);
    ResourceSet(const ResourceSet&) = delete;
    ResourceSet& operator=(const ResourceSet&) = delete;

    Provider& getProvider() { return *provider; }
    Manager<Graphics::Image>& getImages() { return *images; }
    Manager<Graphics::Font>& getFonts() { return *fonts; }
    Manager<TiXmlDocument>& getDocuments() { return *documents; }
    Manager<Graphics::BitMask>& getBitMasks() { return *bitMasks; }
    Manager<Graphics::Font>& getFontsFT() { return *fontsFT; }

private:
    // Members go in reverse: the managers from fontsFT to images, then the factories (which
    // the managers destroy their resources through), then the provider.
    std::shared_ptr<Provider> provider;
    ImageFactory imageFactory;
    FontFactory fontFactory;
    Utils::XMLFactory xmlFactory;
    FontFTFactory fontFTFactory;
    BitMaskFactory bitMaskFactory;
    std::unique_ptr<Manager<Graphics::Image>> images;
    std::unique_ptr<Manager<Graphics::Font>> fonts;
    std::unique_ptr<Manager<TiXmlDocument>> documents;
    std::unique_ptr<Manager<Graphics::BitMask>> bitMasks;
    std::unique_ptr<Manager<Graphics::Font>> fontsFT;
};

}  // namespace OV::CFW::Res
