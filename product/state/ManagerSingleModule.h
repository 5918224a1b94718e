#pragma once

#include "product/state/Directory.h"
#include "product/state/PresetStateSingleModule.h"

#include <functional>
#include <memory>
#include <mutex>
#include <string>

#include <boost/signals2/signal.hpp>

namespace OV::Products::VN4 {
class MainDocumentSingleModule;
}

namespace OV::Products::VN4::State {

class ProgramDocument;

// What the current preset is, for the editor: a preset file, a host program, or nothing, with
// its name; snapshots of the whole state for the A/B/C/D memories. Editor's thread, except
// where the signals fire (the document's worker). Lock order: this, the preset state, the
// document.
class ManagerSingleModule {
public:
    enum SnapshotKind { Nothing = 0, PresetFile = 2, HostProgram = 3 };

    struct Snapshot {
        int kind;
        std::string name;
        std::shared_ptr<PresetStateSingleModule::Snapshot> state;
    };

    // `presetPath` is the root of the preset folders; the first time it is missing it is made
    // and filled with the factory presets found at `factoryPath` (if any).
    ManagerSingleModule(MainDocumentSingleModule& document, ProgramDocument& programDocument,
                        const std::string& presetPath, const std::string& factoryPath);
    ~ManagerSingleModule();

    // Fires on the worker whenever the current preset or its name changes.
    boost::signals2::connection ConnectStateChanged(const std::function<void()>& slot);
    PresetStateSingleModule& GetPresetState() { return *presetState; }
    std::string GetDisplayName() const;
    int GetKind() const;
    std::shared_ptr<Snapshot> TakeSnapshot();
    void RestoreSnapshot(const std::shared_ptr<Snapshot>& snapshot);
    void LoadDefaults(bool keepMetering);

private:
    void OnPresetChanged();
    void OnProgramChanged();

    ProgramDocument& programDocument;
    Directory directory;
    std::unique_ptr<PresetStateSingleModule> presetState;
    mutable std::recursive_mutex mutex;
    int kind = Nothing;
    std::string name;
    boost::signals2::signal<void()> stateChanged;
    boost::signals2::scoped_connection presetConnection;
    boost::signals2::scoped_connection programConnection;
};

// Copies the factory presets into a new preset folder; nothing when the folder exists.
void SeedPresetFolder(const std::string& presetPath, const std::string& factoryPath);

}  // namespace OV::Products::VN4::State
