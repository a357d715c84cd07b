// Splitting a collection: the exported function (its names, its list and
// its results) and the split command.
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

std::vector<testfonts::Table> Face(const std::u16string& psName)
{
    auto tables = testfonts::requiredTables();
    for (auto& table : tables)
        if (table.tag == "name")
            table.bytes = testfonts::nameTable({{3, 1, 0x409, 6, testfonts::utf16be(psName)},
                                                {3, 1, 0x409, 1, testfonts::utf16be(u"Fam")}});
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
    ttc.dir.folder("taken");
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
    // A null argument is refused.
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
