#include "platform/Guid.h"

#include <cstdio>

#include <boost/uuid/random_generator.hpp>
#include <boost/uuid/uuid.hpp>

namespace OV::Platform {

std::string FormatGuid(const Guid& guid)
{
    char text[37];
    std::snprintf(text, sizeof text, "%08x-%04x-%04x-%02x%02x-%02x%02x%02x%02x%02x%02x",
                  static_cast<unsigned>(guid.data1), static_cast<unsigned>(guid.data2),
                  static_cast<unsigned>(guid.data3), guid.data4[0], guid.data4[1], guid.data4[2],
                  guid.data4[3], guid.data4[4], guid.data4[5], guid.data4[6], guid.data4[7]);
    return text;
}

Guid CreateGuid()
{
    // Field order of the text form: the first three fields read big-endian from the bytes.
    const boost::uuids::uuid uuid = boost::uuids::random_generator()();
    const std::uint8_t* b = uuid.data;
    Guid guid{};
    guid.data1 = (std::uint32_t(b[0]) << 24) | (std::uint32_t(b[1]) << 16)
        | (std::uint32_t(b[2]) << 8) | b[3];
    guid.data2 = static_cast<std::uint16_t>((b[4] << 8) | b[5]);
    guid.data3 = static_cast<std::uint16_t>((b[6] << 8) | b[7]);
    for (int i = 0; i < 8; ++i)
        guid.data4[i] = b[8 + i];
    return guid;
}

}  // namespace OV::Platform
