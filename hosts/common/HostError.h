#pragma once

#include <stdexcept>
#include <string>

namespace OV::Hosts {

// The exit codes of the host programs; their --help lists them.
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
class HostError : public std::runtime_error {
public:
    HostError(ExitCode code, const std::string& message) : std::runtime_error(message), code(code) {}
    ExitCode GetCode() const { return code; }

private:
    ExitCode code;
};

}  // namespace OV::Hosts
