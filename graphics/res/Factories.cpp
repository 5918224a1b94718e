#include "graphics/res/Factories.h"

#include "graphics/BitMask.h"
#include "graphics/Device.h"
#include "graphics/FontFT.h"
#include "graphics/Image.h"
#include "graphics/res/Provider.h"
#include "platform/XmlParse.h"

#include <tinyxml.h>

#include <new>
#include <vector>

namespace OV::CFW::Res {

Graphics::Image* ImageFactory::create(std::istream& stream, std::size_t length)
{
    return device.createImageFromStream(0, stream, length);
}

void ImageFactory::destroy(Graphics::Image* image)
{
    delete image;
}

FontFactory::~FontFactory()
{
    for (auto& entry : images)
        delete entry.first;
}

Graphics::Font* FontFactory::create(std::istream& stream, std::size_t length)
{
    std::unique_ptr<Graphics::Image> image(device.createImageFromStream(0, stream, length));
    if (image == nullptr)
        return nullptr;
    std::unique_ptr<Graphics::Font> font(device.createFontEPI(*image));
    if (font == nullptr)
        return nullptr;
    images.emplace(font.get(), std::move(image));
    return font.release();
}

void FontFactory::destroy(Graphics::Font* font)
{
    const auto entry = images.find(font);
    delete font; // before the strip it was cut from
    if (entry != images.end())
        images.erase(entry);
}

Graphics::BitMask* BitMaskFactory::create(std::istream& stream, std::size_t)
{
    return new Graphics::BitMask(stream);
}

void BitMaskFactory::destroy(Graphics::BitMask* mask)
{
    delete mask;
}

namespace Utils {

TiXmlDocument* XMLFactory::create(std::istream& stream, std::size_t length)
{
    // `length` is bounded by the manager (maxResourceLength); a stream that ends sooner gives
    // only what it has.
    std::vector<char> text(length + 1);
    stream.read(text.data(), static_cast<std::streamsize>(length));
    const std::size_t read = static_cast<std::size_t>(stream.gcount());
    text[read] = '\0';
    auto document = std::make_unique<TiXmlDocument>();
    Platform::ParseXml(*document, text.data(), read);
    return document.release();
}

void XMLFactory::destroy(TiXmlDocument* document)
{
    delete document;
}

}  // namespace Utils

namespace {

// The attributes of an outline font's description, with their defaults.
struct Description {
    std::string source;
    int height = 10;
    int addInterline = 0;
    std::string faceName;
    int faceIndex = 0;
    int dpi = 0;
    bool hinting = true;
    bool flipY = true; // the attribute "FlipY" missing or 0
    double tracking = 0.0;
};

Description ReadDescription(const TiXmlDocument& document)
{
    Description description;
    const TiXmlElement* root = document.RootElement();
    if (root == nullptr || root->ValueStr() != "Font")
        return description;
    // Query leaves the default in place for a missing or malformed attribute.
    if (const char* source = root->Attribute("Source"))
        description.source = source;
    root->QueryIntAttribute("Height", &description.height);
    root->QueryIntAttribute("AddInterline", &description.addInterline);
    if (const char* faceName = root->Attribute("FaceName"))
        description.faceName = faceName;
    root->QueryIntAttribute("FaceIndex", &description.faceIndex);
    root->QueryIntAttribute("DPI", &description.dpi);
    int hinting = 1;
    root->QueryIntAttribute("Hinting", &hinting);
    description.hinting = hinting != 0;
    int flipY = 0;
    root->QueryIntAttribute("FlipY", &flipY);
    description.flipY = flipY == 0; // flipped for a top-left origin unless asked not to be
    root->QueryDoubleAttribute("Tracking", &description.tracking);
    return description;
}

}  // namespace

FontFTFactory::FontFTFactory(Graphics::Device& device, Provider& provider, Utils::XMLFactory& documents)
    : device(device), provider(provider), documents(documents)
{
}

FontFTFactory::~FontFTFactory()
{
    for (auto& entry : sources)
        delete entry.first;
}

Graphics::Font* FontFTFactory::create(std::istream& stream, std::size_t length)
{
    Description description;
    {
        TiXmlDocument* document = documents.create(stream, length);
        description = ReadDescription(*document);
        documents.destroy(document);
    }
    if (description.source.empty())
        return nullptr;

    // A file already held is shared; a new one is held only once a font is made of it.
    std::unique_ptr<std::uint8_t[]> loadedData;
    std::size_t loadedSize = 0;
    const std::uint8_t* data = nullptr;
    std::size_t size = 0;
    const auto held = files.find(description.source);
    if (held != files.end()) {
        data = held->second.data.get();
        size = held->second.size;
    } else {
        const bool found = openResource(provider, description.source, [&](std::istream& file, std::size_t fileLength) {
            loadedData.reset(new std::uint8_t[fileLength > 0 ? fileLength : 1]);
            file.read(reinterpret_cast<char*>(loadedData.get()), static_cast<std::streamsize>(fileLength));
            loadedSize = static_cast<std::size_t>(file.gcount()); // less when a wrong ISIZE promised more
        });
        if (!found)
            return nullptr;
        data = loadedData.get();
        size = loadedSize;
    }

    std::unique_ptr<Graphics::Font> font(
        device.createFontFT(data, size, description.height, description.addInterline, description.faceName, description.faceIndex));
    auto* outline = dynamic_cast<Graphics::FontFT*>(font.get());
    if (outline == nullptr || !outline->isLoaded())
        return nullptr;
    outline->setResolution(description.dpi);
    outline->setHinting(description.hinting);
    outline->setFlipY(description.flipY);
    outline->setTracking(description.tracking);

    if (held != files.end()) {
        ++held->second.uses;
    } else {
        File& file = files[description.source];
        file.data = std::move(loadedData);
        file.size = loadedSize;
        file.uses = 1;
    }
    sources.emplace(font.get(), description.source);
    return font.release();
}

void FontFTFactory::destroy(Graphics::Font* font)
{
    const auto entry = sources.find(font);
    delete font; // before the file it reads
    if (entry == sources.end())
        return;
    const auto file = files.find(entry->second);
    if (file != files.end() && --file->second.uses == 0)
        files.erase(file);
    sources.erase(entry);
}

}  // namespace OV::CFW::Res
