#include "graphics/res/Provider.h"

#include <algorithm>

#include <boost/filesystem/operations.hpp>

namespace OV::CFW::Res {

void Provider::addPath(const std::string& path)
{
    boost::system::error_code error;
    if (path.empty() || !boost::filesystem::exists(path, error))
        return;
    std::lock_guard<std::mutex> guard(lock);
    if (std::find(searchPaths.begin(), searchPaths.end(), path) == searchPaths.end())
        searchPaths.push_front(path);
}

void Provider::clear()
{
    std::lock_guard<std::mutex> guard(lock);
    searchPaths.clear();
}

std::list<std::string> Provider::searchPathList() const
{
    std::lock_guard<std::mutex> guard(lock);
    return searchPaths;
}

}  // namespace OV::CFW::Res
