#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "support/LxFileSystemParser.h"
#include "common/TempFolder.h"

namespace {

using P = LxFileSystemParser;

TEST(LxFileSystemParser, IllegalCharacterSetHasItsEighteenMembers)
{
    EXPECT_EQ(std::strlen(P::kIllegalFilenameChars), 18u);
    LxString name(std::string(P::kIllegalFilenameChars) + "ok.x");
    EXPECT_EQ(P::ReplaceIllegalFilenameChars(&name), 0);
    EXPECT_EQ(name.str(), std::string(18, '_') + "ok.x");
}

TEST(LxFileSystemParser, ReplaceIllegalFilenameCharsHidesNoFile)
{
    LxString name(".a:b");
    P::ReplaceIllegalFilenameChars(&name);
    EXPECT_EQ(name.str(), "_a_b");
    LxString inner("a.b.c");
    P::ReplaceIllegalFilenameChars(&inner);
    EXPECT_EQ(inner.str(), "a.b.c");
    EXPECT_EQ(P::ReplaceIllegalFilenameChars(nullptr), 0);
}

struct ExtensionCase {
    const char* path;
    bool found;
    unsigned long position;
};

TEST(LxFileSystemParser, HasExtensionFindsTheFirstDotOfTheLastComponent)
{
    const ExtensionCase cases[] = {
        {"a/b.tar.gz", true, 3}, {"b.ttf", true, 1},     {"x.y/b", false, std::string::npos},
        {"", false, std::string::npos},                  {".hidden", true, 0},
        {"/dir/", false, std::string::npos},
    };
    for (const ExtensionCase& c : cases) {
        unsigned long dot = 12345;
        EXPECT_EQ(P::HasExtension(c.path, dot), c.found) << c.path;
        EXPECT_EQ(dot, c.position) << c.path;
    }
}

TEST(LxFileSystemParser, FindFileName)
{
    char path[] = "/a/b.ttf";
    EXPECT_STREQ(P::FindFileName(path), "b.ttf");
    char bare[] = "b.ttf";
    EXPECT_EQ(P::FindFileName(bare), bare);
    EXPECT_EQ(P::FindFileName(nullptr), nullptr);
}

TEST(LxFileSystemParser, IsPathOnBootVolume)
{
    const std::pair<const char*, bool> cases[] = {
        {"/Volumes/Data/x", false}, {"/Library/Fonts", true}, {"/Volumes/", true},
        {"/Volumes", true},         {"", true},               {"/volumes/Data", true},
    };
    for (const auto& [text, expected] : cases) {
        LxString path(text);
        long error = 99;
        EXPECT_EQ(P::IsPathOnBootVolume(path, error), expected) << text;
        EXPECT_EQ(error, 0);
    }
}

TEST(LxFileSystemParser, IsPathAMacBundleGoesByTheCaseSensitiveEnding)
{
    TempFolder temp;
    const std::pair<std::string, bool> cases[] = {
        {temp.folder("Foo.plugin"), true},
        {temp.folder("Foo.PLUGIN"), false},
        {temp.folder("Bar.app") + "/", true},
        {temp.folder("Baz.SpeechVoice"), true},
        {temp.folder("Plain"), false},
        // The first dot decides, so a dotted name is no bundle.
        {temp.folder("My.Tool.app"), false},
        // A file with a bundle ending counts, as the name alone decides.
        {temp.file("Doc.pkg"), true},
    };
    for (const auto& [text, expected] : cases) {
        LxString path(text);
        long error = 99;
        EXPECT_EQ(P::IsPathAMacBundle(path, error), expected) << text;
        EXPECT_EQ(error, 0) << text;
    }
    LxString missing(temp / "Gone.app");
    long error = 0;
    EXPECT_FALSE(P::IsPathAMacBundle(missing, error));
    EXPECT_EQ(error, -1);
}

struct ComponentCase {
    const char* path;
    const char* parent;
    const char* name;  // null: none
};

TEST(LxFileSystemParser, PathComponents)
{
    const ComponentCase cases[] = {
        {"/a/b", "/a", "b"}, {"/a/b/", "/a", "b"}, {"/a", "/", "a"}, {"/", "/", nullptr},
        {"a", "", "a"},      {"", "", nullptr},    {"a//b", "a", "b"},
    };
    for (const ComponentCase& c : cases) {
        EXPECT_EQ(P::GetPathDeletingLastPathComponent(c.path).str(), c.parent) << c.path;
        LxString name("untouched");
        EXPECT_EQ(P::GetFileName(c.path, name), c.name != nullptr) << c.path;
        EXPECT_EQ(name.str(), c.name ? c.name : "untouched") << c.path;
    }
    EXPECT_TRUE(P::EndsWithDelimiter("/a/"));
    EXPECT_FALSE(P::EndsWithDelimiter(""));
}

TEST(LxFileSystemParser, ChangeExtension)
{
    const char* cases[][3] = {
        {"/a/b.ttf", "otf", "/a/b.otf"}, {"/a/b.ttf", ".otf", "/a/b.otf"},
        {"/a/b", "otf", "/a/b.otf"},     {"/a.d/b", "otf", "/a.d/b.otf"},
        {"/a/.rc", "x", "/a/.rc.x"},     {"/a/b.tar.gz", "", "/a/b.tar"},
    };
    for (const auto& c : cases) {
        LxString out;
        P::ChangeExtension(c[0], c[1], out);
        EXPECT_EQ(out.str(), c[2]) << c[0];
    }
}

// Points HOME and the XDG variables into a temporary folder for one test.
class StandardFolders : public ::testing::Test {
protected:
    void SetUp() override
    {
        for (const char* name : {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "TMPDIR"}) {
            const char* value = std::getenv(name);
            saved_.emplace_back(name, value ? std::optional<std::string>(value) : std::nullopt);
        }
        setenv("HOME", temp_.path().c_str(), 1);
        unsetenv("XDG_CONFIG_HOME");
        unsetenv("XDG_DATA_HOME");
        setenv("TMPDIR", temp_.path().c_str(), 1);
    }
    void TearDown() override
    {
        for (const auto& [name, value] : saved_) {
            if (value)
                setenv(name.c_str(), value->c_str(), 1);
            else
                unsetenv(name.c_str());
        }
    }
    TempFolder temp_;
    std::vector<std::pair<std::string, std::optional<std::string>>> saved_;
};

TEST_F(StandardFolders, MapOntoHomeAndXdgFolders)
{
    EXPECT_EQ(P::GetTempDirectory().str(), temp_.path() + "/");
    // Missing folders are an error unless they may be created.
    EXPECT_EQ(P::GetUserPreferencesDirectory().str(), "");
    EXPECT_EQ(P::GetUserPreferencesDirectory(true).str(), temp_ / ".config/");
    EXPECT_EQ(P::GetUserAppDataDirectory(true).str(), temp_ / ".local/share/");
    EXPECT_TRUE(OSPathExists(LxString(temp_ / ".local/share")));
    LxString out;
    EXPECT_EQ(P::GetUserDesktopDirectory(out, false), -43);
    EXPECT_EQ(P::GetUserDesktopDirectory(out, true), 0);
    EXPECT_EQ(out.str(), temp_ / "Desktop/");
}

TEST_F(StandardFolders, UserDirsFileNamesTheDocumentsFolder)
{
    temp_.folder(".config");
    temp_.file(".config/user-dirs.dirs", "# comment\nXDG_DOCUMENTS_DIR=\"$HOME/Papers\"\n");
    EXPECT_EQ(P::GetUserDocumentsDirectory(true).str(), temp_ / "Papers/");
    LxString out;
    EXPECT_EQ(P::MacGetStandardFolder(P::kUserDomain, 0x6E6F6E65, out, true), -43);
    EXPECT_EQ(P::MacGetStandardFolder(1234, P::kTemporaryFolderType, out, true), -43);
}

TEST(LxFileSystemParser, WorkingAndApplicationFolders)
{
    LxString cwd = P::GetWorkingDirectory();
    ASSERT_FALSE(cwd.empty());
    EXPECT_TRUE(P::EndsWithDelimiter(cwd.str()));
    EXPECT_EQ(P::CreateWorkingDirectoryURL().str().rfind("file:///", 0), 0u);
    EXPECT_TRUE(OSPathExists(P::GetApplicationDirectory()));
}

}  // namespace
