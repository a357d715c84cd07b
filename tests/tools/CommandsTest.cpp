// duplicates, match, classify and styles: how each reports, in both formats.
#include <gtest/gtest.h>

#include <filesystem>

#include "ToolRun.h"
#include "common/TempFolder.h"

namespace {

using namespace tooltest;
namespace fs = std::filesystem;

Strings Paths(const nlohmann::json& faces)
{
    Strings paths;
    for (const auto& face : faces) paths.push_back(face["path"]);
    return paths;
}

TEST(Duplicates, SameReleaseAndConflictingReleases)
{
    // Two copies of one release, a later "release" of the same PostScript
    // name (one byte more changes the checksum, not the names), a lone font.
    TempFolder dir;
    dir.folder("a");
    dir.folder("b");
    fs::copy_file(kSans, dir / "a/DejaVuSans.ttf");
    fs::copy_file(kSans, dir / "b/Copy of DejaVuSans.ttf");
    dir.file("b/DejaVuSans-new.ttf", Slurp(kSans) + '\0');
    fs::copy_file(kSansBold, dir / "b/DejaVuSans-Bold.ttf");
    const Strings copies{dir / "a/DejaVuSans.ttf", dir / "b/Copy of DejaVuSans.ttf"};

    Outcome run = Typeprobe({"duplicates", "-f", "json", dir.path()});
    ASSERT_EQ(run.status, 0) << run.err;
    const auto json = run.json();
    ASSERT_EQ(json["sameRelease"].size(), 1u);
    EXPECT_EQ(Paths(json["sameRelease"][0]["faces"]), copies);
    ASSERT_EQ(json["conflicts"].size(), 1u);
    const auto& releases = json["conflicts"][0]["releases"];
    ASSERT_EQ(releases.size(), 2u);
    EXPECT_EQ(Paths(releases[0]["faces"]), copies);
    EXPECT_EQ(Paths(releases[1]["faces"]), Strings{dir / "b/DejaVuSans-new.ttf"});
    EXPECT_EQ(json["summary"]["faces"], 4);

    run = Typeprobe({"duplicates", dir.path()});
    const Strings lines = Lines(run.out);
    ASSERT_EQ(lines.size(), 10u) << run.out;
    EXPECT_EQ(lines[0], "Same release (1 group)");
    EXPECT_EQ(lines[1].rfind("CHECKSUM  POSTSCRIPT NAME  VERSION  FILE", 0), 0u);
    EXPECT_EQ(lines[4], "");
    EXPECT_EQ(lines[5], "Conflicting releases (1 PostScript name)");
    // A group's name is on its first row; the second release's checksum
    // starts its own rows.
    EXPECT_EQ(lines[7].rfind("DejaVuSans ", 0), 0u);
    EXPECT_EQ(lines[8].find_first_not_of(' '), lines[6].find("VERSION"));
    EXPECT_EQ(lines[9].find_first_not_of(' '), lines[6].find("CHECKSUM"));

    run = Typeprobe({"duplicates", kSans, kSansBold});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, "No duplicate faces.\n");
}

TEST(Match, ComparesTheChosenFacesAndConcludesOnTheChecksum)
{
    const std::string suitcase = MacCorpus("tt-family/DejaVuSans.suit");
    Outcome run = Typeprobe({"match", "--face-a", "1", "--face-b", "1", suitcase, suitcase});
    ASSERT_EQ(run.status, 0) << run.err;
    Strings lines = Lines(run.out);
    ASSERT_GT(lines.size(), 3u);
    EXPECT_EQ(lines[0].rfind("ATTRIBUTE", 0), 0u);
    EXPECT_EQ(lines[1].rfind("postscript-name", 0), 0u);
    // Columns line up under their headings.
    EXPECT_EQ(lines[1].find("DejaVuSans-Bold"), lines[0].find(" A ") + 1);
    EXPECT_EQ(lines[1].rfind("DejaVuSans-Bold"), lines[0].find(" B ") + 1);
    EXPECT_EQ(lines.back(), "Same identity checksum: the same release of the same face.");

    run = Typeprobe({"match", "-f", "json", suitcase, MacCorpus("dfont/DejaVuSans.dfont")});
    ASSERT_EQ(run.status, 0) << run.err;
    const auto json = run.json();
    EXPECT_EQ(json["a"]["path"], suitcase);
    EXPECT_EQ(json["a"]["face"]["index"], 0);
    EXPECT_EQ(json["b"]["face"]["postScriptName"], "DejaVuSans");
    EXPECT_TRUE(json["matching"].is_array() && json["differing"].is_array());
    EXPECT_EQ(json["sameChecksum"], false);
    EXPECT_EQ(Lines(Typeprobe({"match", suitcase, MacCorpus("dfont/DejaVuSans.dfont")}).out).back(),
              "Different identity checksums.");
}

TEST(KnowledgeCommands, PlainAndJsonSayTheSame)
{
    const Outcome classify = Typeprobe({"classify", "No Such Family", "Times"});
    ASSERT_EQ(classify.status, 0);
    ASSERT_EQ(Lines(classify.out).size(), 1u) << classify.out;
    EXPECT_EQ(Typeprobe({"classify", "-f", "json", "No Such Family", "Times"}).json(),
              nlohmann::json({{"family", "No Such Family"},
                              {"alternate", "Times"},
                              {"classification", Lines(classify.out)[0]}}));

    const Outcome styles = Typeprobe({"styles", "Helvetica-CondensedBlackItalic"});
    ASSERT_EQ(styles.status, 0);
    EXPECT_FALSE(styles.out.empty());
    EXPECT_EQ(Typeprobe({"styles", "-f", "json", "Helvetica-CondensedBlackItalic"}).json(),
              nlohmann::json(Lines(styles.out)));
    EXPECT_EQ(Typeprobe({"styles", "Plain"}).out, "");
}

}  // namespace
