#pragma once

// In-process instances for the preset tests: a whole component tree with its worker thread,
// preset folders in a scratch folder, and ways to wait for the worker and read the state.
#include "docview/interfaces/Scheduler.h"
#include "equaliser/DocumentProfile.h"
#include "platform/Messages.h"
#include "product/MainComponentSingleModule.h"
#include "product/MainDocument.h"
#include "product/ModuleDocument.h"
#include "tests/support/ScratchFolder.h"

#include <sys/resource.h>
#include <tinyxml.h>

#include <chrono>
#include <csignal>
#include <future>
#include <memory>
#include <mutex>
#include <stdexcept>
#include <string>
#include <vector>

namespace OV::Testing {

using Products::VN4::MainDocumentSingleModule;
using Rows = Comp::ModuleLinearPhaseEq::DocumentProfile;

// Records message boxes (from any thread) while it lives, answering OK.
class MessageRecorder {
public:
    MessageRecorder()
    {
        Platform::SetMessageHandler([this](const std::string& text, const std::string& caption, int) {
            std::lock_guard<std::mutex> guard(mutex);
            messages.push_back(caption + ": " + text);
            return true;
        });
    }
    ~MessageRecorder() { Platform::SetMessageHandler({}); }
    MessageRecorder(const MessageRecorder&) = delete;
    MessageRecorder& operator=(const MessageRecorder&) = delete;

    // "caption: text" for each box so far.
    std::vector<std::string> Messages() const
    {
        std::lock_guard<std::mutex> guard(mutex);
        return messages;
    }

private:
    mutable std::mutex mutex;
    std::vector<std::string> messages;
};

// Lowers the file size limit of the process while it lives, so writes beyond it fail as on a
// full disk.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes) : previous(std::signal(SIGXFSZ, SIG_IGN))
    {
        getrlimit(RLIMIT_FSIZE, &saved);
        rlimit limit = saved;
        limit.rlim_cur = bytes;
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit()
    {
        setrlimit(RLIMIT_FSIZE, &saved);
        std::signal(SIGXFSZ, previous);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

private:
    rlimit saved{};
    void (*previous)(int);
};

inline std::unique_ptr<Products::VN4::MainComponentSingleModule> MakeInstance(const std::string& presetPath,
                                                                              const std::string& factoryPath = "")
{
    return std::make_unique<Products::VN4::MainComponentSingleModule>(nullptr, Products::VN4::PresetFolders{presetPath, factoryPath});
}

// Returns once every command queued before the call has run on the document's worker.
inline void Settle(MainDocumentSingleModule& document)
{
    // Deletes itself when run, so a timed-out wait leaves nothing dangling.
    struct Marker : CFW::DocView::Command {
        void Execute() override
        {
            done.set_value();
            delete this;
        }
        std::promise<void> done;
    };
    auto* marker = new Marker;
    std::future<void> done = marker->done.get_future();
    document.GetScheduler()->Enqueue(marker);
    if (done.wait_for(std::chrono::seconds(20)) != std::future_status::ready)
        throw std::runtime_error("the document's worker did not get to the end of its queue");
}

// The equaliser's document inside the instance.
inline CFW::DocView::Document& Equaliser(MainDocumentSingleModule& document) { return *document.GetModuleDocument()->GetChildDocument(); }

// Band `band` (0 to 5) of both channels: a peaking band of `gain` dB at `hz`, switched on.
inline void SetPeak(MainDocumentSingleModule& document, int band, float hz, float gain)
{
    using CFW::DocView::Parameter;
    for (int set : {Rows::LeftMid, Rows::RightSide}) {
        for (const auto& [column, value] : {std::pair{Rows::Mode, Parameter::FromEnum(2)}, {Rows::Hz, Parameter::FromFloat(hz)},
                                            {Rows::Gain, Parameter::FromFloat(gain)}, {Rows::Active, Parameter::FromBool(true)}})
            Equaliser(document).SetParameter(Rows::BandRow(set, band, column), value, CFW::DocView::SourceEditor);
    }
}

// The module form as a preset file holds it, without its GUID.
inline std::string ModuleText(MainDocumentSingleModule& document)
{
    TiXmlElement root("Preset");
    document.SaveModulePreset(root);
    TiXmlPrinter printer;
    root.Accept(&printer);
    return WithoutGuids(printer.Str());
}

// A preset file of the module form for `model`, its first band's gain at `gain`.
inline std::string PresetText(float gain, const std::string& model = "f8fd5639-da16-4332-86c3-e1e0e7272048")
{
    return "<?xml version=\"1.0\" ?>\n<Preset Version=\"1\" Format=\"vn4m\"><Slot Bypass=\"0\" Mute=\"0\" Model=\"" + model
        + "\"><Module LM_Band1Gain=\"" + std::to_string(gain) + "\" RS_Band1Gain=\"" + std::to_string(gain) + "\" /></Slot></Preset>\n";
}

}  // namespace OV::Testing
