// duplicates: the same release in several places, conflicting releases.
#include <gtest/gtest.h>

#include <filesystem>

#include "ToolRun.h"
#include "common/FileIO.h"
#include "common/TempFolder.h"

namespace {

using tooltest::Typeprobe;
namespace fs = std::filesystem;

// Two copies of one release, a later "release" of the same PostScript name
// (one byte more changes the checksum, not the names), and a lone font.
struct Library {
    TempFolder dir;
    Library()
    {
        dir.folder("a");
        dir.folder("b");
        fs::copy_file(tooltest::kSans, dir / "a/DejaVuSans.ttf");
        fs::copy_file(tooltest::kSans, dir / "b/Copy of DejaVuSans.ttf");
        auto changed = testfiles::readFile(tooltest::kSans);
        changed.push_back(0);
        testfiles::writeFile(dir / "b/DejaVuSans-new.ttf", changed);
        fs::copy_file(tooltest::kSansBold, dir / "b/DejaVuSans-Bold.ttf");
    }
};

TEST(Duplicates, SameReleaseAndConflictingReleasesAreTold)
{
    REQUIRE_SYSTEM_FONTS();
    Library library;
    const auto run = Typeprobe({"duplicates", "-f", "json", library.dir.path()});
    ASSERT_EQ(run.status, 0) << run.err;
    const auto json = run.json();

    ASSERT_EQ(json["sameRelease"].size(), 1u);
    const auto& same = json["sameRelease"][0];
    ASSERT_EQ(same["faces"].size(), 2u);
    EXPECT_EQ(same["faces"][0]["path"], library.dir / "a/DejaVuSans.ttf");
    EXPECT_EQ(same["faces"][1]["path"], library.dir / "b/Copy of DejaVuSans.ttf");
    EXPECT_EQ(same["checksum"], same["faces"][0]["checksum"]);

    ASSERT_EQ(json["conflicts"].size(), 1u);
    const auto& conflict = json["conflicts"][0];
    EXPECT_EQ(conflict["postScriptName"], "DejaVuSans");
    ASSERT_EQ(conflict["releases"].size(), 2u);
    EXPECT_EQ(conflict["releases"][0]["checksum"], same["checksum"]);
    EXPECT_EQ(conflict["releases"][0]["faces"].size(), 2u);
    EXPECT_EQ(conflict["releases"][1]["faces"][0]["path"], library.dir / "b/DejaVuSans-new.ttf");
    EXPECT_NE(conflict["releases"][1]["checksum"], same["checksum"]);
    EXPECT_EQ(json["summary"]["faces"], 4);
}

TEST(Duplicates, TheTableGroupsRowsAndSaysSoWhenThereIsNothing)
{
    REQUIRE_SYSTEM_FONTS();
    Library library;
    auto run = Typeprobe({"duplicates", library.dir.path()});
    ASSERT_EQ(run.status, 0) << run.err;
    const auto lines = run.outLines();
    ASSERT_EQ(lines.size(), 10u) << run.out;
    EXPECT_EQ(lines[0], "Same release (1 group)");
    EXPECT_EQ(lines[1].rfind("CHECKSUM  POSTSCRIPT NAME  VERSION  FILE", 0), 0u);
    EXPECT_EQ(lines[4], "");
    EXPECT_EQ(lines[5], "Conflicting releases (1 PostScript name)");
    EXPECT_EQ(lines[7].rfind("DejaVuSans", 0), 0u);
    EXPECT_EQ(lines[8].find_first_not_of(' '), lines[6].find("VERSION"));
    EXPECT_EQ(lines[9].find_first_not_of(' '), lines[6].find("CHECKSUM"));

    run = Typeprobe({"duplicates", tooltest::kSans, tooltest::kSansBold});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, "No duplicate faces.\n");
    EXPECT_EQ(run.err, "2 files, 2 faces, 0 files without a face, 0 errors\n");
}

}  // namespace
