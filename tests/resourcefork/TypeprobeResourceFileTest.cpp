// The resource-file accessor and its flat wrappers: which files open, map
// order against ID order, the kind tests, and neutral answers for no file.
#include "resourcefork/TypeprobeResourceFile.h"

#include <gtest/gtest.h>

#include "common/FondBuilder.h"
#include "common/MacFixtures.h"
#include "resourcefork/ResourceFileAccess.h"
#include "support/Refusal.h"

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

std::string Data(const ResourceHandlePtr& handle) { return handle ? std::string(handle->data.begin(), handle->data.end()) : "(null)"; }

std::unique_ptr<TypeprobeResourceFile> Open(const TempDir& dir, const Bytes& bytes, bool readOnly = true)
{
    WriteFile(dir / "map.dfont", bytes);
    return TypeprobeResourceFile::initWithFile(dir / "map.dfont", readOnly);
}

TEST(TypeprobeResourceFile, OpensOnlyFilesThatHoldAMapResourceForkFirst)
{
    TempDir dir;
    WriteFile(dir / "text", Text("no resource map in here, only some text of some length"));
    WriteFile(dir / "empty", {});
    Bytes badMap = UnorderedMap();
    badMap[7] = 0xFF;  // map offset past the end
    WriteFile(dir / "bad.dfont", badMap);
    // Why, when a fork claims to hold a map: a resource fork, or a data fork
    // named .dfont; a data fork of another name is only asked, and an empty
    // or missing fork claims nothing.
    WriteFile(dir / "text.dfont", Text("no resource map in here, only some text of some length"));
    for (auto [name, reason] : {std::pair<const char*, const char*>{"text", ""},
                                {"text.dfont", "resource header: data area (offset 1852776562, length 1919116576)"},
                                {"empty", ""}, {"bad.dfont", "resource header: map (offset 511, length 120)"}, {"missing", ""}, {"", ""}}) {
        RefusalLog log;
        EXPECT_FALSE(TypeprobeResourceFile::initWithFile(dir / name, true)) << name;
        EXPECT_EQ(log.text().substr(0, std::string(reason).size()), reason) << name;
    }

    // A broken resource fork falls back to the data fork's map; a valid one hides it.
    WriteFile(dir / "font", UnorderedMap());
    const Bytes fork = ResourceFile({{"sfnt", 1, std::nullopt, Text("x")}});
    for (bool broken : {true, false}) {
        WriteFile(dir / "._font", PlainAppleDouble({"font", fourCC("FFIL"), 0, {}, Slice(fork, 0, fork.size() - broken)}));
        RefusalLog log;
        auto file = TypeprobeResourceFile::initWithFile(dir / "font", true);
        ASSERT_TRUE(file);
        EXPECT_EQ(log.text().find("resource header: map") == 0, broken) << log.text();
        EXPECT_EQ(std::make_pair(file->isDataFork(), file->countResType(fourCC("NFNT"))), std::make_pair(broken, broken ? 4 : 0));
    }
}

// Of several resources with one kept ID only the first survives.
TEST(TypeprobeResourceFile, PurgeAllButKeepsTheFirstOfEachListedID)
{
    TempDir dir;
    auto file = Open(dir, UnorderedMap(), false);
    ASSERT_TRUE(file);
    const uint32_t nfnt = fourCC("NFNT");
    EXPECT_TRUE(file->purgeAllBut({300, -2, 99}, nfnt));
    EXPECT_EQ(file->countResType(nfnt), 2);
    EXPECT_EQ(Data(file->getResourceHandleForType(nfnt, 300)) + Data(file->getResourceHandleForType(nfnt, -2)), "ab");
    EXPECT_FALSE(file->purgeAllBut({300, -2}, nfnt));
}

TEST(TypeprobeResourceFile, IndexesFollowMapOrderIDListsAreSorted)
{
    TempDir dir;
    auto file = Open(dir, UnorderedMap());
    ASSERT_TRUE(file);
    const uint32_t nfnt = fourCC("NFNT"), post = fourCC("POST");
    EXPECT_EQ(std::make_tuple(file->count1ResTypes(), file->countResType(nfnt), file->countResType(post)), std::make_tuple(2, 4, 0));
    EXPECT_EQ(file->getSortedResIDsForType(nfnt), (std::vector<int16_t>{-2, 12, 300}));
    EXPECT_TRUE(file->getSortedResIDsForType(post).empty());
    for (auto [index, type] : {std::pair<int16_t, uint32_t>{1, nfnt}, {2, fourCC("FOND")}, {0, 0}, {3, 0}, {-1, 0}}) {
        uint32_t found = 1;
        EXPECT_EQ((file->getResourceTypeViaGet1IndType(&found, index), found), type) << index;
    }
    file->getResourceTypeViaGet1IndType(nullptr, 1);
    for (auto [index, data] : {std::pair<int16_t, const char*>{1, "a"}, {2, "b"}, {4, "d"}, {5, "(null)"}, {0, "(null)"}})
        EXPECT_EQ(Data(file->getResourceHandleViaGet1IndResource(nfnt, index)), data) << index;
    EXPECT_FALSE(file->getResourceHandleViaGet1IndResource(post, 1));
    EXPECT_EQ(Data(file->getResourceHandleForType(nfnt, 300)), "a");  // the first in map order
    EXPECT_FALSE(file->getResourceHandleForType(nfnt, 301));

    ResourceHandlePtr twelve = file->getResourceHandleForType(nfnt, 12);
    int16_t id = 0;
    uint32_t type = 0;
    std::string name;
    EXPECT_TRUE(TypeprobeResourceFile::GetResInfo(twelve.get(), &id, &type, &name));
    EXPECT_EQ(std::to_string(id) + fourCCString(type) + name, "12NFNTTwelve");
    EXPECT_FALSE(TypeprobeResourceFile::GetResInfo(nullptr, &id, &type, &name));
    twelve->data.assign(4, 0);  // handles are copies
    EXPECT_EQ(Data(file->getResourceHandleForType(nfnt, 12)), "c");
}

