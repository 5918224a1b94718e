#include "widgets/lists/FolderScan.h"

#include <algorithm>
#include <cctype>
#include <optional>

#include <boost/filesystem.hpp>

namespace OV::CFW::Widgets {

namespace {

namespace fs = boost::filesystem;

std::string Lower(std::string text)
{
    for (char& c : text)
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return text;
}

// '*' and '?' over the whole name; a later '*' takes over from an earlier one, so the work
// stays in name × pattern.
bool Matches(const std::string& name, const std::string& pattern)
{
    std::size_t n = 0, p = 0, star = std::string::npos, resume = 0;
    while (n < name.size()) {
        if (p < pattern.size() && (pattern[p] == '?' || pattern[p] == name[n])) {
            ++n;
            ++p;
        } else if (p < pattern.size() && pattern[p] == '*') {
            star = p++;
            resume = n;
        } else if (star != std::string::npos) {
            p = star + 1;
            n = ++resume;
        } else {
            return false;
        }
    }
    while (p < pattern.size() && pattern[p] == '*')
        ++p;
    return p == pattern.size();
}

bool FolderOrder(const ItemContent& a, const ItemContent& b)
{
    if (a.branch != b.branch)
        return a.branch;
    const std::string& x = a.texts.front();
    const std::string& y = b.texts.front();
    const std::string lowerX = Lower(x), lowerY = Lower(y);
    return lowerX != lowerY ? lowerX < lowerY : x < y;
}

class Scan {
public:
    Scan(const FileFilter& filter, int folderStyle) : filter(filter), folderStyle(folderStyle) {}

    // Null when the folder cannot be read or is one being read.
    std::optional<std::vector<ItemContent>> read(const fs::path& folder, int depth)
    {
        boost::system::error_code error;
        const fs::path real = fs::canonical(folder, error);
        if (error || depth > maxFolderDepth || std::find(chain.begin(), chain.end(), real) != chain.end())
            return std::nullopt;
        fs::directory_iterator entry(folder, error);
        if (error)
            return std::nullopt;
        chain.push_back(real);
        std::vector<ItemContent> items;
        for (; !error && entry != fs::directory_iterator() && entries < maxFolderEntries; entry.increment(error))
            add(entry->path(), depth, items);
        chain.pop_back();
        std::sort(items.begin(), items.end(), FolderOrder);
        return items;
    }

private:
    void add(const fs::path& path, int depth, std::vector<ItemContent>& items)
    {
        const std::string name = path.filename().string();
        if (name.empty() || name.front() == '.')
            return;
        boost::system::error_code error;
        const fs::file_status status = fs::status(path, error); // through links
        if (error)
            return;
        if (fs::is_directory(status)) {
            if (auto children = read(path, depth + 1)) {
                ++entries;
                items.push_back({{name}, nullptr, folderStyle, true, false, std::move(*children)});
            }
        } else if (fs::is_regular_file(status) && filter.accepts(name)) {
            ++entries;
            items.push_back(ItemOf({name}));
        }
    }

    const FileFilter& filter;
    int folderStyle;
    std::vector<fs::path> chain; // the folders being read, resolved
    std::size_t entries = 0;
};

}  // namespace

FileFilter::FileFilter(const std::string& list, const std::string& pattern) : pattern(Lower(pattern))
{
    std::string word;
    const auto take = [this, &word] {
        std::size_t start = 0;
        while (start < word.size() && (word[start] == '*' || word[start] == '.'))
            ++start;
        if (word == "*" || word == "*.*")
            extensions.push_back("*");
        else if (start < word.size())
            extensions.push_back(Lower(word.substr(start)));
        word.clear();
    };
    for (const char c : list + ";") {
        if (c == ';' || c == ',' || std::isspace(static_cast<unsigned char>(c)))
            take();
        else
            word += c;
    }
    if (std::find(extensions.begin(), extensions.end(), "*") != extensions.end())
        extensions.clear();
}

bool FileFilter::accepts(const std::string& filename) const
{
    const std::string name = Lower(filename);
    if (!pattern.empty() && !Matches(name, pattern))
        return false;
    if (extensions.empty())
        return true;
    const std::size_t dot = name.rfind('.');
    const std::string extension = dot == std::string::npos ? std::string() : name.substr(dot + 1);
    return std::find(extensions.begin(), extensions.end(), extension) != extensions.end();
}

std::vector<ItemContent> ScanFolder(const std::string& folder, const FileFilter& filter, int folderStyle)
{
    if (folder.empty())
        return {};
    try {
        return Scan(filter, folderStyle).read(folder, 0).value_or(std::vector<ItemContent>());
    } catch (const std::exception&) { // a name the system's locale cannot convert
        return {};
    }
}

}  // namespace OV::CFW::Widgets
