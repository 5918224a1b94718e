#include "hosts/render/OutputFile.h"

#include "hosts/common/HostError.h"

#include <fcntl.h>
#include <stdio.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <vector>

namespace OV::Hosts::Render {

namespace {

HostError Failure(const std::string& what, const std::string& path)
{
    return HostError(BadOutput, what + " '" + path + "': " + std::strerror(errno));
}

// The permissions a new file gets from this process's umask; read once, since reading it
// means setting it.
mode_t NewFileMode()
{
    static const mode_t mode = [] {
        const mode_t mask = ::umask(0);
        ::umask(mask);
        return static_cast<mode_t>(0666 & ~mask);
    }();
    return mode;
}

}  // namespace

OutputFile::OutputFile(const std::string& target) : path(target)
{
    const std::string::size_type slash = path.rfind('/');
    const std::string folder = slash == std::string::npos ? "." : path.substr(0, slash);
    const std::string name = slash == std::string::npos ? path : path.substr(slash + 1);
    // Hidden, and in the target's folder so that the rename stays on one file system.
    const std::string unique = folder + "/." + name + ".XXXXXX";
    std::vector<char> pattern(unique.begin(), unique.end());
    pattern.push_back('\0');
    descriptor = ::mkostemp(pattern.data(), O_CLOEXEC);
    if (descriptor < 0)
        throw Failure("cannot write in the folder of", path);
    temporary = pattern.data();
    ::fchmod(descriptor, NewFileMode());  // mkostemp makes it private
}

OutputFile::~OutputFile()
{
    if (descriptor >= 0)
        ::close(descriptor);
    if (!committed)
        ::unlink(temporary.c_str());
}

void OutputFile::Write(const std::string& text)
{
    for (std::size_t done = 0; done < text.size();) {
        const ssize_t written = ::write(descriptor, text.data() + done, text.size() - done);
        if (written < 0 && errno == EINTR)
            continue;
        if (written <= 0)
            throw Failure("cannot write", path);
        done += static_cast<std::size_t>(written);
    }
}

void OutputFile::Commit(bool replace)
{
    if (descriptor >= 0) {
        const bool synced = ::fsync(descriptor) == 0;
        const bool closed = ::close(descriptor) == 0;
        descriptor = -1;
        if (!synced || !closed)
            throw Failure("cannot write", path);
    }
    if (replace) {
        if (::rename(temporary.c_str(), path.c_str()) != 0)
            throw Failure("cannot write", path);
    } else if (::renameat2(AT_FDCWD, temporary.c_str(), AT_FDCWD, path.c_str(), RENAME_NOREPLACE) != 0) {
        if (errno == EEXIST)
            throw HostError(BadOutput, "'" + path + "' exists (--force replaces it)");
        throw Failure("cannot write", path);
    }
    committed = true;
}

}  // namespace OV::Hosts::Render
