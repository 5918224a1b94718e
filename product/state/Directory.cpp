#include "product/state/Directory.h"

#include "platform/XmlParse.h"
#include "product/state/FileSystem.h"

#include <tinyxml.h>

#include <algorithm>
#include <cctype>

#include <boost/filesystem/path.hpp>

namespace OV::Products::VN4::State {

namespace {

class NodeImpl : public Directory::Node {
public:
    NodeImpl(std::string name, std::string path, bool folder) : name(std::move(name)), path(std::move(path)), folder(folder) {}

    const std::string& GetName() const override { return name; }
    const std::string& GetPath() const override { return path; }
    int GetIndex() const override { return index; }
    bool IsFolder() const override { return folder; }
    const std::vector<std::shared_ptr<const Node>>& GetChildren() const override { return children; }

    std::string name;
    std::string path;
    int index = -1;
    bool folder;
    std::vector<std::shared_ptr<const Node>> children;
};

std::string LastComponent(const std::string& path)
{
    return boost::filesystem::path(path).filename().string();
}

void Flatten(const std::shared_ptr<const Directory::Node>& node, std::vector<std::shared_ptr<const Directory::Node>>& files)
{
    if (!node->IsFolder()) {
        std::const_pointer_cast<NodeImpl>(std::static_pointer_cast<const NodeImpl>(node))->index = static_cast<int>(files.size());
        files.push_back(node);
        return;
    }
    for (const auto& child : node->GetChildren())
        Flatten(child, files);
}

bool NodeLess(const std::shared_ptr<const Directory::Node>& a, const std::shared_ptr<const Directory::Node>& b)
{
    return Directory::NameLess(a->GetName(), b->GetName());
}

}  // namespace

Directory::Directory(std::string root, std::string model, std::vector<ExtraFolder> extra)
    : rootPath(std::move(root)), extensions{".vn4m"}, extraFolders(std::move(extra)), modelGuid(std::move(model)),
      tree(std::make_shared<Tree>(Tree{std::make_shared<NodeImpl>(LastComponent(rootPath), rootPath, true), {}}))
{
}

bool Directory::NameLess(const std::string& a, const std::string& b)
{
    const std::size_t common = std::min(a.size(), b.size());
    for (std::size_t i = 0; i < common; ++i) {
        const auto x = static_cast<signed char>(std::tolower(static_cast<unsigned char>(a[i])));
        const auto y = static_cast<signed char>(std::tolower(static_cast<unsigned char>(b[i])));
        if (x != y)
            return x < y;
    }
    return a.size() < b.size();
}

bool Directory::IsPreset(const std::string& path) const
{
    std::string text;
    if (!FileSystem::ReadText(path, text))
        return false;
    TiXmlDocument document;
    if (!Platform::ParseXml(document, text.data(), text.size()))
        return false;
    const TiXmlElement* slot = document.RootElement()->FirstChildElement("Slot");
    const char* model = slot != nullptr ? slot->Attribute("Model") : nullptr;
    return model != nullptr && modelGuid == model;
}

std::shared_ptr<Directory::Node> Directory::ReadFolder(const std::string& name, const std::string& path,
                                                      std::set<std::string>& visited) const
{
    auto folder = std::make_shared<NodeImpl>(name, path, true);
    std::vector<std::string> entries;
    try {
        entries = FileSystem::Entries(path);
    } catch (const FileSystemError&) {
        return folder;
    }
    std::vector<std::shared_ptr<const Node>> folders;
    std::vector<std::shared_ptr<const Node>> files;
    for (const std::string& entry : entries) {
        const std::string identity = FileSystem::FolderIdentity(entry);
        if (!identity.empty()) {
            if (!visited.insert(identity).second)
                continue;
            std::shared_ptr<Node> child = ReadFolder(LastComponent(entry), entry, visited);
            if (!child->GetChildren().empty())
                folders.push_back(std::move(child));
            continue;
        }
        const boost::filesystem::path file(entry);
        if (extensions.count(file.extension().string()) != 0 && IsPreset(entry))
            files.push_back(std::make_shared<NodeImpl>(file.stem().string(), entry, false));
    }
    std::sort(folders.begin(), folders.end(), NodeLess);
    std::sort(files.begin(), files.end(), NodeLess);
    folder->children = std::move(folders);
    folder->children.insert(folder->children.end(), files.begin(), files.end());
    return folder;
}

void Directory::Rescan()
{
    auto scanned = std::make_shared<Tree>();
    if (extraFolders.empty()) {
        if (!rootPath.empty() && !FileSystem::Exists(rootPath))
            FileSystem::CreateDirectories(rootPath);
        std::set<std::string> visited{FileSystem::FolderIdentity(rootPath)};
        if (!rootPath.empty() && FileSystem::IsDirectory(rootPath))
            scanned->root = ReadFolder(LastComponent(rootPath), rootPath, visited);
        else
            scanned->root = std::make_shared<NodeImpl>(LastComponent(rootPath), rootPath, true);
    } else {
        auto root = std::make_shared<NodeImpl>("Presets", "", true);
        std::set<std::string> visited;
        for (const ExtraFolder& extra : extraFolders) {
            if (!FileSystem::Exists(extra.path))
                FileSystem::CreateDirectories(extra.path);
            if (FileSystem::IsDirectory(extra.path)) {
                visited.insert(FileSystem::FolderIdentity(extra.path));
                root->children.push_back(ReadFolder(extra.name, extra.path, visited));
            }
        }
        scanned->root = root;
    }
    Flatten(scanned->root, scanned->files);
    std::unique_lock<std::shared_mutex> guard(lock);
    tree = std::move(scanned);
}

std::shared_ptr<const Directory::Tree> Directory::GetTree() const
{
    std::shared_lock<std::shared_mutex> guard(lock);
    return tree;
}

void DirectoryNavigator::SetTree(std::shared_ptr<const Directory::Tree> next)
{
    const std::shared_ptr<const Directory::Node> selected = GetSelected();
    const std::string path = selected ? selected->GetPath() : std::string();
    tree = std::move(next);
    index = -1;
    if (!path.empty())
        Select(path);
}

std::shared_ptr<const Directory::Node> DirectoryNavigator::GetSelected() const
{
    if (!tree || index < 0 || index >= static_cast<int>(tree->files.size()))
        return nullptr;
    return tree->files[static_cast<std::size_t>(index)];
}

bool DirectoryNavigator::Select(const std::string& path)
{
    index = -1;
    if (!tree)
        return false;
    for (std::size_t i = 0; i < tree->files.size(); ++i) {
        if (tree->files[i]->GetPath() == path) {
            index = static_cast<int>(i);
            return true;
        }
    }
    return false;
}

bool DirectoryNavigator::Present(int at) const
{
    const std::string& path = tree->files[static_cast<std::size_t>(at)]->GetPath();
    try {
        return FileSystem::Exists(path) && !FileSystem::IsDirectory(path);
    } catch (const FileSystemError&) {
        return false;
    }
}

bool DirectoryNavigator::Next()
{
    if (!tree)
        return false;
    const int count = static_cast<int>(tree->files.size());
    if (index == -1 && count > 0) {
        index = 0;
        if (Present(0))
            return true;
        index = -1;
        return false;
    }
    if (index >= count - 1)
        return false;
    for (int at = index + 1; at < count; ++at) {
        if (Present(at)) {
            index = at;
            return true;
        }
    }
    return false;
}

bool DirectoryNavigator::Previous()
{
    if (!tree || index <= 0 || index >= static_cast<int>(tree->files.size()))
        return false;
    for (int at = index - 1; at >= 0; --at) {
        if (Present(at)) {
            index = at;
            return true;
        }
    }
    return false;
}

}  // namespace OV::Products::VN4::State
