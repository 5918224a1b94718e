#include "hosts/render/LatencyLevel.h"

#include "hosts/common/HostError.h"
#include "hosts/common/ProductRegistry.h"

#include <cstdlib>
#include <vector>

#include <boost/algorithm/string/case_conv.hpp>
#include <boost/filesystem.hpp>

namespace OV::Hosts::Render {

namespace {

int LevelIndex(const std::string& level)
{
    const std::string name = boost::algorithm::to_lower_copy(level);
    if (name == "low")
        return 0;
    if (name == "mid" || name == "med")
        return 1;
    if (name == "high")
        return 2;
    throw HostError(BadArgument, "unknown latency level '" + level + "' (low, mid or high)");
}

}  // namespace

LatencyLevel::LatencyLevel(const std::string& level)
{
    const int index = LevelIndex(level);
    const char* temporaryRoot = std::getenv("TMPDIR");
    std::string pattern = std::string(temporaryRoot != nullptr && temporaryRoot[0] == '/' ? temporaryRoot : "/tmp")
        + "/varnel4-render.XXXXXX";
    std::vector<char> name(pattern.begin(), pattern.end());
    name.push_back('\0');
    if (::mkdtemp(name.data()) == nullptr)
        throw HostError(Failed, "cannot make a private registry in " + pattern);
    folder = name.data();
    ::setenv("XDG_CONFIG_HOME", folder.c_str(), 1);
    if (!ProductRegistry().WriteString(latencyLevelPreference, std::to_string(index))) {
        boost::system::error_code ignored;
        boost::filesystem::remove_all(folder, ignored);
        throw HostError(Failed, "cannot write the latency level into " + folder);
    }
}

LatencyLevel::~LatencyLevel()
{
    boost::system::error_code ignored;
    boost::filesystem::remove_all(folder, ignored);
}

}  // namespace OV::Hosts::Render
