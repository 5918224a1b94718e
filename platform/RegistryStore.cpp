#include "platform/RegistryStore.h"

#include "platform/AtomicFile.h"
#include "platform/DebugOutput.h"
#include "platform/UserFolders.h"
#include "platform/XmlParse.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <tinyxml.h>

#include <cerrno>
#include <cstring>
#include <system_error>

#include <boost/filesystem.hpp>

namespace OV::Platform {

namespace {

const char* const typeString = "REG_SZ";
const char* const typeNumber = "REG_DWORD";

// A file descriptor that closes itself; closing also drops a flock held through it.
class FileDescriptor {
public:
    explicit FileDescriptor(int fd) : fd(fd) {}
    ~FileDescriptor()
    {
        if (fd >= 0)
            ::close(fd);
    }
    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;
    int Get() const { return fd; }
    bool Close()
    {
        const int result = ::close(fd);
        fd = -1;
        return result == 0;
    }

private:
    int fd;
};

// Key levels become folder and file names: no empty level, no separators, no dot names.
bool UsableLevel(const std::string& level)
{
    return !level.empty() && level != "." && level != ".."
        && level.find_first_of("/\\") == std::string::npos
        && level.find('\0') == std::string::npos;
}

std::string JoinKeyPath(const std::vector<std::string>& key)
{
    std::string path;
    for (const std::string& level : key)
        path += (path.empty() ? "" : "\\") + level;
    return path;
}

enum class KeyFileState { Missing, Unreadable, Read };

KeyFileState ReadKeyFile(const std::string& file, std::string& text)
{
    FileDescriptor in(::open(file.c_str(), O_RDONLY | O_CLOEXEC));
    if (in.Get() < 0)
        return errno == ENOENT ? KeyFileState::Missing : KeyFileState::Unreadable;
    text.clear();
    char buffer[4096];
    for (;;) {
        const ssize_t got = ::read(in.Get(), buffer, sizeof buffer);
        if (got < 0 && errno == EINTR)
            continue;
        if (got < 0)
            return KeyFileState::Unreadable;
        if (got == 0)
            return KeyFileState::Read;
        text.append(buffer, static_cast<std::size_t>(got));
    }
}

// Parses a key file; false when it is missing, unreadable or damaged.
bool LoadKeyDocument(const std::string& file, TiXmlDocument& document)
{
    std::string text;
    return ReadKeyFile(file, text) == KeyFileState::Read && ParseXml(document, text.c_str(), text.size());
}

std::optional<RegistryValue> FindValue(const TiXmlElement& key, const std::string& name)
{
    for (const TiXmlElement* element = key.FirstChildElement("Value"); element != nullptr;
         element = element->NextSiblingElement("Value")) {
        const char* valueName = element->Attribute("name");
        if (valueName == nullptr || name != valueName)
            continue;
        const char* type = element->Attribute("type");
        const char* data = element->Attribute("data");
        if (type == nullptr || data == nullptr)
            return std::nullopt;
        RegistryValue value;
        if (std::strcmp(type, typeString) == 0) {
            value.type = RegistryValue::Type::String;
            value.text = data;
            return value;
        }
        if (std::strcmp(type, typeNumber) == 0) {
            char* end = nullptr;
            errno = 0;
            const unsigned long number = std::strtoul(data, &end, 10);
            if (end == data || *end != '\0' || errno != 0 || number > 0xffffffffUL)
                return std::nullopt;
            value.type = RegistryValue::Type::Number;
            value.number = static_cast<std::uint32_t>(number);
            return value;
        }
        return std::nullopt;
    }
    return std::nullopt;
}

void StoreValue(TiXmlElement& key, const std::string& name, const RegistryValue& value)
{
    TiXmlElement* element = key.FirstChildElement("Value");
    for (; element != nullptr; element = element->NextSiblingElement("Value")) {
        const char* valueName = element->Attribute("name");
        if (valueName != nullptr && name == valueName)
            break;
    }
    if (element == nullptr)
        element = key.InsertEndChild(TiXmlElement("Value"))->ToElement();
    element->SetAttribute("name", name);
    if (value.type == RegistryValue::Type::String) {
        element->SetAttribute("type", typeString);
        element->SetAttribute("data", value.text);
    } else {
        element->SetAttribute("type", typeNumber);
        element->SetAttribute("data", std::to_string(value.number));
    }
}

bool LockExclusive(int fd)
{
    while (::flock(fd, LOCK_EX) != 0) {
        if (errno != EINTR)
            return false;
    }
    return true;
}

}  // namespace

const char* RegistryHiveName(std::uint32_t hive)
{
    switch (hive) {
    case 0:
        return "HKEY_LOCAL_MACHINE";
    case 1:
        return "HKEY_CURRENT_USER";
    default:
        return nullptr;
    }
}

RegistryStore::RegistryStore(std::string userRoot, std::vector<std::string> defaultsFiles)
    : userRoot(std::move(userRoot)), defaultsFiles(std::move(defaultsFiles))
{
}

RegistryStore RegistryStore::ForCurrentUser()
{
    const std::string module = ModuleFolder();
    return RegistryStore(ConfigHome() + "/orvane-studio/registry",
                         {module + "/varnel4-registry.xml",
                          module + "/../share/varnel4/varnel4-registry.xml"});
}

std::string RegistryStore::KeyFile(std::uint32_t hive, const std::vector<std::string>& key) const
{
    const char* hiveName = RegistryHiveName(hive);
    if (hiveName == nullptr || key.empty())
        return {};
    std::string file = userRoot + "/" + hiveName;
    for (const std::string& level : key) {
        if (!UsableLevel(level))
            return {};
        file += "/" + level;
    }
    return file + ".xml";
}

std::optional<RegistryValue> RegistryStore::Read(std::uint32_t hive,
                                                 const std::vector<std::string>& key,
                                                 const std::string& name) const
{
    const std::string file = KeyFile(hive, key);
    if (file.empty())
        return std::nullopt;
    TiXmlDocument document;
    if (LoadKeyDocument(file, document)) {
        if (std::optional<RegistryValue> value = FindValue(*document.RootElement(), name))
            return value;
    }
    return ReadDefault(hive, key, name);
}

std::optional<RegistryValue> RegistryStore::ReadDefault(std::uint32_t hive,
                                                        const std::vector<std::string>& key,
                                                        const std::string& name) const
{
    const std::string hiveName = RegistryHiveName(hive);
    const std::string path = JoinKeyPath(key);
    for (const std::string& file : defaultsFiles) {
        TiXmlDocument document;
        if (!LoadKeyDocument(file, document))
            continue;
        for (const TiXmlElement* element = document.RootElement()->FirstChildElement("Key");
             element != nullptr; element = element->NextSiblingElement("Key")) {
            const char* elementHive = element->Attribute("hive");
            const char* elementPath = element->Attribute("path");
            if (elementHive == nullptr || elementPath == nullptr || hiveName != elementHive
                || path != elementPath)
                continue;
            if (std::optional<RegistryValue> value = FindValue(*element, name)) {
                if (value->type == RegistryValue::Type::String)
                    value->text = ExpandFolderVariables(value->text);
                return value;
            }
        }
    }
    return std::nullopt;
}

bool RegistryStore::Write(std::uint32_t hive, const std::vector<std::string>& key,
                          const std::string& name, const RegistryValue& value) const
{
    const std::string file = KeyFile(hive, key);
    if (file.empty())
        return false;
    boost::system::error_code error;
    boost::filesystem::create_directories(boost::filesystem::path(file).parent_path(), error);
    if (error)
        return false;

    FileDescriptor lock(::open((file + ".lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0644));
    if (lock.Get() < 0 || !LockExclusive(lock.Get()))
        return false;

    TiXmlDocument document;
    std::string text;
    const KeyFileState state = ReadKeyFile(file, text);
    if (state == KeyFileState::Unreadable) {
        // Its other values may be fine: it is left alone, and nothing is written.
        DebugOutput("Registry key not written, its file cannot be read: " + file);
        return false;
    }
    if (state == KeyFileState::Missing || !ParseXml(document, text.c_str(), text.size())) {
        // A damaged file is kept aside rather than overwritten.
        if (state == KeyFileState::Read)
            ::rename(file.c_str(), (file + ".damaged").c_str());
        document = TiXmlDocument();
        document.InsertEndChild(TiXmlDeclaration("1.0", "UTF-8", ""));
        TiXmlElement root("RegistryKey");
        root.SetAttribute("hive", RegistryHiveName(hive));
        root.SetAttribute("path", JoinKeyPath(key));
        document.InsertEndChild(root);
    }
    StoreValue(*document.RootElement(), name, value);

    TiXmlPrinter printer;
    document.Accept(&printer);
    return !WriteFileAtomically(file, printer.Str());
}

}  // namespace OV::Platform
