// The preset folders on disk: what a scan lists and in what order, the cursor over the files,
// and the file operations' errors and atomic writes.
#include "product/state/Directory.h"
#include "product/state/FileSystem.h"
#include "tests/product/state/StateTesting.h"

#include <functional>

#include <boost/filesystem.hpp>
#include <gtest/gtest.h>

namespace OV::Testing {
namespace {

using Products::VN4::State::Directory;
using Products::VN4::State::DirectoryNavigator;
using Products::VN4::State::FileSystemError;
namespace FileSystem = Products::VN4::State::FileSystem;

const std::string model = "f8fd5639-da16-4332-86c3-e1e0e7272048";

std::string Preset(const std::string& forModel = model) { return PresetText(0.0f, forModel); }

// Names of a tree, depth-first, folders marked with a slash.
std::vector<std::string> Outline(const Directory::Node& node, const std::string& indent = "")
{
    std::vector<std::string> lines;
    for (const auto& child : node.GetChildren()) {
        lines.push_back(indent + child->GetName() + (child->IsFolder() ? "/" : ""));
        const std::vector<std::string> inner = Outline(*child, indent + "  ");
        lines.insert(lines.end(), inner.begin(), inner.end());
    }
    return lines;
}

class DirectoryTest : public testing::Test {
protected:
    void SetUp() override
    {
        for (const char* name : {"alpha.vn4m", "ZED.vn4m", "a.vn4m", "\xc3\xa9t\xc3\xa9.vn4m", "z/one.vn4m", "deep/nested/inner.vn4m"})
            folder.Write(std::string("Presets/") + name, Preset());
        // Never listed: the extension's case, another model, no Slot, not XML, not a preset.
        const std::string other = Preset("00000000-0000-0000-0000-000000000000");
        for (const auto& [name, text] : {std::pair<std::string, std::string>{"beta.VN4M", Preset()}, {"other.vn4m", other},
                                         {"Others/theirs.vn4m", other},
                                         {"noslot.vn4m", "<Preset Format=\"vn4m\"><Module Model=\"" + model + "\" /></Preset>"},
                                         {"broken.vn4m", "<Preset><Slot Model=\"" + model + "\">"}, {"notes.txt", Preset()}})
            folder.Write("Presets/" + name, text);
        boost::filesystem::create_directories(root + "/Empty");
    }

    std::string Path(const std::string& relative) const { return root + "/" + relative; }

