#include "platform/AtomicFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <vector>

namespace OV::Platform {

namespace {

bool WriteAll(int fd, const std::string& text)
{
    std::size_t written = 0;
    while (written < text.size()) {
        const ssize_t result = ::write(fd, text.data() + written, text.size() - written);
        if (result < 0 && errno == EINTR)
            continue;
        if (result <= 0) {
            if (result == 0)
                errno = ENOSPC;
            return false;
        }
        written += static_cast<std::size_t>(result);
    }
    return true;
}

}  // namespace

AtomicWriteFailure WriteFileAtomically(const std::string& path, const std::string& text)
{
    const std::string::size_type slash = path.rfind('/');
    const std::string folder = slash == std::string::npos ? "." : path.substr(0, slash == 0 ? 1 : slash);
    const std::string name = slash == std::string::npos ? path : path.substr(slash + 1);
    // A name of its own: two writers of one file never share a temporary.
    std::string pattern = folder + "/." + name + ".XXXXXX";
    std::vector<char> temporary(pattern.begin(), pattern.end());
    temporary.push_back('\0');
    const int fd = ::mkostemp(temporary.data(), O_CLOEXEC);
    if (fd < 0)
        return {"open", errno};
    const auto fail = [&](const char* step, int error, bool open) {
        if (open)
            ::close(fd);
        ::unlink(temporary.data());
        return AtomicWriteFailure{step, error};
    };
    if (::fchmod(fd, 0644) != 0)
        return fail("open", errno, true);
    if (!WriteAll(fd, text))
        return fail("write", errno, true);
    if (::fsync(fd) != 0)
        return fail("fsync", errno, true);
    if (::close(fd) != 0)
        return fail("close", errno, false);
    if (::rename(temporary.data(), path.c_str()) != 0)
        return fail("rename", errno, false);
    const int directory = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (directory >= 0) {
        ::fsync(directory);
        ::close(directory);
    }
    return {};
}

}  // namespace OV::Platform
