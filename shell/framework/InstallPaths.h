#pragma once

#include "platform/RegistryKey.h"

#include <string>

namespace OV::CFW::HLAFramework {

// Where the product's resources and presets are, from the machine hive of the product's key.
// Main thread: reads the registry and may show a message box.
class InstallPaths {
public:
    InstallPaths(std::string product, std::string maker);

    // "ResPath"; when missing, a message box and an empty string.
    std::string GetResPath() const;
    // "ResPath<index>"; empty and silent when missing.
    std::string GetResPath(int index) const;
    // "PresetPath"; when missing, a message box and an empty string.
    std::string GetPresetPath() const;
    // "FactoryPresetPath", the presets shipped with the product; empty and silent when missing.
    std::string GetFactoryPresetPath() const;

private:
    std::string ReadOrComplain(const std::string& name, const std::string& caption) const;
    std::string ReadOrEmpty(const std::string& name) const;

    Platform::RegistryKey key;
    std::string product;
    std::string maker;
};

}  // namespace OV::CFW::HLAFramework
