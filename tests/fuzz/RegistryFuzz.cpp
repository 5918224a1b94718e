// Registry files: whatever a key's file or the machine defaults hold, reads answer or fail, and
// a value written is read back.
#include "platform/RegistryStore.h"
#include "tests/fuzz/FuzzTargets.h"

#include <fstream>
#include <string>

#include <boost/filesystem.hpp>

namespace OV::Fuzz {

void Registry(const std::uint8_t* data, std::size_t size)
{
    const std::string text(reinterpret_cast<const char*>(data), size);
    const std::string folder = std::string(PrivateFolder()) + "/registry";
    const std::string defaults = folder + "/defaults.xml";
    boost::filesystem::create_directories(folder);
    const Platform::RegistryStore store(folder + "/user", {defaults});
    const std::vector<std::string> key = {"SOFTWARE", "Maker", "Product"};
    const std::string file = store.KeyFile(1, key);
    boost::filesystem::remove_all(folder + "/user");
    boost::filesystem::create_directories(boost::filesystem::path(file).parent_path());
    std::ofstream(file, std::ios::binary) << text;
    std::ofstream(defaults, std::ios::binary | std::ios::trunc) << text;

    for (const char* name : {"ResPath", "Main.LatencyLevel", "Value", ""})
        store.Read(1, key, name);
    Platform::RegistryValue value;
    value.text = "written";
    Require(store.Write(1, key, "Written", value), "a write refused");
    const auto back = store.Read(1, key, "Written");
    Require(back && back->type == Platform::RegistryValue::Type::String && back->text == "written", "a written value not read back");
}

}  // namespace OV::Fuzz
