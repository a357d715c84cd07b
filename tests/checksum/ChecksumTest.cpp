// The checksum schemes on synthetic bytes and resource files: the CRC and
// its shortcuts against zlib, the whole-file rule, the kerning sums, and
// which resources and files a face's checksum runs over, in what order.
#include <gtest/gtest.h>

#include <zlib.h>

#include <random>

#include "checksum/CChecksum.h"
#include "checksum/FondKerning.h"
#include "checksum/ResourceChecksums.h"
#include "common/FondBuilder.h"
#include "common/MacFixtures.h"
#include "resourcefork/ResourceFileAccess.h"

namespace {

using namespace macfixtures;

Bytes Concat(std::initializer_list<Bytes> parts)
{
    Bytes all;
    for (const Bytes& part : parts) all.insert(all.end(), part.begin(), part.end());
    return all;
}

unsigned long Crc(const Bytes& bytes, unsigned long from = 0)
{
    return bytes.empty() ? from : crc32(from, bytes.data(), uInt(bytes.size()));
}

// Every tail and misalignment a vectorised loop can leave, from 0 and
// continued; and a block repeated by doubling equals reading every copy.
TEST(Icrc, EqualsZlib)
{
    std::mt19937 random(7);
    Bytes bytes(1024 + 64);
    for (auto& b : bytes) b = uint8_t(random());
    for (size_t length = 0; length <= 1024; ++length) {
        const Bytes piece(bytes.begin() + long(length % 64), bytes.begin() + long(length % 64 + length));
        const unsigned long running = random();
        ASSERT_EQ(CChecksum::icrc(bytes.data() + length % 64, length, running), Crc(piece, running)) << length;
        ASSERT_EQ(CChecksum::icrc(bytes.data() + length % 64, length, 0), Crc(piece)) << length;
    }
    EXPECT_EQ(CChecksum::icrc(nullptr, 10, 0x1234), 0x1234u);
    for (size_t length : {1ul, 5ul, 1000ul}) {
        const Bytes block(bytes.begin(), bytes.begin() + long(length));
        Bytes copies;
        for (uint64_t count = 0; count <= 9; ++count, copies = Concat({copies, block}))
            EXPECT_EQ(CChecksum::icrcRepeated(0x9E3779B9, Crc(block), length, count), Crc(copies, 0x9E3779B9)) << length << " x " << count;
    }
    EXPECT_EQ(CChecksum::icrcRepeated(0x1234, 0x5678, 0, 1), 0x1234u);  // an empty block adds nothing
    const unsigned char word[8] = {0, 0, 0, 1, 2};  // the whole last word is read
    EXPECT_EQ(ChecksumLongAlignedData(10, word, 4), 11u);
    EXPECT_EQ(ChecksumLongAlignedData(10, word, 5), 11u + 0x02000000u);
}

// The total always starts from 0; it counts as a checksum when the
// resource fork was read, else when it changed the value given on entry.
TEST(CalculateFileChecksum, WholeFileRule)
{
    TempDir dir;
    const Bytes text = Text("a data fork");
    WriteFile(dir / "font", text);
    WriteFile(dir / "empty", {});
    const struct { const char* file; unsigned long entry; bool counted; unsigned long total; } cases[] = {
        {"font", 0x55, true, Crc(text)}, {"font", Crc(text), false, Crc(text)}, {"empty", 0, false, 0},
        {"missing", 9, true, 0}};  // nothing read, yet the value changed
    for (const auto& c : cases) {
        unsigned long total = c.entry, dataFork = 0;
        EXPECT_EQ(CChecksum::CalculateFileChecksum(dir / c.file, &total, &dataFork), c.counted) << c.file;
        EXPECT_EQ(std::make_pair(total, dataFork), std::make_pair(c.total, c.total)) << c.file;
    }
    EXPECT_TRUE(CChecksum::CalculateFileChecksum(dir / "font", nullptr, nullptr));
}

// A FOND with no association entries and a kerning table of (style, pairs) entries.
Bytes Kerning(const std::vector<std::pair<int16_t, Bytes>>& entries) { return fondbuilder::BuildFond({.kerning = entries}); }

// Vaultline: a byte sum of the headers and pairs of every entry of the
// style. The pairs' CRC: over the pair bytes alone.
TEST(FondKerning, SumsAndPairCRC)
{
    const Bytes a = {1, 2, 3, 4}, b = {0x10, 0x10, 0x10, 0x10}, c = {5, 0, 0, 0};
    const Bytes fond = Kerning({{1, a}, {0, b}, {1, c}});
    Bytes offPastEnd = fond;
    offPastEnd[20] = 0xFF;
    const struct { const char* what; Bytes fond; short style; unsigned long sum, crc; } cases[] = {
        {"two entries of the style", fond, 1, 2 + 10 + 2 + 5, Crc(Concat({a, c}))}, {"one entry", fond, 0, 1 + 0x40, Crc(b)},
        {"no entry", fond, 2, 0, 0}, {"count 0 is one entry", Kerning({{0, {0, 0, 0, 7}}}), 0, 1 + 7, Crc({0, 0, 0, 7})},
        {"table past the end", offPastEnd, 1, 0, 0}, {"header cut", Bytes(fond.begin(), fond.begin() + 51), 1, 0, 0},
    };
    for (const auto& k : cases)
        EXPECT_EQ(std::make_pair(GetVaultlineChecksum(ByteView(k.fond), k.style), KerningPairsCRC(ByteView(k.fond), k.style)),
                  std::make_pair(k.sum, k.crc)) << k.what;
    // An entry stepping back over the table is walked no further than its
    // bytes: past a dozen entries the claimed count changes nothing.
    ByteWriter table;
    table.bytes(ByteView(Kerning({{0, a}, {0, {}}})));
    table.putU16(54 + 2 + 8 + 2, uint16_t(-3));
    const auto withCount = [&](uint16_t countMinusOne) {
        table.putU16(54, countMinusOne);
        return std::make_pair(GetVaultlineChecksum(table.view(), 0), KerningPairsCRC(table.view(), 0));
    };
    EXPECT_NE(withCount(2), withCount(3));
    EXPECT_EQ(withCount(0x7FFF), withCount(uint16_t(table.size() / 4)));
}

// A resource file and its first family resource.
struct Face {
    explicit Face(const std::string& path) : file(AllocateResourceFile(path, true)), fond(getHandleOfTypeAndIndex(file.get(), kTypeFOND, 1)) {}
    ResourceFilePtr file;
    ResourceHandlePtr fond;
};

// Outlines win; bitmaps (NFNT then FONT per ID, IDs ascending) count only
// when no outline did and the running value was 0. One ID per association
// entry: an ID listed twice is taken twice (kept).
TEST(ChecksumNFNTsfntFONT, OutlinesWinOverBitmaps)
{
    const Bytes sfnt300 = Text("outline 300"), sfnt301 = Text("outline 301"), nfnt300 = Text("strike 300"), font300 = Text("old strike 300"), nfnt301 = Text("strike 301");
    const Bytes fond = fondbuilder::BuildFond({.entries = {{12, 0, 301}, {0, 0, 300}, {12, 1, 302}}, .strings = {}});
    const Bytes twice = fondbuilder::BuildFond({.entries = {{12, 0, 300}, {0, 0, 300}}, .strings = {}});
    const struct { const char* what; std::vector<TestResource> resources; unsigned long incoming, expected; } cases[] = {
        {"sfnt over NFNT", {{"NFNT", 300, {}, nfnt300}, {"sfnt", 301, {}, sfnt301}, {"NFNT", 301, {}, nfnt301}, {"FOND", 128, "F", fond}},
         0, Crc(sfnt301)},
        {"bitmaps", {{"NFNT", 301, {}, nfnt301}, {"FONT", 300, {}, font300}, {"NFNT", 300, {}, nfnt300}, {"FOND", 128, "F", fond}},
         0, Crc(Concat({nfnt300, font300, nfnt301}))},
        {"bitmaps after a running value", {{"NFNT", 300, {}, nfnt300}, {"FOND", 128, "F", fond}}, 0x1234, 0x1234},
        {"outline after a running value", {{"sfnt", 300, {}, sfnt300}, {"FOND", 128, "F", fond}}, 0x1234, Crc(sfnt300, 0x1234)},
        {"nothing", {{"FOND", 128, "F", fond}}, 0, 0},
        {"one ID twice", {{"sfnt", 300, {}, sfnt300}, {"NFNT", 300, {}, nfnt300}, {"FOND", 128, "F", twice}}, 0,
         Crc(Concat({sfnt300, sfnt300}))},
    };
    TempDir dir;
    for (const auto& c : cases) {
        WriteFile(dir / "face.dfont", ResourceFile(c.resources));
        Face face(dir / "face.dfont");
        ASSERT_TRUE(face.fond) << c.what;
        EXPECT_EQ(ChecksumNFNTsfntFONT(face.file.get(), face.fond.get(), 0, c.incoming), c.expected) << c.what;
    }
}

// A PostScript family: a bitmap face with kerning pairs, whose printer font
// is a resource file of POST chunks from 501 up to the first missing or
// empty one, or a data-fork file (its whole-file CRC from 0, kept).
TEST(GetVantorChecksum, PrinterFontsAndTheFileFallback)
{
    const Bytes pairs = {0, 1, 0, 2};
    const Bytes fond = fondbuilder::BuildFond({.entries = {{12, 0, 300}, {12, 1, 301}}, .strings = {"Synth"}, .kerning = {{0, pairs}}});
    const Bytes suitcase = ResourceFile({{"FOND", 128, "Synth", fond}, {"NFNT", 301, {}, Text("strike")}});
    const Bytes post501 = Text("%!PS-AdobeFont-1.0: Synth"), post502 = Text("eexec part");
    MacParts printer{"Synth", fourCC("LWFN"), fourCC("ASPF"), {},
                     ResourceFile({{"POST", 501, {}, post501}, {"POST", 502, {}, post502}, {"POST", 503, {}, {}},
                                   {"POST", 504, {}, Text("never read")}})};
    TempDir dir;
    WriteFile(dir / "Synth.dfont", suitcase);
    // The legacy value always ends equal to the checksum.
    const auto vantor = [&](int16_t style, bool crossPlatform) {
        Face face(dir / "Synth.dfont");
        unsigned long legacy = 9;
        const unsigned long checksum = GetVantorChecksum(LxString(dir / "Synth.dfont"), face.file.get(), face.fond.get(), style, crossPlatform, legacy);
        EXPECT_EQ(legacy, checksum);
        return checksum;
    };
    WriteFile(dir / "Synth", MacBinaryFile(printer, 3));
    EXPECT_EQ(vantor(0, false), Crc(Concat({post501, post502}), Crc(pairs)));
    EXPECT_EQ(vantor(0, true), Crc(suitcase));  // cross-platform: the data fork alone
    WriteFile(dir / "Synth", post501);
    EXPECT_EQ(vantor(0, false), Crc(post501));
    // No printer font: the strike when nothing ran before it, else the
    // whole file.
    std::filesystem::remove(dir / "Synth");
    EXPECT_EQ(vantor(1, false), Crc(Text("strike")));
    EXPECT_EQ(vantor(0, false), Crc(suitcase));
}

}  // namespace
