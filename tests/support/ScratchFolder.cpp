#include "tests/support/ScratchFolder.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <regex>
#include <sstream>
#include <stdexcept>

#include <boost/filesystem.hpp>

namespace OV::Testing {

ScratchFolder::ScratchFolder()
{
    const char* base = std::getenv("TMPDIR");
    std::string pattern = std::string(base != nullptr && base[0] == '/' ? base : "/tmp")
        + "/varnel4-test-XXXXXX";
    if (mkdtemp(pattern.data()) == nullptr)
        throw std::runtime_error("cannot make a scratch folder");
    path = pattern;
}

ScratchFolder::~ScratchFolder()
{
    boost::system::error_code ignored;
    boost::filesystem::remove_all(path, ignored);
}

std::string ScratchFolder::Write(const std::string& relative, const std::string& text) const
{
    const boost::filesystem::path file = boost::filesystem::path(path) / relative;
    boost::filesystem::create_directories(file.parent_path());
    std::ofstream(file.string(), std::ios::binary) << text;
    return file.string();
}

std::string WithoutGuids(const std::string& text)
{
    return std::regex_replace(text, std::regex(" GUID=\"[0-9a-f-]*\""), "");
}

std::string ReadFile(const std::string& path)
{
    std::ifstream stream(path, std::ios::binary);
    std::ostringstream text;
    text << stream.rdbuf();
    return text.str();
}

std::string CaptureStandardErrorOf(void (*action)(void*), void* context)
{
    const ScratchFolder folder;
    const std::string file = folder.Path() + "/stderr";
    const int target = ::open(file.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    const int saved = ::dup(STDERR_FILENO);
    ::dup2(target, STDERR_FILENO);
    ::close(target);
    action(context);
    ::dup2(saved, STDERR_FILENO);
    ::close(saved);
    return ReadFile(file);
}

}  // namespace OV::Testing
