#include <gtest/gtest.h>

#include "KeywordFixture.h"
#include "typeprobe/typeprobe.h"

namespace {

using keywords::KeywordTableTest;
using Words = std::vector<std::string>;
using Constants = std::vector<int32_t>;

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
        // Any other byte ends a word; after an MM name's underscore only capitals join the first letter.
        {"X_It2Bd", "", {0, 1}}, {"XMM_Bold", "", {}}, {"XMM_BIt", "", {}},
        // Words match whole and with their case; the first component to match wins.
        {"X-HeavyBol", "", {99}}, {"XMM_BOLD", "", {}},
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
    EXPECT_TRUE(LxFontStyleScan::ScanFontForUserStyle("Arial", "Bold", "BOLD") && LxFontStyleScan::ScanFontForUserStyle("ARIALBLACK", "", "black") &&
                !LxFontStyleScan::ScanFontForUserStyle("Arial", "Regular", "bold"));
}

// TP_GetStyles on the shipped keyword table.
TEST(GetStyles, RefusesNullsAndCopiesOutByTheBufferRules)
{
    const std::string unused(64, '#');
    std::vector<std::string> storage(3, unused);
    std::vector<char*> buffers = {storage[0].data(), nullptr, storage[2].data()};
    unsigned long count = 99;
    char* noBuffer = nullptr;  // each null refused with 1
    EXPECT_EQ(TP_GetStyles(nullptr, "A", 2, 64, &count, buffers.data()) + TP_GetStyles("A-Bold", nullptr, 2, 64, &count, buffers.data()) +
              TP_GetStyles("A-Bold", "A", 2, 64, nullptr, buffers.data()) + TP_GetStyles("A-Bold", "A", 2, 64, &count, nullptr) +
              TP_GetStyles("A-Bold", "A", 2, 64, &count, &noBuffer), 5u);
    // Nothing found: count and buffers untouched.
    EXPECT_TRUE(TP_GetStyles("Georgia", "Georgia", 3, 64, &count, buffers.data()) == 0 && count == 99 && storage[0] == unused);
    ASSERT_EQ(TP_GetStyles("Arial-BoldItalic", "", 3, 5, &count, buffers.data()), 0u);
    EXPECT_STREQ(storage[0].c_str(), "Bold");  // cut to the buffer length
    // The count is capped; null entries are passed over but counted.
    EXPECT_TRUE(TP_GetStyles("PlayfairDisplay-BoldItalic", "", 0, 64, &count, buffers.data()) == 0 && count == 0);
    ASSERT_EQ(TP_GetStyles("PlayfairDisplay-BoldItalic", "", 3, 64, &count, buffers.data()), 0u);
    EXPECT_TRUE(count == 3 && storage[1] == unused);
    EXPECT_STREQ(storage[2].c_str(), "Bold Italic");
}

}  // namespace
