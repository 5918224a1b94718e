#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace OV::Platform {

// One typed value of the store: text (REG_SZ) or a 32-bit number (REG_DWORD).
struct RegistryValue {
    enum class Type { String, Number };
    Type type = Type::String;
    std::string text;
    std::uint32_t number = 0;
};

// The file store that stands for the system registry.
//
// Each key of each hive is one XML file under the user root:
//   <userRoot>/<hive name>/<level 1>/<level 2>/<last level>.xml
// Reads look in that file first and then in the machine defaults, files that ship with the
// build and with an installation and hold <Key hive="..." path="a\b\c"> elements. A write
// replaces the key's file atomically (temporary file, fsync, rename) while holding an advisory
// lock on "<file>.lock", so concurrent writers in any number of processes neither tear the file
// nor lose each other's values.
//
// Main thread or scheduler thread only: every operation touches the file system.
class RegistryStore {
public:
    RegistryStore(std::string userRoot, std::vector<std::string> defaultsFiles);

    // The store of this user: the root under the XDG config folder, and the defaults beside
    // the binary that holds this code (build tree) or in its share folder (installation).
    static RegistryStore ForCurrentUser();

    // Hive 0 is the machine hive, 1 the user hive; any other fails.
    std::optional<RegistryValue> Read(std::uint32_t hive, const std::vector<std::string>& key,
                                      const std::string& name) const;
    bool Write(std::uint32_t hive, const std::vector<std::string>& key, const std::string& name,
               const RegistryValue& value) const;

    // The file that holds a key of the user store, empty for a bad hive or key.
    std::string KeyFile(std::uint32_t hive, const std::vector<std::string>& key) const;

private:
    std::optional<RegistryValue> ReadDefault(std::uint32_t hive,
                                             const std::vector<std::string>& key,
                                             const std::string& name) const;

    std::string userRoot;
    std::vector<std::string> defaultsFiles;
};

const char* RegistryHiveName(std::uint32_t hive);

}  // namespace OV::Platform
