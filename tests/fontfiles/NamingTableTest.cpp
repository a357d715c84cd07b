// Which of a naming table's records fills each output, and what hostile
// records read as.
#include "fontfiles/NamingTable.h"

#include <gtest/gtest.h>

#include "common/SfntBuilder.h"
#include "support/Refusal.h"

namespace {

using testfonts::NameRecord;

NameRecord win(uint16_t id, const std::u16string& text, uint16_t language = 0x409) { return {3, 1, language, id, testfonts::utf16be(text)}; }

NameRecord mac(uint16_t id, const std::string& text) { return {1, 0, 0, id, text}; }

// "result:foundry|family|version|postScriptName|displayName|fullName", the
// family set to "kept" before.
std::string Read(const std::vector<uint8_t>& font)
{
    LxString out[6];
    out[1] = "kept";
    const int result = getMetaDataFromNamesTable(ByteView(font.data(), font.size()), nullptr, nullptr, 0, &out[0], &out[1],
                                                 &out[2], &out[3], &out[4], &out[5]);
    return std::to_string(result) + ":" + out[0].str() + "|" + out[1].str() + "|" + out[2].str() + "|" + out[3].str() + "|" +
           out[4].str() + "|" + out[5].str();
}

TEST(NamingTable, EachOutputComesFromThePreferredRecord)
{
    const struct { const char* what; std::vector<NameRecord> records; std::string expected; } cases[] = {
        {"a Mac English record ends overwriting", {mac(1, "MacFamily"), mac(4, "Mac Full"), win(1, u"WinFamily"), win(4, u"Win Full"), win(6, u"Win-PS")},
         "|MacFamily||Win-PS|Win-PS|Mac Full"},
        {"in any Mac encoding", {{1, 1, 0, 1, "MacFamily"}, win(1, u"WinFamily"), win(5, u"1.0")}, "|MacFamily|1.0|||"},
        {"other languages fill empty slots", {win(1, u"Deutsch", 0x407), win(4, u"Voll", 0x407), win(1, u"English")},
         "|English||Voll|Voll|Voll"},
        {"Mac Roman high and control bytes", {mac(1, "Caf\x8E"), mac(4, "Tab\there")}, "|Caf?||Tab?here|Tab?here|Tab?here"},
        {"a non-ASCII PostScript name is dropped", {win(6, u"\u00DCn\u00EFcode"), win(4, u"Unicode Full")},
         "|||Unicode Full|Unicode Full|Unicode Full"},
        {"a later typographic family wins", {win(1, u"Foo"), win(16, u"Foo Pro")}, "|Foo Pro||||"},
        {"a later family wins", {win(16, u"Foo Pro"), win(1, u"Foo")}, "|Foo||||"},
        {"a typographic family in another language", {win(1, u"Foo"), win(16, u"Foo Pro", 0x407)}, "|Foo||||"},
        {"copyright for a missing manufacturer", {win(0, u"(c) Someone")}, "(c) Someone|||||"},
        {"manufacturer before copyright", {win(0, u"(c) Someone"), win(8, u"Maker")}, "Maker|||||"},
        {"lengths are capped", {mac(4, std::string(3000, 'a'))},
         "|||" + std::string(1023, 'a') + "|" + std::string(1023, 'a') + "|" + std::string(1023, 'a')},
        {"Shift-JIS, and the encoding sticks", {{0, 0, 11, 1, "\x93\xFA\x96\x7B"}, mac(4, "\x93\xFA")},
         "|\xE6\x97\xA5\xE6\x9C\xAC||\xE6\x97\xA5|\xE6\x97\xA5|\xE6\x97\xA5"},
    };
    for (const auto& c : cases) EXPECT_EQ(Read(testfonts::fontWithNames(c.records)), "1:" + c.expected) << c.what;
}

TEST(NamingTable, HostileRecords)
{
    const auto base = testfonts::fontWithNames({mac(4, "abc"), mac(1, "Fam")});
    const size_t table = 12 + 16, first = table + 6, second = first + 12;
    const struct { const char* what; size_t at; std::vector<uint8_t> bytes; std::string expected; const char* reason = nullptr; } cases[] = {
        {"no naming table", 12, {'n', 'a', 'm', 'f'}, "0:|kept||||", "sfnt: no 'name' table among the 1 in the directory"},
        {"a naming table past the font", 12 + 12, {0, 0, 1, 0}, "0:|kept||||", "sfnt: table 'name' (offset 28, length 256) runs past the end of the font (65 bytes)"},
        {"a header cut short", 12 + 8, {0, 0, 0, 61, 0, 0, 0, 4}, "0:|kept||||", "name: header at 61 needs 6 bytes, the font has 65"},
        {"no records", table + 2, {0, 0}, "0:|kept||||", "name: no usable record, count is 0"},
        {"a length of 0x8000 or more is negative: empty", first + 8, {0x80, 0x03}, "1:|Fam||||"},
        // Intended: a negative offset reads from before the string storage,
        // here the second record's length and offset (3, 0, 3, cut at the 0).
        {"a negative offset", first + 10, {0xFF, 0xFD}, "1:|Fam||?|?|?"},
        {"but not from before the font", first + 10, {0x80, 0x00}, "1:|Fam||||", "name: record 0 starts 32710 bytes before the font"},
        {"a string past the font is empty", second + 10, {0x01, 0x00}, "1:|||abc|abc|abc", "name: record 1 runs past the string storage (3 bytes at 314, the font has 65)"},
        {"a count past the records stops at the font's end", table + 2, {0x7F}, "1:|Fam||abc|abc|abc", "name: record 2 of 32514 runs past the end of the font"},
        {"string storage past the font", table + 4, {0x7F}, "1:|||||", "name: record 0 runs past the string storage"},
    };
    for (const auto& c : cases) {
        auto font = base;
        std::copy(c.bytes.begin(), c.bytes.end(), font.begin() + std::ptrdiff_t(c.at));
        RefusalLog log;
        EXPECT_EQ(Read(font), c.expected) << c.what;
        EXPECT_TRUE(c.reason ? log.text().find(c.reason) == 0 : log.text().empty()) << c.what << ": " << log.text();
    }
    for (size_t size = 0; size <= base.size(); ++size)  // no read past the buffer
        Read(std::vector<uint8_t>(base.begin(), base.begin() + std::ptrdiff_t(size)));
}

}  // namespace
