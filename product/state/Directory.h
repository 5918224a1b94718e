#pragma once

#include <boost/noncopyable.hpp>

#include <memory>
#include <set>
#include <shared_mutex>
#include <string>
#include <vector>

namespace OV::Products::VN4::State {

// The preset folders: a scan yields an immutable tree of folders and preset files, and the flat
// list of the files in menu order. Scans run on the thread that asks (the editor's, or the
// document thread after a save); a tree in use stays valid, each user holds a reference.
class Directory {
public:
    class Node : boost::noncopyable {
    public:
        virtual ~Node() = default;
        // A folder's last path component; a file's name without its extension.
        virtual const std::string& GetName() const = 0;
        virtual const std::string& GetPath() const = 0;
        // The position in the flat list of files; -1 for a folder.
        virtual int GetIndex() const = 0;
        virtual bool IsFolder() const = 0;
        virtual const std::vector<std::shared_ptr<const Node>>& GetChildren() const = 0;
    };

    struct Tree {
        std::shared_ptr<const Node> root;
        std::vector<std::shared_ptr<const Node>> files;
    };

    // A folder shown under its own name beside the others.
    struct ExtraFolder {
        std::string name;
        std::string path;
    };

    // `modelGuid` is the text of the model a preset must be for to be listed.
    Directory(std::string rootPath, std::string modelGuid, std::vector<ExtraFolder> extraFolders = {});

    // Reads the folders again; creates the root folder when it is missing. Throws
    // FileSystemError for a folder that cannot be read.
    void Rescan();
    std::shared_ptr<const Tree> GetTree() const;
    const std::string& GetRootPath() const { return rootPath; }

    // Case-insensitive, as the menus sort: lower case, then byte by byte as signed characters,
    // the shorter first when one is a prefix of the other.
    static bool NameLess(const std::string& a, const std::string& b);

private:
    // A folder and those under it, each read once however links lead back to it; what cannot
    // be read is passed over. `visited` holds the identities of the folders read so far.
    std::shared_ptr<Node> ReadFolder(const std::string& name, const std::string& path, std::set<std::string>& visited) const;
    bool IsPreset(const std::string& path) const;

    std::string rootPath;
    std::set<std::string> extensions;
    std::vector<ExtraFolder> extraFolders;
    std::string modelGuid;
    mutable std::shared_mutex lock;
    std::shared_ptr<const Tree> tree;
};

// A cursor over the flat list of preset files: the up and down arrows and the menu's choice.
class DirectoryNavigator {
public:
    // Keeps the selection by path; a file that has gone leaves nothing selected.
    void SetTree(std::shared_ptr<const Directory::Tree> tree);
    // Null when nothing is selected.
    std::shared_ptr<const Directory::Node> GetSelected() const;
    int GetIndex() const { return index; }
    void Clear() { index = -1; }
    // True when the path is in the list.
    bool Select(const std::string& path);
    // The next or previous file that still exists on disk; false at either end.
    bool Next();
    bool Previous();

private:
    bool Present(int at) const;

    std::shared_ptr<const Directory::Tree> tree;
    int index = -1;
};

}  // namespace OV::Products::VN4::State
