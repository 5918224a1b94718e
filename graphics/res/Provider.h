#pragma once

#include "graphics/pak/PakManager.h"

#include <cstddef>
#include <functional>
#include <istream>
#include <list>
#include <map>
#include <memory>
#include <mutex>
#include <stdexcept>
#include <string>

namespace OV::CFW::Res {

// The ordered search paths through which resources are found by relative name, each a folder
// or a pack (a path whose extension is exactly ".pak"). The path added last is searched first.
// Thread-safe; pack streams themselves are read on the window thread only.
class Provider {
public:
    // Where a name was found.
    struct Location {
        enum Kind { NotFound = 0, OnDisk = 1, InPack = 2 };
        int kind = NotFound;
        std::string path;                   // OnDisk: the folder joined with the name
        std::shared_ptr<Pak::Manager> pack; // InPack: positioned at the entry
    };

    // Does nothing for a path that does not exist or is already on the list; otherwise puts it
    // at the front, opening it as a pack for the extension ".pak". A pack that cannot be read
    // stays on the list with an empty directory.
    void addPath(const std::string& path);
    void clear();
    std::list<std::string> searchPathList() const;
    // The first path that holds `name`, exactly as spelt: no suffix is tried.
    Location locate(const std::string& name);

private:
    mutable std::mutex lock;
    std::list<std::string> searchPaths;
    std::map<std::string, std::shared_ptr<Pak::Manager>> packs;
};

// A resource that is refused before it is read: a length that its file cannot hold or that is
// beyond maxResourceLength.
class ResourceError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// The most bytes that any resource may have, uncompressed. It bounds the buffers that a length
// sizes (documents, font files). The largest resources are images: the image reader accepts
// up to 4096 × 4096 pixels, 64 MiB at 32 bits, and this leaves room for one such file.
constexpr std::size_t maxResourceLength = std::size_t(96) << 20;
// Deflate turns one byte into at most 1032, so a gzip member of n bytes cannot give more.
constexpr std::size_t maxDeflateRatio = 1032;

// Finds `name` through `provider` and hands `use` a stream on its bytes and their length. A
// name ending in ".gz" is one gzip member: the stream gives the inflated bytes, and the length
// is its trailer's ISIZE, trusted as long as the member could hold it. False, without calling
// `use`, when no path holds the name or the disk path is a folder. Throws ResourceError for a
// resource refused as above; a damaged gzip stream throws the decompressor's gzip_error on
// reading, through `use`.
bool openResource(Provider& provider, const std::string& name, const std::function<void(std::istream&, std::size_t)>& use);

}  // namespace OV::CFW::Res
