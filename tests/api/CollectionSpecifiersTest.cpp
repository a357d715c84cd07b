#include <gtest/gtest.h>

#include <zlib.h>

#include <filesystem>

#include "api/CollectionSpecifiers.h"
#include "common/Oracle.h"
#include "common/SfntBuilder.h"
#include "common/FileIO.h"
#include "common/TempFolder.h"
#include "fontfiles/NamingTable.h"
#include "fontfiles/SfntPlatform.h"
#include "fontfiles/TrueTypeCollectionFont.h"
#include "typeprobe/typeprobe.h"

namespace {

using testfonts::NameRecord;

std::vector<testfonts::Table> face(const std::u16string& psName)
{
    auto tables = testfonts::requiredTables();
    for (auto& table : tables) {
        if (table.tag == "name")
            table.bytes = testfonts::nameTable({{3, 1, 0x409, 6, testfonts::utf16be(psName)},
                                                {3, 1, 0x409, 1, testfonts::utf16be(u"Fam")}});
    }
    return tables;
}

TEST(CollectionFaces, EachFaceIsIdentifiedFromItsStandaloneBytes)
{
    TempFolder dir;
    testfiles::writeFile((dir / "two.ttc"), testfonts::collection({face(u"One"), face(u"Two")}));
    TP_FontArray array;
    AppendCollectionFaces((dir / "two.ttc").c_str(), kTP_AllAttributes, array);
    ASSERT_EQ(array.size(), 2u);
    TrueTypeCollectionFont collection((dir / "two.ttc"));
    for (unsigned long i = 0; i < 2; ++i) {
        const TP_FontSpecifier f = array.at(i);
        std::vector<char> bytes;
        ASSERT_EQ(collection.GetDataPtrForFace(i, bytes), 0);
        EXPECT_EQ(f.kindName.str(), "TrueType Collection");
        EXPECT_EQ(f.platform.str(), "crossplatform");
        EXPECT_EQ(f.familyName.str(), "Fam");
        EXPECT_EQ(f.typeprobeChecksum,
                  crc32(0, reinterpret_cast<const Bytef*>(bytes.data()), uInt(bytes.size())));
        EXPECT_EQ(f.legacyTypeprobeChecksum, 0u);
        EXPECT_EQ(f.fondResourceID, -1);
        EXPECT_EQ(f.validAttributes, kTP_AllAttributes);
    }
    EXPECT_EQ(array.at(0).postScriptName.str(), "One");
    EXPECT_EQ(array.at(1).postScriptName.str(), "Two");
}

TEST(CollectionFaces, UnwantedNamesStayEmptyAndTheKindIsAlwaysSet)
{
    TempFolder dir;
    testfiles::writeFile((dir / "one.ttc"), testfonts::collection({face(u"One")}));
    TP_FontArray array;
    AppendCollectionFaces((dir / "one.ttc").c_str(), 0, array);
    ASSERT_EQ(array.size(), 1u);
    EXPECT_EQ(array.at(0).kindName.str(), "TrueType Collection");
    EXPECT_EQ(array.at(0).postScriptName.str(), "");
    EXPECT_EQ(array.at(0).validAttributes, 0u);
}

// A naming table with one Macintosh PostScript-name record whose text lies
// at `offset` from the string storage, `count` claimed records.
std::string hostileNames(int16_t offset, uint16_t length, uint16_t count = 1)
{
    ByteWriter out;
    out.u16(0).u16(count).u16(6 + 12);
    out.u16(1).u16(0).u16(0).u16(6).u16(length).u16(uint16_t(offset));
    out.bytes("Own-Name");
    return std::string(out.data().begin(), out.data().end());
}

std::vector<testfonts::Table> hostileFace(const std::string& names,
                                          const std::string& kern = "")
{
    std::vector<testfonts::Table> tables;
    for (const char* tag : {"OS/2", "cmap", "head", "hhea", "hmtx"})
        tables.push_back({tag, std::string(8, 'x')});
    // Large tables on both sides of the naming table, as outlines would be.
    tables.push_back({"glyf", std::string(100000, 'g')});
    tables.push_back({"maxp", "Maxp-Text-Before!"});
    tables.push_back({"name", names});
    tables.push_back({"post", "Post-Text-After!"});
    if (!kern.empty()) tables.push_back({"kern", kern});
    tables.push_back({"loca", std::string(100000, 'l')});
    return tables;
}

// What every reader makes of the fully rebuilt face: the reference the
// faster reading must equal byte for byte.
TP_FontSpecifier fromRebuiltBytes(const std::vector<char>& bytes)
{
    const ByteView font(bytes.data(), bytes.size());
    TP_FontSpecifier face;
    face.kindName = "TrueType Collection";
    getMetaDataFromNamesTable(font, nullptr, nullptr, 0, &face.foundryName, &face.familyName,
                              &face.version, &face.postScriptName, &face.displayName,
                              &face.fullName);
    GetTrueTypeKerningTableChecksum(font, &face.kerningChecksum);
    GetPlatformTTF(font, &face.platform);
    face.typeprobeChecksum =
        uint32_t(crc32(0, reinterpret_cast<const Bytef*>(bytes.data()), uInt(bytes.size())));
    face.validAttributes = uint32_t(kTP_AllAttributes);
    return face;
}

TEST(CollectionFaces, FacesAgreeWithTheirFullyRebuiltBytesEvenWhenNamesPointElsewhere)
{
    const int16_t storage = 6 + 12;
    const std::vector<std::vector<testfonts::Table>> faces = {
        hostileFace(hostileNames(0, 8)),                       // its own text
        hostileFace(hostileNames(int16_t(-storage - 20), 8)),  // back into "maxp"
        hostileFace(hostileNames(int16_t(8 + 2), 8)),          // on into "post"
        hostileFace(hostileNames(-32768, 1023)),               // the furthest back
        hostileFace(hostileNames(32767, 1023)),                // the furthest on
        hostileFace(hostileNames(0, 8, 32767)),                // records run on
        hostileFace(hostileNames(0, 8), "kerning"),            // unaligned kern
        hostileFace(hostileNames(0, 8), "kernings"),           // aligned kern
    };
    TempFolder dir;
    testfiles::writeFile((dir / "hostile.ttc"), testfonts::collection(faces));
    TP_FontArray array;
    AppendCollectionFaces((dir / "hostile.ttc").c_str(), kTP_AllAttributes, array);
    TrueTypeCollectionFont collection((dir / "hostile.ttc"));
    std::vector<TP_FontSpecifier> expected;
    for (unsigned long i = 0; i < faces.size(); ++i) {
        std::vector<char> bytes;
        ASSERT_EQ(collection.GetDataPtrForFace(i, bytes), 0);
        expected.push_back(fromRebuiltBytes(bytes));
    }
    EXPECT_EQ(expected[1].postScriptName.str(), "Maxp-Tex");
    EXPECT_EQ(expected[2].postScriptName.str(), "Post-Tex");
    // Faces that come out the same are one face after duplicate removal.
    TP_FontArray reference;
    for (const TP_FontSpecifier& face : expected) reference.Append(face);
    reference.RemoveDups();
    array.RemoveDups();
    ASSERT_EQ(array.size(), reference.size());
    for (unsigned long i = 0; i < array.size(); ++i) {
        const TP_FontSpecifier got = array.at(i), want = reference.at(i);
        EXPECT_EQ(got.postScriptName.str(), want.postScriptName.str()) << i;
        EXPECT_EQ(got.fullName.str(), want.fullName.str()) << i;
        EXPECT_EQ(got.kerningChecksum, want.kerningChecksum) << i;
        EXPECT_EQ(got.platform.str(), want.platform.str()) << i;
        EXPECT_EQ(got.typeprobeChecksum, want.typeprobeChecksum) << i;
    }
}

TEST(CollectionFaces, RealCollectionsAgreeWithFontTools)
{
    const std::string path = "/usr/share/fonts/opentype/noto/NotoSansCJK-Regular.ttc";
    if (!std::filesystem::exists(path)) GTEST_SKIP() << path << " is not installed";
    auto expected = oracle::python(
        "import sys\nfrom fontTools.ttLib import TTCollection\n"
        "for f in TTCollection(sys.argv[1], lazy=True): print(f[\"name\"].getDebugName(6))",
        path);
    ASSERT_FALSE(expected.empty()) << "fontTools did not run";
    TP_FontArray array;
    AppendCollectionFaces(path.c_str(), kTP_AllAttributes, array);
    ASSERT_EQ(array.size(), expected.size());
    for (unsigned long i = 0; i < array.size(); ++i) {
        EXPECT_EQ(array.at(i).postScriptName.str(), expected[i]);
        EXPECT_EQ(array.at(i).platform.str(), "crossplatform");
    }
}

}  // namespace
