#pragma once

#include "widgets/lists/FolderScan.h"
#include "widgets/lists/TextTree.h"

#include <string>
#include <vector>

namespace OV::CFW::Widgets {

// A tree of a folder on the disk: its folders first, then the files the filter takes, each in
// case-insensitive order (see ScanFolder). One file may be marked as the current one (the
// preset in use, say): its row and the folders above it take styles of their own. Reading
// again keeps the open folders, the selection and the mark where their paths still exist.
// Window thread only.
class FolderTree : public TextTree {
public:
    // Indices of the look's row styles; a look with fewer draws the missing ones as files.
    enum Style { FileStyle = 0, FolderStyle = 1, CurrentFileStyle = 2, CurrentFolderStyle = 3 };

    FolderTree(GUI::Widget& parent, const Rect& rect, ListLook look, SelectionPolicy policy, FileFilter filter);

    // Reads `folder`; one that cannot be read shows nothing.
    void setPath(const std::string& folder);
    const std::string& getPath() const { return path; }
    void setFilter(const FileFilter& value);
    // Reads the folder again.
    void refresh();

    // The item's path on the disk.
    std::string getItemPath(const ListItem& item) const;
    // The item of a path (full, or relative to the folder), or null.
    ListItem* findItem(const std::string& itemPath) const;
    // In tree order.
    std::vector<std::string> getSelectedPaths() const;
    // Marks the file and opens the folders above it; a path the tree does not hold (or an
    // empty one) marks nothing.
    void setCurrentFile(const std::string& file);
    const std::string& getCurrentFile() const { return currentFile; }

private:
    // Sets the styles of the item and the folders above it, marked or not.
    void mark(ListItem& item, bool marked);

    std::string path;
    FileFilter filter;
    std::string currentFile; // relative to the folder
};

}  // namespace OV::CFW::Widgets