    ScratchFolder folder;
    std::string root = folder.Path() + "/Presets";
};

TEST_F(DirectoryTest, ListsThisModelsPresetsFoldersFirstSortedWithoutCase)
{
    Directory directory(root, model);
    directory.Rescan();
    const auto tree = directory.GetTree();

    EXPECT_EQ(tree->root->GetName(), "Presets");
    // Signed bytes put the accented name first; a folder named z comes before a file named a.
    EXPECT_EQ(Outline(*tree->root),
              (std::vector<std::string>{"deep/", "  nested/", "    inner", "z/", "  one", "\xc3\xa9t\xc3\xa9", "a", "alpha", "ZED"}));

    const std::vector<std::string> files = {"deep/nested/inner.vn4m", "z/one.vn4m", "\xc3\xa9t\xc3\xa9.vn4m", "a.vn4m", "alpha.vn4m", "ZED.vn4m"};
    ASSERT_EQ(tree->files.size(), files.size());
    for (std::size_t i = 0; i < files.size(); ++i)
        EXPECT_TRUE(tree->files[i]->GetPath() == Path(files[i]) && tree->files[i]->GetIndex() == static_cast<int>(i)) << files[i];
    EXPECT_EQ(tree->root->GetChildren()[0]->GetIndex(), -1);
}

TEST(DirectoryNameTest, ComparisonIgnoresCaseAndTakesBytesAsSigned)
{
    const struct { const char *a, *b; bool less; } cases[] = {
        {"alpha", "ZED", true}, {"ZED", "alpha", false}, {"Zed", "zed", false}, {"zed", "Zed", false},
        {"ab", "abc", true},    {"abc", "ab", false},    {"_x", "a", true},     {"\xc3\xa9", "a", true},
        {"a10", "a9", true},    {"", "a", true},
    };
    for (const auto& [a, b, less] : cases)
        EXPECT_EQ(Directory::NameLess(a, b), less) << a << " < " << b;
}

TEST_F(DirectoryTest, MissingRootIsMadeAndAFileAsRootGivesAnEmptyTree)
{
    const std::string fresh = folder.Path() + "/new/Presets";
    Directory made(fresh, model);
    made.Rescan();
    EXPECT_TRUE(boost::filesystem::is_directory(fresh));
    EXPECT_TRUE(made.GetTree()->root->GetChildren().empty());

    const std::string file = folder.Write("plain", "x");
    Directory onFile(file, model);
    onFile.Rescan();
    EXPECT_TRUE(onFile.GetTree()->root->GetChildren().empty());
    EXPECT_TRUE(onFile.GetTree()->files.empty());
}

TEST_F(DirectoryTest, ExtraFoldersSitUnderOneRoot)
{
    folder.Write("Mine/mine.vn4m", Preset());
    Directory directory("", model, {{"Factory", root + "/z"}, {"User", folder.Path() + "/Mine"}, {"Made", folder.Path() + "/Made"}});
    directory.Rescan();
    const auto tree = directory.GetTree();
    EXPECT_EQ(tree->root->GetName(), "Presets");
    EXPECT_EQ(Outline(*tree->root), (std::vector<std::string>{"Factory/", "  one", "User/", "  mine", "Made/"}));
    EXPECT_TRUE(boost::filesystem::is_directory(folder.Path() + "/Made"));
}

TEST_F(DirectoryTest, HostileFilesAreSkipped)
{
    // Deep enough to overflow a recursive parser's stack, and too large to be a preset.
    std::string deep;
    for (int i = 0; i < 600000; ++i)
        deep += i < 300000 ? "</x>" : "<e>";
    folder.Write("Presets/deep.vn4m", deep);
    std::string big = Preset();
    big.insert(big.find("<Module"), std::string(5 << 20, ' '));
    folder.Write("Presets/big.vn4m", big);
    // Links that loop: back to the root, to a parent, and to themselves. Each folder is read
    // once, and what cannot be read is passed over.
    boost::filesystem::create_symlink(root, Path("deep/nested/again"));
    boost::filesystem::create_symlink(Path("deep"), Path("deep/nested/up"));
    boost::filesystem::create_symlink(Path("self"), Path("self"));
    Directory directory(root, model);
    ASSERT_NO_THROW(directory.Rescan());
    EXPECT_EQ(directory.GetTree()->files.size(), 6u);
}

TEST_F(DirectoryTest, NavigatorWalksTheFilesSkippingThoseDeletedOutside)
{
    Directory directory(root, model);
    directory.Rescan();
    const auto tree = directory.GetTree();
    DirectoryNavigator navigator;
    EXPECT_FALSE(navigator.Next());
    EXPECT_FALSE(navigator.Select(Path("a.vn4m")));
    navigator.SetTree(tree);

    using Move = std::function<bool(DirectoryNavigator&)>;
    const Move next = &DirectoryNavigator::Next, previous = &DirectoryNavigator::Previous;
    const auto select = [this](const char* name) -> Move { return [path = Path(name)](auto& n) { return n.Select(path); }; };
    // Files deleted outside first, then the move, what it returns, and the index after it.
    const struct { std::vector<const char*> deleted; Move move; bool moved; int index; } steps[] = {
        {{}, previous, false, -1},
        {{}, next, true, 0},  // nothing selected: the first
        {{}, previous, false, 0},
        {{"z/one.vn4m", "\xc3\xa9t\xc3\xa9.vn4m"}, next, true, 3},
        {{}, previous, true, 0},
        {{}, select("ZED.vn4m"), true, 5},
        {{}, next, false, 5},  // no wrap-around
        {{"alpha.vn4m", "ZED.vn4m"}, select("a.vn4m"), true, 3},
        {{}, next, false, 3},  // only missing files ahead: stays
        {{}, select("nothing.vn4m"), false, -1},
        {{"deep/nested/inner.vn4m"}, next, false, -1},  // the first is gone
    };
    int step = 0;
    for (const auto& [deleted, move, moved, index] : steps) {
        SCOPED_TRACE(step++);
        for (const char* name : deleted)
            boost::filesystem::remove(Path(name));
        EXPECT_EQ(moved, move(navigator));
        EXPECT_EQ(index, navigator.GetIndex());
        EXPECT_EQ(index < 0 ? nullptr : tree->files[static_cast<std::size_t>(index)], navigator.GetSelected());
    }
}

TEST_F(DirectoryTest, NewTreeKeepsTheSelectionByPath)
{
    Directory directory(root, model);
    directory.Rescan();
    DirectoryNavigator navigator;
    navigator.SetTree(directory.GetTree());
    ASSERT_TRUE(navigator.Select(Path("alpha.vn4m")));

    const auto before = directory.GetTree();
    folder.Write("Presets/aardvark.vn4m", Preset());
    directory.Rescan();
    navigator.SetTree(directory.GetTree());
    EXPECT_EQ(navigator.GetIndex(), 5);
    EXPECT_EQ(navigator.GetSelected()->GetPath(), Path("alpha.vn4m"));
    EXPECT_EQ(before->files.size(), 6u);  // a tree in use is never changed

    boost::filesystem::remove(Path("alpha.vn4m"));
    directory.Rescan();
    navigator.SetTree(directory.GetTree());
    EXPECT_EQ(navigator.GetIndex(), -1);
}

TEST(FileSystemTest, ErrorsNameTheOperationAndThePath)
{
    ScratchFolder folder;
    const std::string file = folder.Write("file", "x");
    const std::vector<std::pair<std::string, std::function<void()>>> cases = {
        {"boost::filesystem::exists", [&] { FileSystem::Exists(std::string(5000, 'x')); }},
        {"boost::filesystem::create_directories", [&] { FileSystem::CreateDirectories(file + "/sub"); }},
        {"boost::filesystem::basic_directory_iterator constructor", [&] { FileSystem::Entries(file); }},
        {"open", [&] { FileSystem::WriteAtomically(folder.Path() + "/missing/p.vn4m", "text"); }},
    };
    for (const auto& [operation, action] : cases) {
        try {
            action();
            ADD_FAILURE() << operation << " did not fail";
        } catch (const FileSystemError& error) {
            EXPECT_EQ(error.GetOperation(), operation);
            EXPECT_NE(std::string(error.what()).find(operation), std::string::npos) << error.what();
            EXPECT_NE(error.GetCode().value(), 0);
        }
    }
    // Not found is an answer, not an error.
    EXPECT_FALSE(FileSystem::Exists(folder.Path() + "/none"));
    EXPECT_FALSE(FileSystem::IsDirectory(file + "/none"));
}

long OpenDescriptors() { return std::distance(boost::filesystem::directory_iterator("/proc/self/fd"), {}); }

TEST(FileSystemTest, AFailedWriteKeepsTheOldFileWholeAndLeavesNoTemporary)
{
    ScratchFolder folder;
    const std::string path = folder.Write("p.vn4m", "old contents");
    // The temporary's name is the writer's own: another's, or a stray one, is no obstacle.
    boost::filesystem::create_directories(path + ".saving");
    FileSystem::WriteAtomically(path, "new");
    EXPECT_EQ(ReadFile(path), "new");
    boost::filesystem::remove(path + ".saving");
    const long descriptors = OpenDescriptors();

    {
        const FileSizeLimit limit(1000);
        EXPECT_THROW(FileSystem::WriteAtomically(path, std::string(5000, 'n')), FileSystemError);
    }
    EXPECT_EQ(ReadFile(path), "new");
    EXPECT_EQ(std::distance(boost::filesystem::directory_iterator(folder.Path()), {}), 1);

    // A folder where the file should be: the rename fails, the folder stays.
    boost::filesystem::create_directories(folder.Path() + "/taken/inside");
    EXPECT_THROW(FileSystem::WriteAtomically(folder.Path() + "/taken", "x"), FileSystemError);
    EXPECT_TRUE(boost::filesystem::is_directory(folder.Path() + "/taken/inside"));
    EXPECT_EQ(std::distance(boost::filesystem::directory_iterator(folder.Path()), {}), 2);
    EXPECT_EQ(OpenDescriptors(), descriptors) << "a failed write closes what it opened";
}

}  // namespace
}  // namespace OV::Testing
