// Every seed of the fuzzers and every input a fuzzer once found to break something, run
// through its target: each must pass as the fuzzer would require.
#include "tests/fuzz/FuzzTargets.h"
#include "tests/support/ScratchFolder.h"

#include <boost/filesystem.hpp>
#include <gtest/gtest.h>

namespace OV::Testing {
namespace {

void Replay(const char* target, void (*run)(const std::uint8_t*, std::size_t))
{
    int inputs = 0;
    for (const char* kind : {"corpus", "regressions"}) {
        const boost::filesystem::path folder = boost::filesystem::path(VARNEL4_FUZZ_INPUTS) / kind / target;
        if (!boost::filesystem::is_directory(folder))
            continue;
        for (const auto& entry : boost::filesystem::directory_iterator(folder)) {
            SCOPED_TRACE(entry.path().string());
            const std::string data = ReadFile(entry.path().string());
            run(reinterpret_cast<const std::uint8_t*>(data.data()), data.size());
            ++inputs;
        }
    }
    EXPECT_GT(inputs, 0) << "no seeds for " << target;
}

TEST(FuzzReplayTest, Chunks) { Replay("chunk", &Fuzz::Chunk); }
TEST(FuzzReplayTest, ImageFiles) { Replay("image", &Fuzz::Image); }
TEST(FuzzReplayTest, ResourcePacks) { Replay("pack", &Fuzz::Pack); }
TEST(FuzzReplayTest, PresetFiles) { Replay("preset", &Fuzz::Preset); }
TEST(FuzzReplayTest, RegistryFiles) { Replay("registry", &Fuzz::Registry); }
TEST(FuzzReplayTest, RendererArguments) { Replay("render-arguments", &Fuzz::RenderArguments); }

}  // namespace
}  // namespace OV::Testing
