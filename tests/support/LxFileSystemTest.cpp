#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/xattr.h>

#include <cerrno>
#include <string>

#include "support/LXFileSystemException.h"
#include "support/LxDirectorySpecification.h"
#include "support/LxFileSpecification.h"
#include "support/LxFileSystem.h"
#include "support/LxStreams.h"
#include "support/MacErrors.h"
#include "common/TempFolder.h"

namespace {

LxString L(const std::string& text)
{
    return LxString(text);
}

std::string contents(const std::string& path)
{
    LxString text;
    return LxStreams::ReadWholeUTF8File(L(path), &text) == 0 ? text.str() : "<unreadable>";
}

// Runs `operation` and returns the text of the exception it throws.
template <typename Operation>
std::string failureText(Operation operation)
{
    try {
        operation();
    } catch (const LXFileSystemException& error) {
        return error.what();
    }
    return "<no exception>";
}

TEST(FileSystemExceptions, TextIsMessageColonCode)
{
    OSErrException plain("Boom", -50);
    EXPECT_STREQ(plain.what(), "Boom:-50");
    EXPECT_EQ(plain.GetErrorCode(), -50);
    // The file-system constructors narrow the code to 16 bits.
    LXFileSystemException wide("x", 70000L);
    EXPECT_EQ(wide.GetErrorCode(), 4464);
    LXFileSystemException meaning("y", LxFileSystem::kDuplicateName);
    EXPECT_EQ(meaning.GetErrorCode(), -48);
    EXPECT_STREQ(meaning.what(), "y:-48");
    EXPECT_EQ(LXFileSystemException("z", -43L).GetFileSysError(), LxFileSystem::kFileNotFound);
}

TEST(FileSystemExceptions, ErrnoValuesBecomeMacCodes)
{
    const std::pair<int, short> cases[] = {
        {ENOENT, -43}, {EEXIST, -48}, {EINVAL, -50},  {EXDEV, -1303},
        {EIO, -36},    {ENAMETOOLONG, -37}, {0, 0}, {ENOTEMPTY, -47},
    };
    for (const auto& [err, code] : cases) EXPECT_EQ(MacError::FromErrno(err), code) << err;
    EXPECT_EQ(LxFileSystem::TranslateError(-1303), LxFileSystem::kDifferentVolume);
    EXPECT_EQ(LxFileSystem::TranslateError(-12345), LxFileSystem::kUnknownError);
}

TEST(LxFileSystem, MissingFileReadsDoubledCode)
{
    TempFolder temp;
    LxFileSpecification missing(L(temp / "missing.ttf"));
    EXPECT_EQ(failureText([&] { LxFileSystem::GetFileSize(missing); }), "-43:-43");
    EXPECT_EQ(failureText([&] { LxFileSystem::DeleteFile(missing, false); }), "-43:-43");
    EXPECT_EQ(failureText([&] { LxFileSystem::GetFileModDate(missing); }), "-43:-43");
}

TEST(LxFileSpecification, GetNameAndItsMessages)
{
    LxString name;
    LxFileSpecification("/Fonts/Arial.ttf").GetName(name);
    EXPECT_EQ(name.str(), "Arial.ttf");
    EXPECT_EQ(failureText([] {
                  LxString out;
                  LxFileSpecification().GetName(out);
              }),
              "Bad filename in LxFileSpecification::GetName:-37");
    LxFileSpecification file("/a/b");
    EXPECT_NO_THROW(file.FailOnError(0));
    EXPECT_NO_THROW(file.FailOnError(-43));
    EXPECT_EQ(failureText([&] { file.FailOnError(-36); }),
              "Error in LxFileSpecification::GetName:-36");
}

TEST(LxFileSpecification, TypeAndCreatorOfPlainAndMissingFiles)
{
    TempFolder temp;
    // A file that exists but carries no Finder info has zero codes.
    LxFileSpecification plain(L(temp.file("plain.ttf", "abc")));
    unsigned long type = 1, creator = 1;
    plain.MacGetTypeAndCreator(type, creator);
    EXPECT_EQ(type, 0u);
    EXPECT_EQ(creator, 0u);
    EXPECT_FALSE(plain.IsTypeAndCreatorUnknown());
    // The defaults stand for what cannot be read.
    LxFileSpecification missing(L(temp / "missing.ttf"));
    missing.MacGetTypeAndCreator(type, creator);
    EXPECT_EQ(type, LxFileSystem::kDefaultFileType);
    EXPECT_EQ(creator, LxFileSystem::kDefaultCreatorType);
    EXPECT_TRUE(missing.IsTypeAndCreatorUnknown());
    missing.MacSetTypeAndCreator(0x46464C49, 0x444D4F56);
    missing.MacGetTypeAndCreator(type, creator);
    EXPECT_EQ(type, 0x46464C49u);
}

TEST(LxFileSpecification, PlatformReferencesResolveExistingFilesOnly)
{
    TempFolder temp;
    LxFileSpecification present(L(temp.file("a")));
    FSSpec fsSpec;
    FSRef ref;
    EXPECT_EQ(present.MacGetFSSpec(fsSpec), 0);
    EXPECT_EQ(fsSpec.path, temp / "a");
    EXPECT_EQ(present.MacGetFSRef(ref), 0);
    LxFileSpecification absent(L(temp / "b"));
    EXPECT_EQ(absent.MacGetFSSpec(fsSpec), -43);
    EXPECT_EQ(absent.MacGetFSRef(ref), -43);
    EXPECT_EQ(LxFileSpecification().MacGetFSRef(ref), -43);
}

TEST(LxFileSpecification, AssigningANameResolvesAgainstThePath)
{
    TempFolder temp;
    temp.folder("dir");
    LxFileSpecification file(L(temp / "dir/a.ttf"));
    file = L("b.ttf");
    EXPECT_EQ(LxString(file).str(), temp / "dir/b.ttf");
    file = L(temp / "dir");
    file = L("c.ttf");
    EXPECT_EQ(LxString(file).str(), temp / "dir/c.ttf");
    file = L("/abs/d.ttf");
    EXPECT_EQ(LxString(file).str(), "/abs/d.ttf");
    LxFileSpecification relative(L("plain"));
    EXPECT_EQ(failureText([&] { relative = L("x"); }),
              "Path not found in LxFileSpecification::GetName:-36");
}

TEST(LxFileSpecification, EqualityIgnoresCaseAndPiecesCombine)
{
    EXPECT_TRUE(LxFileSpecification("/Fonts/A.ttf") == LxFileSpecification("/fonts/a.TTF"));
    EXPECT_FALSE(LxFileSpecification("/Fonts/A.ttf") == LxFileSpecification("/Fonts/B.ttf"));
    EXPECT_EQ(LxString(LxFileSpecification("/a", "b")).str(), "/a/b");
    EXPECT_EQ(LxString(LxFileSpecification("/a/", "b")).str(), "/a/b");
    EXPECT_EQ(LxString(LxFileSpecification(LxDirectorySpecification("/d"), "f")).str(), "/d/f");
    LxString parent;
    LxFileSpecification("/d/e/f").GetParentDirectory().GetFullPath(parent);
    EXPECT_EQ(parent.str(), "/d/e");
    EXPECT_EQ(LxFileSpecification("/a b/%.ttf").CopyURL()->str(), "file:///a%20b/%25.ttf");
    LxString text("/x");
    LxFileSpecification styled;
    EXPECT_EQ(styled.Set(text, kCFURLHFSPathStyle, 0), -4960);
    EXPECT_EQ(styled.Set(text, kCFURLPOSIXPathStyle, 0), 0);
}

TEST(LxFileSpecification, BufferFormsCutToFit)
{
    LxFileSpecification file("/folder/name.ttf");
    unsigned char buffer[8];
    EXPECT_EQ(file.GetFullPathUTF8(buffer, sizeof buffer), 0);
    EXPECT_STREQ(reinterpret_cast<char*>(buffer), "/folder");
    EXPECT_EQ(file.GetFullPathUTF8(nullptr, 4), -50);
    char name[32];
    EXPECT_EQ(file.GetNameUTF8(name, sizeof name), 0);
    EXPECT_STREQ(name, "name.ttf");
    HFSUniStr255 unicode;
    EXPECT_EQ(file.GetNameUnicode(&unicode), 0);
    EXPECT_EQ(unicode.length, 8);
    EXPECT_EQ(unicode.unicode[0], 'n');
}

TEST(LxFileSystem, SizesValidityAndDates)
{
    TempFolder temp;
    LxFileSpecification file(L(temp.file("f.ttf", "12345")));
    EXPECT_EQ(LxFileSystem::GetFileSize(file), 5u);
    EXPECT_TRUE(LxFileSystem::IsValidFile(file));
    EXPECT_FALSE(LxFileSystem::IsValidFile(LxFileSpecification(L(temp.path()))));
    EXPECT_FALSE(LxFileSystem::IsValidFile(LxFileSpecification()));
    EXPECT_TRUE(LxFileSystem::IsValidDirectory(LxDirectorySpecification(L(temp.path()))));
    EXPECT_FALSE(LxFileSystem::IsValidDirectory(LxDirectorySpecification(L(temp / "f.ttf"))));

    // 2001-01-01 00:00:00 UTC is 3061152000 seconds after 1904-01-01.
    LxFileSystem::SetFileModDate(file, 3061152000L);
    EXPECT_EQ(LxFileSystem::GetFileModDate(file), 3061152000L);
    struct stat status;
    ASSERT_EQ(stat((temp / "f.ttf").c_str(), &status), 0);
    EXPECT_EQ(status.st_mtime, 978307200);
}

TEST(LxFileSystem, CreateAndDelete)
{
    TempFolder temp;
    LxDirectorySpecification folder(L(temp / "new"));
    LxFileSystem::CreateDirectory(folder);
    EXPECT_NO_THROW(LxFileSystem::CreateDirectory(folder));
    EXPECT_EQ(failureText([] { LxFileSystem::CreateDirectory(LxDirectorySpecification()); }),
              "-4960:-4960");
    EXPECT_EQ(failureText([&] {
                  LxFileSystem::CreateDirectory(LxDirectorySpecification(L(temp / "no/deeper")));
              }),
              "-43:-43");

    LxFileSpecification file(L(temp / "new/file"));
    LxFileSystem::CreateFile(file, false);
    EXPECT_EQ(failureText([&] { LxFileSystem::CreateFile(file, false); }), "-48:-48");
    EXPECT_EQ(failureText([&] { LxFileSystem::DeleteDirectory(folder, false); }), "-47:-47");

    LxFileSystem::SetReadOnly(file, true);
    EXPECT_TRUE(LxFileSystem::IsLockedFile(file));
    LxFileSystem::DeleteFile(file, true);
    EXPECT_FALSE(OSPathExists(L(temp / "new/file")));
    LxFileSystem::DeleteDirectory(folder, false);
    EXPECT_FALSE(OSPathExists(L(temp / "new")));
}

TEST(LxFileSystem, CopyKeepsTheSourceAndRefusesToOverwrite)
{
    TempFolder temp;
    temp.folder("to");
    LxFileSpecification from(L(temp.file("a.ttf", "data")));
    LxFileSpecification to(L(temp / "to/b.ttf"));
    LxFileSystem::CopyFile(from, to);
    EXPECT_EQ(contents(temp / "to/b.ttf"), "data");
    EXPECT_EQ(contents(temp / "a.ttf"), "data");
    EXPECT_EQ(failureText([&] { LxFileSystem::CopyFile(from, to); }), "-48:-48");
    EXPECT_EQ(failureText([&] {
                  LxFileSystem::CopyFile(LxFileSpecification(L(temp / "none")), to);
              }),
              "-43:-43");
}

TEST(LxFileSystem, CopyAndMoveCarryTheResourceForkCompanions)
{
    TempFolder temp;
    std::string source = temp.file("font", "data");
    temp.file("._font", "apple double");
    bool hasAttribute =
        setxattr(source.c_str(), "user.com.apple.ResourceFork", "rsrc", 4, 0) == 0;

    LxFileSystem::CopyFile(LxFileSpecification(L(source)), LxFileSpecification(L(temp / "copy")));
    EXPECT_EQ(contents(temp / "._copy"), "apple double");
    if (hasAttribute) {
        char value[8] = {};
        EXPECT_EQ(getxattr((temp / "copy").c_str(), "user.com.apple.ResourceFork", value,
                           sizeof value),
                  4);
        EXPECT_STREQ(value, "rsrc");
    }

    LxFileSystem::MoveFile(LxFileSpecification(L(temp / "copy")),
                           LxFileSpecification(L(temp / "moved")));
    EXPECT_FALSE(OSPathExists(L(temp / "copy")));
    EXPECT_FALSE(OSPathExists(L(temp / "._copy")));
    EXPECT_EQ(contents(temp / "._moved"), "apple double");

    LxFileSystem::DeleteFile(LxFileSpecification(L(temp / "moved")), false);
    EXPECT_FALSE(OSPathExists(L(temp / "._moved")));
}

TEST(LxFileSystem, MoveRefusesAnExistingTarget)
{
    TempFolder temp;
    LxFileSpecification from(L(temp.file("a", "1")));
    LxFileSpecification to(L(temp.file("b", "2")));
    EXPECT_TRUE(LxFileSystem::CanMoveFile(from, LxFileSpecification(L(temp / "c"))));
    EXPECT_FALSE(LxFileSystem::CanMoveFile(from, to));
    EXPECT_EQ(failureText([&] { LxFileSystem::MoveFile(from, to); }), "-48:-48");
    EXPECT_EQ(contents(temp / "b"), "2");
}

TEST(LxFileSystem, DirectoriesCopyAndMoveAsTrees)
{
    TempFolder temp;
    temp.folder("src");
    temp.folder("src/sub");
    temp.file("src/sub/f", "deep");
    temp.folder("dest");
    LxDirectorySpecification src(L(temp / "src"));
    LxFileSystem::CopyDirectory(src, LxDirectorySpecification(L(temp / "dest")), nullptr);
    EXPECT_EQ(contents(temp / "dest/src/sub/f"), "deep");
    LxFileSystem::CopyDirectory(src, LxDirectorySpecification(L(temp / "dest")), "other");
    EXPECT_EQ(contents(temp / "dest/other/sub/f"), "deep");

    // Never into itself.
    LxDirectorySpecification inside(L(temp / "src/sub/inner"));
    EXPECT_FALSE(LxFileSystem::CanMoveDirectory(src, inside));
    EXPECT_EQ(failureText([&] { LxFileSystem::MoveDirectory(src, inside); }), "-50:-50");
    EXPECT_EQ(failureText([&] {
                  LxFileSystem::CopyDirectory(src, LxDirectorySpecification(L(temp / "src/sub")),
                                              nullptr);
              }),
              "-50:-50");

    LxDirectorySpecification target(L(temp / "renamed"));
    EXPECT_TRUE(LxFileSystem::CanMoveDirectory(src, target));
    LxFileSystem::MoveDirectory(src, target);
    EXPECT_EQ(contents(temp / "renamed/sub/f"), "deep");
    EXPECT_FALSE(OSPathExists(L(temp / "src")));
}

TEST(LxFileSystem, VolumeQueries)
{
    TempFolder temp;
    EXPECT_TRUE(LxFileSystem::IsRootDirectory(LxDirectorySpecification("/")));
    EXPECT_FALSE(LxFileSystem::IsRootDirectory(LxDirectorySpecification(L(temp.path()))));
    EXPECT_TRUE(LxFileSystem::IsValidDrive("/"));
    EXPECT_FALSE(LxFileSystem::IsValidDrive(L(temp / "none")));
    EXPECT_GT(LxFileSystem::GetFreeByteCountOnDrive(L(temp.path())), 0u);
    EXPECT_FALSE(LxFileSystem::MacIsVolumeShared(0));
}

TEST(FileSystemWrappers, ReturnCodesInsteadOfExceptions)
{
    TempFolder temp;
    EXPECT_EQ(OSCreateDir(L(temp / "d")), 0);
    EXPECT_EQ(OSCreateDir(L(temp / "x/y")), -43);
    std::string file = temp.file("d/f", "1");
    EXPECT_EQ(OSCopyFile(L(file), L(temp / "d/g"), true), 0);
    EXPECT_EQ(OSCopyFile(L(file), L(temp / "d/g"), true), -48);
    temp.file("d/h", "other");
    EXPECT_EQ(OSCopyFile(L(temp / "d/h"), L(temp / "d/g"), false), 0);
    EXPECT_EQ(contents(temp / "d/g"), "other");
    EXPECT_EQ(OSMoveFile(L(temp / "d/g"), L(temp / "moved")), 0);
    EXPECT_EQ(OSRemoveDir(L(temp / "d")), -47);
    chmod(file.c_str(), 0444);
    EXPECT_EQ(OSRemoveFile(L(file), true), 0);
    EXPECT_NE(OSRemoveFile(L(file), false), 0);

    temp.folder("tree");
    temp.folder("tree/locked");
    temp.file("tree/locked/f");
    chmod((temp / "tree/locked").c_str(), 0555);
    EXPECT_EQ(OSRemoveDirectoryTree(L(temp / "tree"), true), 0);
    EXPECT_FALSE(OSPathExists(L(temp / "tree")));
}

}  // namespace
