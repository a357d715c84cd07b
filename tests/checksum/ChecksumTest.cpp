#include <gtest/gtest.h>

#include <zlib.h>

#include <random>

#include "checksum/CChecksum.h"
#include "checksum/FondKerning.h"
#include "common/FileIO.h"
#include "common/TempFolder.h"
#include "support/ByteWriter.h"
#include "support/ReadScope.h"

namespace {


// The fast CRC must be zlib's, bit for bit: every length up to a few KB (so
// every tail a vectorized loop can leave), every start alignment, running
// values, and whole fonts.
TEST(Icrc, EqualsZlibForEveryLengthAlignmentAndRunningValue)
{
    std::mt19937 random(7);
    std::vector<unsigned char> bytes(4096 + 64);
    for (auto& b : bytes) b = static_cast<unsigned char>(random());
    for (size_t length = 0; length <= 4096; ++length) {
        const size_t start = length % 64;  // every misalignment
        const unsigned long running = random();
        ASSERT_EQ(CChecksum::icrc(bytes.data() + start, length, 0),
                  crc32(0, bytes.data() + start, uInt(length)))
            << "length " << length;
        ASSERT_EQ(CChecksum::icrc(bytes.data() + start, length, running),
                  crc32(running, bytes.data() + start, uInt(length)))
            << "length " << length;
    }
    const unsigned long first = CChecksum::icrc(bytes.data(), 100, 0);
    EXPECT_EQ(CChecksum::icrc(bytes.data() + 100, 200, first), CChecksum::icrc(bytes.data(), 300, 0));
    EXPECT_EQ(CChecksum::icrc(bytes.data(), 0, 0x1234), 0x1234u);
    EXPECT_EQ(CChecksum::icrc(nullptr, 10, 0x1234), 0x1234u);
}

TEST(Icrc, EqualsZlibOnRealFonts)
{
    size_t compared = 0;
    for (const char* path : {"/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf",
                             "/usr/share/fonts/opentype/noto/NotoSansCJK-Regular.ttc",
                             "/usr/share/fonts/truetype/wqy/wqy-zenhei.ttc"}) {
        const auto font = testfiles::readFile(path);
        if (font.empty()) continue;
        EXPECT_EQ(CChecksum::icrc(font.data(), font.size(), 0),
                  crc32(0, font.data(), uInt(font.size())))
            << path;
        ++compared;
    }
    if (compared == 0) GTEST_SKIP() << "no Debian fonts installed";
}

TEST(Icrc, CombinedPiecesEqualTheWhole)
{
    std::mt19937 random(11);
    std::vector<unsigned char> bytes(3000);
    for (auto& b : bytes) b = static_cast<unsigned char>(random());
    for (size_t cut : {0ul, 1ul, 4ul, 1499ul, 2999ul, 3000ul}) {
        const unsigned long a = CChecksum::icrc(bytes.data(), cut, 0);
        const unsigned long b = CChecksum::icrc(bytes.data() + cut, bytes.size() - cut, 0);
        EXPECT_EQ(CChecksum::combine(a, b, bytes.size() - cut),
                  CChecksum::icrc(bytes.data(), bytes.size(), 0))
            << "cut " << cut;
    }
}

TEST(Icrc, RepeatedBlocksEqualReadingEveryCopy)
{
    std::mt19937 random(11);
    for (size_t length : {1ul, 5ul, 64ul, 1000ul}) {
        std::vector<unsigned char> block(length);
        for (auto& b : block) b = static_cast<unsigned char>(random());
        const unsigned long blockCrc = CChecksum::icrc(block.data(), length, 0);
        for (uint64_t count : {0ull, 1ull, 2ull, 3ull, 7ull, 64ull, 1001ull}) {
            unsigned long expected = 0x9E3779B9;
            for (uint64_t i = 0; i < count; ++i) expected = CChecksum::icrc(block.data(), length, expected);
            EXPECT_EQ(CChecksum::icrcRepeated(0x9E3779B9, blockCrc, length, count), expected)
                << length << " x " << count;
        }
    }
    EXPECT_EQ(CChecksum::icrcRepeated(0x1234, 0, 0, 9), 0x1234u);
}

TEST(CalculateFileChecksum, ADataForkOnlyFileGivesItsCRC)
{
    TempFolder dir;
    const std::string text = "a data fork";
    testfiles::writeFile((dir / "font.ttf"), text);
    const unsigned long expected = crc32(0, reinterpret_cast<const Bytef*>(text.data()), uInt(text.size()));

    unsigned long total = 0x55, dataFork = 0;
    EXPECT_TRUE(CChecksum::CalculateFileChecksum((dir / "font.ttf"), &total, &dataFork));
    EXPECT_EQ(total, expected);  // from 0, not from the entry value
    EXPECT_EQ(dataFork, expected);
    EXPECT_TRUE(CChecksum::CalculateFileChecksum((dir / "font.ttf"), nullptr, nullptr));
}

TEST(CalculateFileChecksum, NothingReadMeansNoChecksum)
{
    TempFolder dir;
    testfiles::writeFile((dir / "empty"), std::string());
    unsigned long total = 0;
    EXPECT_FALSE(CChecksum::CalculateFileChecksum((dir / "empty"), &total, nullptr));
    EXPECT_EQ(total, 0u);
    total = 9;
    EXPECT_FALSE(CChecksum::CalculateFileChecksum((dir / "missing"), &total, nullptr) && total);
    EXPECT_EQ(total, 0u);
}

TEST(CalculateFileChecksum, InsideAScopeEachFileIsReadOnce)
{
    TempFolder dir;
    testfiles::writeFile((dir / "font"), std::string("first"));
    auto checksum = [&] {
        unsigned long total = 0;
        CChecksum::CalculateFileChecksum((dir / "font"), &total, nullptr);
        return total;
    };
    const unsigned long first = checksum();
    {
        ReadScope scope;
        EXPECT_EQ(checksum(), first);
        testfiles::writeFile((dir / "font"), std::string("second"));
        {
            ReadScope nested;
            EXPECT_EQ(checksum(), first);  // the outer scope's reading
        }
        EXPECT_EQ(checksum(), first);
        unsigned long total = first, dataFork = 0;
        // The result still compares with the entry value.
        EXPECT_FALSE(CChecksum::CalculateFileChecksum((dir / "font"), &total, &dataFork));
        EXPECT_EQ(dataFork, first);
    }
    EXPECT_NE(checksum(), first);
}

TEST(ChecksumLongAlignedData, ReadsTheWholeLastWord)
{
    const unsigned char bytes[8] = {0, 0, 0, 1, 0x02, 0, 0, 0};
    EXPECT_EQ(ChecksumLongAlignedData(10, bytes, 4), 11u);
    EXPECT_EQ(ChecksumLongAlignedData(10, bytes, 5), 11u + 0x02000000u);
}

// A FOND with a 52-byte header, no association entries and a kerning
// table of (style, pairs) entries.
std::vector<uint8_t> fondWithKerning(const std::vector<std::pair<int16_t, std::string>>& entries)
{
    ByteWriter fond;
    fond.zeros(52).u16(0xFFFF);  // no association entries
    fond.putU32(20, uint32_t(fond.size()));
    fond.u16(uint16_t(entries.size() - 1));
    for (const auto& [style, pairs] : entries)
        fond.u16(uint16_t(style)).u16(uint16_t(pairs.size() / 4)).bytes(pairs);
    fond.u8(0);  // the last header must end strictly before the end
    return fond.take();
}

TEST(FondKerning, SumsHeadersAndPairsOfEveryEntryOfTheStyle)
{
    auto fond = fondWithKerning({{1, std::string("\x01\x02\x03\x04", 4)},
                                 {0, std::string("\x10\x10\x10\x10", 4)},
                                 {1, std::string("\x05\x00\x00\x00", 4)}});
    ByteView view(fond.data(), fond.size());
    // Header bytes 0,1,0,1 per style-1 entry, plus pair bytes 10 and 5.
    EXPECT_EQ(GetVaultlineChecksum(view, 1), 2u + 10u + 2u + 5u);
    EXPECT_EQ(GetVaultlineChecksum(view, 0), 1u + 0x40u);
    EXPECT_EQ(GetVaultlineChecksum(view, 2), 0u);

    const std::string pairs = std::string("\x01\x02\x03\x04", 4) + std::string("\x05\x00\x00\x00", 4);
    EXPECT_EQ(KerningPairsCRC(view, 1), crc32(0, reinterpret_cast<const Bytef*>(pairs.data()), 8));
}

TEST(FondKerning, ACountOfZeroHasOneEntry)
{
    auto fond = fondWithKerning({{0, std::string("\x00\x00\x00\x07", 4)}});
    EXPECT_EQ(GetVaultlineChecksum(ByteView(fond.data(), fond.size()), 0), 1u + 7u);
}

TEST(FondKerning, HostileTablesAreRefusedCleanly)
{
    auto fond = fondWithKerning({{0, std::string("\x00\x00\x00\x07", 4)}, {0, std::string(8, '\x01')}});
    ByteView view(fond.data(), fond.size());
    for (size_t size = 0; size <= fond.size(); ++size) {
        GetVaultlineChecksum(ByteView(fond.data(), size), 0);
        KerningPairsCRC(ByteView(fond.data(), size), 0);
    }
    ByteWriter patched;
    patched.bytes(view);
    patched.putU32(20, 0xFFFFFFF0);  // table offset far past the end
    EXPECT_EQ(GetVaultlineChecksum(patched.view(), 0), 0u);
    patched.putU32(20, 52 + 2);
    patched.putU16(52 + 2, 0x7FFF);  // 32768 entries claimed
    patched.putU16(52 + 2 + 2 + 2, 0x8000);  // a negative pair count steps backwards
    GetVaultlineChecksum(patched.view(), 0);
    EXPECT_EQ(GetVaultlineChecksum(ByteView(fond.data(), 51), 0), 0u);
}

TEST(FondKerning, ATableSteppingBackOverItselfIsWalkedNoFurtherThanItsBytes)
{
    // The second entry's pair count of -3 steps back to the first entry,
    // over and over while the count lasts.
    auto fond = fondWithKerning({{0, std::string("\x01\x02\x03\x04", 4)}, {0, std::string()}});
    ByteWriter table;
    table.bytes(ByteView(fond.data(), fond.size()));
    table.putU16(54 + 2 + 8 + 2, uint16_t(-3));
    auto withCount = [&](uint16_t countMinusOne) {
        table.putU16(54, countMinusOne);
        return std::make_pair(GetVaultlineChecksum(table.view(), 0), KerningPairsCRC(table.view(), 0));
    };
    // Each further entry adds until the walk has covered the resource's 67
    // bytes (about a dozen entries); from there on the count changes nothing.
    EXPECT_NE(withCount(2), withCount(3));
    const auto covered = withCount(uint16_t(table.size() / 4));
    EXPECT_NE(withCount(4), covered);
    EXPECT_EQ(withCount(0x7FFF), covered);
}

}  // namespace
