#include "platform/DebugOutput.h"

#include <unistd.h>

namespace OV::Platform {

void DebugOutput(const std::string& line)
{
    const std::string text = line + "\n";
    std::size_t written = 0;
    while (written < text.size()) {
        const ssize_t result = ::write(STDERR_FILENO, text.data() + written, text.size() - written);
        if (result <= 0)
            return;
        written += static_cast<std::size_t>(result);
    }
}

}  // namespace OV::Platform
