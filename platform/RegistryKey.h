#pragma once

#include <cstdint>
#include <string>

namespace OV::Platform {

// One key of the registry: "SOFTWARE", maker, product, under a hive (0 machine, 1 user; any
// other hive fails every operation). Main thread or scheduler thread: touches files.
class RegistryKey {
public:
    RegistryKey(std::string product, std::string maker, std::uint32_t hive);

    // Fails unless the value exists as text shorter than the 512-byte value buffer.
    bool ReadString(const std::string& name, std::string& value) const;
    // Fails unless the value exists as a number.
    bool ReadNumber(const std::string& name, std::uint32_t& value) const;
    bool WriteString(const std::string& name, const std::string& value) const;
    bool WriteNumber(const std::string& name, std::uint32_t value) const;

private:
    std::string product;
    std::string maker;
    std::uint32_t hive;
};

}  // namespace OV::Platform
