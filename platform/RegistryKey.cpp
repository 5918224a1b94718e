#include "platform/RegistryKey.h"

#include "platform/RegistryStore.h"

#include <vector>

namespace OV::Platform {

namespace {

constexpr std::size_t valueBufferSize = 512;

}  // namespace

RegistryKey::RegistryKey(std::string product, std::string maker, std::uint32_t hive)
    : product(std::move(product)), maker(std::move(maker)), hive(hive)
{
}

bool RegistryKey::ReadString(const std::string& name, std::string& value) const
{
    const std::optional<RegistryValue> stored
        = RegistryStore::ForCurrentUser().Read(hive, {"SOFTWARE", maker, product}, name);
    if (!stored || stored->type != RegistryValue::Type::String
        || stored->text.size() + 1 > valueBufferSize)
        return false;
    value = stored->text;
    return true;
}

bool RegistryKey::ReadNumber(const std::string& name, std::uint32_t& value) const
{
    const std::optional<RegistryValue> stored
        = RegistryStore::ForCurrentUser().Read(hive, {"SOFTWARE", maker, product}, name);
    if (!stored || stored->type != RegistryValue::Type::Number)
        return false;
    value = stored->number;
    return true;
}

bool RegistryKey::WriteString(const std::string& name, const std::string& value) const
{
    RegistryValue stored;
    stored.type = RegistryValue::Type::String;
    stored.text = value;
    return RegistryStore::ForCurrentUser().Write(hive, {"SOFTWARE", maker, product}, name, stored);
}

bool RegistryKey::WriteNumber(const std::string& name, std::uint32_t value) const
{
    RegistryValue stored;
    stored.type = RegistryValue::Type::Number;
    stored.number = value;
    return RegistryStore::ForCurrentUser().Write(hive, {"SOFTWARE", maker, product}, name, stored);
}

}  // namespace OV::Platform
