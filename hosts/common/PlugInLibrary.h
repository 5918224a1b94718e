#pragma once

#include "shell/include/varnel4/hla2.h"

#include <string>

namespace OV::Hosts {

// The plug-in library loaded the way any host loads it: dlopen and its two exports.
class PlugInLibrary {
public:
    // Throws std::runtime_error with the loader's message when the file cannot be loaded or
    // lacks an export.
    explicit PlugInLibrary(const std::string& path);
    ~PlugInLibrary();
    PlugInLibrary(const PlugInLibrary&) = delete;
    PlugInLibrary& operator=(const PlugInLibrary&) = delete;

    HLA2PlugIn* Acquire(int version, int* outVersion) const { return acquire(version, outVersion); }
    void Release() const { release(); }
    const std::string& Path() const { return path; }

    // The built library beside the running program: <program folder>/../lib/libvarnel4.so.
    static std::string DefaultPath();

private:
    std::string path;
    void* handle;
    HLA2AcquireFunction acquire;
    HLA2ReleaseFunction release;
};

}  // namespace OV::Hosts
