// Chunks through the exports: whatever the host hands over, the instance keeps a state within
// its ranges and its output finite and bounded.
#include "hosts/common/HostedProcess.h"
#include "hosts/common/PlugInLibrary.h"
#include "tests/fuzz/FuzzTargets.h"

#include <cmath>
#include <memory>
#include <string>
#include <vector>

namespace OV::Fuzz {
namespace {

class Session {
public:
    Session()
    {
        PrivateFolder();
        plugIn = library.Acquire(HLA2_INTERFACE_VERSION, nullptr);
        Require(plugIn != nullptr, "the library refused to start");
        process = std::make_unique<Hosts::HostedProcess>(plugIn, 48000.0f, block, 2);
        for (int i = 0; i < block; ++i) {
            left[static_cast<std::size_t>(i)] = 0.5f * std::sin(0.05f * static_cast<float>(i));
            right[static_cast<std::size_t>(i)] = i % 7 == 0 ? -0.5f : 0.25f;
        }
    }

    Hosts::HostedProcess& Process() { return *process; }

    // The state the chunk left: every slot in its normalised range, and a few blocks of sound
    // that stay finite and bounded: six bands and the output at +15 dB each give at most 105 dB.
    void Check()
    {
        process->Settle();
        for (int slot = 0; slot < process->GetSlotCount(); ++slot) {
            const float normalised = process->GetSlotNormalized(slot);
            Require(normalised >= 0.0f && normalised <= 1.0f, "a slot outside its range");
        }
        for (int round = 0; round < 2; ++round) {
            float* in[2] = {left.data(), right.data()};
            float* out[2] = {outLeft.data(), outRight.data()};
            process->Process(in, out, block);
            for (int i = 0; i < block; ++i) {
                for (const float y : {outLeft[static_cast<std::size_t>(i)], outRight[static_cast<std::size_t>(i)]})
                    Require(std::isfinite(y) && std::fabs(y) < 1e6f, "an output not finite or out of bounds");
            }
        }
    }

private:
    static constexpr int block = 128;
    Hosts::PlugInLibrary library{Hosts::PlugInLibrary::DefaultPath()};
    HLA2PlugIn* plugIn = nullptr;
    std::unique_ptr<Hosts::HostedProcess> process;
    std::vector<float> left = std::vector<float>(block), right = left, outLeft = left, outRight = left;
};

}  // namespace

void Chunk(const std::uint8_t* data, std::size_t size)
{
    static Session session;
    const std::string text(reinterpret_cast<const char*>(data), size);
    session.Process().SetProgramChunk(text);
    session.Check();
    session.Process().SetBankChunk(text);
    session.Check();
}

}  // namespace OV::Fuzz
