#pragma once

#include <cstdint>
#include <string>

namespace OV::Platform {

struct Guid {
    std::uint32_t data1;
    std::uint16_t data2;
    std::uint16_t data3;
    std::uint8_t data4[8];
};

// "%08x-%04x-%04x-%02x%02x-%02x%02x%02x%02x%02x%02x": lower case, no braces.
std::string FormatGuid(const Guid& guid);

// A fresh random (version 4) GUID.
Guid CreateGuid();

}  // namespace OV::Platform
