#include "platform/UserFolders.h"

#include <dlfcn.h>
#include <pwd.h>
#include <unistd.h>

#include <cstdlib>

namespace OV::Platform {

namespace {

std::string AbsoluteVariable(const char* name)
{
    const char* value = std::getenv(name);
    return value != nullptr && value[0] == '/' ? std::string(value) : std::string();
}

}  // namespace

std::string HomeFolder()
{
    std::string home = AbsoluteVariable("HOME");
    if (!home.empty())
        return home;
    if (const passwd* entry = getpwuid(getuid()); entry != nullptr && entry->pw_dir != nullptr)
        return entry->pw_dir;
    return "/tmp";
}

std::string ConfigHome()
{
    std::string folder = AbsoluteVariable("XDG_CONFIG_HOME");
    return folder.empty() ? HomeFolder() + "/.config" : folder;
}

std::string DataHome()
{
    std::string folder = AbsoluteVariable("XDG_DATA_HOME");
    return folder.empty() ? HomeFolder() + "/.local/share" : folder;
}

std::string ModuleFolder()
{
    Dl_info info{};
    if (dladdr(reinterpret_cast<void*>(&ModuleFolder), &info) == 0 || info.dli_fname == nullptr)
        return ".";
    std::string path = info.dli_fname;
    const std::string::size_type slash = path.rfind('/');
    return slash == std::string::npos ? std::string(".") : path.substr(0, slash);
}

std::string ExpandFolderVariables(const std::string& text)
{
    struct Variable {
        const char* name;
        std::string (*folder)();
    };
    static const Variable variables[] = {
        {"$XDG_CONFIG_HOME", &ConfigHome},
        {"$XDG_DATA_HOME", &DataHome},
        {"$HOME", &HomeFolder},
    };
    for (const Variable& variable : variables) {
        const std::string name = variable.name;
        if (text.compare(0, name.size(), name) == 0
            && (text.size() == name.size() || text[name.size()] == '/'))
            return variable.folder() + text.substr(name.size());
    }
    return text;
}

}  // namespace OV::Platform
