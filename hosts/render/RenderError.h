#pragma once

#include <stdexcept>
#include <string>

namespace OV::Hosts::Render {

// The program's exit codes; --help lists them.
enum ExitCode : int {
    Done = 0,
    Failed = 1,
    BadArgument = 2,
    BadInput = 3,
    BadPreset = 4,
    BadOutput = 5,
    Interrupted = 130,
};

// A failure to tell the user, with the exit code it ends the program with.
class RenderError : public std::runtime_error {
public:
    RenderError(ExitCode code, const std::string& message) : std::runtime_error(message), code(code) {}
    ExitCode GetCode() const { return code; }

private:
    ExitCode code;
};

}  // namespace OV::Hosts::Render
