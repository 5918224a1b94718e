#pragma once

#include <cstdint>
#include <fstream>
#include <istream>
#include <map>
#include <string>
#include <utility>

namespace OV::CFW::Pak {

// A resource pack: one file holding many resources, read through this stream itself.
//
//   0  "OVSPAK"                       6 bytes, no terminator
//   6  version                        u32, 1
//  10  count                          u32
//  14  directory                      count × { name bytes, 0, offset u32, size u32 }
//      data                           where the offsets say, from the start of the file
//
// All integers little-endian. A pack that cannot be read, or has the wrong magic or version,
// is left invalid with an empty directory. The file is untrusted: the directory ends early at
// the end of the file or at a name without its zero, and entries that reach past the end of
// the file are dropped, so every entry lies inside the file.
class Manager : public std::ifstream {
public:
    // Offset from the start of the file and size in bytes.
    using Entry = std::pair<std::uint32_t, std::uint32_t>;

    explicit Manager(const std::string& path);

    bool isValid() const { return valid; }
    const std::map<std::string, Entry>& getEntries() const { return entries; }
    // When `name` is in the directory: seeks this stream to the entry's first byte and hands it
    // out with the entry's size. Otherwise false, and the stream stays where it is. The stream
    // is shared by every reader of the pack: window thread only.
    bool find(const std::string& name, std::istream*& stream, std::uint32_t& size);

private:
    void readDirectory();

    bool valid = false;
    std::map<std::string, Entry> entries; // names compare as bytes
};

}  // namespace OV::CFW::Pak
