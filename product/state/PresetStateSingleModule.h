#pragma once

#include "product/state/Directory.h"
#include "product/state/PostedCommands.h"

#include <functional>
#include <memory>
#include <mutex>
#include <string>

#include <boost/signals2/signal.hpp>
#include <tinyxml.h>

namespace OV::Products::VN4 {
class MainDocumentSingleModule;
}

namespace OV::Products::VN4::State {

// The preset folders and the current preset file: loads, saves and deletes, run on the
// document's worker so that they line up with all other parameter work. The operations marked
// "posted" return at once; the others run on the caller's thread (the editor's).
class PresetStateSingleModule {
public:
    // A full state in the program form, with the preset that was selected when it was taken.
    struct Snapshot {
        TiXmlDocument document;
        std::string path;
    };

    PresetStateSingleModule(MainDocumentSingleModule& document, Directory& directory);

    // Posted: the next or previous file, read if the selection moved.
    void LoadNext();
    void LoadPrevious();
    // Posted: selects the path and reads the file if it is listed.
    void LoadPreset(const std::string& path);
    // Posted: writes the module form to the path, which then becomes the selection. A failed
    // write leaves any earlier file whole and is reported in a message box.
    void SavePreset(const std::string& path);
    // Deletes the file and scans again. Throws FileSystemError.
    void Delete(const std::string& path);
    // Scans the folders again, keeping the selection by path. Throws FileSystemError.
    void Rescan();
    std::shared_ptr<const Directory::Tree> GetTree() const;
    int GetSelectedIndex() const;
    void ClearSelection();
    std::shared_ptr<const Directory::Node> GetSelected() const;
    // Posted: fills the returned snapshot with the state when the worker gets to it.
    std::shared_ptr<Snapshot> TakeSnapshot();
    // Posted: the snapshot's state; its preset selected again if it is still listed.
    void RestoreSnapshot(const std::shared_ptr<Snapshot>& snapshot, bool keepMetering);
    // Posted: the document's reset.
    void LoadDefaults(bool keepMetering);

    // Fired on the worker after a file load or save, with the state's lock released.
    boost::signals2::connection ConnectPresetChanged(const std::function<void()>& slot);

private:
    // Worker: moves the selection by `select`; when it lands on a preset, reads that file into
    // the document, then tells.
    void SelectAndLoad(const std::function<bool(DirectoryNavigator&)>& select);
    void WritePreset(const std::string& path);
    void UseTree();

    MainDocumentSingleModule& document;
    Directory& directory;
    std::unique_ptr<DirectoryNavigator> navigator;
    mutable std::recursive_mutex mutex;
    std::shared_ptr<const Directory::Tree> directoryTree;
    boost::signals2::signal<void()> presetChanged;
    PostedCommands commands;
};

}  // namespace OV::Products::VN4::State
