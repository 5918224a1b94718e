#include "Bench.h"

#include "widgets/layout/ElementTable.h"

#include <cstdint>

namespace OV::Testing {

using namespace CFW;

Bench::Bench(const BasicPoint<int>& size) : resources(device), root(size), window(device, *root.getManager(), size)
{
    resources.getProvider().addPath(VARNEL4_PACK);
}

Graphics::Image& Bench::picture(const std::string& name, const BasicPoint<int>& size, const std::function<Graphics::Color(int, int)>& at)
{
    std::vector<std::uint8_t> rgb;
    for (int y = 0; y < size.y; ++y) {
        for (int x = 0; x < size.x; ++x) {
            const Graphics::Color c = at(x, y);
            rgb.insert(rgb.end(), {std::uint8_t(c >> 16), std::uint8_t(c >> 8), std::uint8_t(c)});
        }
    }
    std::unique_ptr<Graphics::Image>& stored = pictures[name];
    stored.reset(device.createImageFromPixels(rgb.data(), size.x * 3, size, Graphics::Device::RGB));
    return *stored;
}

Graphics::Image* Bench::image(const std::string& name)
{
    const auto found = pictures.find(name);
    return found != pictures.end() ? found->second.get() : nullptr;
}

Graphics::Font* Bench::font(const std::string& name)
{
    return name.empty() ? nullptr : resources.getFontsFT().acquire(name);
}

GUI::Widget* Bench::buildWidget(const std::string& xml)
{
    document.Clear();
    document.Parse(xml.c_str());
    if (document.RootElement() == nullptr)
        return nullptr;
    const Widgets::BuildFunction build = Widgets::FindElement(document.RootElement()->ValueStr());
    return build ? build(*this) : nullptr;
}

}  // namespace OV::Testing