TEST(ResourceFileAccess, StylesAndIDsOfAFamily)
{
    ResourceHandle none;  // no file: one function of each family (lookups, style queries, kind tests)
    EXPECT_EQ(countResType(nullptr, kTypeFOND), 0);
    EXPECT_EQ(getStyleFromStyleIndex(nullptr, &none, 0), -1);
    EXPECT_FALSE(is_psfont(nullptr));
    TempDir dir;
    auto file = Open(dir, ResourceFile({{"FOND", 1, "F", fondbuilder::BuildFond({.entries = {{12, 1, 5}, {0, 0, 4}, {10, 1, 3}, {12, 2, 3}, {12, -1, 9}}})}}));
    ASSERT_TRUE(file);
    auto fond = getHandleOfTypeAndIndex(file.get(), kTypeFOND, 1);
    EXPECT_EQ(getCountOfUniqueStyles(file.get(), fond.get()), 4);
    EXPECT_EQ(getStyleFromStyleIndex(file.get(), fond.get(), 3), 2);
    EXPECT_EQ(getStyleFromStyleIndex(file.get(), fond.get(), 4), -1);
    EXPECT_EQ(getFirstResourceIDFromHandleAndStyle(file.get(), fond.get(), 1), 5);
    EXPECT_EQ(getFirstResourceIDFromHandleAndStyle(file.get(), fond.get(), 3), -1);
    // Compared unsigned: an entry's style -1 is never found (intended).
    EXPECT_EQ(getFirstResourceIDFromHandleAndStyle(file.get(), fond.get(), -1), -1);
    EXPECT_EQ(getSortedResIDsForStyle(file.get(), fond.get(), 1), (std::vector<int16_t>{3, 5}));
    EXPECT_EQ(getSortedResIDsForStyle(file.get(), fond.get(), -1), (std::vector<int16_t>{3, 3, 4, 5, 9}));
}

TEST(ResourceFileAccess, KindTestsReadTheFacesOutlineAndTheFilesTypes)
{
    struct Case { std::string sfnt, fondName; std::vector<TestResource> more; const char* expected; };
    const Case cases[] = {  // 0 or 1 for: true, OTTO, NFNT, POST 501, FOND, POST, typ1
        {"true", "Family", {}, "1000100"},
        {std::string("\0\1\0\0", 4), "A-CID Family", {}, "1000100"},
        {"true", "A-CID Family", {}, "0000100"},
        {"true", "Family CID-B", {}, "0000100"},
        {"OTTO", "Family", {{"NFNT", 1, std::nullopt, Text("strike")}}, "0110100"},
        {"typ1", "Family", {{"POST", 502, std::nullopt, Text("chunk")}}, "0000111"},
        {"tru", "Family", {{"POST", 501, std::nullopt, Text("chunk")}}, "0001110"},
    };
    for (const Case& c : cases) {
        std::vector<TestResource> resources = c.more;
        resources.push_back({"sfnt", 20, std::nullopt, Text(c.sfnt)});
        resources.push_back({"FOND", 1, c.fondName, fondbuilder::BuildFond({.entries = {{0, 0, 20}}})});
        TempDir dir;
        auto file = Open(dir, ResourceFile(resources));
        ASSERT_TRUE(file);
        auto fond = getHandleOfTypeAndIndex(file.get(), kTypeFOND, 1);
        std::string found;
        for (bool b : {has_ttc_true_Flag(file.get(), fond.get(), 0), has_OTTO_Flag_inResource(file.get(), fond.get(), 0),
                       is_psfont(file.get()), is_psprinterfont(file.get()), FileHasFONDsInResourceFork(file.get()),
                       FileHasPOSTsInResourceFork(file.get()), hasValidResourcePSHeader(file.get())})
            found += b ? '1' : '0';
        EXPECT_EQ(found, c.expected) << c.sfnt << " " << c.fondName;
    }
}

}  // namespace
