#pragma once

#include "widgets/lists/ListItem.h"

#include <string>
#include <vector>

namespace OV::CFW::Widgets {

// Which files a folder tree shows, both tests ignoring case. `extensions`: a list separated by
// ';', ',' or spaces, each with or without a leading "*." or "."; empty or "*" takes every
// file. `pattern`: the whole name, '*' matching any run of characters and '?' any one; empty
// takes every file.
class FileFilter {
public:
    FileFilter() = default;
    FileFilter(const std::string& extensions, const std::string& pattern);

    bool accepts(const std::string& filename) const;

private:
    std::vector<std::string> extensions; // lower case, without the dot
    std::string pattern;                 // lower case
};

// How deep and how much a scan reads, so that a link to a large tree cannot stall the editor.
constexpr int maxFolderDepth = 16;
constexpr std::size_t maxFolderEntries = 20000;

// The folders and the accepted files under `folder`, as items: folders first (branches of
// `folderStyle`), each group in case-insensitive order, files of style 0. Left out: names
// starting with a dot, folders that cannot be read, links back to a folder being read, and
// what lies beyond the limits. Empty when `folder` cannot be read; never throws.
std::vector<ItemContent> ScanFolder(const std::string& folder, const FileFilter& filter, int folderStyle);

}  // namespace OV::CFW::Widgets
