#include "widgets/lists/FolderTree.h"

#include <algorithm>
#include <set>

#include <boost/filesystem/path.hpp>

namespace OV::CFW::Widgets {

namespace {

namespace fs = boost::filesystem;

// The item's names from the top level down, joined by '/'.
std::string RelativePath(const ListItem& item)
{
    std::string relative = item.getText();
    for (const ListItem* above = item.getParent(); above && above->getParent(); above = above->getParent())
        relative = above->getText() + "/" + relative;
    return relative;
}

// The names of a path's parts, without "." and the empty ones that trailing separators give.
std::vector<std::string> Names(const std::string& text)
{
    std::vector<std::string> names;
    for (const fs::path& part : fs::path(text)) {
        const std::string name = part.string();
        if (!name.empty() && name != ".")
            names.push_back(name);
    }
    return names;
}

// The contents again with the folders of `open` open, `open` holding relative paths.
void Reopen(std::vector<ItemContent>& items, const std::set<std::string>& open, const std::string& prefix)
{
    for (ItemContent& item : items) {
        if (!item.branch)
            continue;
        const std::string relative = prefix + item.texts.front();
        item.open = open.count(relative) != 0;
        Reopen(item.children, open, relative + "/");
    }
}

}  // namespace

FolderTree::FolderTree(GUI::Widget& parent, const Rect& rect, ListLook look, SelectionPolicy policy, FileFilter filter)
    : TextTree(parent, rect, std::move(look), policy), filter(std::move(filter))
{
}

void FolderTree::setPath(const std::string& folder)
{
    path = folder;
    refresh();
}

void FolderTree::setFilter(const FileFilter& value)
{
    filter = value;
    refresh();
}

void FolderTree::refresh()
{
    // What was open and selected, by path, to find again in what is read.
    std::set<std::string> open;
    std::vector<std::string> selected;
    for (int row = 0; row < getRowCount(); ++row) {
        const ListItem& item = getRowItem(row);
        if (item.isBranch() && item.isOpen())
            open.insert(RelativePath(item));
    }
    for (const ListItem* item : getSelectedItems())
        selected.push_back(RelativePath(*item));
    std::vector<ItemContent> items = ScanFolder(path, filter, FolderStyle);
    Reopen(items, open, "");
    setItems(items);
    for (const std::string& relative : selected) {
        if (ListItem* item = findItem(relative))
            selectItem(*item);
    }
    const std::string file = currentFile;
    currentFile.clear();
    setCurrentFile(file);
}

std::string FolderTree::getItemPath(const ListItem& item) const
{
    return (fs::path(path) / RelativePath(item)).string();
}

ListItem* FolderTree::findItem(const std::string& itemPath) const
{
    std::vector<std::string> names = Names(itemPath);
    if (fs::path(itemPath).is_absolute()) {
        // Only below the folder: its names must lead the path's.
        const std::vector<std::string> folder = Names(path);
        if (names.size() < folder.size() || !std::equal(folder.begin(), folder.end(), names.begin()))
            return nullptr;
        names.erase(names.begin(), names.begin() + static_cast<std::ptrdiff_t>(folder.size()));
    }
    const std::vector<std::unique_ptr<ListItem>>* level = &getItems();
    ListItem* found = nullptr;
    for (const std::string& name : names) {
        const auto match = std::find_if(level->begin(), level->end(), [&name](const auto& item) { return item->getText() == name; });
        if (match == level->end())
            return nullptr;
        found = match->get();
        level = &found->getChildren();
    }
    return found;
}

std::vector<std::string> FolderTree::getSelectedPaths() const
{
    std::vector<std::string> paths;
    for (const ListItem* item : getSelectedItems())
        paths.push_back(getItemPath(*item));
    return paths;
}

void FolderTree::setCurrentFile(const std::string& file)
{
    if (ListItem* old = currentFile.empty() ? nullptr : findItem(currentFile))
        mark(*old, false);
    currentFile.clear();
    ListItem* const item = file.empty() ? nullptr : findItem(file);
    if (item == nullptr || item->isBranch())
        return;
    currentFile = RelativePath(*item);
    mark(*item, true);
    for (ListItem* above = item->getParent(); above && above->getParent(); above = above->getParent())
        setOpen(*above, true);
    scrollToRow(item->getRow());
}

void FolderTree::mark(ListItem& item, bool marked)
{
    setItemStyle(item, marked ? CurrentFileStyle : FileStyle);
    for (ListItem* above = item.getParent(); above && above->getParent(); above = above->getParent())
        setItemStyle(*above, marked ? CurrentFolderStyle : FolderStyle);
}

}  // namespace OV::CFW::Widgets
