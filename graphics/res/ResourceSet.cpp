#include "graphics/res/ResourceSet.h"

#include "graphics/BitMask.h"
#include "graphics/Font.h"
#include "graphics/Image.h"

#include <tinyxml.h>

namespace OV::CFW::Res {

ResourceSet::ResourceSet(Graphics::Device& device, std::shared_ptr<Provider> shared)
    : provider(shared ? std::move(shared) : std::make_shared<Provider>()),
      imageFactory(device),
      fontFactory(device),
      fontFTFactory(device, *provider, xmlFactory),
      images(std::make_unique<ManagerGeneric<Graphics::Image, ImageFactory>>(provider, imageFactory)),
      fonts(std::make_unique<ManagerGeneric<Graphics::Font, FontFactory>>(provider, fontFactory)),
      documents(std::make_unique<ManagerGeneric<TiXmlDocument, Utils::XMLFactory>>(provider, xmlFactory)),
      bitMasks(std::make_unique<ManagerGeneric<Graphics::BitMask, BitMaskFactory>>(provider, bitMaskFactory)),
      fontsFT(std::make_unique<ManagerGeneric<Graphics::Font, FontFTFactory>>(provider, fontFTFactory))
{
}

}  // namespace OV::CFW::Res
