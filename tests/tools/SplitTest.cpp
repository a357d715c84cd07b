// Splitting a collection: the exported function and the split command.
#include <gtest/gtest.h>
#include <zlib.h>

#include <filesystem>

#include "ToolRun.h"
#include "common/FileIO.h"
#include "common/SfntBuilder.h"
#include "common/TempFolder.h"
#include "fontfiles/TrueTypeCollectionFont.h"
#include "typeprobe/typeprobe.h"

namespace {

using tooltest::Typeprobe;
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

struct SplitResult {
    unsigned long code = 0, length = 0, count = 0;
    std::string list;
};

SplitResult Split(const std::string& collection, const std::string& directory,
                  unsigned long capacity = 4096)
{
    SplitResult result;
    std::string buffer(capacity, '\x7f');
    result.length = capacity;
    result.code = TP_SeparateTTCFonts(collection.c_str(), directory.c_str(), buffer.data(),
                                      &result.length, &result.count);
    result.list = buffer.substr(0, buffer.find('\0'));
    return result;
}

TEST(SplitExport, WritesEveryFaceAsItsStandaloneSfnt)
{
    Collection ttc;
    const std::string out = ttc.dir.folder("out");
    const auto result = Split(ttc.path, out + "/");
    EXPECT_EQ(result.code, 0u);
    EXPECT_EQ(result.count, 2u);
    EXPECT_EQ(result.list, out + "/0.ttf\n" + out + "/1.ttf\n");
    EXPECT_EQ(result.length, result.list.size() + 1);
    TrueTypeCollectionFont collection(ttc.path);
    for (unsigned long face = 0; face < 2; ++face) {
        std::vector<char> expected;
        ASSERT_EQ(collection.GetDataPtrForFace(face, expected), 0);
        const auto written = testfiles::readFile(out + "/" + std::to_string(face) + ".ttf");
        EXPECT_EQ(written, std::vector<uint8_t>(expected.begin(), expected.end()));
    }
}

TEST(SplitExport, TakenNamesMoveOnAndAShortBufferStillReportsTheSize)
{
    Collection ttc;
    const std::string out = ttc.dir.folder("out");
    testfiles::writeFile(out + "/0.ttf", std::string("keep"));
    const auto result = Split(ttc.path, out, 8);
    EXPECT_EQ(result.code, 0u);
    EXPECT_EQ(result.count, 2u);
    const std::string full = out + "/1.ttf\n" + out + "/2.ttf\n";
    EXPECT_EQ(result.length, full.size() + 1);
    EXPECT_EQ(result.list, full.substr(0, 7));
    EXPECT_EQ(testfiles::readFile(out + "/0.ttf").size(), 4u);  // never overwritten
}

TEST(SplitExport, NothingToSplitOrNowhereToWrite)
{
    Collection ttc;
    const std::string notCollection = ttc.dir.file("plain.ttf", "not a collection at all");
    auto result = Split(notCollection, ttc.dir.path());
    EXPECT_EQ(result.code, 1u);
    EXPECT_EQ(result.count, 0u);
    EXPECT_EQ(result.list, "");
    EXPECT_EQ(result.length, 1u);

    result = Split(ttc.path, ttc.dir / "missing-folder");
    EXPECT_EQ(result.code, 4u);
    EXPECT_EQ(result.count, 0u);

    unsigned long length = 10, count = 0;
    char buffer[10];
    EXPECT_EQ(TP_SeparateTTCFonts(nullptr, "x", buffer, &length, &count), 1u);
    EXPECT_EQ(TP_SeparateTTCFonts(ttc.path.c_str(), nullptr, buffer, &length, &count), 1u);
    EXPECT_EQ(TP_SeparateTTCFonts(ttc.path.c_str(), "x", nullptr, &length, &count), 1u);
    EXPECT_EQ(TP_SeparateTTCFonts(ttc.path.c_str(), "x", buffer, nullptr, &count), 1u);
    EXPECT_EQ(TP_SeparateTTCFonts(ttc.path.c_str(), "x", buffer, &length, nullptr), 1u);
}

TEST(SplitCommand, ListsTheFilesWithTheirFacesNamesAndMakesTheFolder)
{
    Collection ttc;
    const std::string out = ttc.dir / "new/folder";
    const auto run = Typeprobe({"split", "--format", "json", ttc.path, out});
    ASSERT_EQ(run.status, 0) << run.err;
    const auto json = run.json();
    ASSERT_EQ(json.size(), 2u);
    EXPECT_EQ(json[0]["path"], out + "/0.ttf");
    EXPECT_EQ(json[0]["postScriptName"], "One");
    EXPECT_EQ(json[1]["path"], out + "/1.ttf");
    EXPECT_EQ(json[1]["postScriptName"], "Two");
    EXPECT_EQ(json[1]["family"], "Fam");
}

TEST(SplitCommand, AFileThatIsNotACollectionLeavesNoFolderBehind)
{
    Collection ttc;
    const std::string plain = ttc.dir.file("plain.ttf", "not a collection at all");
    auto run = Typeprobe({"split", plain, ttc.dir / "out"});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.errLines(),
              std::vector<std::string>{"typeprobe: " + plain + ": not a TrueType collection"});
    EXPECT_FALSE(fs::exists(ttc.dir / "out"));

    run = Typeprobe({"split", ttc.dir / "missing.ttc", ttc.dir / "out"});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.errLines(), std::vector<std::string>{"typeprobe: " + (ttc.dir / "missing.ttc") +
                                                       ": No such file or directory"});
}

}  // namespace
