#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
#include <system_error>
#include <vector>

namespace OV::Products::VN4::State {

// A failed file system operation: its name, the path and the system's error code.
class FileSystemError : public std::runtime_error {
public:
    FileSystemError(const std::string& operation, const std::string& path, std::error_code code);

    const std::string& GetOperation() const { return operation; }
    const std::string& GetPath() const { return path; }
    std::error_code GetCode() const { return code; }

private:
    std::string operation;
    std::string path;
    std::error_code code;
};

// File system operations that throw FileSystemError. "Not found" is false for Exists and
// IsDirectory, not an error. Not for the audio thread.
namespace FileSystem {

bool Exists(const std::string& path);
bool IsDirectory(const std::string& path);
void CreateDirectories(const std::string& path);
void Remove(const std::string& path);
// Which folder `path` is, links followed: equal for two paths to the same folder. Empty when it
// is no readable folder.
std::string FolderIdentity(const std::string& path);
// The entries of a folder, in the order the file system gives them.
std::vector<std::string> Entries(const std::string& folder);
// Replaces `path` with `text` so that a failure at any point leaves the old file whole (see
// Platform::WriteFileAtomically).
void WriteAtomically(const std::string& path, const std::string& text);
// Larger files are not read: no preset comes near it, and a scan must not stall on a stray
// recording someone named ".vn4m".
constexpr std::size_t maxTextSize = 4u << 20;

// The whole file; false when it cannot be read or is larger than maxTextSize.
bool ReadText(const std::string& path, std::string& text);

}  // namespace FileSystem

}  // namespace OV::Products::VN4::State
