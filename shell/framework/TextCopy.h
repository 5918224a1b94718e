#pragma once

#include <algorithm>
#include <cstring>
#include <string>

namespace OV::CFW::HLAFramework {

// Copies at most size - 1 characters and always terminates; a null buffer or a size below 1
// leaves the buffer untouched.
inline void BoundedCopy(const std::string& text, char* buffer, int size)
{
    if (buffer == nullptr || size < 1)
        return;
    const std::size_t count = std::min(text.size(), static_cast<std::size_t>(size - 1));
    std::memcpy(buffer, text.data(), count);
    buffer[count] = '\0';
}

}  // namespace OV::CFW::HLAFramework
