#pragma once

#include "docview/utils/BasicDocument.h"
#include "docview/utils/BasicDocumentProfile.h"
#include "product/state/ManagerSingleModule.h"

#include <array>
#include <atomic>
#include <memory>
#include <string>

namespace OV::Products::VN4 {

class ModuleDocument;

namespace State {
class ProgramDocument;
class Serializable;
}

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
// level (a preference), and the saved forms of the state, which are the module's. It owns the
// preset side: the program decorator the host's programs go through, the preset state manager
// over the folders at `presetPath` (seeded from `factoryPath`), and the four memories.
//
// Scheduler or main thread, except TakeLatencyChanged and IsEditorOpen (any thread).
class MainDocumentSingleModule : public CFW::DocViewUtils::BasicDocument {
public:
    using Memories = std::array<std::shared_ptr<State::ManagerSingleModule::Snapshot>, 4>;

    MainDocumentSingleModule(CFW::DocView::DocumentContext* context, ModuleDocument* moduleDocument,
                             const std::string& presetPath, const std::string& factoryPath);
    ~MainDocumentSingleModule() override;

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
    State::ProgramDocument& GetProgramDocument() const { return *programDocument; }
    State::ManagerSingleModule& GetStateManager() const { return *stateManager; }
    // Set-up and tear-down only: an item saved and loaded with every host program.
    void AddSerializable(State::Serializable* item);
    void RemoveSerializable(State::Serializable* item);
    // The A/B/C/D snapshots; the editor's thread.
    Memories& GetMemories() { return memories; }

protected:
    void DoReset() override;
    bool DoLoad(const TiXmlElement& element) override;
    // The program form: twelve slot children and a metering child, each the module's state.
    bool DoSave(TiXmlElement& element) override;

private:
    void ApplyCompare(bool active, std::uint32_t what);
    void LoadSlot(const TiXmlElement* slot);

    ModuleDocument* moduleDocument;
    std::unique_ptr<State::ProgramDocument> programDocument;
    std::unique_ptr<State::ManagerSingleModule> stateManager;
    std::atomic<bool> editorOpen{false};
    std::atomic<int> latencyChanged{0};
    std::uint32_t latencyLevel;
    bool loadMetering = true;
    Memories memories;
};

}  // namespace OV::Products::VN4
