// Resource packs: whatever the file holds, every name of its directory is asked for through
// each manager; each gives a resource, null or a clear error, and the last release frees it.
#include "graphics/BitMask.h"
#include "graphics/DeviceSW.h"
#include "graphics/Font.h"
#include "graphics/Image.h"
#include "graphics/pak/PakManager.h"
#include "graphics/res/ResourceSet.h"
#include "tests/fuzz/FuzzTargets.h"

#include <fstream>
#include <ios>
#include <string>

#include <tinyxml.h>

namespace OV::Fuzz {

namespace {

// Acquires `name` twice and releases it twice; the errors a resource may give are expected.
template <typename T>
void Use(CFW::Res::Manager<T>& manager, const std::string& name)
{
    try {
        T* first = manager.acquire(name);
        T* second = manager.acquire(name);
        Require(first == second, "one name gave two resources");
        manager.release(second);
        manager.release(first);
    } catch (const CFW::Graphics::Image::LoadError&) {
    } catch (const CFW::Res::ResourceError&) {
    } catch (const std::ios_base::failure&) { // a damaged gzip member
    }
}

}  // namespace

void Pack(const std::uint8_t* data, std::size_t size)
{
    const std::string path = std::string(PrivateFolder()) + "/fuzz.pak";
    {
        std::ofstream file(path, std::ios::binary | std::ios::trunc);
        file.write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
        Require(static_cast<bool>(file.flush()), "the pack could not be written");
    }
    CFW::Graphics::DeviceSW device;
    CFW::Res::ResourceSet resources(device);
    resources.getProvider().addPath(path);
    const CFW::Pak::Manager pack(path);
    for (const auto& [name, entry] : pack.getEntries()) {
        Require(std::uint64_t(entry.first) + entry.second <= size, "an entry reaches past the end of the file");
        Use(resources.getImages(), name);
        Use(resources.getFonts(), name);
        Use(resources.getDocuments(), name);
        Use(resources.getBitMasks(), name);
        Use(resources.getFontsFT(), name);
    }
    resources.getProvider().clear();
}

}  // namespace OV::Fuzz
