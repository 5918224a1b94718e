#pragma once

#include "docview/utils/BasicDocument.h"
#include "docview/utils/BasicDocumentProfile.h"

#include <atomic>

namespace OV::Products::VN4 {

class ModuleDocument;

// The top document's rows. None is saved: the state is the module's.
class MainDocumentProfile : public CFW::DocViewUtils::BasicDocumentProfile {
public:
    enum Row {
        PresetForModule = 0,
        CurrentSlot = 1,
        Compare = 2,
        CompareWhat = 3,
        CompareLevelOn = 4,
        CompareLevelOff = 5,
        CurrentABCD = 6,
        CompareMAF = 7,
        CompareLevelOnMAF = 8,
        CompareLevelOffMAF = 9,
        LatencyLevel = 10,
    };

    static const MainDocumentProfile& Instance();

private:
    MainDocumentProfile();
};

// The top document of an instance: the compare switches, the memory selection, the latency
// level (a preference), and the saved forms of the state, which are the module's.
//
// Scheduler or main thread, except TakeLatencyChanged and IsEditorOpen (any thread).
class MainDocumentSingleModule : public CFW::DocViewUtils::BasicDocument {
public:
    MainDocumentSingleModule(CFW::DocView::DocumentContext* context, ModuleDocument* moduleDocument);

    void SetParameter(int index, CFW::DocView::Parameter value, int source) override;

    void SetEditorOpen(bool open) { editorOpen.store(open); }
    bool IsEditorOpen() const { return editorOpen.load(); }
    // True once after each change of the latency level.
    bool TakeLatencyChanged();
    // The next load of the program form leaves the metering child alone.
    void SkipMeteringOnNextLoad() { loadMetering = false; }
    // The module form of the state, for preset files.
    void SaveModulePreset(TiXmlElement& element);
    ModuleDocument* GetModuleDocument() const { return moduleDocument; }

protected:
    void DoReset() override;
    bool DoLoad(const TiXmlElement& element) override;
    // The program form: twelve slot children and a metering child, each the module's state.
    bool DoSave(TiXmlElement& element) override;

private:
    void ApplyCompare(bool active, std::uint32_t what);
    void LoadSlot(const TiXmlElement* slot);

    ModuleDocument* moduleDocument;
    std::atomic<bool> editorOpen{false};
    std::atomic<int> latencyChanged{0};
    std::uint32_t latencyLevel;
    bool loadMetering = true;
};

}  // namespace OV::Products::VN4
