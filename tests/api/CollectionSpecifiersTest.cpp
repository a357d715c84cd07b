#include <gtest/gtest.h>

#include <zlib.h>

#include <filesystem>

#include "api/CollectionSpecifiers.h"
#include "common/Oracle.h"
#include "common/SfntBuilder.h"
#include "common/FileIO.h"
#include "common/TempFolder.h"
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
