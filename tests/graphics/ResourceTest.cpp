#include "graphics/DeviceSW.h"
#include "graphics/Font.h"
#include "graphics/Image.h"
#include "graphics/res/ResourceSet.h"
#include "tests/support/ScratchFolder.h"

#include <tinyxml.h>

#include <map>
#include <vector>

#include <boost/iostreams/filter/gzip.hpp>
#include <boost/iostreams/filtering_stream.hpp>

#include <gtest/gtest.h>

namespace OV::CFW::Res {
namespace {

using Testing::ScratchFolder;

std::string U32(std::uint32_t v)
{
    return {char(v & 0xff), char(v >> 8 & 0xff), char(v >> 16 & 0xff), char(v >> 24 & 0xff)};
}

std::string Header(std::uint32_t count, const char* magic = "OVSPAK", std::uint32_t version = 1)
{
    return magic + U32(version) + U32(count);
}

std::string Entry(const std::string& name, std::uint32_t offset, std::uint32_t size)
{
    return name + '\0' + U32(offset) + U32(size);
}

// Header, directory, then the data in the order given.
std::string MakePack(const std::vector<std::pair<std::string, std::string>>& resources)
{
    std::uint32_t offset = 14;
    for (const auto& resource : resources)
        offset += std::uint32_t(resource.first.size() + 9);
    std::string directory, data;
    for (const auto& [name, bytes] : resources) {
        directory += Entry(name, offset + std::uint32_t(data.size()), std::uint32_t(bytes.size()));
        data += bytes;
    }
    return Header(std::uint32_t(resources.size())) + directory + data;
}

std::string Gzip(const std::string& text)
{
    std::string member;
    boost::iostreams::filtering_ostream out;
    out.push(boost::iostreams::gzip_compressor());
    out.push(boost::iostreams::back_inserter(member));
    out << text;
    out.reset();
    return member;
}

std::string WithIsize(std::string member, std::uint32_t isize)
{
    return member.replace(member.size() - 4, 4, U32(isize));
}

// A 32-bit top-down TGA; pixels 0xAARRGGBB, top row first.
std::string Tga(int width, int height, const std::vector<std::uint32_t>& pixels)
{
    std::string file = {0, 0, 2, 0, 0, 0, 0, 0, 0, 0, 0, 0};
    file += U32(std::uint32_t(width) | std::uint32_t(height) << 16) + char(32) + char(0x28);
    for (std::uint32_t pixel : pixels)
        file += U32(pixel);
    return file;
}

std::string ReadAll(std::istream& stream, std::size_t size)
{
    std::string bytes(size, '\0');
    stream.read(bytes.data(), std::streamsize(size));
    return bytes.substr(0, std::size_t(stream.gcount()));
}

TEST(PakTest, ReadsWhatTheDirectoryHoldsAndNothingOutsideTheFile)
{
    const struct {
        const char* what;
        std::string file;
        bool valid;
        std::map<std::string, std::string> contents;
    } cases[] = {
        {"two entries", Header(2) + Entry("a", 35, 3) + Entry("bc", 38, 2) + "xyzpq", true, {{"a", "xyz"}, {"bc", "pq"}}},
        {"one name twice: the first stays", Header(2) + Entry("a", 34, 1) + Entry("a", 35, 1) + "xy", true, {{"a", "x"}}},
        {"wrong magic", Header(1, "OVSPAX") + Entry("a", 0, 6), false, {}},
        {"version 2", Header(1, "OVSPAK", 2) + Entry("a", 0, 6), false, {}},
        {"header cut short", std::string("OVSPAK") + U32(1) + "\x01", false, {}},
        {"empty file", "", false, {}},
        {"count far beyond the file", Header(0xffffffff) + Entry("a", 24, 2) + "hi", true, {{"a", "hi"}}},
        {"entry reaching past the end", Header(2) + Entry("a", 34, 1) + Entry("b", 34, 2) + "x", true, {{"a", "x"}}},
        {"offset + size wrapping 32 bits", Header(1) + Entry("a", 0xffffffff, 2), true, {}},
        {"name without its zero", Header(2) + Entry("a", 0, 6) + "unterminated", true, {{"a", "OVSPAK"}}},
    };
    const ScratchFolder folder;
    for (const auto& test : cases) {
        SCOPED_TRACE(test.what);
        Pak::Manager pack(folder.Write("t.pak", test.file));
        EXPECT_EQ(test.valid, pack.isValid());
        EXPECT_EQ(test.contents.size(), pack.getEntries().size());
        std::istream* stream = nullptr;
        std::uint32_t size = 0;
        for (const auto& [name, bytes] : test.contents) {
            ASSERT_TRUE(pack.find(name, stream, size)) << name;
            EXPECT_EQ(static_cast<std::istream*>(&pack), stream);
            EXPECT_EQ(bytes, ReadAll(*stream, size)) << name;
        }
        const std::streampos before = pack.tellg();
        EXPECT_FALSE(pack.find("missing", stream, size));
        EXPECT_EQ(before, pack.tellg());
    }
}

// What the provider finds for `name`, read back; "" for nothing.
std::string Found(Provider& provider, const std::string& name)
{
    const Provider::Location location = provider.locate(name);
    std::istream* stream = nullptr;
    std::uint32_t size = 0;
    if (location.kind == Provider::Location::OnDisk)
        return "disk:" + Testing::ReadFile(location.path);
    if (location.kind == Provider::Location::InPack && location.pack->find(name, stream, size))
        return "pack:" + ReadAll(*stream, size);
    return "";
}

TEST(ProviderTest, SearchesTheLastAddedPathFirstAndMatchesNamesExactly)
{
    const ScratchFolder folder;
    folder.Write("plain/ui/a.xml", "disk");
    folder.Write("plain/d.tga.gz", "D");
    folder.Write("res.pak", MakePack({{"ui/a.xml", "pack"}, {"only.tga.gz", "Z"}}));
    folder.Write("bad.pak", "OVSPAX" + MakePack({{"ui/a.xml", "bad"}}).substr(6));
    folder.Write("upper.PAK/ui/b.xml", "upper");
    folder.Write("file.PAK", MakePack({{"ui/c.xml", "c"}}));
    const struct {
        std::vector<std::string> paths;
        const char* name;
        const char* found;
    } cases[] = {
        {{"plain", "res.pak"}, "ui/a.xml", "pack:pack"},
        {{"res.pak", "plain"}, "ui/a.xml", "disk:disk"},
        {{"plain", "res.pak", "plain"}, "ui/a.xml", "pack:pack"}, // added again: not moved
        {{"plain", "bad.pak"}, "ui/a.xml", "disk:disk"},
        {{"upper.PAK"}, "ui/b.xml", "disk:upper"},
        {{"file.PAK"}, "ui/c.xml", ""}, // a folder to the search, not a pack
        {{"plain", "res.pak"}, "only.tga", ""},
        {{"plain", "res.pak"}, "only.tga.gz", "pack:Z"},
        {{"plain", "res.pak"}, "d.tga", ""},
        {{"nowhere", "nowhere.pak"}, "ui/a.xml", ""},
    };
    for (const auto& test : cases) {
        Provider provider;
        std::string trace;
        for (const std::string& path : test.paths) {
            provider.addPath(folder.Path() + "/" + path);
            trace += path + " ";
        }
        SCOPED_TRACE(trace + test.name);
        EXPECT_EQ(test.found, Found(provider, test.name));
    }

    Provider provider; // a pack added again is not opened again
    provider.addPath(folder.Path() + "/res.pak");
    const auto pack = provider.locate("only.tga.gz").pack;
    ASSERT_NE(nullptr, pack);
    provider.addPath(folder.Path() + "/res.pak");
    EXPECT_EQ(pack, provider.locate("only.tga.gz").pack);
    EXPECT_EQ(1u, provider.searchPathList().size());
    provider.clear();
    EXPECT_TRUE(provider.searchPathList().empty());
    EXPECT_EQ("", Found(provider, "only.tga.gz"));
}

// Keeps the length it was handed and the bytes that the stream gave for it.
struct Recorded {
    std::size_t length;
    std::string bytes;
};

struct RecordingFactory {
    Recorded* create(std::istream& stream, std::size_t length)
    {
        auto* resource = new Recorded{length, ReadAll(stream, length)};
        ++created;
        return resource;
    }
    void destroy(Recorded* resource)
    {
        ++destroyed;
        delete resource;
    }
    int created = 0;
    int destroyed = 0;
};

TEST(ResourceTest, LoadsOnceAndDestroysAtTheLastRelease)
{
    const ScratchFolder folder;
    folder.Write("res/a.txt", "first");
    folder.Write("res/folder/x", "");
    auto provider = std::make_shared<Provider>();
    provider->addPath(folder.Path() + "/res");
    RecordingFactory factory;
    {
        ManagerGeneric<Recorded, RecordingFactory> manager(provider, factory);
        Recorded* a = manager.acquire("a.txt");
        ASSERT_NE(nullptr, a);
        EXPECT_EQ(a, manager.acquire("a.txt"));
        EXPECT_EQ(a, manager.acquire("a.txt"));
        folder.Write("res/a.txt", "second");
        manager.release(a);
        manager.release(a);
        Recorded stranger{0, ""};
        manager.release(&stranger);
        EXPECT_EQ(0, factory.destroyed);
        EXPECT_EQ("first", manager.acquire("a.txt")->bytes); // still loaded, not read again
        manager.release(a);
        manager.release(a);
        EXPECT_EQ(1, factory.destroyed);
        EXPECT_EQ("second", manager.acquire("a.txt")->bytes);
        EXPECT_EQ(nullptr, manager.acquire("missing.txt"));
        EXPECT_EQ(nullptr, manager.acquire("folder"));
        EXPECT_EQ(2, factory.created);
    }
    EXPECT_EQ(2, factory.destroyed); // the manager's end takes what is left
}

TEST(ResourceTest, TrustsTheGzipLengthWithinWhatTheMemberCanHold)
{
    enum Outcome { Loaded, Refused, GzipError };
    const std::string text = "0123456789abcdefghij";
    const std::string member = Gzip(text);
    std::string badHeader = member, reservedBlock = member;
    badHeader[0] = 'x';
    reservedBlock[10] = 0x07; // the final block, of the reserved type 3
    const struct {
        const char* what;
        std::string stored;
        Outcome outcome;
        std::size_t length;
        std::string bytes;
    } cases[] = {
        {"right length", member, Loaded, 20, text},
        {"short length: only that much is read", WithIsize(member, 4), Loaded, 4, "0123"},
        {"long length: the stream ends first", WithIsize(member, 1000), Loaded, 1000, text},
        {"1032 times the member", WithIsize(member, std::uint32_t(1032 * member.size())), Loaded, 1032 * member.size(), text},
        {"more than 1032 times the member", WithIsize(member, std::uint32_t(1032 * member.size() + 1032)), Refused, 0, ""},
        {"three bytes", member.substr(0, 3), Refused, 0, ""},
        {"not a gzip header", badHeader, GzipError, 0, ""},
        {"reserved deflate block", reservedBlock, GzipError, 0, ""},
    };
    const ScratchFolder folder;
    for (const auto& test : cases) {
        folder.Write("disk/t.gz", test.stored);
        folder.Write("t.pak", MakePack({{"first", "1"}, {"t.gz", test.stored}, {"last", "2"}}));
        for (const char* path : {"disk", "t.pak"}) {
            SCOPED_TRACE(std::string(test.what) + " in " + path);
            auto provider = std::make_shared<Provider>();
            provider->addPath(folder.Path() + "/" + path);
            RecordingFactory factory;
            ManagerGeneric<Recorded, RecordingFactory> manager(provider, factory);
            for (int attempt = 0; attempt < 2; ++attempt) { // a failure keeps nothing
                if (test.outcome == Loaded) {
                    const Recorded* resource = manager.acquire("t.gz");
                    ASSERT_NE(nullptr, resource);
                    EXPECT_EQ(test.length, resource->length);
                    EXPECT_EQ(test.bytes, resource->bytes);
                } else if (test.outcome == Refused) {
                    EXPECT_THROW(manager.acquire("t.gz"), ResourceError);
                } else {
                    EXPECT_THROW(manager.acquire("t.gz"), boost::iostreams::gzip_error);
                }
            }
            EXPECT_EQ(test.outcome == Loaded ? 1 : 0, factory.created);
        }
    }
}

TEST(ResourceTest, EveryKindFromAPack)
{
    const std::vector<std::uint32_t> pixels = {0x11223344, 0x55667788, 0x99aabbcc, 0xddeeff00};
    const std::uint32_t white = 0xffffffff;
    const std::string image = Tga(2, 2, pixels);
    std::string huge = image;
    huge[12] = huge[14] = char(0x88); // 5000 × 5000
    huge[13] = huge[15] = char(0x13);
    // A strip 5 × 7: glyphs 2 high; the marker row (row 5) parts a glyph 2 wide from one 1 wide.
    std::vector<std::uint32_t> strip(35, 0xff000000);
    strip[26] = strip[27] = strip[29] = white;
    const std::string xml = "<a x=\"1\"/><b/>";
    const ScratchFolder folder;
    folder.Write("res.pak", MakePack({{"whole.xml.gz", Gzip(xml)},
                                      {"cut.xml.gz", WithIsize(Gzip(xml), 10)}, // just <a x="1"/>
                                      {"image.tga", image},
                                      {"image.tga.gz", Gzip(image)},
                                      {"cut.tga.gz", Gzip(image.substr(0, 26))},
                                      {"huge.tga", huge},
                                      {"strip.tga", Tga(5, 7, strip)},
                                      {"cut.tga", image.substr(0, 29)}})); // last: the file ends in it
    Graphics::DeviceSW device;
    auto provider = std::make_shared<Provider>();
    ResourceSet resources(device, provider);
    EXPECT_EQ(provider.get(), &resources.getProvider());
    provider->addPath(folder.Path() + "/res.pak");
    const struct {
        const char* name;
        std::vector<std::uint32_t> pixels;
        const char* error;
    } cases[] = {
        {"image.tga", pixels, nullptr},
        {"image.tga.gz", pixels, nullptr},
        {"cut.tga", {pixels[0], pixels[1], white, white}, nullptr},
        {"cut.tga.gz", {pixels[0], pixels[1], white, white}, nullptr},
        {"huge.tga", {}, "Image too large"},
    };
    for (const auto& test : cases) {
        try {
            Graphics::Image* loaded = resources.getImages().acquire(test.name);
            ASSERT_NE(nullptr, loaded) << test.name;
            ASSERT_EQ((std::pair{2, 2}), std::pair(loaded->size().x, loaded->size().y)) << test.name;
            const std::uint32_t* first = loaded->lock().first;
            EXPECT_EQ(test.pixels, std::vector<std::uint32_t>(first, first + 4)) << test.name;
            EXPECT_EQ(nullptr, test.error);
        } catch (const Graphics::Image::LoadError& error) {
            EXPECT_STREQ(test.error, error.what()) << test.name;
        }
    }
    for (const auto& [name, second] : {std::pair{"whole.xml.gz", "b"}, {"cut.xml.gz", ""}}) {
        const TiXmlDocument* document = resources.getDocuments().acquire(name);
        ASSERT_TRUE(document != nullptr && document->RootElement() != nullptr) << name;
        const TiXmlElement* next = document->RootElement()->NextSiblingElement();
        EXPECT_EQ(second, std::string(next != nullptr ? next->Value() : "")) << name;
    }
    EXPECT_NE(nullptr, resources.getBitMasks().acquire("image.tga.gz"));
    Graphics::Font* font = resources.getFonts().acquire("strip.tga");
    ASSERT_NE(nullptr, font);
    EXPECT_EQ((std::vector<int>{2, 2, 1}), (std::vector<int>{font->getHeight(), font->getCharSize(0).x, font->getCharSize(1).x}));
    // Everything acquired is left for the set's end to destroy.
}

}  // namespace
}  // namespace OV::CFW::Res
