// Paths, file objects, whole-file streams and folder walks.
#include <gtest/gtest.h>

#include <cstdlib>
#include <functional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "common/MacFixtures.h"
#include "common/TempFolder.h"
#include "files/LXFileSystemException.h"
#include "files/LxFileFind.h"
#include "files/LxFileHierarchyTraverser.h"
#include "files/LxFileSpecification.h"
#include "files/LxFileSystem.h"
#include "files/LxFileSystemParser.h"
#include "files/LxStreams.h"
#include "files/PathUtilities.h"

namespace {

using P = LxFileSystemParser;
using Names = std::vector<std::string>;

// Extensions are looked for backwards from the end, never at byte 0; the
// setter does not look at the last byte either, and throws for a one-byte
// path. Both kept as they are.
TEST(PathUtilities, Extensions)
{
    const std::pair<const char*, const char*> gets[] = {{"a.tar.gz", "gz"}, {"dir.old\\file", ""}, {".profile", ""}, {"/x/.profile", "profile"}, {"name.", ""}};
    for (const auto& [path, ext] : gets) EXPECT_EQ(GetFileExtension(path).str(), ext) << path;
    const char* sets[][3] = {{"font", ".pfb", "font.pfb"}, {"font.ttf", "", "font"}, {"dir.old/file", "x", "dir.old/file.x"},
                             {"", "pfb", ".pfb"}, {"name.", "x", "name..x"}, {".a", "x", ".a.x"}};
    for (const auto& c : sets) {
        LxString path(c[0]);
        SetFileExtension(&path, c[1]);
        EXPECT_EQ(path.str(), c[2]) << c[0] << " + " << c[1];
    }
    LxString one("a");
    EXPECT_THROW(SetFileExtension(&one, "x"), std::out_of_range);
    unsigned long dot = 0;
    EXPECT_TRUE(P::HasExtension("a/b.tar.gz", dot));  // the first dot of the last component
    EXPECT_EQ(dot, 3u);
}

TEST(PathUtilities, NamesAndFolders)
{
    const std::pair<const char*, const char*> replaced[] = {{"/a/b/", "/a/new"}, {"/a", "/a"}, {"/", "/"}};
    for (const auto& [path, expected] : replaced) EXPECT_EQ(ReplaceLastPathComponent(path, "new").str(), expected);
    LxString name;
    EXPECT_FALSE(ExtractFileNamePart("/file", &name));  // a slash at byte 0 does not count
    EXPECT_TRUE(FileIsDescendantOfFolder("/Fonts/A/b.ttf", "/fonts/"));
    LxString illegal(".a:b\"/\\[];=,\r\n\t()<>&|.c");
    EXPECT_EQ(P::ReplaceIllegalFilenameChars(&illegal), 0);
    EXPECT_EQ(illegal.str(), "_a_b" + std::string(17, '_') + ".c");
}

// Bundles go by the ending after the first dot of the name, case-sensitively.
TEST(PathUtilities, BootVolumeAndBundleQuestions)
{
    TempFolder temp;
    const struct { std::string path; bool bundle, expected; long error; } cases[] = {
        {"/Volumes/Data/x", false, false, 0}, {temp.folder("Foo.PLUGIN"), true, false, 0}, {temp.folder("Bar.app") + "/", true, true, 0},
        {temp.folder("My.Tool.app"), true, false, 0}, {temp / "Gone.app", true, false, -1}};
    for (const auto& c : cases) {
        LxString text(c.path);
        long error = 99;
        EXPECT_EQ(c.bundle ? P::IsPathAMacBundle(text, error) : P::IsPathOnBootVolume(text, error), c.expected) << c.path;
        EXPECT_EQ(error, c.error) << c.path;
    }
}

std::string failureText(const std::function<void()>& operation)
{
    try { operation(); } catch (const LXFileSystemException& error) { return error.what(); }
    return "<no exception>";
}

// File-system failures read "code:code", and the messages name GetName
// whatever raised them. Kept verbatim.
TEST(LxFileSystem, FailuresCarryTheirMessages)
{
    TempFolder temp;
    LxFileSpecification missing(LxString(temp / "missing.ttf"));
    EXPECT_EQ(failureText([&] { LxFileSystem::GetFileSize(missing); }), "-43:-43");
    EXPECT_EQ(failureText([&] { LxString out; LxFileSpecification().GetName(out); }),
              "Bad filename in LxFileSpecification::GetName:-37");
    EXPECT_EQ(failureText([&] { missing.FailOnError(-36); }), "Error in LxFileSpecification::GetName:-36");
    LxFileSpecification relative(LxString("plain"));
    EXPECT_EQ(failureText([&] { relative = LxString("x"); }), "Path not found in LxFileSpecification::GetName:-36");
    EXPECT_EQ(LXFileSystemException("x", 70000L).GetErrorCode(), 4464);  // narrowed to 16 bits

    LxFileSpecification file(LxString(temp.file("f.ttf", "12345")));
    EXPECT_TRUE(LxFileSystem::IsValidFile(file));
    EXPECT_FALSE(LxFileSystem::IsValidFile(LxFileSpecification(LxString(temp.path()))));
    // A file's size is both forks together (kept).
    const macfixtures::MacParts parts{"Font", fourCC("FFIL"), fourCC("DMOV"), macfixtures::Text("data"), macfixtures::Text("fork")};
    macfixtures::WriteFile(temp / "Font.bin", macfixtures::MacBinaryFile(parts, 3));
    EXPECT_EQ(LxFileSystem::GetFileSize(LxFileSpecification(LxString(temp / "Font.bin"))), 8u);
    EXPECT_TRUE(LxFileSpecification("/Fonts/A.ttf") == LxFileSpecification("/fonts/a.TTF"));
    file = LxString("b.ttf");  // a relative name replaces the last component
    EXPECT_EQ(LxString(file).str(), temp / "b.ttf");
}

TEST(LxStreams, WholeFiles)
{
    TempFolder temp;
    void* buffer = nullptr;
    unsigned long size = 99;
    ASSERT_EQ(LxStreams::ReadWholeFile(LxString(temp.file("empty")), &buffer, &size), 0);
    ASSERT_TRUE(size == 0 && buffer != nullptr && static_cast<unsigned char*>(buffer)[0] == 0);  // one zeroed byte
    std::free(buffer);
    LxString text;
    // Up to the first zero byte, with no byte-order-mark handling.
    ASSERT_EQ(LxStreams::ReadWholeUTF8File(LxString(temp.file("f", std::string("\xEF\xBB\xBF" "ab\0cd", 7))), &text), 0);
    EXPECT_EQ(text.str(), "\xEF\xBB\xBF" "ab");
}

// root/a.txt, root/.dot, root/.hidden/, root/one/b.txt, root/one/two/c.txt
class Tree : public ::testing::Test {
protected:
    void SetUp() override
    {
        for (const char* folder : {".hidden", "one", "one/two"}) temp_.folder(folder);
        for (const char* file : {"a.txt", ".dot", "one/b.txt", "one/two/c.txt"}) temp_.file(file);
    }
    Names relative(const std::vector<LxFileSpecification>& specs) const
    {
        Names out;
        for (const auto& file : specs) out.push_back(LxString(file).str().substr(temp_.path().size() + 1));
        return out;
    }
    LxDirectorySpecification root() const { return LxDirectorySpecification(temp_.path()); }
    TempFolder temp_;
};

struct StopAtThirdFile : LxFileHierarchyTraverser {
    std::vector<long> depths;
    bool FilterFile(const LxFileSpecification&, long depth) override { depths.push_back(depth); return depths.size() < 3; }
};

// The scanner's depth limit; a hook that says stop ends the whole walk.
TEST_F(Tree, ScannerDepthAndStoppingHook)
{
    EXPECT_EQ(relative(LxDirectoryScanner(root(), 0).GetFiles()), (Names{".dot", "a.txt"}));
    EXPECT_EQ(relative(LxDirectoryScanner(root(), -1).GetFiles()), (Names{".dot", "a.txt", "one/b.txt", "one/two/c.txt"}));
    StopAtThirdFile walker;
    EXPECT_FALSE(walker.TraverseFileHierarchy(root(), 0));
    EXPECT_EQ(walker.depths, (std::vector<long>{0, 0, 1}));
}

TEST_F(Tree, FolderIsEmptyCanIgnoreDotFiles)
{
    temp_.file(".hidden/.DS_Store");
    EXPECT_TRUE(FolderIsEmpty(LxString(temp_ / ".hidden"), true));
    EXPECT_FALSE(FolderIsEmpty(LxString(temp_ / ".hidden"), false));
    EXPECT_FALSE(FolderIsEmpty(LxString(temp_ / "one/two"), true));
}

// The name part does not filter, and any dotted folder is "dots". Kept.
TEST_F(Tree, FileFindListsEverything)
{
    LxFileFind find;
    ASSERT_TRUE(find.FindFile(LxString(temp_ / "*.nomatch")));
    Names names, dots;
    do {
        names.push_back(find.GetFileName().str());
        if (find.IsDots()) dots.push_back(find.GetFileName().str());
    } while (find.FindNextFile());
    EXPECT_EQ(names, (Names{".", "..", ".dot", ".hidden", "a.txt", "one"}));
    EXPECT_EQ(dots, (Names{".", "..", ".hidden"}));
    EXPECT_FALSE(find.FindFile(LxString(temp_ / "none/*")));
}

}  // namespace
