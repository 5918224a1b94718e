#include "shell/framework/InstallPaths.h"

#include "platform/Messages.h"

namespace OV::CFW::HLAFramework {

InstallPaths::InstallPaths(std::string product, std::string maker)
    : key(product, maker, 0), product(std::move(product)), maker(std::move(maker))
{
}

std::string InstallPaths::ReadOrComplain(const std::string& name, const std::string& caption) const
{
    std::string value;
    if (key.ReadString(name, value))
        return value;
    Platform::ShowMessage("Please ensure this product has been installed properly", caption,
                          Platform::MessagePlain);
    return {};
}

std::string InstallPaths::GetResPath() const
{
    return ReadOrComplain("ResPath", "Missing ResPath error");
}

std::string InstallPaths::ReadOrEmpty(const std::string& name) const
{
    std::string value;
    return key.ReadString(name, value) ? value : std::string();
}

std::string InstallPaths::GetResPath(int index) const
{
    return ReadOrEmpty("ResPath" + std::to_string(index));
}

std::string InstallPaths::GetPresetPath() const
{
    return ReadOrComplain("PresetPath", "Missing PresetPath error");
}

std::string InstallPaths::GetFactoryPresetPath() const
{
    return ReadOrEmpty("FactoryPresetPath");
}

}  // namespace OV::CFW::HLAFramework
