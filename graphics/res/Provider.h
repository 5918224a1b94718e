#pragma once

#include <list>
#include <mutex>
#include <string>

namespace OV::CFW::Res {

// The ordered search paths through which resources are found by relative name. The path added
// last is searched first. Thread-safe.
class Provider {
public:
    // Does nothing for a path that does not exist or is already on the list; otherwise puts it
    // at the front.
    void addPath(const std::string& path);
    void clear();
    std::list<std::string> searchPathList() const;

private:
    mutable std::mutex lock;
    std::list<std::string> searchPaths;
};

}  // namespace OV::CFW::Res
