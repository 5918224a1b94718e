#include "hosts/common/PlugInLibrary.h"

#include <dlfcn.h>
#include <unistd.h>

#include <climits>
#include <stdexcept>

namespace OV::Hosts {

PlugInLibrary::PlugInLibrary(const std::string& libraryPath) : path(libraryPath)
{
    handle = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (handle == nullptr)
        throw std::runtime_error("cannot load the plug-in library: " + std::string(dlerror()));
    acquire = reinterpret_cast<HLA2AcquireFunction>(dlsym(handle, "HLA2Acquire"));
    release = reinterpret_cast<HLA2ReleaseFunction>(dlsym(handle, "HLA2Release"));
    if (acquire == nullptr || release == nullptr) {
        dlclose(handle);
        throw std::runtime_error("not a plug-in library (no HLA2Acquire or HLA2Release): " + path);
    }
}

PlugInLibrary::~PlugInLibrary()
{
    dlclose(handle);
}

std::string PlugInLibrary::DefaultPath()
{
    char program[PATH_MAX];
    const ssize_t length = readlink("/proc/self/exe", program, sizeof program - 1);
    if (length <= 0)
        return "libvarnel4.so";
    std::string folder(program, static_cast<std::size_t>(length));
    folder.erase(folder.rfind('/'));
    return folder + "/../lib/libvarnel4.so";
}

}  // namespace OV::Hosts
