#include "tests/fuzz/FuzzTargets.h"

#include <cstdio>
#include <cstdlib>
#include <string>

#include <boost/filesystem.hpp>

namespace OV::Fuzz {

void Require(bool holds, const char* what)
{
    if (holds)
        return;
    std::fprintf(stderr, "fuzz target: %s\n", what);
    std::abort();
}

const char* PrivateFolder()
{
    static const std::string folder = [] {
        const auto path = boost::filesystem::temp_directory_path() / boost::filesystem::unique_path("varnel4-fuzz-%%%%%%%%");
        boost::filesystem::create_directories(path / "config");
        setenv("HOME", path.c_str(), 1);
        setenv("XDG_CONFIG_HOME", (path / "config").c_str(), 1);
        return path.string();
    }();
    return folder.c_str();
}

}  // namespace OV::Fuzz
