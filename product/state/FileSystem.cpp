#include "product/state/FileSystem.h"

#include "platform/AtomicFile.h"

#include <sys/stat.h>

#include <cerrno>
#include <fstream>

#include <boost/filesystem.hpp>

namespace OV::Products::VN4::State {

namespace fs = boost::filesystem;

FileSystemError::FileSystemError(const std::string& name, const std::string& where, std::error_code error)
    : std::runtime_error(name + ": " + error.message() + ": \"" + where + "\""), operation(name), path(where), code(error)
{
}

namespace FileSystem {

namespace {

[[noreturn]] void Fail(const char* operation, const std::string& path, const boost::system::error_code& error)
{
    throw FileSystemError(operation, path, std::error_code(error.value(), std::generic_category()));
}

[[noreturn]] void FailErrno(const char* operation, const std::string& path)
{
    throw FileSystemError(operation, path, std::error_code(errno, std::generic_category()));
}

bool NotFound(const boost::system::error_code& error)
{
    return error == boost::system::errc::no_such_file_or_directory || error == boost::system::errc::not_a_directory;
}

}  // namespace

bool Exists(const std::string& path)
{
    boost::system::error_code error;
    const bool result = fs::exists(path, error);
    if (error && !NotFound(error))
        Fail("boost::filesystem::exists", path, error);
    return result;
}

bool IsDirectory(const std::string& path)
{
    boost::system::error_code error;
    const bool result = fs::is_directory(path, error);
    if (error && !NotFound(error))
        Fail("boost::filesystem::is_directory", path, error);
    return result;
}

void CreateDirectories(const std::string& path)
{
    boost::system::error_code error;
    fs::create_directories(path, error);
    if (error)
        Fail("boost::filesystem::create_directories", path, error);
}

void Remove(const std::string& path)
{
    boost::system::error_code error;
    fs::remove(path, error);
    if (error)
        Fail("boost::filesystem::remove", path, error);
}

std::string FolderIdentity(const std::string& path)
{
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0 || !S_ISDIR(status.st_mode))
        return {};
    return std::to_string(status.st_dev) + ":" + std::to_string(status.st_ino);
}

std::vector<std::string> Entries(const std::string& folder)
{
    boost::system::error_code error;
    fs::directory_iterator entry(folder, error);
    if (error)
        Fail("boost::filesystem::basic_directory_iterator constructor", folder, error);
    std::vector<std::string> entries;
    for (; entry != fs::directory_iterator(); entry.increment(error)) {
        if (error)
            Fail("boost::filesystem::basic_directory_iterator increment", folder, error);
        entries.push_back(entry->path().string());
    }
    if (error)
        Fail("boost::filesystem::basic_directory_iterator increment", folder, error);
    return entries;
}

void WriteAtomically(const std::string& path, const std::string& text)
{
    if (const Platform::AtomicWriteFailure failure = Platform::WriteFileAtomically(path, text)) {
        errno = failure.error;
        FailErrno(failure.step, path);
    }
}

bool ReadText(const std::string& path, std::string& text)
{
    std::ifstream stream(path, std::ios::binary | std::ios::ate);
    if (!stream)
        return false;
    const std::streamoff size = stream.tellg();
    if (size < 0 || static_cast<std::size_t>(size) > maxTextSize)
        return false;
    text.resize(static_cast<std::size_t>(size));
    stream.seekg(0);
    return static_cast<bool>(stream.read(text.data(), size));
}

}  // namespace FileSystem

}  // namespace OV::Products::VN4::State
