#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "KeywordFixture.h"
#include "tables/StyleWords.h"
#include "typeprobe/typeprobe.h"

namespace {

using keywords::KeywordTableTest;
using Words = std::vector<std::string>;
using Constants = std::vector<int32_t>;

Words words(const std::string& name, size_t start, bool multipleMaster)
{
    Words out;
    size_t position = start;
    while (position != std::string::npos && position < name.size())
        out.push_back(local_styleSubstring(name, position, multipleMaster));
    return out;
}

TEST(StyleWords, CapitalsStartWordsAndOtherBytesEndThem)
{
    const struct { const char* name; size_t start; bool multipleMaster; Words words; } cases[] = {
        {"BoldItalic", 0, false, {"Bold", "Italic"}}, {"XLight", 0, false, {"X", "Light"}},
        {"ExtraBold2", 0, false, {"Extra", "Bold"}}, {"MM", 0, false, {"M", "M"}},
        // From the second byte, lower-case letters before a capital are dropped.
        {"Bold", 1, false, {""}}, {"Helvetica-BoldOblique", 1, false, {"", "Bold", "Oblique"}},
        // Instance suffixes of multiple-master names keep their capitals together.
        {"MyriadMM_400_XC", 1, true, {"M", "M", "XC"}}, {"MyriadMM_400_XC", 1, false, {"M", "M", "X", "C"}},
        {"X_400_XCab", 1, true, {"XC", "a", "b"}}, {"X_400", 1, true, {""}},
    };
    for (const auto& c : cases) EXPECT_EQ(words(c.name, c.start, c.multipleMaster), c.words) << c.name;
}

TEST_F(KeywordTableTest, MatchingIsExactAndTheFirstComponentWins)
{
    for (auto [word, constant] : {std::pair{"Bold", 1}, {"Heavy", 99}, {"bold", -1}, {"Bol", -1}}) {
        SStyleComponent found;
        EXPECT_EQ(LxFontStyleScan::MatchStyleComponent(word, found) ? found.styleConstant : -1, constant) << word;
    }
}

// The words of both names become components; the fixed repairs follow.
TEST_F(KeywordTableTest, ScannedComponents)
{
    const struct { const char* first; const char* second; Constants found; } cases[] = {
        // The longer list wins; a tie goes to the first name; the first byte never starts a word.
        {"Arial-Bold", "Arial Italic", {1}}, {"Arial-Bold", "Arial Bold Italic", {1, 0}}, {"Bold", "Italic", {}},
        // Small caps and Cyrillic marks count from the second byte, not in MM names.
        {"Minion-RegularSC", "", {13, 21, 22}}, {"SCFont", "", {}}, {"Pragmatica-BoldCY", "", {1, 41}},
        {"MinionMM_SCCY", "", {}}, {"MyriadMM_400_XC", "Myriad MM", {5, 10}}, {"MyriadMM_700_SB", "", {15}},
        {"MyriadMM_XL_XB_UB", "", {5, 9, 5, 6, 6}},
        {"Univers", "Univers-Xlight", {}},  // only the first name's Xlight
        {"X-RomanBold", "", {1}}, {"X-RegularItalic", "", {0}}, {"X-RegularRoman", "", {13, 12}},
        // Removals use the positions recorded before any removal: Regular
        // goes from 0, then position 1 (Roman's) now holds Bold.
        {"X-RegularRomanBold", "", {12}}, {"X-ItalicRegularRoman", "", {0, 12}},
        {"X-SemiBold", "", {15}}, {"X-SemiLight", "", {9}}, {"X-Sb", "", {4}}, {"X-SbBold", "", {4}},
        {"X-Semi", "Y Semibold", {15}}, {"X-Semi", "Y semibold", {}},
        {"Helvetica-Thin", "Helvetica Neue Thin", {35}}, {"HelveticaNeue-Thin", "", {9}},
        {"Univers-Xlight", "", {5, 9}}, {"Bookman-Demi", "", {16, 1}},  // repairs add components
    };
    for (const auto& c : cases)
        EXPECT_EQ(keywords::constants(LxFontStyleScan::ScanFontForStyleComponents(c.first, c.second)), c.found)
            << c.first << " / " << c.second;
}

Words stylesOf(const std::string& first, const std::string& second = "")
{
    std::vector<SBuiltinStyle> styles{SBuiltinStyle{"stale", {}, false}};
    unsigned long count = LxFontStyleScan::ScanFontForBuiltinStyles(first, second, styles);
    EXPECT_EQ(count, styles.size());
    Words out;
    for (const SBuiltinStyle& s : styles) out.push_back(s.display);
    return out;
}

TEST_F(KeywordTableTest, SelectedBuiltinStyles)
{
    const struct { const char* first; Words styles; } cases[] = {
        // An exact fit is the only style, although "Italic Bold" fits as well.
        {"Arial-BoldItalic", {"Bold Italic"}}, {"Bookman-Demi", {"Demibold"}}, {"Univers-Xlight", {"Extra Light"}},
        // Weights and the others compete separately; the pure Condensed stays.
        {"X-BoldCondItalic", {"Bold", "Condensed", "Bold Italic", "Italic Bold", "Bold Condensed"}},
        // A modifier must precede what it modifies.
        {"X-ExtraBoldCond", {"Extra Bold", "Condensed", "Bold Condensed"}},
        // Extra Condensed set the best of its kind before losing its misplaced
        // Extra, so even the pure Condensed goes. Intended.
        {"X-ExtraLightCond", {"Extra Light"}},
        // A pure low scorer stays only when no longer than the best.
        {"Minion-BoldOsF", {"Bold", "Old-Style Figures"}}, {"Georgia", {}},
    };
    for (const auto& c : cases) EXPECT_EQ(stylesOf(c.first), c.styles) << c.first;
}

TEST_F(KeywordTableTest, UnknownConstantsAndEmptyTablesGiveNoErrors)
{
    LoadRoot(keywords::table(keywords::kComponents, {{"Mystery Bold", {1234, 1}, true}, {"Italic", {0}, false}}));
    EXPECT_EQ(stylesOf("X-BoldBoldItalic"), (Words{"Mystery Bold", "Italic"}));
    LoadRoot(keywords::table({}, {}));
    EXPECT_EQ(stylesOf("Arial-BoldItalic", "Arial Bold Italic"), Words{});
}

TEST(StyleScan, UserStylesAreFoundInEitherNameIgnoringCase)
{
    EXPECT_TRUE(LxFontStyleScan::ScanFontForUserStyle("Arial", "Bold", "BOLD") &&
                LxFontStyleScan::ScanFontForUserStyle("ARIALBLACK", "", "black"));
    EXPECT_FALSE(LxFontStyleScan::ScanFontForUserStyle("Arial", "Regular", "bold"));
}

// TP_GetStyles on the shipped keyword table.
TEST(GetStyles, RefusesNullsAndCopiesOutByTheBufferRules)
{
    const std::string unused(64, '#');
    std::vector<std::string> storage(3, unused);
    std::vector<char*> buffers = {storage[0].data(), nullptr, storage[2].data()};
    unsigned long count = 99;
    EXPECT_EQ(TP_GetStyles(nullptr, "A", 2, 64, &count, buffers.data()), 1u);
    EXPECT_EQ(TP_GetStyles("A-Bold", nullptr, 2, 64, &count, buffers.data()), 1u);
    EXPECT_EQ(TP_GetStyles("A-Bold", "A", 2, 64, nullptr, buffers.data()), 1u);
    EXPECT_EQ(TP_GetStyles("A-Bold", "A", 2, 64, &count, nullptr), 1u);
    EXPECT_EQ(TP_GetStyles("Georgia", "Georgia", 3, 64, &count, buffers.data()), 0u);
    EXPECT_TRUE(count == 99 && storage[0] == unused);  // nothing found: count and buffers untouched
    ASSERT_EQ(TP_GetStyles("Arial-BoldItalic", "", 3, 5, &count, buffers.data()), 0u);
    EXPECT_STREQ(storage[0].c_str(), "Bold");  // cut to the buffer length
    // The count is capped; null entries are passed over but counted.
    ASSERT_EQ(TP_GetStyles("PlayfairDisplay-BoldItalic", "", 0, 64, &count, buffers.data()), 0u);
    EXPECT_EQ(count, 0u);
    ASSERT_EQ(TP_GetStyles("PlayfairDisplay-BoldItalic", "", 3, 64, &count, buffers.data()), 0u);
    ASSERT_EQ(count, 3u);
    EXPECT_EQ(storage[1], unused);
    EXPECT_STREQ(storage[2].c_str(), "Bold Italic");
    buffers[0] = nullptr;
    EXPECT_EQ(TP_GetStyles("A-Bold", "A", 2, 64, &count, buffers.data()), 1u);
}

}  // namespace
