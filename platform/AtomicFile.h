#pragma once

#include <string>

namespace OV::Platform {

// What a failed atomic write stopped at: the step ("open", "write", "fsync", "close",
// "rename") and its errno. Empty when the write went through.
struct AtomicWriteFailure {
    const char* step = nullptr;
    int error = 0;

    explicit operator bool() const { return step != nullptr; }
};

// Replaces `path` with `text` so that a crash or a failure at any point leaves the old file
// whole or the new one complete: a temporary file of a name of its own in the same folder
// (hidden, so that scans pass it over), flushed to disk, renamed over the target, and the
// folder flushed. On failure the temporary file is gone and the target untouched.
AtomicWriteFailure WriteFileAtomically(const std::string& path, const std::string& text);

}  // namespace OV::Platform
