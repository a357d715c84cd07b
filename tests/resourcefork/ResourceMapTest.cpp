// The resource map reader refuses every hostile or cut file; the writer
// gives back what it was handed, edits included.
#include "resourcefork/ResourceMap.h"

#include <gtest/gtest.h>

#include "common/MacFixtures.h"
#include "common/Oracle.h"
#include "resourcefork/ResourceMapWriter.h"
#include "support/Refusal.h"

namespace {

using namespace macfixtures;

// One line per resource, in map order (type, ID, name, length, CRC-32), and
// the same read by fontTools from a file.
std::vector<std::string> Listing(const ResourceMap& map)
{
    std::vector<std::string> out;
    for (const ResourceRecord& r : map.records()) {
        char crc[9];
        std::snprintf(crc, sizeof crc, "%08x", unsigned(crc32(0, r.data.data(), uInt(r.data.size()))));
        out.push_back(fourCCString(r.type) + " " + std::to_string(r.id) + " " + (r.hasName ? "\"" + r.name + "\"" : "-") + " " +
                      std::to_string(r.data.size()) + " " + crc);
    }
    return out;
}
const char* kFontToolsListing = R"(import sys, zlib
from fontTools.misc.macRes import ResourceReader
reader = ResourceReader(sys.argv[1])
for t in reader.keys():
    for r in reader[t]: print("%s %d %s %d %08x" % (t, r.id, "-" if r.name is None else "\"" + r.name + "\"", len(r.data), zlib.crc32(r.data))))";

Bytes SmallMap()
{
    return ResourceFile({{"FOND", 128, "Family", Text("fond data"), 0x20},
                         {"NFNT", 300, std::nullopt, Text("strike 300")},
                         {"NFNT", 129, "Named", Text("strike 129")},
                         {"sfnt", -5, std::nullopt, Text("")}});
}

TEST(ResourceMap, CutFilesAndHostileOffsetsAndLengthsAreRefusedSayingWhy)
{
    // In SmallMap() the map follows the data: its type list at map + 28,
    // the three types' entries from map + 30, the references from map + 54
    // (FOND, NFNT 300, NFNT 129, sfnt), the names from map + 102.
    const struct { const char* what; bool inMap; size_t at, width; uint32_t value; const char* reason; } cases[] = {
        {"data offset past the end", false, 0, 4, 0xFFFFFFF0, "resource header: data area (offset 4294967280, length 45)"},
        {"data length wraps", false, 8, 4, 0xFFFFFFFF, "resource header: data area (offset 256, length 4294967295)"},
        {"map offset past the end", false, 4, 4, 0x7FFFFFFF, "resource header: map (offset 2147483647"},
        {"map length past the end", false, 12, 4, 0x10000, "resource header: map (offset 301, length 65536) runs past the end of the fork (416 bytes)"},
        {"map shorter than its fixed part", false, 12, 4, 20, "resource map: 20 bytes, shorter than its 28-byte header"},
        {"data length past the data", false, 256, 4, 0x7FFFFFFF, "reference 0 of 'FOND' data length 2147483647 at offset 0 runs past the data area (45 bytes)"},
        {"type list inside the fixed part", true, 24, 2, 4, "resource map: type list offset 4 lies inside the map header"},
        {"type list past the map", true, 24, 2, 0xFFF0, "resource map: type list offset 65520 leaves no room for the type count"},
        {"name list past the map", true, 26, 2, 0xFFF0, "resource map: name list offset 65520 past the end of the map (115 bytes)"},
        {"type count past the map", true, 28, 2, 0x7FFF, "brings the references to 8197, more than the map's 115 bytes can list (9)"},
        {"negative type count", true, 28, 2, 0xFFFE, "resource map: negative type count (-1)"},
        {"reference count past the map", true, 34, 2, 0xFFFF, "resource map: type 'FOND' brings the references to 65536"},
        {"reference list past the map", true, 36, 2, 0xFFF0, "reference 0 of 'FOND' at type list offset 65520 runs past the end"},
        {"name offset past the names", true, 54 + 2, 2, 0x1000, "reference 0 of 'FOND' name at offset 4096 runs past the name list (13 bytes)"},
        {"data offset past the data", true, 54 + 5, 1, 0xFF, "reference 0 of 'FOND' data offset 16711680 past the data area (45 bytes)"},
        {"name running off the map", true, 102 + 7, 1, 0xFF, "reference 1 of 'NFNT' name at offset 7 runs past the name list"},  // "Named", the last name
    };
    const Bytes base = SmallMap();
    for (size_t length = 0; length < base.size(); ++length) {
        RefusalLog log;
        EXPECT_FALSE(ResourceMap::Parse(Slice(base, 0, length))) << "length " << length;
        EXPECT_EQ(log.reasons().size(), 1u) << "length " << length;
    }
    EXPECT_TRUE(ResourceMap::Parse(base));
    uint32_t map = 0;
    ByteView(base).u32(4, map);
    for (const auto& c : cases) {
        Bytes damaged = base;
        for (size_t i = 0; i < c.width; ++i)
            damaged[(c.inMap ? map : 0) + c.at + i] = uint8_t(c.value >> (8 * (c.width - 1 - i)));
        RefusalLog log;
        EXPECT_FALSE(ResourceMap::Parse(damaged)) << c.what;
        EXPECT_NE(log.text().find(c.reason), std::string::npos) << c.what << ": " << log.text();
    }
}

