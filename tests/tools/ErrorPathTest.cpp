// Problems: one line naming the file, the other files still processed, and
// the exit status (0 ok, 1 a file failed, 2 a wrong command line).
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

#include "ToolRun.h"
#include "common/TempFolder.h"

namespace {

using tooltest::Typeprobe;

TEST(ErrorPaths, AMissingPathIsReportedAndTheOtherFilesStillRead)
{
    REQUIRE_SYSTEM_FONTS();
    const auto run = Typeprobe({"identify", "-f", "jsonl", "/nonexistent/Missing.ttf", tooltest::kSans});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(nlohmann::json::parse(run.out)["postScriptName"], "DejaVuSans");
    EXPECT_EQ(run.errLines(), (std::vector<std::string>{
                                  "typeprobe: /nonexistent/Missing.ttf: No such file or directory",
                                  "1 file, 1 face, 0 files without a face, 1 error"}));
}

TEST(ErrorPaths, AFileNamedDirectlyThatIsNotAFontIsAnError)
{
    TempFolder dir;
    const std::string text = dir.file("notes.txt", "just some text\n");
    const auto run = Typeprobe({"identify", text});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.errLines(), (std::vector<std::string>{
                                  "typeprobe: " + text + ": not a font",
                                  "1 file, 0 faces, 1 file without a face, 1 error"}));
}

TEST(ErrorPaths, FilesInFoldersThatAreNotFontsAreSkippedQuietly)
{
    TempFolder dir;
    dir.file("notes.txt", "just some text\n");
    dir.file("empty.ttf");
    dir.folder("sub");
    std::filesystem::copy_file(tooltest::MacCorpus("dfont/DejaVuSans.dfont"), dir / "sub/Sans.dfont");
    const auto run = Typeprobe({"identify", "-f", "json", dir.path()});
    EXPECT_EQ(run.status, 0) << run.err;
    const auto json = run.json();
    ASSERT_EQ(json["files"].size(), 1u);
    EXPECT_EQ(json["files"][0]["path"], dir / "sub/Sans.dfont");
    EXPECT_EQ(json["summary"]["files"], 3);
    EXPECT_EQ(json["summary"]["filesWithoutFace"], 2);
    EXPECT_EQ(json["summary"]["errors"], 0);
    EXPECT_EQ(run.err, "3 files, 1 face, 2 files without a face, 0 errors\n");
}

TEST(ErrorPaths, SomethingThatIsNeitherFileNorFolder)
{
    TempFolder dir;
    const std::string fifo = dir / "pipe";
    ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
    const auto run = Typeprobe({"identify", fifo});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.errLines().at(0), "typeprobe: " + fifo + ": not a regular file");
}

// Root reads everything: as root, the tool runs as "nobody" for this.
tooltest::Run TypeprobeUnprivileged(const std::vector<std::string>& args)
{
    if (::geteuid() != 0) return Typeprobe(args);
    std::vector<std::string> all{"--reuid=65534", "--regid=65534", "--clear-groups", TYPEPROBE_CLI};
    all.insert(all.end(), args.begin(), args.end());
    return tooltest::RunProgram("/usr/bin/setpriv", all);
}

TEST(ErrorPaths, UnreadableFilesAndFoldersAreErrorsEvenInAWalk)
{
    if (::geteuid() == 0 && !std::filesystem::exists("/usr/bin/setpriv"))
        GTEST_SKIP() << "root reads everything, and setpriv is missing";
    TempFolder dir;
    ::chmod(dir.path().c_str(), 0755);
    const std::string font = dir / "Sans.dfont";
    std::filesystem::copy_file(tooltest::MacCorpus("dfont/DejaVuSans.dfont"), font);
    ::chmod(font.c_str(), 0);
    const std::string locked = dir.folder("locked");
    ::chmod(locked.c_str(), 0);
    const auto run = TypeprobeUnprivileged({"identify", dir.path()});
    ::chmod(locked.c_str(), 0755);
    EXPECT_EQ(run.status, 1);
    const auto lines = run.errLines();
    ASSERT_EQ(lines.size(), 3u) << run.err;
    EXPECT_EQ(lines[0], "typeprobe: " + locked + ": Permission denied");
    EXPECT_EQ(lines[1], "typeprobe: " + font + ": Permission denied");
    EXPECT_EQ(lines[2], "1 file, 0 faces, 1 file without a face, 2 errors");
}

TEST(ErrorPaths, AWrongCommandLineExitsWithTwo)
{
    const std::vector<std::vector<std::string>> wrong = {
        {},
        {"frobnicate"},
        {"identify"},
        {"identify", "--format", "yaml", "x"},
        {"identify", "--attributes", "weight", "x"},
        {"identify", "--attributes", "0x40", "x"},
        {"identify", "--jobs", "-3", "x"},
        {"match", "only-one"},
        {"split", "a.ttc"},
        {"help", "frobnicate"},
    };
    for (const auto& args : wrong) {
        const auto run = Typeprobe(args);
        EXPECT_EQ(run.status, 2) << testing::PrintToString(args);
        EXPECT_FALSE(run.err.empty()) << testing::PrintToString(args);
        EXPECT_EQ(run.out, "") << testing::PrintToString(args);
    }
}

TEST(ErrorPaths, UnknownAttributeNamesListTheKnownOnes)
{
    const auto run = Typeprobe({"identify", "-a", "kind,weight", "x"});
    EXPECT_EQ(run.status, 2);
    EXPECT_NE(run.err.find("unknown attribute \"weight\""), std::string::npos) << run.err;
    EXPECT_NE(run.err.find("postscript-name"), std::string::npos);
}

}  // namespace
