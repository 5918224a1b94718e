#include "platform/RegistryKey.h"
#include "platform/RegistryStore.h"
#include "tests/support/ScratchFolder.h"

#include <cstdlib>
#include <fstream>
#include <tuple>

#include <boost/filesystem.hpp>
#include <gtest/gtest.h>

namespace OV::Platform {
namespace {

using Testing::ReadFile;
using Testing::ScratchFolder;

// Each test gets its own config folder, so values never leak between tests.
class RegistryKeyTest : public testing::Test {
protected:
    void SetUp() override { setenv("XDG_CONFIG_HOME", config.Path().c_str(), 1); }

    std::string KeyFile(std::uint32_t hive, const std::string& product) const
    {
        return config.Path() + "/orvane-studio/registry/" + (hive == 0 ? "HKEY_LOCAL_MACHINE" : "HKEY_CURRENT_USER")
            + "/SOFTWARE/Maker/" + product + ".xml";
    }

    ScratchFolder config;
};

TEST_F(RegistryKeyTest, ValuesRoundTripByTypeAndHive)
{
    const RegistryKey machine("Product", "Maker", 0), user("Product", "Maker", 1);
    const std::tuple<const RegistryKey*, const char*, std::string> texts[] = {
        {&machine, "Text", "line one\nline \"two\" <&> \t 'three'  "}, {&user, "Text", "user value"}, {&machine, "Empty", ""}};
    for (const auto& [key, name, value] : texts)
        ASSERT_TRUE(key->WriteString(name, value));
    ASSERT_TRUE(machine.WriteNumber("Count", 4000000000u));

    std::string text;
    std::uint32_t number = 0;
    for (const auto& [key, name, value] : texts) {
        EXPECT_TRUE(key->ReadString(name, text));
        EXPECT_EQ(value, text);
    }
    EXPECT_TRUE(machine.ReadNumber("Count", number));
    EXPECT_EQ(4000000000u, number);

    // Each hive and key is a file of its own under the XDG config folder.
    EXPECT_TRUE(boost::filesystem::exists(KeyFile(0, "Product")));
    EXPECT_TRUE(boost::filesystem::exists(KeyFile(1, "Product")));

    // Overwriting keeps one value of that name, of the new type.
    ASSERT_TRUE(machine.WriteNumber("Text", 7));
    EXPECT_FALSE(machine.ReadString("Text", text));
    EXPECT_TRUE(machine.ReadNumber("Text", number));
    EXPECT_EQ(7u, number);
}

TEST_F(RegistryKeyTest, ReadsFailWithoutChangingTheOutput)
{
    const RegistryKey key("Product", "Maker", 0);
    ASSERT_TRUE(key.WriteNumber("Number", 5));
    ASSERT_TRUE(key.WriteString("String", "5"));
    ASSERT_TRUE(key.WriteString("Long", std::string(512, 'x')));
    ASSERT_TRUE(key.WriteString("LongestReadable", std::string(511, 'y')));

    std::string text = "unchanged";
    std::uint32_t number = 99;
    EXPECT_FALSE(key.ReadString("Missing", text));
    EXPECT_FALSE(key.ReadString("Number", text)) << "a number is not text";
    EXPECT_FALSE(key.ReadNumber("String", number)) << "text is not a number";
    EXPECT_FALSE(key.ReadString("Long", text)) << "512 characters and a terminator overflow the buffer";
    EXPECT_EQ("unchanged", text);
    EXPECT_EQ(99u, number);
    EXPECT_TRUE(key.ReadString("LongestReadable", text));
    EXPECT_EQ(511u, text.size());

    for (std::uint32_t hive : {2u, 0xffffffffu}) {
        const RegistryKey bad("Product", "Maker", hive);
        EXPECT_FALSE(bad.WriteString("String", "x"));
        EXPECT_FALSE(bad.ReadString("String", text));
    }
    // Key names that would leave the store's folder are refused.
    for (const char* product : {"", "..", "a/b", "a\\b"}) {
        const RegistryKey bad(product, "Maker", 0);
        EXPECT_FALSE(bad.WriteString("String", "x")) << product;
    }
}

TEST_F(RegistryKeyTest, DamagedFileIsKeptAsideAndWritingGoesOn)
{
    const std::string file = KeyFile(0, "Product");
    boost::filesystem::create_directories(boost::filesystem::path(file).parent_path());
    const std::string damage = "<RegistryKey><Value name=\"A\" type=\"REG_SZ\" data=\"1\"";
    std::ofstream(file) << damage;

    const RegistryKey key("Product", "Maker", 0);
    std::string text;
    EXPECT_FALSE(key.ReadString("A", text));
    ASSERT_TRUE(key.WriteString("B", "2"));
    EXPECT_TRUE(key.ReadString("B", text));
    EXPECT_EQ("2", text);
    EXPECT_EQ(damage, ReadFile(file + ".damaged"));

    // A key that cannot be read at all is no damaged one: the write fails and it stays.
    const std::string unreadable = KeyFile(0, "Unreadable");
    boost::filesystem::create_directories(unreadable + "/held");
    EXPECT_FALSE(RegistryKey("Unreadable", "Maker", 0).WriteString("B", "2"));
    EXPECT_TRUE(boost::filesystem::is_directory(unreadable + "/held"));
    EXPECT_FALSE(boost::filesystem::exists(unreadable + ".damaged"));
}

TEST_F(RegistryKeyTest, MachineDefaultsFillWhatTheUserStoreLacks)
{
    const ScratchFolder shipped;
    const std::string defaults = shipped.Write("defaults.xml", R"(<?xml version="1.0" ?>
<RegistryDefaults>
  <Key hive="HKEY_CURRENT_USER" path="SOFTWARE\Maker\Product">
    <Value name="Path" type="REG_SZ" data="wrong hive" />
  </Key>
  <Key hive="HKEY_LOCAL_MACHINE" path="SOFTWARE\Maker\Other">
    <Value name="Path" type="REG_SZ" data="wrong key" />
  </Key>
  <Key hive="HKEY_LOCAL_MACHINE" path="SOFTWARE\Maker\Product">
    <Value name="Path" type="REG_SZ" data="$XDG_DATA_HOME/presets" />
    <Value name="Home" type="REG_SZ" data="$HOMELESS/x" />
    <Value name="Level" type="REG_DWORD" data="3" />
    <Value name="Broken" type="REG_DWORD" data="three" />
  </Key>
</RegistryDefaults>)");
    const ScratchFolder data;
    setenv("XDG_DATA_HOME", data.Path().c_str(), 1);

    const RegistryStore store(config.Path() + "/store", {shipped.Path() + "/missing.xml", defaults});
    const std::vector<std::string> key = {"SOFTWARE", "Maker", "Product"};
    for (const auto& [name, text] : {std::pair{"Path", data.Path() + "/presets"}, {"Home", "$HOMELESS/x"}}) {
        const std::optional<RegistryValue> value = store.Read(0, key, name);
        ASSERT_TRUE(value) << name;
        EXPECT_EQ(text, value->text) << "only whole variable names expand";
    }
    const std::optional<RegistryValue> level = store.Read(0, key, "Level");
    ASSERT_TRUE(level);
    EXPECT_EQ(3u, level->number);
    EXPECT_FALSE(store.Read(0, key, "Broken"));
    EXPECT_FALSE(store.Read(1, {"SOFTWARE", "Maker", "Other"}, "Path"));

    // A value of the user's own shadows the default, and the defaults file stays as shipped.
    RegistryValue mine;
    mine.text = "/my/presets";
    const std::string before = ReadFile(defaults);
    ASSERT_TRUE(store.Write(0, key, "Path", mine));
    EXPECT_EQ("/my/presets", store.Read(0, key, "Path")->text);
    EXPECT_EQ(before, ReadFile(defaults));
}

}  // namespace
}  // namespace OV::Platform
