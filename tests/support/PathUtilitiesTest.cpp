#include <gtest/gtest.h>

#include <stdexcept>

#include "support/FileSystemWrappers.h"
#include "support/PathUtilities.h"
#include "common/TempFolder.h"

namespace {

struct PathCase {
    const char* path;
    const char* expected;
};

TEST(PathUtilities, GetFileExtensionLooksOnlyAtTheLastComponentAndNeverAtByteZero)
{
    const PathCase cases[] = {
        {"a.TXT", "TXT"},           {"/Fonts/Arial.ttf", "ttf"},
        {"a.tar.gz", "gz"},         {"dir.old/file", ""},
        {"dir.old\\file", ""},      {".profile", ""},
        {"/x/.profile", "profile"}, {"name.", ""},
        {"", ""},                   {".", ""},
        {"noext", ""},
    };
    for (const PathCase& c : cases)
        EXPECT_EQ(GetFileExtension(c.path).str(), c.expected) << c.path;
}

struct SetExtensionCase {
    const char* path;
    const char* ext;
    const char* expected;
};

TEST(PathUtilities, SetFileExtensionReplacesOrAppends)
{
    const SetExtensionCase cases[] = {
        {"font", "pfb", "font.pfb"},
        {"font", ".pfb", "font.pfb"},
        {"font.ttf", "pfb", "font.pfb"},
        {"font.ttf", "", "font"},
        {"a.b.c", "d", "a.b.d"},
        {"dir.old/file", "x", "dir.old/file.x"},
        {"", "pfb", ".pfb"},
        {"ab", "x", "ab.x"},
        // The last byte is not examined, so a trailing dot stays.
        {"name.", "x", "name..x"},
        // Nor is byte 0.
        {".a", "x", ".a.x"},
    };
    for (const SetExtensionCase& c : cases) {
        LxString path(c.path);
        SetFileExtension(&path, c.ext);
        EXPECT_EQ(path.str(), c.expected) << c.path << " + " << c.ext;
    }
}

TEST(PathUtilities, SetFileExtensionRejectsAOneBytePath)
{
    LxString path("a");
    EXPECT_THROW(SetFileExtension(&path, "x"), std::out_of_range);
}

TEST(PathUtilities, FileNamePartNeedsASlashAfterByteZero)
{
    LxString name("untouched");
    EXPECT_FALSE(ExtractFileNamePart("/file", &name));
    EXPECT_FALSE(ExtractFileNamePart("file", &name));
    EXPECT_EQ(name.str(), "untouched");
    EXPECT_TRUE(ExtractFileNamePart("/Fonts/Arial.ttf", &name));
    EXPECT_EQ(name.str(), "Arial.ttf");
    EXPECT_TRUE(ExtractFileNamePart("/Fonts/", &name));
    EXPECT_EQ(name.str(), "");
    EXPECT_EQ(GetFileNamePart("a/b").str(), "b");
    EXPECT_EQ(GetFileNamePart("/b").str(), "");
}

struct ReplaceCase {
    const char* path;
    const char* expected;
};

TEST(PathUtilities, ReplaceLastPathComponent)
{
    const ReplaceCase cases[] = {
        {"/a/b.ttf", "/a/new"}, {"/a/b/", "/a/new"}, {"/a", "/a"},
        {"/a/", "/a/"},        {"a", "a"},          {"", ""},
        {"a/b", "a/new"},      {"/", "/"},
    };
    for (const ReplaceCase& c : cases) {
        EXPECT_EQ(ReplaceLastPathComponent(c.path, "new").str(), c.expected) << c.path;
        LxString inPlace(c.path);
        ReplaceFileNamePart(&inPlace, "new");
        EXPECT_EQ(inPlace.str(), c.expected) << c.path;
    }
}

TEST(PathUtilities, FileIsDescendantOfFolderIgnoresCaseAndNeedsTheTrailingSlash)
{
    EXPECT_TRUE(FileIsDescendantOfFolder("/Fonts/A/b.ttf", "/fonts/"));
    EXPECT_FALSE(FileIsDescendantOfFolder("/Fonts/A/b.ttf", "/Fonts"));
    EXPECT_FALSE(FileIsDescendantOfFolder("/Fonts/", "/Fonts/"));
    EXPECT_FALSE(FileIsDescendantOfFolder("/Other/b", "/Fonts/"));
    EXPECT_FALSE(FileIsDescendantOfFolder("/a", ""));
}

TEST(PathUtilities, MakeFullPathCreatesEveryFolderBeforeTheLastDelimiter)
{
    TempFolder temp;
    EXPECT_EQ(MakeFullPath(LxString(temp / "a/b/c/file.txt")), 0);
    EXPECT_TRUE(OSPathExists(LxString(temp / "a/b/c")));
    EXPECT_FALSE(OSPathExists(LxString(temp / "a/b/c/file.txt")));
    EXPECT_EQ(MakeFullPath(LxString(temp / "x/y/")), 0);
    EXPECT_TRUE(OSPathExists(LxString(temp / "x/y")));
    // A file in the way stops the walk with its error.
    temp.file("f");
    EXPECT_NE(MakeFullPath(LxString(temp / "f/g/h")), 0);
}

TEST(PathUtilities, EmptyFolderHousekeeping)
{
    TempFolder temp;
    temp.folder("empty");
    temp.folder("dotted");
    temp.file("dotted/.hidden");
    EXPECT_TRUE(FolderIsEmpty(LxString(temp / "empty"), false));
    EXPECT_FALSE(FolderIsEmpty(LxString(temp / "dotted"), false));
    EXPECT_TRUE(FolderIsEmpty(LxString(temp / "dotted"), true));
    EXPECT_FALSE(FolderIsEmpty(LxString(temp / "missing"), false));

    EXPECT_FALSE(DeleteIfEmpty(LxString(temp / "dotted")));
    EXPECT_TRUE(DeleteIfEmpty(LxString(temp / "empty")));
    EXPECT_FALSE(OSPathExists(LxString(temp / "empty")));
}

TEST(PathUtilities, DeleteEmptyParentFoldersStopsAtTheLimitAndAtContent)
{
    TempFolder temp;
    ASSERT_EQ(MakeFullPath(LxString(temp / "top/keep/a/b/")), 0);
    temp.file("top/keep/other");
    EXPECT_EQ(DeleteEmptyParentFolders(LxString(temp / "top/keep/a/b/file"), LxString(temp.path())),
              2);
    EXPECT_FALSE(OSPathExists(LxString(temp / "top/keep/a")));
    EXPECT_TRUE(OSPathExists(LxString(temp / "top/keep")));

    ASSERT_EQ(MakeFullPath(LxString(temp / "top/e/f/")), 0);
    // The limit itself is never removed, even when empty.
    EXPECT_EQ(DeleteEmptyParentFolders(LxString(temp / "top/e/f/file"), LxString(temp / "top/e")),
              1);
    EXPECT_TRUE(OSPathExists(LxString(temp / "top/e")));
    EXPECT_EQ(DeleteEmptyParentFolders(LxString(temp / "top/e/file"), LxString()), 0);
    EXPECT_EQ(DeleteEmptyParentFolders(LxString(temp / "top/e/../e/x"), LxString(temp / "top")), 0);
    EXPECT_TRUE(OSPathExists(LxString(temp / "top/e")));
}

}  // namespace
