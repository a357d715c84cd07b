// Exit status and error lines of every command, help and the manual page.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <regex>

#include "ToolRun.h"
#include "common/TempFolder.h"

namespace {

using namespace tooltest;
namespace fs = std::filesystem;

// Root reads everything: as root, the tool runs without the capabilities
// that let it (it stays root, so it still reaches its own library wherever
// the build is).
Outcome TypeprobeUnprivileged(const Strings& args)
{
    if (::geteuid() != 0) return Typeprobe(args);
    Strings all{"--bounding-set=-dac_override,-dac_read_search", TYPEPROBE_CLI};
    all.insert(all.end(), args.begin(), args.end());
    return RunProgram("/usr/bin/setpriv", all);
}

struct Case {
    Strings args;
    int status;
    // The exact lines on standard error; for a wrong command line (2), text
    // its message must hold.
    Strings err;
    bool unprivileged = false;
};

TEST(CommandLine, ExitStatusAndErrorLines)
{
    TempFolder dir;
    dir.file("notes.txt", "just some text\n");
    dir.file("plain.ttf", "not a collection at all");
    ASSERT_EQ(::mkfifo((dir / "pipe").c_str(), 0600), 0);
    const std::string dfont = MacCorpus("dfont/DejaVuSans.dfont");
    dir.file("walk/notes.txt", "just some text\n");
    dir.file("walk/empty.ttf");
    dir.file("walk/sub/Sans.dfont", Slurp(dfont));
    ::chmod(dir.file("perm/Sans.dfont", Slurp(dfont)).c_str(), 0);
    ::chmod(dir.folder("perm/locked").c_str(), 0);
    const std::string summary11 = "1 file, 1 face, 0 files without a face, 1 error";

    const std::vector<Case> cases = {
        {{}, 2, {"identify"}},
        {{"frobnicate"}, 2, {"frobnicate"}},
        {{"identify"}, 2, {"PATH"}},
        {{"identify", "--format", "yaml", "x"}, 2, {"yaml"}},
        {{"identify", "-a", "kind,weight", "x"}, 2, {"unknown attribute \"weight\"", "postscript-name"}},
        {{"identify", "--jobs", "-3", "x"}, 2, {}},
        {{"match", "only-one"}, 2, {}},
        {{"split", "a.ttc"}, 2, {}},
        {{"help", "frobnicate"}, 2, {"frobnicate"}},
        {{"classify", "Times"}, 0, {}},
        // Problems are named one per line; the other files are still read.
        {{"identify", "-f", "jsonl", "/nonexistent/Missing.ttf", dfont}, 1,
         {"typeprobe: /nonexistent/Missing.ttf: No such file or directory", summary11}},
        {{"identify", "@/notes.txt"}, 1,
         {"typeprobe: @/notes.txt: not a font", "1 file, 0 faces, 1 file without a face, 1 error"}},
        {{"identify", "@/pipe"}, 1,
         {"typeprobe: @/pipe: not a regular file", "0 files, 0 faces, 0 files without a face, 1 error"}},
        // In a walk, files that are not fonts are counted, not errors.
        {{"identify", "-f", "json", "@/walk"}, 0, {"3 files, 1 face, 2 files without a face, 0 errors"}},
        {{"identify", "-q", "@/walk"}, 0, {}},
        {{"identify", "@/perm"}, 1,
         {"typeprobe: @/perm/locked: Permission denied", "typeprobe: @/perm/Sans.dfont: Permission denied",
          "1 file, 0 faces, 1 file without a face, 2 errors"},
         true},
        {{"match", "--face-b", "1", dfont, dfont}, 1, {"typeprobe: " + dfont + ": no face 1 (the file has 1)"}},
        // Both files are checked before anything is compared.
        {{"match", "/nonexistent/a.ttf", "@/notes.txt"}, 1,
         {"typeprobe: /nonexistent/a.ttf: No such file or directory", "typeprobe: @/notes.txt: not a font"}},
        {{"split", "@/plain.ttf", "@/out"}, 1, {"typeprobe: @/plain.ttf: not a TrueType collection"}},
        {{"split", "@/missing.ttc", "@/out"}, 1, {"typeprobe: @/missing.ttc: No such file or directory"}},
        {{"duplicates", "/nonexistent"}, 1,
         {"typeprobe: /nonexistent: No such file or directory",
          "0 files, 0 faces, 0 files without a face, 1 error"}},
    };
    for (const Case& c : cases) {
        const Strings args = At(c.args, dir.path());
        const std::string label = testing::PrintToString(args);
        const Outcome run = c.unprivileged ? TypeprobeUnprivileged(args) : Typeprobe(args);
        EXPECT_EQ(run.status, c.status) << label << "\n" << run.err;
        if (c.status == 2) {
            EXPECT_EQ(run.out, "") << label;
            EXPECT_FALSE(run.err.empty()) << label;
            for (const std::string& text : c.err) EXPECT_NE(run.err.find(text), std::string::npos) << label;
        } else {
            EXPECT_EQ(Lines(run.err), At(c.err, dir.path())) << label;
        }
    }
    // A failed split leaves no folder behind.
    EXPECT_FALSE(fs::exists(dir / "out"));
    ::chmod((dir / "perm/locked").c_str(), 0755);
}

TEST(CommandLine, HelpManualPageAndVersion)
{
    const Outcome main = Typeprobe({"--help"});
    EXPECT_EQ(main.status, 0);
    const Outcome man = Typeprobe({"help", "--man"});
    ASSERT_EQ(man.status, 0);
    EXPECT_EQ(man.out.rfind(".TH TYPEPROBE 1 ", 0), 0u);
    for (const char* command : {"identify", "split", "match", "duplicates", "catalog", "classify", "styles",
                                "version", "help"}) {
        EXPECT_NE(main.out.find("  " + std::string(command) + " "), std::string::npos) << command;
        const Outcome help = Typeprobe({command, "--help"});
        EXPECT_EQ(help.status, 0) << command;
        EXPECT_NE(help.out.find("Usage: typeprobe " + std::string(command)), std::string::npos) << command;
        EXPECT_EQ(Typeprobe({"help", command}).out, help.out) << command;
        EXPECT_NE(man.out.find(".SS \"" + std::string(command) + "\""), std::string::npos) << command;
    }
    for (const char* section : {".SH NAME", ".SH SYNOPSIS", ".SH COMMANDS", ".SH \"EXIT STATUS\"",
                                ".SH \"MAC FILES\""})
        EXPECT_NE(man.out.find(section), std::string::npos) << section;
    // The page the build installs is the one the tool prints.
    EXPECT_EQ(Slurp(TYPEPROBE_MAN_PAGE), man.out);
    // The version names the tool and the library.
    const Outcome run = Typeprobe({"version"});
    EXPECT_EQ(run.status, 0);
    std::smatch match;
    ASSERT_TRUE(std::regex_match(run.out, match, std::regex(R"(typeprobe ([0-9.]+) \(library [0-9]+\.[0-9]+\)\n)")))
        << run.out;
    EXPECT_EQ(Typeprobe({"--version"}).out, "typeprobe " + match[1].str() + "\n");
}

}  // namespace
