// Several processes write one key at once: the file always parses, no write is lost, and each
// process sees the other's writes.
#include "platform/RegistryKey.h"
#include "platform/RegistryStore.h"
#include "tests/support/ScratchFolder.h"

#include <sys/wait.h>
#include <unistd.h>

#include <tinyxml.h>

#include <cstdlib>

#include <gtest/gtest.h>

namespace OV::Platform {
namespace {

constexpr std::uint32_t rounds = 150;

// Writer `self` counts its own value up and checks after each write that its own value is
// exactly what it wrote and that the other writer's value never goes back.
int Writer(int self)
{
    const RegistryKey key("Shared", "Maker", 1);
    const std::string mine = "Writer" + std::to_string(self);
    const std::string theirs = "Writer" + std::to_string(1 - self);
    std::uint32_t seen = 0;
    for (std::uint32_t i = 1; i <= rounds; ++i) {
        if (!key.WriteNumber(mine, i))
            return 1;
        std::uint32_t value = 0;
        if (!key.ReadNumber(mine, value) || value != i)
            return 2;
        if (key.ReadNumber(theirs, value)) {
            if (value < seen)
                return 3;
            seen = value;
        }
    }
    return 0;
}

// Parses the key's file as fast as it can until both writers have finished.
int Reader(const std::string& file, const std::string& stopFile)
{
    int parsed = 0;
    while (access(stopFile.c_str(), F_OK) != 0) {
        const std::string text = Testing::ReadFile(file);
        if (text.empty())
            continue;
        TiXmlDocument document;
        document.Parse(text.c_str());
        if (document.Error() || document.RootElement() == nullptr)
            return 4;
        ++parsed;
    }
    return parsed > 0 ? 0 : 5;
}

// Runs `child` in a process of its own, which exits with what it returns.
template <typename Child>
pid_t Start(Child child)
{
    const pid_t pid = fork();
    if (pid == 0)
        _exit(child());
    return pid;
}

// The exit code of a child process, or -1 when it did not exit of itself.
int ExitCode(pid_t child)
{
    int status = 0;
    return waitpid(child, &status, 0) == child && WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

TEST(RegistryConcurrencyTest, TwoWritingProcessesLoseNothing)
{
    const Testing::ScratchFolder config;
    setenv("XDG_CONFIG_HOME", config.Path().c_str(), 1);
    const std::string file = RegistryStore::ForCurrentUser().KeyFile(1, {"SOFTWARE", "Maker", "Shared"});
    const std::string stopFile = config.Path() + "/stop";

    const pid_t reader = Start([&] { return Reader(file, stopFile); });
    ASSERT_GE(reader, 0);
    for (const pid_t writer : {Start([] { return Writer(0); }), Start([] { return Writer(1); })})
        EXPECT_EQ(0, ExitCode(writer)) << "1 write failed, 2 own value lost, 3 other value went back";
    config.Write("stop", "");
    EXPECT_EQ(0, ExitCode(reader)) << "4 a torn file was read, 5 nothing was read";

    const RegistryKey key("Shared", "Maker", 1);
    for (const char* name : {"Writer0", "Writer1"}) {
        std::uint32_t value = 0;
        EXPECT_TRUE(key.ReadNumber(name, value));
        EXPECT_EQ(rounds, value) << name;
    }
}

}  // namespace
}  // namespace OV::Platform
