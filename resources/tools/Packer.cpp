// Writes a resource pack: "OVSPAK", version 1, the count, the directory (each name with its
// terminating zero, then offset and size, little-endian 32-bit), then the data.
//
//   v4_pack <pack> <source folder> <entry>...
//
// An entry is a resource name, read from the source folder, or name=path, read from the path.
// A name ending in ".gz" is stored gzip-compressed from the source file without that ending;
// any other is stored as it is. The pack is written whole or not at all.
#include <boost/iostreams/copy.hpp>
#include <boost/iostreams/filter/gzip.hpp>
#include <boost/iostreams/filtering_stream.hpp>

#include <cstdint>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

namespace {

std::string ReadFile(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    if (!file)
        throw std::runtime_error("cannot read " + path);
    return std::string(std::istreambuf_iterator<char>(file), {});
}

std::string Gzip(const std::string& data)
{
    std::ostringstream packed;
    boost::iostreams::filtering_ostream out;
    out.push(boost::iostreams::gzip_compressor(boost::iostreams::gzip_params(boost::iostreams::gzip::best_compression)));
    out.push(packed);
    out.write(data.data(), static_cast<std::streamsize>(data.size()));
    out.reset();
    return packed.str();
}

void PutWord(std::string& out, std::uint32_t value)
{
    for (int shift = 0; shift < 32; shift += 8)
        out.push_back(static_cast<char>((value >> shift) & 0xff));
}

bool EndsWith(const std::string& text, const std::string& end)
{
    return text.size() >= end.size() && text.compare(text.size() - end.size(), end.size(), end) == 0;
}

}  // namespace

int main(int argc, char** argv)
{
    if (argc < 3) {
        std::fprintf(stderr, "usage: v4_pack <pack> <source folder> <name or name=path>...\n");
        return 2;
    }
    try {
        const std::string pack = argv[1], source = argv[2];
        std::vector<std::string> names, contents;
        std::size_t directory = 14;
        for (int i = 3; i < argc; ++i) {
            const std::string entry = argv[i];
            const std::size_t equals = entry.find('=');
            const std::string name = entry.substr(0, equals);
            const bool compressed = EndsWith(name, ".gz");
            const std::string path = equals != std::string::npos ? entry.substr(equals + 1)
                                                                 : source + "/" + (compressed ? name.substr(0, name.size() - 3) : name);
            const std::string data = ReadFile(path);
            names.push_back(name);
            contents.push_back(compressed ? Gzip(data) : data);
            directory += name.size() + 1 + 8;
        }
        std::string out = "OVSPAK";
        PutWord(out, 1);
        PutWord(out, static_cast<std::uint32_t>(names.size()));
        std::size_t offset = directory;
        for (std::size_t i = 0; i < names.size(); ++i) {
            out += names[i];
            out.push_back('\0');
            PutWord(out, static_cast<std::uint32_t>(offset));
            PutWord(out, static_cast<std::uint32_t>(contents[i].size()));
            offset += contents[i].size();
        }
        for (const std::string& data : contents)
            out += data;
        const std::string temporary = pack + ".part";
        {
            std::ofstream file(temporary, std::ios::binary | std::ios::trunc);
            file.write(out.data(), static_cast<std::streamsize>(out.size()));
            if (!file.flush())
                throw std::runtime_error("cannot write " + temporary);
        }
        if (std::rename(temporary.c_str(), pack.c_str()) != 0)
            throw std::runtime_error("cannot rename " + temporary + " to " + pack);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "v4_pack: %s\n", error.what());
        return 1;
    }
    return 0;
}
