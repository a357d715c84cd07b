// The catalog end to end: what scans count and store, what they do not read
// again, how they survive being killed or run twice at once, what other
// files they refuse, and how an older catalog is brought up to date.
#include <gtest/gtest.h>

#include <signal.h>
#include <sys/stat.h>

#include <SQLiteCpp/SQLiteCpp.h>
#include <typeprobe/typeprobe.h>

#include <Catalog.h>

#include <chrono>
#include <filesystem>
#include <functional>
#include <thread>

#include "common/FileIO.h"
#include "common/TempFolder.h"
#include "tools/ToolRun.h"

using namespace tooltest;
namespace fs = std::filesystem;

namespace {

Outcome Catalog(const std::string& db, Strings args, const std::string& cwd = "")
{
    args.insert(args.begin() + 1, {"--catalog", db});
    args.insert(args.begin(), "catalog");
    return Typeprobe(args, cwd);
}

std::string Listing(const std::string& db) { return Catalog(db, {"list", "-f", "jsonl", "-q"}).out; }

void SetTimes(const std::string& path, struct timespec time)
{
    const struct timespec times[2] = {time, time};
    ASSERT_EQ(::utimensat(AT_FDCWD, path.c_str(), times, 0), 0);
}

struct timespec ModifiedAt(const std::string& path)
{
    struct stat info {};
    ::stat(path.c_str(), &info);
    return info.st_mtim;
}

// A tree of `count` hard links to Debian's DejaVu and Liberation fonts, 50 a folder.
void LinkTree(const std::string& root, size_t count)
{
    std::vector<fs::path> fonts;
    for (const std::string& dir : {kDejaVuDir, kLiberationDir})
        for (const auto& entry : fs::directory_iterator(dir)) fonts.push_back(entry.path());
    std::sort(fonts.begin(), fonts.end());
    for (size_t i = 0; i < count; ++i) {
        const fs::path folder = fs::path(root) / ("d" + std::to_string(i / 50));
        fs::create_directories(folder);
        const fs::path target = folder / (std::to_string(i) + "-" + fonts[i % fonts.size()].filename().string());
        std::error_code error;
        fs::create_hard_link(fonts[i % fonts.size()], target, error);
        if (error) fs::copy_file(fonts[i % fonts.size()], target);
    }
}

// A scan in the background; what it reports goes to `errors`.
pid_t StartScan(const std::string& db, const std::string& tree, const std::string& errors = "/dev/null")
{
    const pid_t pid = ::fork();
    if (pid == 0) {
        const int null = ::open("/dev/null", O_WRONLY);
        ::dup2(null, STDOUT_FILENO);
        ::dup2(::open(errors.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644), STDERR_FILENO);
        ::execl(TYPEPROBE_CLI, TYPEPROBE_CLI, "catalog", "scan", "--catalog", db.c_str(), tree.c_str(),
                static_cast<char*>(nullptr));
        ::_exit(127);
    }
    return pid;
}

int Wait(pid_t pid)
{
    int status = 0;
    ::waitpid(pid, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

}  // namespace

// Each step changes the tree, then a rescan must count it so and store what
// it read; a file whose bytes change under the same size and time is not read.
TEST(Catalog, RescansReadOnlyWhatChangedAndDropWhatIsGone)
{
    TempFolder dir;
    const std::string tree = dir.folder("fonts"), db = dir / "catalog.sqlite";
    fs::copy_file(kSans, tree + "/Sans.ttf");
    fs::copy_file(kSansBold, tree + "/Bold.ttf");
    fs::copy_file(MacCorpus("dfont/DejaVuSans.dfont"), tree + "/Mac.dfont");
    dir.file("fonts/notes.txt", "not a font");
    const auto sameSizeOtherBytes = [&] {
        const struct timespec then = ModifiedAt(tree + "/Sans.ttf");
        auto bytes = testfiles::readFile(tree + "/Sans.ttf");
        bytes[bytes.size() / 2] ^= 0xFF;
        testfiles::writeFile(tree + "/Sans.ttf", bytes);
        SetTimes(tree + "/Sans.ttf", then);
    };
    const struct {
        std::function<void()> change;
        const char* counts;
        const char* sansChecksum;  // what the catalog holds for Sans.ttf
    } steps[] = {
        {[] {}, "4 new, 0 changed, 0 removed, 0 unchanged, 0 errors", "D74C30B5"},
        {[] {}, "0 new, 0 changed, 0 removed, 4 unchanged, 0 errors", "D74C30B5"},
        {sameSizeOtherBytes, "0 new, 0 changed, 0 removed, 4 unchanged, 0 errors", "D74C30B5"},
        {[&] { SetTimes(tree + "/Sans.ttf", {1000000, 0}); }, "0 new, 1 changed, 0 removed, 3 unchanged, 0 errors", nullptr},
        {[&] { dir.file("fonts/._Mac.dfont", "sidecar"); }, "0 new, 1 changed, 0 removed, 3 unchanged, 0 errors", nullptr},
        {[&] { fs::remove(tree + "/Bold.ttf"); }, "0 new, 0 changed, 1 removed, 3 unchanged, 0 errors", nullptr},
        {[&] { fs::copy_file(kSans, tree + "/Sans2.ttf"); }, "1 new, 0 changed, 0 removed, 3 unchanged, 0 errors", nullptr},
    };
    for (const auto& step : steps) {
        step.change();
        const Outcome scan = Catalog(db, {"scan", tree});
        EXPECT_EQ(scan.status, 0) << scan.err;
        EXPECT_EQ(scan.out, std::string(step.counts) + "\n");
        const auto found = Catalog(db, {"find", "--postscript-name", "dejavusans", "-i", "-f", "json"}).json();
        const auto& first = found["files"][0];
        EXPECT_EQ(first["path"], tree + "/Mac.dfont");
        const std::string sans = found["files"][1]["faces"][0]["checksum"];
        if (step.sansChecksum) EXPECT_EQ(sans, step.sansChecksum) << step.counts;
        else EXPECT_NE(sans, "D74C30B5") << step.counts;
    }
    EXPECT_EQ(Catalog(db, {"find", "--postscript-name", "dejavusans", "-q"}).out, "");
    EXPECT_EQ(Catalog(db, {"stats", "-f", "json"}).json()["files"], 4);
}

// Killed at several moments, then completed; and two scans at once: each
// time the catalog passes its integrity check and ends as a clean scan.
TEST(Catalog, SurvivesKilledAndConcurrentScans)
{
    TempFolder dir;
    const std::string tree = dir / "tree";
    LinkTree(tree, 1500);
    ASSERT_EQ(Catalog(dir / "clean.sqlite", {"scan", tree}).status, 0);
    const std::string clean = Listing(dir / "clean.sqlite");
    ASSERT_EQ(Lines(clean).size(), 1500u);

    const std::string killed = dir / "killed.sqlite";
    for (int delay : {30, 120, 300, 600, 1000}) {
        const pid_t scan = StartScan(killed, tree);
        std::this_thread::sleep_for(std::chrono::milliseconds(delay));
        ::kill(scan, SIGKILL);
        Wait(scan);
        if (!fs::exists(killed)) continue;
        // Read and write, as the tool opens it: a reader may have to recover
        // the killed writer's log first.
        SQLite::Database db(killed, SQLite::OPEN_READWRITE);
        EXPECT_EQ(db.execAndGet("PRAGMA integrity_check").getString(), "ok") << delay;
    }
    EXPECT_EQ(Catalog(killed, {"scan", tree}).status, 0);
    EXPECT_EQ(Listing(killed), clean);

    const std::string shared = dir / "shared.sqlite";
    const pid_t first = StartScan(shared, tree, dir / "first.err"), second = StartScan(shared, tree, dir / "second.err");
    EXPECT_EQ(Wait(first), 0) << Slurp(dir / "first.err");
    EXPECT_EQ(Wait(second), 0) << Slurp(dir / "second.err");
    EXPECT_EQ(Listing(shared), clean);
}

// Files that are not a catalog give one clear line and status 1 with every
// command, and stay as they were.
TEST(Catalog, RefusesOtherFiles)
{
    TempFolder dir;
    std::string noise(8192, '\0');
    for (size_t i = 0; i < noise.size(); ++i) noise[i] = char(i * 7919 % 251);
    const std::string random = dir.file("random.sqlite", noise);
    const std::string foreign = dir / "foreign.sqlite";
    SQLite::Database(foreign, SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE).exec("CREATE TABLE t(x)");
    const std::string damaged = dir / "damaged.sqlite";
    ASSERT_EQ(Catalog(damaged, {"scan", kDejaVuDir}).status, 0);
    auto bytes = testfiles::readFile(damaged);
    for (size_t i = 4096; i < bytes.size(); ++i) bytes[i] = uint8_t(i);
    testfiles::writeFile(damaged, bytes);
    fs::remove(damaged + "-wal");
    const struct {
        std::string file;
        const char* message;
    } files[] = {{random, "not a usable typeprobe catalog (file is not a database)"},
                 {foreign, "not a typeprobe catalog (a database of another application)"},
                 {damaged, ""},
                 {dir / "missing.sqlite", "No such file or directory"}};
    for (const auto& file : files) {
        const auto before = testfiles::readFile(file.file);
        for (Strings command : {Strings{"scan", kDejaVuDir}, Strings{"find", "--family", "x"}, Strings{"list"},
                                Strings{"stats"}}) {
            if (command[0] == "scan" && file.file == dir / "missing.sqlite") continue;
            const Outcome run = Catalog(file.file, command);
            EXPECT_EQ(run.status, 1) << file.file << " " << command[0];
            EXPECT_NE(run.err.find(file.message), std::string::npos) << run.err;
        }
        const Outcome duplicates = Typeprobe({"duplicates", "--catalog=" + file.file});
        EXPECT_EQ(duplicates.status, 1) << duplicates.err;
        if (file.file != damaged) {
            EXPECT_EQ(testfiles::readFile(file.file), before) << file.file;
        }
    }
}

// A catalog of the first schema is brought up to date by its first use: its
// faces are found by the newer search, exactly and in any letter case.
TEST(Catalog, UpgradesAnOlderSchema)
{
    TempFolder dir;
    const std::string db = dir / "catalog.sqlite";
    {
        SQLite::Database old(db, SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE);
        old.exec(tpcatalog::MigrationSteps()[0]);
        old.exec("PRAGMA application_id = " + std::to_string(tpcatalog::kApplicationId) +
                 "; PRAGMA user_version = 1; PRAGMA journal_mode = WAL");
        old.exec("INSERT INTO files VALUES(7, CAST('/fonts/Sans.ttf' AS BLOB), 1, 2, 3, 4, x'', 5, 0, NULL)");
        old.exec("INSERT INTO faces(file_id, face_index, mask, postscript_name, family) VALUES(7, 0, " +
                 std::to_string(kTP_AttrPostScriptName | kTP_AttrFamilyName) + ", 'DejaVuSans', 'DejaVu Sans')");
    }
    for (const char* name : {"DejaVuSans", "dejavusans"}) {
        const auto found = Catalog(db, {"find", "--postscript-name", name, "-i", "-f", "json"}).json();
        EXPECT_EQ(found["files"][0]["path"], "/fonts/Sans.ttf") << name;
        EXPECT_EQ(found["files"][0]["faces"][0]["family"], "DejaVu Sans") << name;
    }
    EXPECT_EQ(Catalog(db, {"find", "--postscript-name", "dejavusans", "-q"}).out, "");
    SQLite::Database upgraded(db);
    EXPECT_EQ(upgraded.execAndGet("PRAGMA user_version").getInt(), tpcatalog::Catalog::CurrentSchemaVersion());
    EXPECT_EQ(upgraded.execAndGet("PRAGMA integrity_check").getString(), "ok");
}

// Names in any bytes are stored as they are and found again by a rescan.
TEST(Catalog, KeepsPathBytesExactly)
{
    TempFolder dir;
    const std::string folder = dir.folder("caf\xE9"), name = folder + "/\xFF\xFE font.ttf";
    fs::copy_file(kSans, name);
    const std::string db = dir / "catalog.sqlite";
    ASSERT_EQ(Catalog(db, {"scan", folder}).status, 0);
    EXPECT_EQ(SQLite::Database(db).execAndGet("SELECT path FROM files").getString(), name);
    EXPECT_EQ(Catalog(db, {"scan", folder}).out, "0 new, 0 changed, 0 removed, 1 unchanged, 0 errors\n");
}

// duplicates --catalog gives what duplicates gives over the same folders,
// paths spelt as on the command line.
TEST(Catalog, DuplicatesFromTheCatalogMatchTheFiles)
{
    TempFolder dir;
    const std::string db = dir / "catalog.sqlite", data = TYPEPROBE_TEST_DATA_DIR;
    ASSERT_EQ(Catalog(db, {"scan", kDejaVuDir, data + "/mac"}).status, 0);
    for (const Strings& paths : {Strings{kDejaVuDir, "mac"}, Strings{"mac/", kDejaVuDir + "/DejaVuSans.ttf"}}) {
        for (const char* format : {"table", "json"}) {
            Strings args{"duplicates", "-f", format};
            args.insert(args.end(), paths.begin(), paths.end());
            const Outcome files = Typeprobe(args, data);
            args.push_back("--catalog=" + db);
            const Outcome catalog = Typeprobe(args, data);
            EXPECT_EQ(catalog.status, files.status);
            EXPECT_EQ(catalog.out, files.out) << format << " " << paths[0];
            EXPECT_EQ(catalog.err, files.err);
        }
    }
}

// Questions the catalog answers alone start without loading the
// identification library; identifying loads it.
TEST(Catalog, AnswersWithoutTheIdentificationLibrary)
{
    TempFolder dir;
    const std::string db = dir / "catalog.sqlite";
    ASSERT_EQ(Catalog(db, {"scan", kDejaVuDir}).status, 0);
    const struct {
        Strings args;
        bool loads;
    } runs[] = {
        {{"catalog", "find", "--catalog", db, "--postscript-name", "DejaVuSans"}, false},
        {{"catalog", "list", "--catalog", db}, false},
        {{"catalog", "stats", "--catalog", db}, false},
        {{"duplicates", "--catalog=" + db, kDejaVuDir}, false},
        {{"identify", kSans}, true},
    };
    for (const auto& run : runs) {
        Strings args{"LD_DEBUG=files", TYPEPROBE_CLI};
        args.insert(args.end(), run.args.begin(), run.args.end());
        const Outcome outcome = RunProgram("/usr/bin/env", args);
        EXPECT_EQ(outcome.status, 0) << run.args[1];
        EXPECT_EQ(outcome.err.find("file=libtypeprobe") != std::string::npos, run.loads) << run.args[1];
    }
}
