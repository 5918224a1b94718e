// Folder trees on scratch folders: the order of folders and files, the filters, the mark of the
// current file, reading again, and folders that cannot be read, loop or go too deep.
#include "Bench.h"

#include "tests/support/ScratchFolder.h"
#include "widgets/lists/FolderTree.h"

#include <boost/filesystem.hpp>

namespace OV::Testing {
namespace {

using namespace CFW::Widgets;
namespace fs = boost::filesystem;

FolderTree& MakeTree(Bench& bench, const std::string& path, const FileFilter& filter = FileFilter())
{
    ListLook look = TextLook(bench.font);
    look.styles.resize(4, look.styles.front());
    auto* tree = new FolderTree(bench.root, {0, 0, 100, 100}, look, SelectionPolicy::SingleSelection, filter);
    tree->setPath(path);
    return *tree;
}

// Opens every branch, top to bottom.
void OpenAll(FolderTree& tree)
{
    for (int row = 0; row < tree.getRowCount(); ++row)
        tree.setOpen(tree.getRowItem(row), true);
}

struct Presets {
    Presets()
    {
        for (const char* file : {"b.xml", "A.xml", "a.xml", "c.txt", "d.XML", ".hidden.xml", "Zed/z.xml", "alpha/x.xml", "alpha/sub/deep.xml"})
            folder.Write(file, "<Preset/>");
        fs::create_directory(folder.Path() + "/empty");
    }
    ScratchFolder folder;
};

TEST(FolderTree, FoldersFirstThenFilesWithoutCase)
{
    struct Case {
        const char* extensions;
        const char* pattern;
        std::string rows;
    };
    const std::string folders = "alpha empty Zed";
    const Case cases[] = {
        {"", "", folders + " A.xml a.xml b.xml c.txt d.XML"},
        {"xml", "", folders + " A.xml a.xml b.xml d.XML"},
        {"*.TXT", "", folders + " c.txt"},
        {"txt; .xml", "", folders + " A.xml a.xml b.xml c.txt d.XML"},
        {"wav,*.*", "", folders + " A.xml a.xml b.xml c.txt d.XML"},
        {"", "?.xml", folders + " A.xml a.xml b.xml d.XML"},
        {"", "B*", folders + " b.xml"},
        {"", "*.*t", folders + " c.txt"},
        {"txt", "*.xml", folders},
    };
    Presets presets;
    for (const Case& c : cases) {
        Bench bench;
        FolderTree& tree = MakeTree(bench, presets.folder.Path(), FileFilter(c.extensions, c.pattern));
        EXPECT_EQ(c.rows, RowTexts(tree)) << "\"" << c.extensions << "\", \"" << c.pattern << "\"";
    }
    Bench bench;
    FolderTree& tree = MakeTree(bench, presets.folder.Path(), FileFilter("xml", ""));
    OpenAll(tree);
    EXPECT_EQ("alpha sub deep.xml x.xml empty Zed z.xml A.xml a.xml b.xml d.XML", RowTexts(tree));
    EXPECT_TRUE(tree.getRowItem(4).isBranch()); // empty, still a folder
}

TEST(FolderTree, CurrentFileIsMarkedAndKeptOnRefresh)
{
    Presets presets;
    Bench bench;
    FolderTree& tree = MakeTree(bench, presets.folder.Path(), FileFilter("xml", ""));
    const auto styles = [&tree] {
        std::string styles;
        for (int row = 0; row < tree.getRowCount(); ++row)
            styles += std::to_string(tree.getRowItem(row).getStyle());
        return styles;
    };
    tree.setCurrentFile("alpha/sub/deep.xml");
    EXPECT_EQ("alpha sub deep.xml x.xml empty Zed A.xml a.xml b.xml d.XML", RowTexts(tree));
    EXPECT_EQ("3320110000", styles());
    EXPECT_EQ(presets.folder.Path() + "/alpha/sub/deep.xml", tree.getItemPath(tree.getRowItem(2)));

    tree.setCurrentFile(presets.folder.Path() + "/b.xml");
    EXPECT_EQ("1100110020", styles());
    EXPECT_EQ("b.xml", tree.getCurrentFile());

    tree.selectItem(tree.getRowItem(3));
    presets.folder.Write("alpha/new.xml", "<Preset/>");
    tree.refresh();
    EXPECT_EQ("alpha sub deep.xml new.xml x.xml empty Zed A.xml a.xml b.xml d.XML", RowTexts(tree));
    EXPECT_EQ("11000110020", styles());
    EXPECT_EQ(std::vector<std::string>{presets.folder.Path() + "/alpha/x.xml"}, tree.getSelectedPaths());

    for (const std::string& elsewhere : {std::string("nope.xml"), std::string("/elsewhere/b.xml"), std::string("alpha")}) {
        tree.setCurrentFile(elsewhere);
        EXPECT_EQ("", tree.getCurrentFile()) << elsewhere;
    }
    EXPECT_EQ("11000110000", styles());
}

TEST(FolderTree, BadFoldersAreLeftOut)
{
    ScratchFolder folder;
    const std::string root = folder.Path();
    folder.Write("a/f.xml", "");
    folder.Write("locked/g.xml", "");
    folder.Write("file.xml", "");
    fs::create_directory_symlink(root, root + "/loop");
    fs::create_directory_symlink("..", root + "/a/up");
    fs::create_symlink(root + "/missing", root + "/dangling.xml");
    fs::permissions(root + "/locked", fs::no_perms);
    std::string deep = root;
    for (int i = 0; i < 20; ++i)
        deep += "/d" + std::to_string(i);
    fs::create_directories(deep);

    Bench bench;
    FolderTree& tree = MakeTree(bench, root);
    OpenAll(tree);
    // The deepest read is d15, at the 16th level below the folder; a locked folder shows only
    // when the test runs with the rights to read it anyway.
    std::string expected = "a f.xml";
    for (int i = 0; i < 16; ++i)
        expected += " d" + std::to_string(i);
    const std::string rows = RowTexts(tree);
    EXPECT_TRUE(rows == expected + " locked g.xml file.xml" || rows == expected + " file.xml") << rows;
    fs::permissions(root + "/locked", fs::owner_all);

    // Through the loop, "a" is read from its real place, and its "up" is no loop from there.
    const std::pair<std::string, std::string> paths[] = {
        {root + "/missing", ""}, {root + "/file.xml", ""}, {"", ""}, {root + "/loop/loop/a", "up f.xml"}};
    for (const auto& [path, expectedRows] : paths) {
        tree.setPath(path);
        EXPECT_EQ(expectedRows, RowTexts(tree)) << path;
    }
}

}  // namespace
}  // namespace OV::Testing
