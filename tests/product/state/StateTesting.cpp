#include "tests/product/state/StateTesting.h"

#include "docview/interfaces/Scheduler.h"
#include "equaliser/DocumentProfile.h"
#include "platform/Messages.h"
#include "product/ModuleDocument.h"
#include "tests/support/ScratchFolder.h"

#include <tinyxml.h>

#include <chrono>
#include <csignal>
#include <future>
#include <stdexcept>

namespace OV::Testing {

using Products::VN4::MainDocumentSingleModule;
using Rows = Comp::ModuleLinearPhaseEq::DocumentProfile;

MessageRecorder::MessageRecorder()
{
    Platform::SetMessageHandler([this](const std::string& text, const std::string& caption, int) {
        std::lock_guard<std::mutex> guard(mutex);
        messages.push_back(caption + ": " + text);
        return true;
    });
}

MessageRecorder::~MessageRecorder()
{
    Platform::SetMessageHandler({});
}

std::vector<std::string> MessageRecorder::Messages() const
{
    std::lock_guard<std::mutex> guard(mutex);
    return messages;
}

FileSizeLimit::FileSizeLimit(rlim_t bytes)
{
    getrlimit(RLIMIT_FSIZE, &saved);
    previous = std::signal(SIGXFSZ, SIG_IGN);
    rlimit limit = saved;
    limit.rlim_cur = bytes;
    setrlimit(RLIMIT_FSIZE, &limit);
}

FileSizeLimit::~FileSizeLimit()
{
    setrlimit(RLIMIT_FSIZE, &saved);
    std::signal(SIGXFSZ, previous);
}

std::unique_ptr<Products::VN4::MainComponentSingleModule> MakeInstance(const std::string& presetPath, const std::string& factoryPath)
{
    return std::make_unique<Products::VN4::MainComponentSingleModule>(nullptr, Products::VN4::PresetFolders{presetPath, factoryPath});
}

namespace {

// Deletes itself when run, so a timed-out wait leaves nothing dangling.
class Marker : public CFW::DocView::Command {
public:
    void Execute() override
    {
        done.set_value();
        delete this;
    }
    std::promise<void> done;
};

}  // namespace

void Settle(MainDocumentSingleModule& document)
{
    auto* marker = new Marker;
    std::future<void> done = marker->done.get_future();
    document.GetScheduler()->Enqueue(marker);
    if (done.wait_for(std::chrono::seconds(20)) != std::future_status::ready)
        throw std::runtime_error("the document's worker did not get to the end of its queue");
}

CFW::DocView::Document& Equaliser(MainDocumentSingleModule& document)
{
    return *document.GetModuleDocument()->GetChildDocument();
}

void SetPeak(MainDocumentSingleModule& document, int band, float hz, float gain)
{
    using CFW::DocView::Parameter;
    CFW::DocView::Document& eq = Equaliser(document);
    for (int set : {Rows::LeftMid, Rows::RightSide}) {
        eq.SetParameter(Rows::BandRow(set, band, Rows::Mode), Parameter::FromEnum(2), CFW::DocView::SourceEditor);
        eq.SetParameter(Rows::BandRow(set, band, Rows::Hz), Parameter::FromFloat(hz), CFW::DocView::SourceEditor);
        eq.SetParameter(Rows::BandRow(set, band, Rows::Gain), Parameter::FromFloat(gain), CFW::DocView::SourceEditor);
        eq.SetParameter(Rows::BandRow(set, band, Rows::Active), Parameter::FromBool(true), CFW::DocView::SourceEditor);
    }
}

std::string ModuleText(MainDocumentSingleModule& document)
{
    TiXmlElement root("Preset");
    document.SaveModulePreset(root);
    TiXmlPrinter printer;
    root.Accept(&printer);
    return WithoutGuids(printer.Str());
}

std::string PresetText(float gain, const std::string& model)
{
    return "<?xml version=\"1.0\" ?>\n<Preset Version=\"1\" Format=\"vn4m\"><Slot Bypass=\"0\" Mute=\"0\" Model=\"" + model
        + "\"><Module LM_Band1Gain=\"" + std::to_string(gain) + "\" RS_Band1Gain=\"" + std::to_string(gain) + "\" /></Slot></Preset>\n";
}

}  // namespace OV::Testing
