#include <gtest/gtest.h>

#include "common/SfntBuilder.h"
#include "fontfiles/SfntDirectory.h"
#include "fontfiles/SfntPlatform.h"

namespace {

using testfonts::Table;

ByteView view(const std::vector<uint8_t>& bytes)
{
    return ByteView(bytes.data(), bytes.size());
}

TEST(FindSpecifiedTable, FindsTablesByExactTagOnly)
{
    auto font = testfonts::sfnt(0x00010000, {{"OS/2", "abcd"}, {"name", "efgh"}});
    auto os2 = FindSpecifiedTable(view(font), "OS/2");
    ASSERT_TRUE(os2);
    EXPECT_EQ(os2->offset, 12u + 32u);
    EXPECT_EQ(os2->length, 4u);
    EXPECT_EQ(os2->entryOffset, 12u);
    EXPECT_TRUE(FindSpecifiedTable(view(font), "name"));
    EXPECT_FALSE(FindSpecifiedTable(view(font), "NAME"));
    EXPECT_FALSE(FindSpecifiedTable(view(font), "os/2"));
}

TEST(FindSpecifiedTable, ATagWithANulByteEndsThere)
{
    auto font = testfonts::sfnt(0x00010000, {{std::string("ab\0\0", 4), "data"}});
    EXPECT_TRUE(FindSpecifiedTable(view(font), "ab"));
    EXPECT_FALSE(FindSpecifiedTable(view(font), "ab\x01"));
}

TEST(FindSpecifiedTable, TheBufferMustReachPastTheEntry)
{
    auto font = testfonts::sfnt(0x00010000, {{"kern", ""}});
    ASSERT_EQ(font.size(), 28u);  // header and one entry, nothing after it
    EXPECT_FALSE(FindSpecifiedTable(view(font), "kern"));
    font.push_back(0);
    EXPECT_TRUE(FindSpecifiedTable(view(font), "kern"));
    // Twelve bytes or fewer find nothing at all.
    EXPECT_FALSE(FindSpecifiedTable(ByteView(font.data(), 12), "kern"));
}

TEST(FindSpecifiedTable, ANegativeOrHugeCountIsBoundedByTheBuffer)
{
    auto font = testfonts::sfnt(0x00010000, {{"head", "1234"}});
    font[4] = 0x80;  // numTables -32768
    EXPECT_FALSE(FindSpecifiedTable(view(font), "head"));
    font[4] = 0x7F;
    font[5] = 0xFF;  // 32767 entries claimed, one present
    EXPECT_TRUE(FindSpecifiedTable(view(font), "head"));
    EXPECT_FALSE(FindSpecifiedTable(view(font), "glyf"));
}

TEST(ValidateDirectoryEntry, TheTableMustEndWithinTheBuffer)
{
    auto font = testfonts::sfnt(0x00010000, {{"glyf", "12345678"}});
    auto entry = FindSpecifiedTable(view(font), "glyf");
    ASSERT_TRUE(entry);
    EXPECT_TRUE(ValidateDirectoryEntry(&*entry, view(font)));
    entry->length += 1;  // one byte past the end
    EXPECT_FALSE(ValidateDirectoryEntry(&*entry, view(font)));
    EXPECT_FALSE(ValidateDirectoryEntry(nullptr, view(font)));
    EXPECT_FALSE(ValidateDirectoryEntry(&*entry, ByteView()));
}

TEST(GetPlatformTTF, NeedsEveryRequiredTableValid)
{
    LxString platform;
    auto font = testfonts::sfnt(0x00010000, testfonts::requiredTables());
    EXPECT_EQ(GetPlatformTTF(view(font), &platform), 1);
    EXPECT_EQ(platform, std::string("crossplatform"));

    auto tables = testfonts::requiredTables();
    tables.erase(tables.begin() + 4);  // hmtx
    font = testfonts::sfnt(0x00010000, tables);
    EXPECT_EQ(GetPlatformTTF(view(font), &platform), 1);
    EXPECT_EQ(platform, std::string("mac"));
}

TEST(GetPlatformTTF, MacTrueTypeAndInvalidKernAreMac)
{
    LxString platform;
    auto font = testfonts::sfnt(0x74727565, testfonts::requiredTables());
    GetPlatformTTF(view(font), &platform);
    EXPECT_EQ(platform, std::string("mac"));

    auto tables = testfonts::requiredTables();
    tables.push_back({"kern", "kkkk"});
    font = testfonts::sfnt(0x4F54544F, tables);
    GetPlatformTTF(view(font), &platform);
    EXPECT_EQ(platform, std::string("crossplatform"));
    auto kern = FindSpecifiedTable(view(font), "kern");
    ByteWriter patched;
    patched.bytes(view(font));
    patched.putU32(kern->entryOffset + 12, 0x1000);  // kern runs past the end
    GetPlatformTTF(patched.view(), &platform);
    EXPECT_EQ(platform, std::string("mac"));
}

TEST(GetPlatformTTF, RefusesTinyBuffersAndLeavesTheOutput)
{
    LxString platform("unchanged");
    const uint8_t bytes[4] = {0, 1, 0, 0};
    EXPECT_EQ(GetPlatformTTF(ByteView(bytes, 4), &platform), 0);
    EXPECT_EQ(platform, std::string("unchanged"));
    EXPECT_EQ(GetPlatformTTF(ByteView(bytes, 4), nullptr), 0);
}

TEST(KerningChecksum, SumsTheChosenTableWords)
{
    uint32_t checksum = 99;
    auto font = testfonts::sfnt(0x00010000, {{"GPOS", std::string("\0\0\0\1\0\0\0\2", 8)},
                                             {"glyf", std::string("\0\0\0\7", 4)}});
    EXPECT_EQ(GetTrueTypeKerningTableChecksum(view(font), &checksum), 1);
    EXPECT_EQ(checksum, 3u);  // GPOS wins over glyf
}

TEST(KerningChecksum, UnalignedLengthGivesTheStoredChecksum)
{
    uint32_t checksum = 0;
    auto font = testfonts::sfnt(0x00010000, {{"kern", "abcdef"}, {"glyf", "zzzz"}});
    EXPECT_EQ(GetTrueTypeKerningTableChecksum(view(font), &checksum), 1);
    EXPECT_EQ(checksum, testfonts::paddedSum("abcdef"));
}

TEST(KerningChecksum, ATableEndingOnTheLastByteSumsToZero)
{
    uint32_t checksum = 99;
    auto font = testfonts::sfnt(0x00010000, {{"kern", std::string("\0\0\0\5", 4)}});
    EXPECT_EQ(GetTrueTypeKerningTableChecksum(view(font), &checksum), 1);
    EXPECT_EQ(checksum, 0u);
    font.push_back(0);
    EXPECT_EQ(GetTrueTypeKerningTableChecksum(view(font), &checksum), 1);
    EXPECT_EQ(checksum, 5u);
}

TEST(KerningChecksum, NoUsableTableLeavesTheOutput)
{
    uint32_t checksum = 42;
    auto font = testfonts::sfnt(0x00010000, {{"head", "1234"}});
    EXPECT_EQ(GetTrueTypeKerningTableChecksum(view(font), &checksum), 0);
    EXPECT_EQ(checksum, 42u);
    // The first present table decides even when it is invalid.
    font = testfonts::sfnt(0x00010000, {{"kern", "1234"}, {"glyf", "5678"}});
    ByteWriter patched;
    patched.bytes(view(font));
    patched.putU32(12 + 8, 0x100000);
    EXPECT_EQ(GetTrueTypeKerningTableChecksum(patched.view(), &checksum), 0);
    EXPECT_EQ(checksum, 42u);
}

}  // namespace
