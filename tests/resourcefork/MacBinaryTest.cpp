#include <gtest/gtest.h>

#include <functional>

#include "resourcefork/MacBinary.h"
#include "common/MacFixtures.h"

namespace {

using namespace macfixtures;

MacParts SmallParts()
{
    MacParts parts;
    parts.name = "Example";
    parts.type = fourCC("LWFN");
    parts.creator = fourCC("GWp1");
    parts.data = Text("some data fork bytes");
    parts.resource = ResourceFile({{"POST", 501, std::nullopt, Text("%!PS-AdobeFont-1.0")}});
    return parts;
}

std::optional<MacBinary::Header> ParseFile(const Bytes& file)
{
    return MacBinary::Parse(ByteView(file), file.size());
}

TEST(MacBinary, CrcIsXmodem)
{
    EXPECT_EQ(MacBinary::Crc16(ByteView(std::string_view("123456789"))), 0x31C3);
    EXPECT_EQ(MacBinary::Crc16(ByteView()), 0);
}

TEST(MacBinary, ReadsEveryCorpusFile)
{
    struct Expected {
        const char* file;
        const char* name;
        const char* type;
        const char* creator;
        uint64_t resourceLength;
    };
    const Expected corpus[] = {
        {"tt-family/DejaVuSans.suit", "DejaVuSans", "FFIL", "DMOV", 187429},
        {"ps-family/DejaVuSerif.bin", "DejaVuSerif", "FFIL", "DMOV", 24471},
        {"ps-family/DejaVuSer.bin", "DejaVuSer", "LWFN", "GWp1", 48236},
        {"ps-family/DejaVuSerBol.bin", "DejaVuSerBol", "LWFN", "GWp1", 47884},
        {"ps-family/DejaVuSerIta.bin", "DejaVuSerIta", "LWFN", "GWp1", 49714},
        {"ps-family/DejaVuSerBolIta.bin", "DejaVuSerBolIta", "LWFN", "GWp1", 50443},
    };
    for (const Expected& e : corpus) {
        SCOPED_TRACE(e.file);
        auto header = ParseFile(ReadFile(CorpusPath(e.file)));
        ASSERT_TRUE(header);
        EXPECT_EQ(header->version, 3);
        EXPECT_EQ(header->name, e.name);
        EXPECT_EQ(fourCCString(header->fileType), e.type);
        EXPECT_EQ(fourCCString(header->fileCreator), e.creator);
        EXPECT_EQ(header->dataOffset, 128u);
        EXPECT_EQ(header->dataLength, 0u);
        EXPECT_EQ(header->resourceOffset, 128u);
        EXPECT_EQ(header->resourceLength, e.resourceLength);
    }
}

TEST(MacBinary, ReadsAllThreeVersions)
{
    const MacParts parts = SmallParts();
    for (int version : {1, 2, 3}) {
        SCOPED_TRACE(version);
        const Bytes file = MacBinaryFile(parts, version);
        auto header = ParseFile(file);
        ASSERT_TRUE(header);
        EXPECT_EQ(header->version, version);
        EXPECT_EQ(Slice(file, header->dataOffset, header->dataLength), parts.data);
        EXPECT_EQ(Slice(file, header->resourceOffset, header->resourceLength), parts.resource);
        EXPECT_EQ(header->resourceOffset, 256u);
    }
}

TEST(MacBinary, SecondaryHeaderMovesTheDataFork)
{
    MacParts parts = SmallParts();
    Bytes file = MacBinaryFile(parts, 2);
    Bytes withSecondary = Slice(file, 0, 128);
    withSecondary[121] = 10;  // a 10-byte secondary header, padded to 128
    const uint16_t crc = XmodemCrc(withSecondary.data(), 124);
    withSecondary[124] = uint8_t(crc >> 8);
    withSecondary[125] = uint8_t(crc);
    withSecondary.resize(256, 0xEE);
    withSecondary.insert(withSecondary.end(), file.begin() + 128, file.end());
    auto header = ParseFile(withSecondary);
    ASSERT_TRUE(header);
    EXPECT_EQ(header->dataOffset, 256u);
    EXPECT_EQ(Slice(withSecondary, header->dataOffset, header->dataLength), parts.data);
}

void SetCrc(Bytes& file)
{
    const uint16_t crc = XmodemCrc(file.data(), 124);
    file[124] = uint8_t(crc >> 8);
    file[125] = uint8_t(crc);
}

TEST(MacBinary, DetectionIsStrict)
{
    struct Case {
        const char* what;
        int version;
        std::function<void(Bytes&)> change;  // the CRC is recomputed for version 2 after it
    };
    const Case cases[] = {
        {"byte 0 not zero", 2, [](Bytes& b) { b[0] = 1; }},
        {"empty name", 2, [](Bytes& b) { b[1] = 0; }},
        {"name longer than 63", 2, [](Bytes& b) { b[1] = 64; }},
        {"byte 74 not zero", 2, [](Bytes& b) { b[74] = 1; }},
        {"byte 82 not zero", 2, [](Bytes& b) { b[82] = 1; }},
        {"resource fork past the end", 2, [](Bytes& b) { b[88] = 0x7F; }},
        {"data fork past the end", 3, [](Bytes& b) { b[83] = 0x01; }},
        {"MacBinary I with a non-zero byte 99", 1, [](Bytes& b) { b[99] = 1; }},
        {"MacBinary I with a non-zero byte 127", 1, [](Bytes& b) { b[127] = 1; }},
        {"MacBinary I with trailing bytes", 1, [](Bytes& b) { b.resize(b.size() + 129, 0); }},
        {"MacBinary I fork over 8 MiB", 1,
         [](Bytes& b) {
             b[84] = 0x80;
             b.resize(b.size() + 0x800000, 0);
         }},
    };
    const MacParts parts = SmallParts();
    for (const Case& c : cases) {
        Bytes file = MacBinaryFile(parts, c.version);
        c.change(file);
        if (c.version == 2) SetCrc(file);
        EXPECT_FALSE(ParseFile(file)) << c.what;
    }

    Bytes badCrc = MacBinaryFile(parts, 2);
    badCrc[125] ^= 1;  // and bytes 122 and 123 rule out MacBinary I
    EXPECT_FALSE(ParseFile(badCrc));
    Bytes third = MacBinaryFile(parts, 3);
    third[125] ^= 1;  // the signature is enough
    EXPECT_TRUE(ParseFile(third));
}

TEST(MacBinary, EveryTruncationIntoTheForksIsRefused)
{
    const Bytes full = MacBinaryFile(SmallParts(), 3);
    auto header = ParseFile(full);
    ASSERT_TRUE(header);
    const size_t end = size_t(header->resourceOffset + header->resourceLength);
    for (size_t length = 0; length < end; ++length)
        EXPECT_FALSE(ParseFile(Slice(full, 0, length))) << "length " << length;
    EXPECT_TRUE(ParseFile(Slice(full, 0, end)));
}

TEST(MacBinary, OrdinaryFilesAreNotMacBinary)
{
    for (const char* file : {"dfont/DejaVuSans.dfont", "otf-dfont/DejaVuSans.otf.dfont",
                             "LICENSE-DejaVu.txt", "scripts/ps.pe"})
        EXPECT_FALSE(ParseFile(ReadFile(CorpusPath(file)))) << file;
    // A resource file starts with 0x00000100: byte 1 is zero, no name.
    EXPECT_FALSE(ParseFile(SmallParts().resource));
    EXPECT_FALSE(ParseFile(Bytes(512, 0)));
}

TEST(MacBinary, ReplacingAForkRewritesLengthsAndCrc)
{
    const MacParts parts = SmallParts();
    const Bytes fork = ResourceFile({{"POST", 501, std::nullopt, Bytes(300, 1)},
                                     {"POST", 502, std::nullopt, Bytes(5, 2)}});
    for (int version : {1, 2, 3}) {
        SCOPED_TRACE(version);
        Bytes file = MacBinaryFile(parts, version);
        if (version >= 2) {  // with a Finder comment after the resource fork
            file[100] = 7;
            SetCrc(file);
            const std::string comment = "comment";
            file.insert(file.end(), comment.begin(), comment.end());
            file.resize(Padded128(file.size()), 0);
        }
        auto replaced = MacBinary::ReplaceForks(ByteView(file), std::nullopt, ByteView(fork));
        ASSERT_TRUE(replaced);
        auto header = ParseFile(*replaced);
        ASSERT_TRUE(header);
        EXPECT_EQ(header->version, version);
        EXPECT_EQ(Slice(*replaced, header->dataOffset, header->dataLength), parts.data);
        EXPECT_EQ(Slice(*replaced, header->resourceOffset, header->resourceLength), fork);
        EXPECT_EQ(replaced->size() % 128, 0u);
        if (version >= 2) {
            EXPECT_EQ(XmodemCrc(replaced->data(), 124), ((*replaced)[124] << 8) | (*replaced)[125]);
            size_t commentAt = size_t(Padded128(header->resourceOffset + header->resourceLength));
            EXPECT_EQ(std::string(replaced->begin() + commentAt, replaced->begin() + commentAt + 7),
                      "comment");
        }
    }
    EXPECT_FALSE(MacBinary::ReplaceForks(ByteView(parts.resource), std::nullopt, ByteView(fork)));
}

TEST(MacBinary, RewrittenCorpusFileReadsInFontTools)
{
    if (!FontToolsAvailable()) GTEST_SKIP() << "python3 with fontTools is not installed";
    const Bytes original = ReadFile(CorpusPath("ps-family/DejaVuSerif.bin"));
    const Bytes fork = ResourceFile({{"FOND", 1096, "DejaVu Serif", Text("family")}});
    auto replaced = MacBinary::ReplaceForks(ByteView(original), std::nullopt, ByteView(fork));
    ASSERT_TRUE(replaced);
    TempDir dir;
    WriteFile(dir / "DejaVuSerif.bin", *replaced);
    EXPECT_EQ(FontToolsListing({"macbinary", dir / "DejaVuSerif.bin"}),
              "crc ok\nFOND 1096 \"DejaVu Serif\" 6 " +
                  [] {
                      char hex[9];
                      std::snprintf(hex, sizeof hex, "%08x", Crc32(Text("family")));
                      return std::string(hex);
                  }() + "\n");
}

}  // namespace