// A map of `types` types that all share one list of `references` references.
Bytes SharedReferences(int types, int references)
{
    ByteWriter map;
    map.zeros(22).u16(0).u16(28).u16(uint16_t(30 + 8 * types + 12 * references));
    map.u16(uint16_t(types - 1));
    for (int t = 0; t < types; ++t) map.u32(0x41414141 + uint32_t(t)).u16(uint16_t(references - 1)).u16(uint16_t(2 + 8 * types));
    for (int r = 0; r < references; ++r) map.u16(uint16_t(r)).u16(0xFFFF).u8(0).u24(0).u32(0);
    return ByteWriter().u32(16).u32(20).u32(4).u32(uint32_t(map.size())).u32(0).bytes(map.view()).take();
}

TEST(ResourceMap, SharedReferenceListsCannotMultiplyTheWork)
{
    // The map's bytes could list 1400 references apart, not 200000.
    EXPECT_FALSE(ResourceMap::Parse(SharedReferences(2000, 100)));
    auto fair = ResourceMap::Parse(SharedReferences(1, 100));
    ASSERT_TRUE(fair);
    EXPECT_EQ(fair->records().size(), 100u);
}

TEST(ResourceMapWriter, WritesBackEditsWithinTheFormatsLimits)
{
    auto map = ResourceMap::Parse(SmallMap());
    ASSERT_TRUE(map);
    const uint32_t strike300 = map->find(fourCC("NFNT"), 300)->key, family = map->find(fourCC("FOND"), 128)->key;
    EXPECT_TRUE(map->remove(strike300));
    EXPECT_FALSE(map->remove(strike300));
    EXPECT_TRUE(map->setData(family, Text("new family")));
    EXPECT_TRUE(map->setInfo(family, 256, std::string("Renamed")));
    map->add(fourCC("NFNT"), 400, std::nullopt, Text("strike 400"));
    map->add(fourCC("POST"), 501, std::nullopt, Text("%!PS"));
    const auto written = ResourceMapWriter::Write(*map);
    auto again = ResourceMap::Parse(*written);
    ASSERT_TRUE(again);
    EXPECT_EQ(Listing(*again), Listing(*map));
    TempDir dir;
    WriteFile(dir / "map", *written);
    EXPECT_EQ(oracle::python(kFontToolsListing, dir / "map"), Listing(*map));  // an outside reader agrees, in map order
    EXPECT_EQ(again->find(fourCC("FOND"), 256)->attributes, 0x20);

    auto empty = ResourceMapWriter::Write(std::vector<ResourceRecord>{});
    ASSERT_TRUE(empty);
    EXPECT_TRUE(ResourceMap::Parse(*empty)->records().empty());
    // More references than 16-bit map offsets can reach are refused.
    std::vector<ResourceRecord> many(6000);
    for (size_t i = 0; i < many.size(); ++i) many[i].type = fourCC("NFNT"), many[i].id = int16_t(i);
    EXPECT_FALSE(ResourceMapWriter::Write(many));
    many.resize(5000);
    EXPECT_TRUE(ResourceMapWriter::Write(many));
}

}  // namespace
