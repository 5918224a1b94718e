#include "graphics/pak/PakManager.h"

#include <cstring>

namespace OV::CFW::Pak {

namespace {

constexpr char magic[6] = {'O', 'V', 'S', 'P', 'A', 'K'};
constexpr std::uint32_t version = 1;

bool ReadU32(std::istream& stream, std::uint32_t& value)
{
    unsigned char bytes[4];
    if (!stream.read(reinterpret_cast<char*>(bytes), sizeof bytes))
        return false;
    value = std::uint32_t(bytes[0]) | std::uint32_t(bytes[1]) << 8 | std::uint32_t(bytes[2]) << 16 | std::uint32_t(bytes[3]) << 24;
    return true;
}

}  // namespace

Manager::Manager(const std::string& path)
    : std::ifstream(path, std::ios::in | std::ios::binary)
{
    if (good())
        readDirectory();
    // Failed reads leave error bits that later seeks must not inherit.
    clear();
}

void Manager::readDirectory()
{
    char header[sizeof magic];
    std::uint32_t fileVersion = 0;
    std::uint32_t count = 0;
    if (!read(header, sizeof header) || !ReadU32(*this, fileVersion) || !ReadU32(*this, count))
        return;
    if (std::memcmp(header, magic, sizeof magic) != 0 || fileVersion != version)
        return;
    const std::streampos directory = tellg();
    seekg(0, std::ios::end);
    const std::streamoff fileSize = tellg();
    seekg(directory);
    if (fileSize < 0 || !good())
        return;

    // Read by entry and never reserved by `count`: a count beyond the file ends with the file.
    for (std::uint32_t i = 0; i < count; ++i) {
        std::string name;
        std::getline(*this, name, '\0');
        if (eof()) // the file ended before the name's zero
            break;
        std::uint32_t offset = 0;
        std::uint32_t size = 0;
        if (!ReadU32(*this, offset) || !ReadU32(*this, size))
            break;
        if (std::uint64_t(offset) + size > static_cast<std::uint64_t>(fileSize))
            continue;
        entries.emplace(std::move(name), Entry{offset, size}); // the first of one name stays
    }
    valid = true;
}

bool Manager::find(const std::string& name, std::istream*& stream, std::uint32_t& size)
{
    const auto entry = entries.find(name);
    if (entry == entries.end())
        return false;
    clear();
    seekg(entry->second.first);
    stream = this;
    size = entry->second.second;
    return true;
}

}  // namespace OV::CFW::Pak
