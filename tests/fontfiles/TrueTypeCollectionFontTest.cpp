// Collections: result codes, each face rebuilt as a standalone font, faces
// that reach outside refused, and the split files named as intended.
#include "fontfiles/TrueTypeCollectionFont.h"

#include <gtest/gtest.h>

#include "common/FileIO.h"
#include "common/SfntBuilder.h"
#include "common/TempFolder.h"
#include "fontfiles/SfntDirectory.h"
#include "support/Refusal.h"

namespace {

using testfiles::writeFile;

// A head table long enough to hold its checkSumAdjustment (bytes 8 to 11).
const std::vector<std::vector<testfonts::Table>> kTwoFaces = {{{"head", "HEADHEADadjsHEAD"}, {"name", "nameA"}},
                                                               {{"head", "HEADHEADadjsHEAD"}, {"name", "nameBB"}, {"kern", "k"}}};

TEST(TrueTypeCollectionFont, ReadResults)
{
    TempFolder dir;
    const struct { std::vector<uint8_t> bytes; int expected; const char* reason; } cases[] = {
        {{}, 3, "collection: the file is empty"},
        {{'O', 'T', 'T', 'O', 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}, 2, "collection: the file starts with \"OTTO\", not \"ttcf\""},
        {{'t', 't', 'c', 'f', 0, 1, 0, 0, 0, 0, 0, 1}, 5, "collection: the header needs 13 bytes, the file has 12"},
        {{'t', 't', 'c', 'f', 0, 3, 0, 0, 0, 0, 0, 1, 0}, 3, "collection: version 3.0 is neither 1.0 nor 2.0"},
        {{'t', 't', 'c', 'f', 0, 2, 0, 0, 0, 0, 0, 1, 0}, 0, nullptr},
    };
    for (const auto& c : cases) {
        writeFile(dir / "c.ttc", c.bytes);
        RefusalLog log;
        TrueTypeCollectionFont font(dir / "c.ttc");
        EXPECT_EQ(font.ReadIntoMemory(), c.expected) << c.bytes.size();
        EXPECT_EQ(font.faceCount(), c.expected == 0 ? 1u : 0u);
        EXPECT_EQ(log.text(), c.reason ? c.reason : "");
    }
    EXPECT_EQ(TrueTypeCollectionFont(dir / "missing.ttc").ReadIntoMemory(), 4);
}

TEST(TrueTypeCollectionFont, RefusesFacesThatReachOutside)
{
    // Face 1 starts at 88, its head entry at 100; the collection has 176
    // bytes and face 1 rebuilds to 88. Face 40's offset entry, at 172, ends
    // at the end: one byte more and it points to face 1.
    const auto bytes = testfonts::collection(kTwoFaces);
    ASSERT_EQ(bytes.size(), 176u);
    const struct { const char* what; size_t at; uint32_t value; int expected; const char* reason; unsigned long face = 1; size_t extra = 0; } cases[] = {
        {"a face past the count", 8, 2, 1, nullptr, 2}, {"no face at all", 8, 0, 1, "collection: numFonts is 0", 0},
        {"rebuilt as large as the collection", 100 + 12, 104, 1, "collection: face 1 rebuilds to 176 bytes, not fewer than the 176"},
        {"a table running past the end", 100 + 12, 100, 5, "collection: face 1's table 'head' (offset 148, padded length 100) runs past the end (176 bytes)"},
        {"a table offset past the end", 100 + 8, 0x7FFFFFF0, 5, "collection: face 1's table 'head' (offset 2147483632"},
        {"a face offset past the end", 16, 0xFFFFFFF0, 5, "collection: offset entry 1 points past the end (4294967280 of 176 bytes)"},
        {"a face header past the end", 16, 176 - 12, 5, "collection: face 1's offset table at 164 runs past the end (176 bytes)"},
        {"a face directory past the end", 88 + 4, 0x00100000, 5, "collection: face 1's table directory of 16 entries at 88 needs 268 bytes"},
        {"an offset entry ending at the end", 172, 88, 5, "collection: numFonts 64 claims offset entry 40, which ends at 176, not before the end", 40},
        {"an offset entry ending a byte before the end", 172, 88, 0, nullptr, 40, 1},
    };
    for (const auto& c : cases) {
        ByteWriter patched;
        patched.bytes(ByteView(bytes.data(), bytes.size())).zeros(c.extra).putU32(8, 64);
        patched.putU32(c.at, c.value);
        RefusalLog log;
        TrueTypeCollectionFont font(patched.data());
        std::vector<char> face(1);
        EXPECT_EQ(font.GetDataPtrForFace(c.face, face), c.expected) << c.what;
        EXPECT_EQ(face.size(), c.expected ? 0u : 88u) << c.what;
        EXPECT_TRUE(c.reason ? log.text().find(c.reason) == 0 : log.text().empty()) << c.what << ": " << log.text();
    }
}

TEST(TrueTypeCollectionFont, SplitWritesEachFaceAsAStandaloneFontNamedByNumber)
{
    TempFolder dir;
    writeFile(dir / "two.ttc", testfonts::collection(kTwoFaces));
    std::vector<std::string> written;
    // A directory with a "/" gets one more, even after a trailing one.
    EXPECT_EQ(TrueTypeCollectionFont::SeparateTTCFonts(dir / "two.ttc", dir.path() + "/", written), 0);
    ASSERT_EQ(written, (std::vector<std::string>{dir.path() + "//0.ttf", dir.path() + "//1.ttf"}));
    // Padded tables, checksums over the padding, head summed as it stands.
    for (size_t i = 0; i < 2; ++i) EXPECT_EQ(testfiles::readFile(written[i]), testfonts::sfnt(0x00010000, kTwoFaces[i]));
    std::string path = "stale";
    EXPECT_TRUE(TrueTypeCollectionFont::WriteTTF({}, 0, dir.path(), path) == 1 && path.empty());  // an empty face is refused

    // A hostile face count: the walk still ends where the offset list leaves the file.
    ByteWriter many;
    many.bytes(ByteView(testfiles::readFile(dir / "two.ttc"))).putU32(8, 0xFFFFFFFF);
    writeFile(dir / "many.ttc", many.data());
    written.clear();
    EXPECT_NE(TrueTypeCollectionFont::SeparateTTCFonts(dir / "many.ttc", dir.path(), written), 0);
    EXPECT_GE(written.size(), 2u);
}

}  // namespace
