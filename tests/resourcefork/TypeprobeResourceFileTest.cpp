#include "resourcefork/TypeprobeResourceFile.h"

#include <gtest/gtest.h>

#include "common/MacFixtures.h"

namespace {

using namespace macfixtures;

// NFNT listed out of ID order, with a negative and a repeated ID.
Bytes UnorderedMap()
{
    return ResourceFile({{"NFNT", 300, std::nullopt, Text("a")},
                         {"NFNT", -2, std::nullopt, Text("b")},
                         {"FOND", 7, "Family", Text("family")},
                         {"NFNT", 12, "Twelve", Text("c")},
                         {"NFNT", 300, std::nullopt, Text("d")}});
}

std::string Data(const ResourceHandlePtr& handle)
{
    return handle ? std::string(handle->data.begin(), handle->data.end()) : "(null)";
}

TEST(TypeprobeResourceFile, OpensOnlyFilesThatHoldAMap)
{
    TempDir dir;
    WriteFile(dir / "text", Text("no resource map in here, only some text of some length"));
    WriteFile(dir / "empty", {});
    Bytes badMap = UnorderedMap();
    badMap[7] = 0xFF;  // map offset past the end
    WriteFile(dir / "bad.dfont", badMap);
    for (const char* name : {"text", "empty", "bad.dfont", "missing"})
        EXPECT_FALSE(TypeprobeResourceFile::initWithFile(dir / name, true)) << name;
    EXPECT_FALSE(TypeprobeResourceFile::initWithFile(dir.path(), true));

    auto suitcase = TypeprobeResourceFile::initWithFile(CorpusPath("ps-family/DejaVuSerif.bin"), true);
    ASSERT_TRUE(suitcase);
    EXPECT_FALSE(suitcase->isDataFork());
    EXPECT_EQ(suitcase->file().str(), CorpusPath("ps-family/DejaVuSerif.bin"));
    auto dfont = TypeprobeResourceFile::initWithFile(CorpusPath("dfont/DejaVuSans.dfont"), true);
    ASSERT_TRUE(dfont);
    EXPECT_TRUE(dfont->isDataFork());
}

TEST(TypeprobeResourceFile, MalformedResourceForkFallsBackToTheDataFork)
{
    TempDir dir;
    WriteFile(dir / "font", UnorderedMap());
    Bytes broken = ResourceFile({{"sfnt", 1, std::nullopt, Text("x")}});
    broken.resize(broken.size() - 1);
    MacParts parts;
    parts.type = fourCC("FFIL");
    parts.resource = broken;
    WriteFile(dir / "._font", PlainAppleDouble(parts));
    auto file = TypeprobeResourceFile::initWithFile(dir / "font", true);
    ASSERT_TRUE(file);
    EXPECT_TRUE(file->isDataFork());
    EXPECT_EQ(file->countResType(fourCC("NFNT")), 4);

    // A valid resource fork hides the data fork's map.
    WriteFile(dir / "._font", PlainAppleDouble([&] {
                  parts.resource = ResourceFile({{"sfnt", 1, std::nullopt, Text("x")}});
                  return parts;
              }()));
    file = TypeprobeResourceFile::initWithFile(dir / "font", true);
    ASSERT_TRUE(file);
    EXPECT_FALSE(file->isDataFork());
    EXPECT_EQ(file->countResType(fourCC("NFNT")), 0);
    EXPECT_EQ(file->countResType(fourCC("sfnt")), 1);
}

TEST(TypeprobeResourceFile, CountsTypesAndSortsIDs)
{
    TempDir dir;
    WriteFile(dir / "map.dfont", UnorderedMap());
    auto file = TypeprobeResourceFile::initWithFile(dir / "map.dfont", true);
    ASSERT_TRUE(file);
    EXPECT_EQ(file->count1ResTypes(), 2);
    EXPECT_EQ(file->countResType(fourCC("NFNT")), 4);
    EXPECT_EQ(file->countResType(fourCC("POST")), 0);
    EXPECT_EQ(file->getSortedResIDsForType(fourCC("NFNT")), (std::vector<int16_t>{-2, 12, 300}));
    EXPECT_TRUE(file->getSortedResIDsForType(fourCC("POST")).empty());
}

TEST(TypeprobeResourceFile, IndexedAccessFollowsMapOrder)
{
    TempDir dir;
    WriteFile(dir / "map.dfont", UnorderedMap());
    auto file = TypeprobeResourceFile::initWithFile(dir / "map.dfont", true);
    ASSERT_TRUE(file);
    uint32_t type = 1;
    file->getResourceTypeViaGet1IndType(&type, 1);
    EXPECT_EQ(type, fourCC("NFNT"));
    file->getResourceTypeViaGet1IndType(&type, 2);
    EXPECT_EQ(type, fourCC("FOND"));
    for (int16_t index : {0, 3, -1}) {
        type = 1;
        file->getResourceTypeViaGet1IndType(&type, index);
        EXPECT_EQ(type, 0u) << index;
    }
    file->getResourceTypeViaGet1IndType(nullptr, 1);

    const uint32_t nfnt = fourCC("NFNT");
    EXPECT_EQ(Data(file->getResourceHandleViaGet1IndResource(nfnt, 1)), "a");
    EXPECT_EQ(Data(file->getResourceHandleViaGet1IndResource(nfnt, 2)), "b");
    EXPECT_EQ(Data(file->getResourceHandleViaGet1IndResource(nfnt, 4)), "d");
    EXPECT_FALSE(file->getResourceHandleViaGet1IndResource(nfnt, 5));
    EXPECT_FALSE(file->getResourceHandleViaGet1IndResource(nfnt, 0));
    EXPECT_FALSE(file->getResourceHandleViaGet1IndResource(fourCC("POST"), 1));
    // By ID, the first in map order.
    EXPECT_EQ(Data(file->getResourceHandleForType(nfnt, 300)), "a");
    EXPECT_FALSE(file->getResourceHandleForType(nfnt, 301));
}

TEST(TypeprobeResourceFile, HandlesCarryTheirInfo)
{
    auto file = TypeprobeResourceFile::initWithFile(CorpusPath("ps-family/DejaVuSerif.bin"), true);
    ASSERT_TRUE(file);
    EXPECT_EQ(file->getSortedResIDsForType(fourCC("NFNT")),
              (std::vector<int16_t>{1096, 1097, 1098, 1099, 1100, 1101, 1102, 1103}));
    ResourceHandlePtr fond = file->getResourceHandleForType(fourCC("FOND"), 1096);
    ASSERT_TRUE(fond);
    EXPECT_EQ(fond->size(), 9004u);
    int16_t id = 0;
    uint32_t type = 0;
    std::string name;
    EXPECT_TRUE(TypeprobeResourceFile::GetResInfo(fond.get(), &id, &type, &name));
    EXPECT_EQ(id, 1096);
    EXPECT_EQ(type, fourCC("FOND"));
    EXPECT_EQ(name, "DejaVu Serif");
    EXPECT_FALSE(TypeprobeResourceFile::GetResInfo(nullptr, &id, &type, &name));
    // Handles are copies: changing one does not reach the file.
    fond->data.assign(4, 0);
    EXPECT_EQ(file->getResourceHandleForType(fourCC("FOND"), 1096)->size(), 9004u);
}

TEST(TypeprobeResourceFile, PurgeAllButKeepsOnlyTheFirstOfARepeatedID)
{
    TempDir dir;
    WriteFile(dir / "map.dfont", UnorderedMap());
    {
        auto file = TypeprobeResourceFile::initWithFile(dir / "map.dfont", false);
        ASSERT_TRUE(file);
        EXPECT_TRUE(file->purgeAllBut({300, 12}, fourCC("NFNT")));
        EXPECT_EQ(Data(file->getResourceHandleViaGet1IndResource(fourCC("NFNT"), 1)), "a");
        EXPECT_EQ(Data(file->getResourceHandleViaGet1IndResource(fourCC("NFNT"), 2)), "c");
        EXPECT_EQ(file->countResType(fourCC("NFNT")), 2);
        EXPECT_EQ(file->countResType(fourCC("FOND")), 1);
        EXPECT_FALSE(file->purgeResource(fourCC("POST"), 1));
    }
    auto reopened = TypeprobeResourceFile::initWithFile(dir / "map.dfont", true);
    ASSERT_TRUE(reopened);
    EXPECT_EQ(reopened->getSortedResIDsForType(fourCC("NFNT")), (std::vector<int16_t>{12, 300}));
    EXPECT_EQ(reopened->getResourceHandleForType(fourCC("NFNT"), 12)->name, "Twelve");
}

}  // namespace
