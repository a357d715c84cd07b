#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <string>
#include <vector>

#include "support/LxFileFind.h"
#include "support/LxFileHierarchyTraverser.h"
#include "common/TempFolder.h"

namespace {

// root/a.txt, root/.dot, root/one/b.txt, root/one/two/c.txt, root/one/two/three/d.txt
class Tree : public ::testing::Test {
protected:
    void SetUp() override
    {
        temp_.file("a.txt");
        temp_.file(".dot");
        temp_.folder("one");
        temp_.file("one/b.txt");
        temp_.folder("one/two");
        temp_.file("one/two/c.txt");
        temp_.folder("one/two/three");
        temp_.file("one/two/three/d.txt");
    }

    std::vector<std::string> relative(const std::vector<LxFileSpecification>& files) const
    {
        std::vector<std::string> out;
        for (const auto& file : files) out.push_back(LxString(file).str().substr(prefix()));
        return out;
    }
    std::vector<std::string> relative(const std::vector<LxDirectorySpecification>& folders) const
    {
        std::vector<std::string> out;
        for (const auto& folder : folders) out.push_back(LxString(folder).str().substr(prefix()));
        return out;
    }
    size_t prefix() const { return temp_.path().size() + 1; }
    LxDirectorySpecification root() const { return LxDirectorySpecification(temp_.path()); }

    TempFolder temp_;
};

using Names = std::vector<std::string>;

TEST_F(Tree, ScannerDepthLimits)
{
    LxDirectoryScanner flat(root(), 0);
    EXPECT_EQ(relative(flat.GetFiles()), (Names{".dot", "a.txt"}));
    EXPECT_EQ(relative(flat.GetFolders()), (Names{"one"}));

    LxDirectoryScanner two(root(), 2);
    EXPECT_EQ(relative(two.GetFiles()), (Names{".dot", "a.txt", "one/b.txt", "one/two/c.txt"}));
    EXPECT_EQ(relative(two.GetFolders()), (Names{"one", "one/two", "one/two/three"}));

    LxDirectoryScanner all(root(), -1);
    EXPECT_EQ(relative(all.GetFiles()).size(), 5u);
    EXPECT_EQ(relative(all.GetFiles()).back(), "one/two/three/d.txt");
}

TEST_F(Tree, ScannerWithoutListsStillWalks)
{
    std::vector<LxFileSpecification> files;
    LxFileHierarchyScanner onlyFiles(&files, nullptr, 1);
    EXPECT_TRUE(onlyFiles.TraverseFileHierarchy(root(), 0));
    EXPECT_EQ(relative(files), (Names{".dot", "a.txt", "one/b.txt"}));
}

class StopAtSecondFile : public LxFileHierarchyTraverser {
public:
    int seen = 0;
    std::vector<long> depths;

protected:
    bool FilterFile(const LxFileSpecification&, long depth) override
    {
        depths.push_back(depth);
        return ++seen < 3;
    }
};

TEST_F(Tree, AHookThatSaysStopEndsTheWalk)
{
    StopAtSecondFile walker;
    EXPECT_FALSE(walker.TraverseFileHierarchy(root(), 0));
    EXPECT_EQ(walker.seen, 3);
    // The default folder hook descends one level deeper each time.
    EXPECT_EQ(walker.depths, (std::vector<long>{0, 0, 1}));
    StopAtSecondFile missing;
    EXPECT_TRUE(missing.TraverseFileHierarchy(LxDirectorySpecification(temp_ / "none"), 0));
}

TEST_F(Tree, LinksToFoldersAreNotFollowed)
{
    ASSERT_EQ(symlink(temp_.path().c_str(), (temp_ / "one/loop").c_str()), 0);
    ASSERT_EQ(symlink((temp_ / "a.txt").c_str(), (temp_ / "link.txt").c_str()), 0);
    ASSERT_EQ(symlink((temp_ / "gone").c_str(), (temp_ / "dangling").c_str()), 0);
    LxDirectoryScanner all(root(), -1);
    Names files = relative(all.GetFiles());
    EXPECT_EQ(files.size(), 6u);
    EXPECT_NE(std::find(files.begin(), files.end(), "link.txt"), files.end());
    EXPECT_EQ(relative(all.GetFolders()).size(), 3u);
}

TEST_F(Tree, FileFindListsEverythingAndIsDotsTakesAnyDottedFolder)
{
    temp_.folder(".hidden");
    LxFileFind find;
    ASSERT_TRUE(find.FindFile(LxString(temp_ / "*.nomatch")));
    EXPECT_EQ(find.GetRoot().str(), temp_.path() + "/");
    Names names, dots;
    do {
        names.push_back(find.GetFileName().str());
        if (find.IsDots()) dots.push_back(find.GetFileName().str());
    } while (find.FindNextFile());
    // The name part does not filter.
    EXPECT_EQ(names, (Names{".", "..", ".dot", ".hidden", "a.txt", "one"}));
    EXPECT_EQ(dots, (Names{".", "..", ".hidden"}));
    EXPECT_FALSE(find.FindNextFile());

    find.Close();
    EXPECT_FALSE(find.FindFile(LxString(temp_ / "none/*")));
}

TEST_F(Tree, FileFindEntryDetails)
{
    temp_.file("sized.bin", "12345");
    LxFileFind find;
    ASSERT_TRUE(find.FindFile(LxString(temp_ / "")));
    while (find.GetFileName().str() != "sized.bin") ASSERT_TRUE(find.FindNextFile());
    EXPECT_EQ(find.GetFilePath().str(), temp_ / "sized.bin");
    EXPECT_EQ(find.GetFileTitle().str(), "sized");
    EXPECT_EQ(find.GetLength(), 5u);
    EXPECT_FALSE(find.IsDirectory());
    long when = 7;
    EXPECT_FALSE(find.GetLastWriteTime(&when));
    EXPECT_EQ(when, 0);
}

TEST(LxFileFind, RelativePatternsStartAtTheCurrentDirectory)
{
    TempFolder temp;
    temp.folder("sub");
    temp.file("sub/x");
    char saved[4096];
    ASSERT_NE(getcwd(saved, sizeof saved), nullptr);
    ASSERT_EQ(chdir(temp.path().c_str()), 0);
    LxFileFind find;
    bool found = find.FindFile("sub/*");
    LxString root = find.GetRoot();
    ASSERT_EQ(chdir(saved), 0);
    ASSERT_TRUE(found);
    EXPECT_EQ(root.str(), temp / "sub/");
}

}  // namespace
