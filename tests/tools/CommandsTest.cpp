// duplicates and match: how each reports, in both formats; splitting a
// collection: the exported function (its names, its list and its results)
// and the split command.
#include <gtest/gtest.h>

#include <filesystem>

#include "ToolRun.h"
#include "common/FileIO.h"
#include "common/SfntBuilder.h"
#include "common/TempFolder.h"
#include "typeprobe/typeprobe.h"

namespace {

using namespace tooltest;
namespace fs = std::filesystem;

TEST(Duplicates, SameReleaseAndConflictingReleases)
{
    // Two copies of one release, a later "release" of the same PostScript
    // name (one byte more changes the checksum, not the names), a lone font.
    TempFolder dir;
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


std::vector<testfonts::Table> Face(const std::u16string& psName)
{
    auto tables = testfonts::requiredTables();
    tables[6].bytes = testfonts::nameTable({{3, 1, 0x409, 6, testfonts::utf16be(psName)}, {3, 1, 0x409, 1, testfonts::utf16be(u"Fam")}});
    return tables;
}

struct Collection {
    TempFolder dir;
    std::string path = dir / "two.ttc";
    Collection() { testfiles::writeFile(path, testfonts::collection({Face(u"One"), Face(u"Two")})); }
};

TEST(SplitExport, NamesListAndResults)
{
    Collection ttc;
    ttc.dir.file("plain.ttf", "not a collection at all");
    ttc.dir.folder("fresh");
    ttc.dir.file("taken/0.ttf", "keep");
    const struct {
        const char *collection, *folder;
        unsigned long capacity, code, count;
        std::string list;  // in full, whatever fits the buffer
    } cases[] = {
        {"@/two.ttc", "@/fresh/", 4096, 0, 2, "@/fresh/0.ttf\n@/fresh/1.ttf\n"},
        // Taken names move on; a short buffer still reports the size needed.
        {"@/two.ttc", "@/taken", 8, 0, 2, "@/taken/1.ttf\n@/taken/2.ttf\n"},
        {"@/plain.ttf", "@", 4096, 1, 0, ""},
        {"@/two.ttc", "@/missing-folder", 4096, 4, 0, ""},
    };
    for (const auto& c : cases) {
        std::string buffer(c.capacity, '\x7f');
        unsigned long length = c.capacity, count = 99;
        const std::string list = At(c.list, ttc.dir.path());
        EXPECT_EQ(TP_SeparateTTCFonts(At(c.collection, ttc.dir.path()).c_str(), At(c.folder, ttc.dir.path()).c_str(),
                                      buffer.data(), &length, &count),
                  c.code)
            << c.folder;
        EXPECT_EQ(count, c.count) << c.folder;
        EXPECT_EQ(length, list.size() + 1) << c.folder;
        EXPECT_EQ(buffer.substr(0, buffer.find('\0')), list.substr(0, c.capacity - 1)) << c.folder;
    }
    EXPECT_EQ(Slurp(ttc.dir / "taken/0.ttf"), "keep");  // never overwritten
    // Each null argument is refused with 1.
    unsigned long length = 10, count = 0;
    char buffer[10];
    const char* path = ttc.path.c_str();
    EXPECT_EQ(TP_SeparateTTCFonts(nullptr, "x", buffer, &length, &count), 1u);
    EXPECT_EQ(TP_SeparateTTCFonts(path, nullptr, buffer, &length, &count), 1u);
    EXPECT_EQ(TP_SeparateTTCFonts(path, "x", nullptr, &length, &count), 1u);
    EXPECT_EQ(TP_SeparateTTCFonts(path, "x", buffer, nullptr, &count), 1u);
    EXPECT_EQ(TP_SeparateTTCFonts(path, "x", buffer, &length, nullptr), 1u);
}

TEST(SplitCommand, ListsTheFilesItWroteWithTheirNames)
{
    Collection ttc;
    const std::string out = ttc.dir / "new/folder";  // made as needed
    Outcome run = Typeprobe({"split", "--format", "json", ttc.path, out});
    ASSERT_EQ(run.status, 0) << run.err;
    const auto json = run.json();
    ASSERT_EQ(json.size(), 2u);
    EXPECT_EQ(json[0]["path"], out + "/0.ttf");
    EXPECT_EQ(json[0]["postScriptName"], "One");
    EXPECT_EQ(json[1]["path"], out + "/1.ttf");
    EXPECT_EQ(json[1]["family"], "Fam");

    // A relative folder is named as given.
    run = Typeprobe({"split", "two.ttc", "out"}, ttc.dir.path());
    ASSERT_EQ(run.status, 0) << run.err;
    const Strings lines = Lines(run.out);
    ASSERT_EQ(lines.size(), 3u);
    EXPECT_EQ(lines[1].rfind("out/0.ttf  One", 0), 0u) << lines[1];
    EXPECT_EQ(lines[2].rfind("out/1.ttf  Two", 0), 0u) << lines[2];
    EXPECT_TRUE(fs::exists(ttc.dir / "out/1.ttf"));
}

}  // namespace
