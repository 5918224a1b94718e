// Preset files: loaded by an instance and found by its folder scan, whatever they hold, the
// instance keeps a state within its ranges and sounds finite.
#include "docview/interfaces/Audio.h"
#include "docview/interfaces/Scheduler.h"
#include "product/MainComponentSingleModule.h"
#include "product/MainDocument.h"
#include "tests/fuzz/FuzzTargets.h"

#include <cmath>
#include <fstream>
#include <future>
#include <memory>
#include <string>
#include <vector>

#include <boost/filesystem.hpp>

namespace OV::Fuzz {
namespace {

using Products::VN4::MainComponentSingleModule;

class Session {
public:
    Session()
        : root(std::string(PrivateFolder()) + "/Presets"),
          instance(std::make_unique<MainComponentSingleModule>(nullptr, Products::VN4::PresetFolders{root, ""})),
          audio(CFW::DocView::FindInterface<CFW::DocView::Audio>(*instance))
    {
        boost::filesystem::create_directories(root + "/Fuzz");
        Require(audio != nullptr, "an instance without audio");
        audio->SetSampleRate(48000.0f);
        audio->SetBlockSize(block);
    }

    void Run(const std::string& text)
    {
        auto& document = instance->GetMainDocument();
        auto& presets = document.GetStateManager().GetPresetState();
        for (const char* name : {"/Fuzz/Input.vn4m", "/Input.vn4p"}) {
            std::ofstream(root + name, std::ios::binary | std::ios::trunc) << text;
            presets.LoadPreset(root + name);
        }
        presets.Rescan();
        Settle(document);
        std::vector<float> left(block, 0.25f), right(block, -0.5f), outLeft(block), outRight(block);
        float* in[2] = {left.data(), right.data()};
        float* out[2] = {outLeft.data(), outRight.data()};
        for (int round = 0; round < 2; ++round) {
            audio->Process(in, out, block, nullptr);
            for (int i = 0; i < block; ++i)
                Require(std::isfinite(outLeft[std::size_t(i)]) && std::isfinite(outRight[std::size_t(i)]), "a non-finite output");
        }
    }

private:
    static constexpr int block = 128;

    // Returns once the worker has run every command queued before.
    static void Settle(Products::VN4::MainDocumentSingleModule& document)
    {
        struct Marker : CFW::DocView::Command {
            void Execute() override { done.set_value(); }
            std::promise<void> done;
        } marker;
        std::future<void> done = marker.done.get_future();
        document.GetScheduler()->Enqueue(&marker);
        done.wait();
    }

    std::string root;
    std::unique_ptr<MainComponentSingleModule> instance;
    CFW::DocView::Audio* audio;
};

}  // namespace

void Preset(const std::uint8_t* data, std::size_t size)
{
    static Session session;
    session.Run(std::string(reinterpret_cast<const char*>(data), size));
}

}  // namespace OV::Fuzz
