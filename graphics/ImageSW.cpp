#include "graphics/ImageSW.h"

namespace OV::CFW::Graphics {

ImageSW::ImageSW(std::unique_ptr<std::uint32_t[]> pixels, int width, int height, bool alpha)
    : pixels(std::move(pixels)), pitch(width * 4), dimensions{width, height}, alpha(alpha)
{
}

ImageSW::ImageSW(const BasicPoint<int>& size)
    : pixels(new std::uint32_t[static_cast<std::size_t>(size.x) * static_cast<std::size_t>(size.y)]), pitch(size.x * 4),
      dimensions(size), alpha(true)
{
}

std::pair<std::uint32_t*, int> ImageSW::lock()
{
    locked = true;
    return {pixels.get(), pitch};
}

}  // namespace OV::CFW::Graphics
