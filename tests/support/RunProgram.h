#pragma once

#include <string>
#include <vector>

namespace OV::Testing {

// What a program run left: its exit code (128 + the signal when killed), what it printed, and
// the most memory it held.
struct ProgramRun {
    int code = -1;
    std::string out;
    std::string err;
    long peakKilobytes = 0;
};

// Runs `program` with `arguments` in `folder` (the current one when empty) and waits for it.
// With `started`, calls it with the process id once the program runs, before waiting.
ProgramRun RunProgram(const std::string& program, const std::vector<std::string>& arguments,
                      const std::string& folder = "", void (*started)(int pid, void* context) = nullptr,
                      void* context = nullptr);

}  // namespace OV::Testing
