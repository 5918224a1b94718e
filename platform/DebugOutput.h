#pragma once

#include <string>

namespace OV::Platform {

// Writes one line to standard error in a single write, so lines of threads do not interleave.
// Never on the audio thread.
void DebugOutput(const std::string& line);

}  // namespace OV::Platform
