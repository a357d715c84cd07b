#include <gtest/gtest.h>

#include "common/SfntBuilder.h"
#include "fontfiles/NamingTable.h"

namespace {

using testfonts::NameRecord;
using testfonts::utf16be;

struct Names {
    LxString foundry, family, version, postScriptName, displayName, fullName;
    int result = 0;
};

Names read(const std::vector<NameRecord>& records)
{
    auto font = testfonts::fontWithNames(records);
    Names n;
    n.result = getMetaDataFromNamesTable(ByteView(font.data(), font.size()), nullptr, nullptr, 0,
                                         &n.foundry, &n.family, &n.version, &n.postScriptName,
                                         &n.displayName, &n.fullName);
    return n;
}

NameRecord win(uint16_t id, const std::u16string& text, uint16_t language = 0x409)
{
    return {3, 1, language, id, utf16be(text)};
}

NameRecord mac(uint16_t id, const std::string& text, uint16_t language = 0)
{
    return {1, 0, language, id, text};
}

TEST(NamingTable, WindowsEnglishRecordsFillEveryOutput)
{
    Names n = read({win(1, u"Foo"), win(4, u"Foo Bold"), win(5, u"Version 1.002"),
                    win(6, u"Foo-Bold"), win(8, u"Foundry Inc.")});
    EXPECT_EQ(n.result, 1);
    EXPECT_EQ(n.family.str(), "Foo");
    EXPECT_EQ(n.fullName.str(), "Foo Bold");
    EXPECT_EQ(n.version.str(), "Version 1.002");
    EXPECT_EQ(n.postScriptName.str(), "Foo-Bold");
    EXPECT_EQ(n.displayName.str(), "Foo-Bold");
    EXPECT_EQ(n.foundry.str(), "Foundry Inc.");
}

TEST(NamingTable, AMacEnglishRecordEndsOverwriting)
{
    Names n = read({mac(1, "MacFamily"), mac(4, "Mac Full"), win(1, u"WinFamily"),
                    win(4, u"Win Full"), win(6, u"Win-PS")});
    EXPECT_EQ(n.family.str(), "MacFamily");
    EXPECT_EQ(n.fullName.str(), "Mac Full");
    EXPECT_EQ(n.postScriptName.str(), "Win-PS");  // an empty slot is still filled
}

TEST(NamingTable, OtherLanguagesOnlyFillEmptySlots)
{
    Names n = read({win(1, u"Deutsch", 0x407), win(4, u"Voll", 0x407), win(1, u"English")});
    EXPECT_EQ(n.family.str(), "English");
    EXPECT_EQ(n.fullName.str(), "Voll");
}

TEST(NamingTable, MacRomanHighBytesBecomeQuestionMarks)
{
    Names n = read({mac(1, "Caf\x8E"), mac(4, "Tab\there")});
    EXPECT_EQ(n.family.str(), "Caf?");
    EXPECT_EQ(n.fullName.str(), "Tab?here");
}

TEST(NamingTable, NonAsciiPostScriptNamesAreDroppedForTheFullName)
{
    Names n = read({win(6, u"\u00DCn\u00EFcode"), win(4, u"Unicode Full")});
    EXPECT_EQ(n.postScriptName.str(), "Unicode Full");
    EXPECT_EQ(n.fullName.str(), "Unicode Full");
    EXPECT_EQ(n.displayName.str(), "Unicode Full");
}

TEST(NamingTable, RecordOrderDecidesThePreferredFamily)
{
    EXPECT_EQ(read({win(1, u"Foo"), win(16, u"Foo Pro")}).family.str(), "Foo Pro");
    EXPECT_EQ(read({win(16, u"Foo Pro"), win(1, u"Foo")}).family.str(), "Foo");
    // A typographic family in another language fills only an empty slot.
    EXPECT_EQ(read({win(1, u"Foo"), win(16, u"Foo Pro", 0x407)}).family.str(), "Foo");
}

TEST(NamingTable, ManufacturerFallsBackToCopyright)
{
    EXPECT_EQ(read({win(0, u"(c) Someone")}).foundry.str(), "(c) Someone");
    EXPECT_EQ(read({win(0, u"(c) Someone"), win(8, u"Maker")}).foundry.str(), "Maker");
}

TEST(NamingTable, LengthsAreCappedAndNegativeOnesAreEmpty)
{
    std::string longName(3000, 'a');
    Names n = read({mac(4, longName)});
    EXPECT_EQ(n.fullName.length(), 1023u);

    auto font = testfonts::fontWithNames({mac(4, "abc"), mac(1, "Fam")});
    // First record's length field: 0x8000 reads as negative.
    const size_t nameTable = 12 + 16;
    font[nameTable + 6 + 8] = 0x80;
    Names m;
    getMetaDataFromNamesTable(ByteView(font.data(), font.size()), nullptr, nullptr, 0, nullptr,
                              &m.family, nullptr, nullptr, nullptr, &m.fullName);
    EXPECT_EQ(m.fullName.str(), "");
    EXPECT_EQ(m.family.str(), "Fam");
}

TEST(NamingTable, ShiftJISRecordsAreDecodedAndTheEncodingSticks)
{
    // "日本" in Shift-JIS, in a single-byte Japanese record (platform 0).
    Names n = read({{0, 0, 11, 1, "\x93\xFA\x96\x7B"}, mac(4, "\x93\xFA")});
    EXPECT_EQ(n.family.str(), "\xE6\x97\xA5\xE6\x9C\xAC");
    EXPECT_EQ(n.fullName.str(), "\xE6\x97\xA5");  // read as Shift-JIS too
}

TEST(NamingTable, MissingOrBrokenTablesLeaveOutputs)
{
    LxString family("kept");
    auto font = testfonts::sfnt(0x00010000, {{"head", "1234"}});
    EXPECT_EQ(getMetaDataFromNamesTable(ByteView(font.data(), font.size()), nullptr, nullptr, 0,
                                        nullptr, &family, nullptr, nullptr, nullptr, nullptr),
              0);
    EXPECT_EQ(family.str(), "kept");

    // A count far beyond the table's records stops at the font's end.
    font = testfonts::fontWithNames({win(1, u"Foo")});
    font[12 + 16 + 2] = 0x7F;
    EXPECT_EQ(getMetaDataFromNamesTable(ByteView(font.data(), font.size()), nullptr, nullptr, 0,
                                        nullptr, &family, nullptr, nullptr, nullptr, nullptr),
              1);
    EXPECT_EQ(family.str(), "Foo");
}

TEST(NamingTable, EveryTruncationIsRefusedCleanly)
{
    auto font = testfonts::fontWithNames({win(1, u"Family"), mac(4, "Full"), win(6, u"PS")});
    for (size_t size = 0; size <= font.size(); ++size) {
        Names n;
        getMetaDataFromNamesTable(ByteView(font.data(), size), nullptr, nullptr, 0, &n.foundry,
                                  &n.family, &n.version, &n.postScriptName, &n.displayName,
                                  &n.fullName);
    }
    std::string name;
    EXPECT_EQ(getPostScriptNameFromNamesTable(ByteView(font.data(), font.size()), nullptr, nullptr,
                                              0, name),
              1);
    EXPECT_EQ(name, "PS");
}

}  // namespace
