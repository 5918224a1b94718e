#pragma once

#include "graphics/Image.h"

#include <cstddef>
#include <cstdint>
#include <istream>
#include <map>
#include <memory>
#include <string>

class TiXmlDocument;

namespace OV::CFW::Graphics {
class BitMask;
class Device;
class Font;
}  // namespace OV::CFW::Graphics

namespace OV::CFW::Res {

class Provider;

// What the managers load with: `create` makes a resource from `length` bytes of `stream` (null
// when it cannot), `destroy` frees what `create` made. Window thread only.

// Image files, through the device's reader; Image::LoadError passes through.
class ImageFactory {
public:
    explicit ImageFactory(Graphics::Device& device) : device(device) {}
    Graphics::Image* create(std::istream& stream, std::size_t length);
    void destroy(Graphics::Image* image);

private:
    Graphics::Device& device;
};

// Bitmap fonts, each cut from an image strip that the factory keeps until the font goes.
class FontFactory {
public:
    explicit FontFactory(Graphics::Device& device) : device(device) {}
    ~FontFactory();
    FontFactory(const FontFactory&) = delete;
    FontFactory& operator=(const FontFactory&) = delete;

    Graphics::Font* create(std::istream& stream, std::size_t length);
    void destroy(Graphics::Font* font);

private:
    Graphics::Device& device;
    std::map<Graphics::Font*, std::unique_ptr<Graphics::Image>> images;
};

// Hit masks from image files; their bits are built later by whoever uses them first.
class BitMaskFactory {
public:
    Graphics::BitMask* create(std::istream& stream, std::size_t length);
    void destroy(Graphics::BitMask* mask);
};

namespace Utils {

// XML documents. Text that does not parse, or nests too deep, gives an empty document, not
// null: the callers look at what they get.
class XMLFactory {
public:
    TiXmlDocument* create(std::istream& stream, std::size_t length);
    void destroy(TiXmlDocument* document);
};

}  // namespace Utils

// Outline fonts from a description document (root "Font") that names a font file by the
// attribute "Source". Font files are found like any resource, ".gz" included, and kept once
// however many descriptions use them, until the last of their fonts is destroyed.
class FontFTFactory {
public:
    FontFTFactory(Graphics::Device& device, Provider& provider, Utils::XMLFactory& documents);
    ~FontFTFactory();
    FontFTFactory(const FontFTFactory&) = delete;
    FontFTFactory& operator=(const FontFTFactory&) = delete;

    // Null for a description without a "Source", a font file that no path holds, or one that
    // the device cannot make a font of.
    Graphics::Font* create(std::istream& stream, std::size_t length);
    void destroy(Graphics::Font* font);
    // How many font files are held.
    std::size_t fileCount() const { return files.size(); }

private:
    struct File {
        std::unique_ptr<std::uint8_t[]> data;
        std::size_t size = 0;
        int uses = 0;
    };

    Graphics::Device& device;
    Provider& provider;
    Utils::XMLFactory& documents;
    std::map<std::string, File> files; // by "Source"
    std::map<Graphics::Font*, std::string> sources;
};

}  // namespace OV::CFW::Res
