// Files that list far more faces than any real font: a family record with a
// style per entry, references that all name one family record, a collection
// whose offsets all name one face. Each face costs a pass over the file, so
// only the first kMaxFacesPerFile are looked for, and fewer when each walks a
// huge family record.
#include <gtest/gtest.h>

#include "api/CollectionSpecifiers.h"
#include "api/FontArray.h"
#include "api/ResourceFileSpecifiers.h"
#include "common/MacFixtures.h"
#include "common/SfntBuilder.h"
#include "typeprobe/typeprobe.h"

namespace {

using namespace macfixtures;

// A bitmap family: one strike per style for `styles` styles, and the strike.
Bytes BitmapFamily(int styles)
{
    ByteWriter fond;
    fond.zeros(52).u16(uint16_t(styles - 1));
    for (int style = 0; style < styles; ++style) fond.u16(12).u16(uint16_t(style)).u16(300);
    return fond.take();
}

unsigned long FacesLookedFor(const std::string& path)
{
    TP_FontArray array;  // before duplicates are removed
    AppendResourceFileFaces(path.c_str(), kTP_AllAttributes, array);
    return array.size();
}

TEST(FaceLimit, AFamilyWithThousandsOfStyles)
{
    TempDir dir;
    WriteFile(dir / "few.dfont", ResourceFile({{"FOND", 128, "Few", BitmapFamily(3)},
                                               {"NFNT", 300, std::nullopt, Text("strike")}}));
    EXPECT_EQ(FacesLookedFor(dir / "few.dfont"), 3u);
    // Each face walks the family's 8000 entries.
    WriteFile(dir / "huge.dfont", ResourceFile({{"FOND", 128, "Huge", BitmapFamily(8000)},
                                                {"NFNT", 300, std::nullopt, Text("strike")}}));
    EXPECT_EQ(FacesLookedFor(dir / "huge.dfont"), kMaxEntryWalksPerFile / 8000);
}

TEST(FaceLimit, ThousandsOfFamilies)
{
    std::vector<TestResource> resources;
    for (int16_t id = 1; id <= 2000; ++id) resources.push_back({"FOND", id, "F", BitmapFamily(1)});
    resources.push_back({"NFNT", 300, std::nullopt, Text("strike")});
    TempDir dir;
    WriteFile(dir / "families.dfont", ResourceFile(resources));
    EXPECT_EQ(FacesLookedFor(dir / "families.dfont"), kMaxFacesPerFile);
}

TEST(FaceLimit, ACollectionNamingOneFaceThousandsOfTimes)
{
    auto tables = testfonts::requiredTables();
    for (auto& table : tables)
        if (table.tag == "name")
            table.bytes = testfonts::nameTable({{3, 1, 0x409, 6, testfonts::utf16be(u"Same")}});
    Bytes face = testfonts::sfnt(0x00010000, tables);
    ByteWriter collection;
    const uint32_t count = 3000, start = 12 + 4 * count;
    collection.tag("ttcf").u32(0x00010000).u32(count);
    for (uint32_t i = 0; i < count; ++i) collection.u32(start);
    collection.bytes(ByteView(face));
    for (uint32_t table = 0; table < tables.size(); ++table) {  // offsets from the collection's start
        uint32_t offset = 0;
        ByteView(face).u32(12 + 16 * table + 8, offset);
        collection.putU32(start + 12 + 16 * table + 8, offset + start);
    }
    TempDir dir;
    WriteFile(dir / "same.ttc", collection.take());
    TP_FontArray array;
    AppendCollectionFaces((dir / "same.ttc").c_str(), kTP_AllAttributes, array);
    EXPECT_EQ(array.size(), kMaxFacesPerFile);

    TP_FontArray* faces = nullptr;
    ASSERT_EQ(TP_CreateSpecifier((dir / "same.ttc").c_str(), 0, kTP_AllAttributes, &faces), 0u);
    unsigned long kept = 0;
    TP_GetFontCount(faces, &kept);
    EXPECT_EQ(kept, 1u);
    TP_SpecifierFree(faces);
}

}  // namespace
