#pragma once

#include <string>

namespace OV::Testing {

// A fresh folder under the system's temporary folder, removed with everything in it.
class ScratchFolder {
public:
    ScratchFolder();
    ~ScratchFolder();
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    const std::string& Path() const { return path; }
    // Writes a file below the folder, making its folders; returns its full path.
    std::string Write(const std::string& relative, const std::string& text) const;

private:
    std::string path;
};

// Reads a whole file; empty when it cannot be read.
std::string ReadFile(const std::string& path);

// The text without its GUID attributes, which every save makes anew.
std::string WithoutGuids(const std::string& text);

// Runs `action` with standard error sent to a file and returns what it wrote there.
template <typename Action>
std::string CaptureStandardError(Action&& action);

std::string CaptureStandardErrorOf(void (*action)(void*), void* context);

template <typename Action>
std::string CaptureStandardError(Action&& action)
{
    return CaptureStandardErrorOf([](void* a) { (*static_cast<Action*>(a))(); }, &action);
}

}  // namespace OV::Testing
