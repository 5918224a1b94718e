#include "graphics/res/Provider.h"

#include <algorithm>
#include <fstream>
#include <vector>

#include <boost/filesystem/operations.hpp>
#include <boost/filesystem/path.hpp>
#include <boost/iostreams/device/array.hpp>
#include <boost/iostreams/filter/gzip.hpp>
#include <boost/iostreams/filtering_stream.hpp>

namespace OV::CFW::Res {

namespace fs = boost::filesystem;

void Provider::addPath(const std::string& path)
{
    boost::system::error_code error;
    if (path.empty() || !fs::exists(path, error))
        return;
    std::lock_guard<std::mutex> guard(lock);
    if (std::find(searchPaths.begin(), searchPaths.end(), path) != searchPaths.end())
        return;
    searchPaths.push_front(path);
    if (fs::path(path).extension() == ".pak")
        packs[path] = std::make_shared<Pak::Manager>(path);
}

void Provider::clear()
{
    std::lock_guard<std::mutex> guard(lock);
    searchPaths.clear();
    packs.clear();
}

std::list<std::string> Provider::searchPathList() const
{
    std::lock_guard<std::mutex> guard(lock);
    return searchPaths;
}

Provider::Location Provider::locate(const std::string& name)
{
    std::lock_guard<std::mutex> guard(lock);
    Location location;
    for (const std::string& path : searchPaths) {
        const auto pack = packs.find(path);
        if (pack != packs.end()) {
            std::istream* stream = nullptr;
            std::uint32_t size = 0;
            if (pack->second->find(name, stream, size)) {
                location.kind = Location::InPack;
                location.pack = pack->second;
                return location;
            }
            continue;
        }
        const fs::path joined = fs::path(path) / name;
        boost::system::error_code error;
        if (fs::exists(joined, error)) {
            location.kind = Location::OnDisk;
            location.path = joined.string();
            return location;
        }
    }
    return location;
}

namespace {

std::uint32_t ReadIsize(std::istream& stream)
{
    unsigned char bytes[4] = {};
    stream.read(reinterpret_cast<char*>(bytes), sizeof bytes);
    return std::uint32_t(bytes[0]) | std::uint32_t(bytes[1]) << 8 | std::uint32_t(bytes[2]) << 16 | std::uint32_t(bytes[3]) << 24;
}

// `length` bytes of `name` are to be read from `stored` bytes of its file or entry.
void CheckLength(const std::string& name, std::size_t length, std::size_t stored, bool compressed)
{
    if (compressed && stored < 4)
        throw ResourceError(name + ": too short for a gzip member");
    if (compressed && stored > maxResourceLength)
        throw ResourceError(name + ": " + std::to_string(stored) + " compressed bytes is beyond the limit of "
                            + std::to_string(maxResourceLength));
    if (compressed && length / maxDeflateRatio > stored)
        throw ResourceError(name + ": gzip length " + std::to_string(length) + " is more than " + std::to_string(stored)
                            + " compressed bytes can hold");
    if (length > maxResourceLength)
        throw ResourceError(name + ": " + std::to_string(length) + " bytes is beyond the limit of "
                            + std::to_string(maxResourceLength));
}

// The inflating stream of a gzip member on `source`. A damaged member throws gzip_error out of
// the reading call instead of only setting the bad bit.
template <typename Source>
void Inflate(boost::iostreams::filtering_istream& stream, Source&& source)
{
    stream.push(boost::iostreams::gzip_decompressor(15, 4096));
    stream.push(std::forward<Source>(source));
    stream.exceptions(std::ios::badbit);
}

}  // namespace

bool openResource(Provider& provider, const std::string& name, const std::function<void(std::istream&, std::size_t)>& use)
{
    const bool compressed = fs::path(name).extension() == ".gz";
    const Provider::Location location = provider.locate(name);

    if (location.kind == Provider::Location::OnDisk) {
        boost::system::error_code error;
        if (!fs::exists(location.path, error) || fs::is_directory(location.path, error))
            return false;
        std::ifstream file(location.path, std::ios::in | std::ios::binary);
        if (!file.is_open())
            return false;
        file.seekg(0, std::ios::end);
        const std::streamoff end = file.tellg();
        const std::size_t fileSize = end > 0 ? static_cast<std::size_t>(end) : 0;
        if (!compressed) {
            CheckLength(name, fileSize, fileSize, false);
            file.seekg(0);
            use(file, fileSize);
            return true;
        }
        if (fileSize >= 4)
            file.seekg(-4, std::ios::end);
        const std::size_t length = ReadIsize(file);
        CheckLength(name, length, fileSize, true);
        file.clear();
        file.seekg(0);
        boost::iostreams::filtering_istream inflated;
        Inflate(inflated, file);
        use(inflated, length);
        return true;
    }

    if (location.kind == Provider::Location::InPack) {
        std::istream* stream = nullptr;
        std::uint32_t size = 0;
        if (!location.pack->find(name, stream, size))
            return false;
        if (!compressed) {
            CheckLength(name, size, size, false);
            use(*stream, size);
            return true;
        }
        if (size < 4)
            CheckLength(name, 0, size, true);
        const std::streampos start = stream->tellg();
        stream->seekg(size - 4, std::ios::cur);
        const std::size_t length = ReadIsize(*stream);
        CheckLength(name, length, size, true);
        stream->seekg(start);
        // The directory only holds entries inside the file, so `size` is bytes the file has.
        std::vector<char> member(size);
        if (!stream->read(member.data(), static_cast<std::streamsize>(size)))
            throw ResourceError(name + ": the pack cannot be read");
        boost::iostreams::filtering_istream inflated;
        Inflate(inflated, boost::iostreams::array_source(member.data(), member.size()));
        use(inflated, length);
        return true;
    }
    return false;
}

}  // namespace OV::CFW::Res
