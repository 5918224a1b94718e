#pragma once

#include <string>

namespace OV::Hosts::Render {

// A new file that takes the place of `path` only when committed: it is written under a hidden
// temporary name beside the target, flushed to disk and renamed, so the target is either
// complete or absent (or, when replaced, the earlier file whole). Throws HostError(BadOutput).
class OutputFile {
public:
    explicit OutputFile(const std::string& path);
    // Removes the temporary file unless committed.
    ~OutputFile();
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    const std::string& GetPath() const { return path; }
    // The open temporary file. Whoever closes it says so with Closed.
    int GetDescriptor() const { return descriptor; }
    void Closed() { descriptor = -1; }
    // Writes all of `text`.
    void Write(const std::string& text);
    // Flushes, closes and renames over the target; without `replace` an existing target stays
    // and the commit fails.
    void Commit(bool replace);

private:
    std::string path;
    std::string temporary;
    int descriptor;
    bool committed = false;
};

}  // namespace OV::Hosts::Render
