#include "product/MainMAF.h"

#include "docview/utils/ExchangeRing.h"
#include "docview/utils/PreferencesManager.h"
#include "product/MainDocument.h"
#include "product/ModuleComponent.h"

namespace OV::Products::VN4 {

using CFW::DocView::Parameter;
using CFW::DocViewUtils::MAFParamMediatorEnum;

namespace {

const std::string globalOversample = "GlobalOversample";
const std::string padLatencyName = "PadLatency";

// The latency level drives the engine's pad and its oversampling switch.
class MainMAFProfile : public CFW::DocViewUtils::BasicMAFProfile {
public:
    static const MainMAFProfile& Instance()
    {
        static const MainMAFProfile profile;
        return profile;
    }

private:
    MainMAFProfile() : BasicMAFProfile("Main")
    {
        const float* pads = MainMAFSingle::padLatency;
        AddCreator(std::make_unique<MAFParamMediatorEnum::Creator>(MainDocumentProfile::LatencyLevel, padLatencyName,
                                                                    std::vector<float>(pads, pads + 3)));
        AddCreator(std::make_unique<MAFParamMediatorEnum::Creator>(MainDocumentProfile::LatencyLevel, globalOversample,
                                                                    std::vector<float>{0.0f, 1.0f, 1.0f}));
    }
};

class MainAudioProfile : public CFW::DocViewUtils::BasicAudioProfile {
public:
    static const MainAudioProfile& Instance()
    {
        static const MainAudioProfile profile;
        return profile;
    }

private:
    MainAudioProfile() : BasicAudioProfile(2, 2) {}
};

}  // namespace

MainMAFSingle::MainMAFSingle(CFW::DocView::MAFContext* context, MainDocumentSingleModule* mainDocument, ModuleComponent* module)
    : BasicMAF(&MainMAFProfile::Instance(), context, mainDocument), document(mainDocument),
      moduleMAF(module != nullptr ? &module->GetMAF() : nullptr)
{
}

void MainMAFSingle::Attach(CFW::DocView::MAFWrapper* wrapper, const std::string& prefix)
{
    engine = wrapper;
    BasicMAF::Attach(wrapper, prefix);
    if (moduleMAF != nullptr)
        moduleMAF->Attach(wrapper, "Module");
}

void MainMAFSingle::Detach()
{
    engine = nullptr;
    BasicMAF::Detach();
    if (moduleMAF != nullptr)
        moduleMAF->Detach();
}

void MainMAFSingle::Update()
{
    if (engine == nullptr || engine->IsInTransaction())
        return;
    CFW::DocViewUtils::ExchangeRing& ring = GetContext()->GetExchangeRing();
    int slot;
    if (!ring.BeginRead(slot))
        return;
    BasicMAF::Update();
    if (moduleMAF != nullptr)
        moduleMAF->Update();
    const std::uint32_t level = std::min<std::uint32_t>(document->GetParameter(MainDocumentProfile::LatencyLevel).AsEnum(), 2);
    engine->SetFloatParameter(globalOversample, level != 0 ? 1.0f : 0.0f);
    engine->SetFloatParameter(padLatencyName, padLatency[level]);
    ring.EndRead();
}

void MainMAFSingle::Poll()
{
    BasicMAF::Poll();
    if (moduleMAF != nullptr)
        moduleMAF->Poll();
}

void MainMAFSingle::Idle()
{
    if (moduleMAF != nullptr && (engine == nullptr || !engine->IsInTransaction()))
        moduleMAF->Idle();
}

MainAudioMAFSingleModule::MainAudioMAFSingleModule(MainDocumentSingleModule* mainDocument, CFW::DocView::MAF* maf,
                                                   CFW::DocView::MAFWrapper* wrapper)
    : BasicAudioMAF(&MainAudioProfile::Instance(), maf, wrapper), document(mainDocument)
{
}

void MainAudioMAFSingleModule::SetSampleRate(float rate)
{
    BasicAudioMAF::SetSampleRate(rate);
    sampleCount = 0;
    lastMeterSample = 0;
    sampleRate = rate;
    meterInterval = static_cast<std::uint32_t>(rate * 0.025f);
}

void MainAudioMAFSingleModule::Process(float** inputs, float** outputs, int frames, void* extra)
{
    const bool due = document->IsEditorOpen() && sampleCount - lastMeterSample > meterInterval;
    SetPollDue(due);
    if (due)
        lastMeterSample = sampleCount;
    BasicAudioMAF::Process(inputs, outputs, frames, extra);
    sampleCount += static_cast<std::uint32_t>(frames);
    lastBlockFrames = static_cast<std::uint32_t>(frames);
    lastProcessTime.store(std::chrono::steady_clock::now().time_since_epoch().count(), std::memory_order_relaxed);
}

int MainAudioMAFSingleModule::GetLatency()
{
    Parameter level = Parameter::FromEnum(0);
    CFW::DocViewUtils::PreferencesManager::Instance().Get("Main.LatencyLevel", level);
    return static_cast<int>(MainMAFSingle::padLatency[std::min<std::uint32_t>(level.AsEnum(), 2)]) + 4;
}

bool MainAudioMAFSingleModule::IsProcessing() const
{
    const auto last = std::chrono::steady_clock::duration(lastProcessTime.load(std::memory_order_relaxed));
    return std::chrono::steady_clock::now().time_since_epoch() - last < std::chrono::milliseconds(500);
}

}  // namespace OV::Products::VN4
