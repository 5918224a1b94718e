// Image files: whatever they hold, the reader gives an image or its LoadError, a mask builds,
// a bitmap font cuts its glyphs, and the image draws onto a painter's surface.
#include "graphics/BitMask.h"
#include "graphics/DeviceSW.h"
#include "graphics/Font.h"
#include "graphics/Image.h"
#include "graphics/Painter.h"
#include "tests/fuzz/FuzzTargets.h"

#include <memory>
#include <sstream>
#include <string>

namespace OV::Fuzz {

void Image(const std::uint8_t* data, std::size_t size)
{
    using namespace CFW::Graphics;
    const std::string text(reinterpret_cast<const char*>(data), size);
    DeviceSW device;
    try {
        std::istringstream stream(text);
        std::unique_ptr<CFW::Graphics::Image> image(device.createImageFromStream(0, stream, size));
        std::unique_ptr<CFW::Graphics::Image> surface(device.createImage({64, 48}));
        std::unique_ptr<Painter> painter(device.createPainter(*surface));
        painter->clear(0xff000000);
        painter->drawImage(*image, {-3, 5}, {0, 0, image->size().x, image->size().y});
        painter->drawImageRotated(*image, {32.0, 24.0}, 33.0, {0, 0, image->size().x, image->size().y});
        std::unique_ptr<Font> font(device.createFontEPI(*image));
        painter->drawText(*font, 0xffffffff, "Abc\xe9", {1, 1});
    } catch (const CFW::Graphics::Image::LoadError&) {
    }
    try {
        std::istringstream stream(text);
        BitMask mask(stream);
        mask.build(128);
        if (mask.size().x > 0 && mask.size().y > 0)
            mask.test({mask.size().x - 1, mask.size().y - 1});
    } catch (const CFW::Graphics::Image::LoadError&) {
    }
}

}  // namespace OV::Fuzz
