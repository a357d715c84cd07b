// duplicates and match: how each reports, in both formats.
#include <gtest/gtest.h>

#include <filesystem>

#include "ToolRun.h"
#include "common/TempFolder.h"

namespace {

using namespace tooltest;

TEST(Duplicates, SameReleaseAndConflictingReleases)
{
    // Two copies of one release, a later "release" of the same PostScript
    // name (one byte more changes the checksum, not the names), a lone font.
    TempFolder dir;
    dir.folder("a");
    dir.folder("b");
    dir.file("a/DejaVuSans.ttf", Slurp(kSans));
    dir.file("b/Copy of DejaVuSans.ttf", Slurp(kSans));
    dir.file("b/DejaVuSans-new.ttf", Slurp(kSans) + '\0');
    dir.file("b/DejaVuSans-Bold.ttf", Slurp(kSansBold));

    const auto json = Typeprobe({"duplicates", "-f", "json", dir.path()}).json();
    const auto& same = json["sameRelease"].at(0)["faces"];
    EXPECT_EQ(json["sameRelease"].size(), 1u);
    EXPECT_EQ(Strings({same.at(0)["path"], same.at(1)["path"]}),
              Strings({dir / "a/DejaVuSans.ttf", dir / "b/Copy of DejaVuSans.ttf"}));
    EXPECT_EQ(json["conflicts"].at(0)["releases"].at(1)["faces"].at(0)["path"], dir / "b/DejaVuSans-new.ttf");

    const Strings lines = Lines(Typeprobe({"duplicates", dir.path()}).out);
    ASSERT_EQ(lines.size(), 10u);
    EXPECT_EQ(lines[0], "Same release (1 group)");
    EXPECT_EQ(lines[1], "CHECKSUM  POSTSCRIPT NAME  VERSION  FILE");
    EXPECT_EQ(lines[4], "");
    EXPECT_EQ(lines[5], "Conflicting releases (1 PostScript name)");
    // A name is on its group's first row; each release's checksum on its own first row.
    EXPECT_EQ(lines[7].rfind("DejaVuSans ", 0), 0u);
    EXPECT_EQ(lines[8].find_first_not_of(' '), lines[6].find("VERSION"));
    EXPECT_EQ(lines[9].find_first_not_of(' '), lines[6].find("CHECKSUM"));
    EXPECT_EQ(Typeprobe({"duplicates", kSans, kSansBold}).out, "No duplicate faces.\n");
}

TEST(Match, ComparesTheChosenFacesAndConcludesOnTheChecksum)
{
    const std::string suitcase = MacCorpus("tt-family/DejaVuSans.suit"), dfont = MacCorpus("dfont/DejaVuSans.dfont");
    const Strings lines = Lines(Typeprobe({"match", "--face-a", "1", "--face-b", "1", suitcase, suitcase}).out);
    ASSERT_GT(lines.size(), 3u);
    EXPECT_EQ(lines[0].rfind("ATTRIBUTE ", 0), 0u);
    // Columns line up under their headings.
    EXPECT_EQ(lines[1].find("DejaVuSans-Bold"), lines[0].find(" A ") + 1);
    EXPECT_EQ(lines[1].rfind("DejaVuSans-Bold"), lines[0].find(" B ") + 1);
    EXPECT_TRUE(lines[1].ends_with("  same")) << lines[1];
    EXPECT_EQ(lines.back(), "Same identity checksum: the same release of the same face.");
    EXPECT_EQ(Lines(Typeprobe({"match", suitcase, dfont}).out).back(), "Different identity checksums.");

    const auto json = Typeprobe({"match", "-f", "json", suitcase, dfont}).json();
    EXPECT_EQ(json["a"]["path"], suitcase);
    EXPECT_EQ(json["b"]["face"]["index"], 0);
    EXPECT_TRUE(json["matching"].is_array() && json["differing"].is_array());
    EXPECT_EQ(json["sameChecksum"], false);
}

}  // namespace
