#include <gtest/gtest.h>

#include <functional>

#include "common/MacFixtures.h"
#include "resourcefork/ResourceMap.h"
#include "resourcefork/ResourceMapWriter.h"

namespace {

using namespace macfixtures;

// The resource fork of a corpus file: MacBinary files hold it after the data
// fork, .dfont files are one.
Bytes CorpusFork(const std::string& relative)
{
    Bytes file = ReadFile(CorpusPath(relative));
    if (relative.find(".dfont") != std::string::npos) return file;
    return PartsOfMacBinary(file).resource;
}

const std::vector<std::string> kCorpus = {
    "dfont/DejaVuSans.dfont",       "otf-dfont/DejaVuSans.otf.dfont",
    "tt-family/DejaVuSans.suit",    "ps-family/DejaVuSerif.bin",
    "ps-family/DejaVuSer.bin",      "ps-family/DejaVuSerBol.bin",
    "ps-family/DejaVuSerIta.bin",   "ps-family/DejaVuSerBolIta.bin",
};

Bytes SmallMap()
{
    return ResourceFile({{"FOND", 128, "Family", Text("fond data"), 0x20},
                         {"NFNT", 300, std::nullopt, Text("strike 300")},
                         {"NFNT", 129, "Named", Text("strike 129")},
                         {"sfnt", -5, std::nullopt, Text("")}});
}

TEST(ResourceMap, CorpusMapsReadAsFontToolsReadsThem)
{
    if (!FontToolsAvailable()) GTEST_SKIP() << "python3 with fontTools is not installed";
    for (const auto& relative : kCorpus) {
        SCOPED_TRACE(relative);
        auto map = ResourceMap::Parse(CorpusFork(relative));
        ASSERT_TRUE(map);
        const bool raw = relative.find(".dfont") != std::string::npos;
        std::string expected = FontToolsListing({raw ? "raw" : "macbinary", CorpusPath(relative)});
        if (!raw) {
            ASSERT_EQ(expected.substr(0, 7), "crc ok\n");
            expected = expected.substr(7);
        }
        EXPECT_EQ(Listing(*map), expected);
    }
}

TEST(ResourceMap, CorpusSuitcaseHasItsFamilyStrikesAndOutlines)
{
    auto map = ResourceMap::Parse(CorpusFork("tt-family/DejaVuSans.suit"));
    ASSERT_TRUE(map);
    EXPECT_EQ(map->types(), (std::vector<uint32_t>{fourCC("sfnt"), fourCC("NFNT"), fourCC("FOND")}));
    EXPECT_EQ(map->count(fourCC("sfnt")), 4u);
    EXPECT_EQ(map->count(fourCC("NFNT")), 4u);
    EXPECT_EQ(map->count(fourCC("POST")), 0u);
    const ResourceRecord* fond = map->find(fourCC("FOND"), 13490);
    ASSERT_TRUE(fond);
    EXPECT_TRUE(fond->hasName);
    EXPECT_EQ(fond->name, "DejaVu Sans");
    EXPECT_EQ(fond->data.size(), 2331u);
    const ResourceRecord* outline = map->indexed(fourCC("sfnt"), 3);
    ASSERT_TRUE(outline);
    EXPECT_EQ(outline->id, 13493);
    EXPECT_EQ(outline->data.size(), 43612u);
    EXPECT_FALSE(map->indexed(fourCC("sfnt"), 4));
}

TEST(ResourceMap, KeepsMapOrderNamesAndAttributes)
{
    auto map = ResourceMap::Parse(SmallMap());
    ASSERT_TRUE(map);
    ASSERT_EQ(map->records().size(), 4u);
    EXPECT_EQ(map->indexed(fourCC("NFNT"), 0)->id, 300);
    EXPECT_EQ(map->indexed(fourCC("NFNT"), 1)->id, 129);
    EXPECT_EQ(map->find(fourCC("NFNT"), 129)->name, "Named");
    EXPECT_FALSE(map->find(fourCC("NFNT"), 300)->hasName);
    EXPECT_EQ(map->find(fourCC("FOND"), 128)->attributes, 0x20);
    EXPECT_EQ(map->find(fourCC("sfnt"), -5)->data.size(), 0u);
    EXPECT_EQ(map->find(fourCC("NFNT"), 300)->data.chars(), "strike 300");
}

TEST(ResourceMap, EmptyTypeListIsAValidFile)
{
    auto bytes = ResourceMapWriter::Write(std::vector<ResourceRecord>{});
    ASSERT_TRUE(bytes);
    auto map = ResourceMap::Parse(*bytes);
    ASSERT_TRUE(map);
    EXPECT_TRUE(map->records().empty());
    EXPECT_TRUE(map->types().empty());
}

TEST(ResourceMap, EveryTruncationIsRefused)
{
    const Bytes full = SmallMap();
    for (size_t length = 0; length < full.size(); ++length)
        EXPECT_FALSE(ResourceMap::Parse(Slice(full, 0, length))) << "length " << length;
    EXPECT_TRUE(ResourceMap::Parse(full));
}

void PutU16(Bytes& b, size_t at, uint16_t v)
{
    b[at] = uint8_t(v >> 8);
    b[at + 1] = uint8_t(v);
}

void PutU32(Bytes& b, size_t at, uint32_t v)
{
    PutU16(b, at, uint16_t(v >> 16));
    PutU16(b, at + 2, uint16_t(v));
}

TEST(ResourceMap, HostileOffsetsAndLengthsAreRefused)
{
    // Offsets in SmallMap(): the map follows the data; its type list is at
    // map + 28, the three types' entries from map + 30, references from
    // map + 54 (FOND, NFNT 300, NFNT 129, sfnt).
    struct Case {
        const char* what;
        std::function<void(Bytes&, size_t map)> damage;
    };
    const Case cases[] = {
        {"data offset past the end", [](Bytes& b, size_t) { PutU32(b, 0, 0xFFFFFFF0); }},
        {"data length wraps", [](Bytes& b, size_t) { PutU32(b, 8, 0xFFFFFFFF); }},
        {"map offset past the end", [](Bytes& b, size_t) { PutU32(b, 4, 0x7FFFFFFF); }},
        {"map length past the end", [](Bytes& b, size_t) { PutU32(b, 12, 0x10000); }},
        {"map shorter than its fixed part", [](Bytes& b, size_t) { PutU32(b, 12, 20); }},
        {"type list inside the fixed part", [](Bytes& b, size_t m) { PutU16(b, m + 24, 4); }},
        {"type list past the map", [](Bytes& b, size_t m) { PutU16(b, m + 24, 0xFFF0); }},
        {"name list past the map", [](Bytes& b, size_t m) { PutU16(b, m + 26, 0xFFF0); }},
        {"type count past the map", [](Bytes& b, size_t m) { PutU16(b, m + 28, 0x7FFF); }},
        {"negative type count", [](Bytes& b, size_t m) { PutU16(b, m + 28, 0xFFFE); }},
        {"reference count past the map", [](Bytes& b, size_t m) { PutU16(b, m + 34, 0xFFFF); }},
        {"reference list past the map", [](Bytes& b, size_t m) { PutU16(b, m + 36, 0xFFF0); }},
        {"name offset past the names", [](Bytes& b, size_t m) { PutU16(b, m + 54 + 2, 0x1000); }},
        {"name running off the map",
         [](Bytes& b, size_t) { b[b.size() - 6] = 0xFF; }},  // "Named" is the last name
        {"data offset past the data",
         [](Bytes& b, size_t m) { b[m + 54 + 5] = 0xFF; }},
        {"data length past the data", [](Bytes& b, size_t) { PutU32(b, 256, 0x7FFFFFFF); }},
    };
    const Bytes base = SmallMap();
    uint32_t mapOffset = 0;
    ByteView(base).u32(4, mapOffset);
    ASSERT_TRUE(ResourceMap::Parse(base));
    for (const Case& c : cases) {
        Bytes damaged = base;
        c.damage(damaged, mapOffset);
        EXPECT_FALSE(ResourceMap::Parse(damaged)) << c.what;
    }
}

TEST(ResourceMap, SharedReferenceListsCannotMultiplyTheWork)
{
    // 2000 types that all point at one list of 100 valid references: the
    // map's bytes could list 1400 references apart, not 200000.
    constexpr int kTypes = 2000, kReferences = 100;
    ByteWriter map;
    map.zeros(22).u16(0).u16(28).u16(uint16_t(30 + 8 * kTypes + 12 * kReferences));
    map.u16(kTypes - 1);
    for (int t = 0; t < kTypes; ++t)
        map.u32(0x41414141 + uint32_t(t)).u16(kReferences - 1).u16(2 + 8 * kTypes);
    for (int r = 0; r < kReferences; ++r) map.u16(uint16_t(r)).u16(0xFFFF).u8(0).u24(0).u32(0);
    ByteWriter file;
    file.u32(16).u32(20).u32(4).u32(uint32_t(map.size())).u32(0).bytes(map.view());
    EXPECT_FALSE(ResourceMap::Parse(file.take()));

    ByteWriter fair;  // the same list under one type is fine
    fair.zeros(22).u16(0).u16(28).u16(uint16_t(30 + 8 + 12 * kReferences));
    fair.u16(0).u32(0x41414141).u16(kReferences - 1).u16(10);
    for (int r = 0; r < kReferences; ++r) fair.u16(uint16_t(r)).u16(0xFFFF).u8(0).u24(0).u32(0);
    ByteWriter fairFile;
    fairFile.u32(16).u32(20).u32(4).u32(uint32_t(fair.size())).u32(0).bytes(fair.view());
    auto parsed = ResourceMap::Parse(fairFile.take());
    ASSERT_TRUE(parsed);
    EXPECT_EQ(parsed->records().size(), size_t(kReferences));
}

TEST(ResourceMap, WriterRoundTripsTheCorpus)
{
    const bool oracle = FontToolsAvailable();
    TempDir dir;
    ASSERT_TRUE(dir.valid());
    for (const auto& relative : kCorpus) {
        SCOPED_TRACE(relative);
        auto map = ResourceMap::Parse(CorpusFork(relative));
        ASSERT_TRUE(map);
        auto written = ResourceMapWriter::Write(*map);
        ASSERT_TRUE(written);
        auto again = ResourceMap::Parse(*written);
        ASSERT_TRUE(again);
        EXPECT_EQ(Listing(*again), Listing(*map));
        EXPECT_EQ(ResourceMapWriter::Write(*again), written);
        if (oracle) {
            WriteFile(dir / "written.rsrc", *written);
            EXPECT_EQ(FontToolsListing({"raw", dir / "written.rsrc"}), Listing(*map));
        }
    }
}

TEST(ResourceMap, EditsReachTheWrittenFile)
{
    auto map = ResourceMap::Parse(SmallMap());
    ASSERT_TRUE(map);
    const uint32_t strike300 = map->find(fourCC("NFNT"), 300)->key;
    const uint32_t family = map->find(fourCC("FOND"), 128)->key;
    EXPECT_TRUE(map->remove(strike300));
    EXPECT_FALSE(map->remove(strike300));
    EXPECT_TRUE(map->setData(family, Text("new family")));
    EXPECT_TRUE(map->setInfo(family, 256, std::string("Renamed")));
    map->add(fourCC("NFNT"), 400, std::nullopt, Text("strike 400"));
    map->add(fourCC("POST"), 501, std::nullopt, Text("%!PS"));

    auto written = ResourceMapWriter::Write(*map);
    ASSERT_TRUE(written);
    auto again = ResourceMap::Parse(*written);
    ASSERT_TRUE(again);
    EXPECT_EQ(again->types(), (std::vector<uint32_t>{fourCC("FOND"), fourCC("NFNT"),
                                                     fourCC("sfnt"), fourCC("POST")}));
    EXPECT_FALSE(again->find(fourCC("NFNT"), 300));
    EXPECT_EQ(again->indexed(fourCC("NFNT"), 1)->id, 400);
    const ResourceRecord* fond = again->find(fourCC("FOND"), 256);
    ASSERT_TRUE(fond);
    EXPECT_EQ(fond->name, "Renamed");
    EXPECT_EQ(fond->data.chars(), "new family");
    EXPECT_EQ(fond->attributes, 0x20);
}

TEST(ResourceMapWriter, RefusesWhatTheFormatCannotHold)
{
    // More references than 16-bit map offsets can reach.
    std::vector<ResourceRecord> many(6000);
    for (size_t i = 0; i < many.size(); ++i) {
        many[i].type = fourCC("NFNT");
        many[i].id = int16_t(i);
    }
    EXPECT_FALSE(ResourceMapWriter::Write(many));
    many.resize(5000);
    EXPECT_TRUE(ResourceMapWriter::Write(many));
}

}  // namespace
