#include <gtest/gtest.h>

#include <filesystem>

#include "common/SfntBuilder.h"
#include "common/FileIO.h"
#include "common/TempFolder.h"
#include "fontfiles/SfntDirectory.h"
#include "fontfiles/TrueTypeCollectionFont.h"

namespace {

using testfiles::writeFile;

const std::vector<std::vector<testfonts::Table>> kTwoFaces = {
    {{"head", "HEADHEAD"}, {"name", "nameA"}},
    {{"head", "HEADHEAD"}, {"name", "nameBB"}, {"kern", "k"}},
};

TEST(TrueTypeCollectionFont, ReadResultsForBadFiles)
{
    TempFolder dir;
    struct Case {
        std::vector<uint8_t> bytes;
        int expected;
    } cases[] = {
        {{}, 3},                                                   // empty file
        {{'O', 'T', 'T', 'O', 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}, 2},   // not a collection
        {{'t', 't', 'c', 'f', 0, 1, 0, 0, 0, 0, 0, 1}, 5},         // 12 bytes
        {{'t', 't', 'c', 'f', 0, 3, 0, 0, 0, 0, 0, 1, 0}, 3},      // version 3
        {{'t', 't', 'c', 'f', 0, 2, 0, 0, 0, 0, 0, 1, 0}, 0},
    };
    for (const Case& c : cases) {
        writeFile((dir / "c.ttc"), c.bytes);
        TrueTypeCollectionFont font((dir / "c.ttc"));
        EXPECT_EQ(font.ReadIntoMemory(), c.expected) << c.bytes.size();
        EXPECT_EQ(font.faceCount(), c.expected == 0 ? 1u : 0u);
    }
    TrueTypeCollectionFont missing((dir / "missing.ttc"));
    EXPECT_EQ(missing.ReadIntoMemory(), 4);
}

TEST(TrueTypeCollectionFont, RebuildsEachFaceAsAStandaloneFont)
{
    TempFolder dir;
    writeFile((dir / "two.ttc"), testfonts::collection(kTwoFaces));
    TrueTypeCollectionFont font((dir / "two.ttc"));
    ASSERT_EQ(font.faceCount(), 2u);

    std::vector<char> face;
    ASSERT_EQ(font.GetDataPtrForFace(1, face), 0);
    // The same font built standalone is byte for byte what comes out.
    auto expected = testfonts::sfnt(0x00010000, kTwoFaces[1]);
    EXPECT_EQ(std::vector<uint8_t>(face.begin(), face.end()), expected);

    // A 5-byte table takes 8 bytes and its checksum covers the padding.
    ASSERT_EQ(font.GetDataPtrForFace(0, face), 0);
    ByteView view(face.data(), face.size());
    auto name = FindSpecifiedTable(view, "name");
    ASSERT_TRUE(name);
    EXPECT_EQ(name->length, 5u);
    EXPECT_EQ(name->checkSum, testfonts::paddedSum("nameA\0\0\0"));
    EXPECT_EQ(face.size(), 12u + 32u + 8u + 8u);

    EXPECT_EQ(font.GetDataPtrForFace(2, face), 1);
    EXPECT_TRUE(face.empty());
}

TEST(TrueTypeCollectionFont, RefusesFacesThatReachOutside)
{
    TempFolder dir;
    auto bytes = testfonts::collection(kTwoFaces);
    ByteWriter patched;
    patched.bytes(ByteView(bytes.data(), bytes.size()));
    // Face 1's first table claims a length that would make the face as big
    // as the whole collection.
    uint32_t face1 = 0;
    patched.view().u32(16, face1);
    patched.putU32(face1 + 12 + 12, uint32_t(bytes.size()));
    writeFile((dir / "long.ttc"), patched.data());
    TrueTypeCollectionFont font((dir / "long.ttc"));
    std::vector<char> face;
    EXPECT_EQ(font.GetDataPtrForFace(1, face), 1);

    // A table offset past the end.
    patched.putU32(face1 + 12 + 12, 8);
    patched.putU32(face1 + 12 + 8, 0x7FFFFFF0);
    writeFile((dir / "far.ttc"), patched.data());
    TrueTypeCollectionFont far((dir / "far.ttc"));
    EXPECT_EQ(far.GetDataPtrForFace(1, face), 5);
    EXPECT_TRUE(face.empty());

    // A face offset past the end.
    patched.putU32(16, 0xFFFFFFF0);
    writeFile((dir / "face.ttc"), patched.data());
    TrueTypeCollectionFont beyond((dir / "face.ttc"));
    EXPECT_EQ(beyond.GetDataPtrForFace(1, face), 5);
}

TEST(TrueTypeCollectionFont, AHostileFaceCountDoesNotMakeSplittingWalkIt)
{
    TempFolder dir;
    auto bytes = testfonts::collection(kTwoFaces);
    ByteWriter patched;
    patched.bytes(ByteView(bytes.data(), bytes.size()));
    patched.putU32(8, 0xFFFFFFFF);
    writeFile((dir / "many.ttc"), patched.data());
    std::vector<std::string> written;
    EXPECT_NE(TrueTypeCollectionFont::SeparateTTCFonts((dir / "many.ttc"), dir.path(), written),
              0);
    // Offsets read from inside the first face may rebuild more faces; the
    // walk still ends where the offset list leaves the file.
    EXPECT_GE(written.size(), 2u);
}

TEST(TrueTypeCollectionFont, SplitNamesFilesByNumberAndSkipsExistingOnes)
{
    TempFolder dir;
    writeFile((dir / "two.ttc"), testfonts::collection(kTwoFaces));
    writeFile((dir / "0.ttf"), std::string("taken"));
    std::vector<std::string> written;
    // A directory with a "/" gets one more, even after a trailing one.
    EXPECT_EQ(TrueTypeCollectionFont::SeparateTTCFonts((dir / "two.ttc"), dir.path() + "/",
                                                       written),
              0);
    ASSERT_EQ(written.size(), 2u);
    EXPECT_EQ(written[0], dir.path() + "//1.ttf");
    EXPECT_EQ(written[1], dir.path() + "//2.ttf");
    EXPECT_EQ(testfiles::readFile((dir / "0.ttf")).size(), 5u);

    std::string path;
    EXPECT_EQ(TrueTypeCollectionFont::WriteTTF({}, 0, dir.path(), path), 1);
    EXPECT_EQ(TrueTypeCollectionFont::WriteTTF({'x'}, 0, dir.path() + "/none/", path), 4);
    EXPECT_TRUE(path.empty());
}

}  // namespace
