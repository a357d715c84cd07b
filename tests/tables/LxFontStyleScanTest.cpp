#include <gtest/gtest.h>

#include "KeywordFixture.h"

namespace {

using keywords::constants;
using keywords::KeywordTableTest;

std::vector<int32_t> scan(const std::string& first, const std::string& second)
{
    return constants(LxFontStyleScan::ScanFontForStyleComponents(first, second));
}

TEST_F(KeywordTableTest, MatchingIsExactAndTheFirstComponentWins)
{
    SStyleComponent found;
    ASSERT_TRUE(LxFontStyleScan::MatchStyleComponent("Bold", found));
    EXPECT_EQ(found.styleConstant, 1);
    EXPECT_EQ(found.display, "Bold");
    ASSERT_TRUE(LxFontStyleScan::MatchStyleComponent("Heavy", found));
    EXPECT_EQ(found.styleConstant, 99);
    SStyleComponent untouched;
    untouched.styleConstant = 77;
    EXPECT_FALSE(LxFontStyleScan::MatchStyleComponent("bold", untouched));
    EXPECT_FALSE(LxFontStyleScan::MatchStyleComponent("Bol", untouched));
    EXPECT_EQ(untouched.styleConstant, 77);
}

TEST_F(KeywordTableTest, TheLongerListWinsAndTiesGoToTheFirstName)
{
    EXPECT_EQ(scan("Arial-Bold", "Arial Italic"), (std::vector<int32_t>{1}));
    EXPECT_EQ(scan("Arial-Bold", "Arial Bold Italic"), (std::vector<int32_t>{1, 0}));
    EXPECT_EQ(scan("Bold", "Italic"), (std::vector<int32_t>{}));  // first bytes never start a word
}

TEST_F(KeywordTableTest, OldStyleFiguresDiscardTheSecondName)
{
    EXPECT_EQ(scan("Minion-BoldOsF", "Minion Semibold Condensed Italic"), (std::vector<int32_t>{1, 23}));
}

TEST_F(KeywordTableTest, SmallCapsAndCyrillicMarksCountFromTheSecondByte)
{
    EXPECT_EQ(scan("Minion-RegularSC", ""), (std::vector<int32_t>{13, 21, 22}));
    EXPECT_EQ(scan("SCFont", ""), (std::vector<int32_t>{}));
    EXPECT_EQ(scan("Pragmatica-BoldCY", ""), (std::vector<int32_t>{1, 41}));
}

TEST_F(KeywordTableTest, MultipleMasterInstancesSpellOutTheirSuffixes)
{
    EXPECT_EQ(scan("MyriadMM_400_XC", "Myriad MM"), (std::vector<int32_t>{5, 10}));
    EXPECT_EQ(scan("MyriadMM_700_SB", ""), (std::vector<int32_t>{15}));  // Semi Bold repaired
    // Small caps and Cyrillic marks are not looked for in multiple-master names.
    EXPECT_EQ(scan("MinionMM_SCCY", ""), (std::vector<int32_t>{}));
}

TEST_F(KeywordTableTest, XlightInTheFirstNameIsExtraLight)
{
    std::vector<SStyleComponent> found = LxFontStyleScan::ScanFontForStyleComponents("Univers-Xlight", "");
    ASSERT_EQ(constants(found), (std::vector<int32_t>{5, 9}));
    EXPECT_TRUE(found[0].isModifier);
    EXPECT_FALSE(found[1].isModifier);
    EXPECT_TRUE(found[0].display.empty() && found[1].matchStrings.empty());
    EXPECT_EQ(scan("Univers", "Univers-Xlight"), (std::vector<int32_t>{}));
}

TEST_F(KeywordTableTest, BoldAndItalicRemoveRegularAndRoman)
{
    EXPECT_EQ(scan("X-RomanBold", ""), (std::vector<int32_t>{1}));
    EXPECT_EQ(scan("X-RegularItalic", ""), (std::vector<int32_t>{0}));
    EXPECT_EQ(scan("X-RegularRoman", ""), (std::vector<int32_t>{13, 12}));
}

TEST_F(KeywordTableTest, RemovalsUseThePositionsRecordedBeforeAnyRemoval)
{
    // Regular goes from position 0, then position 1 (where Roman was) now
    // holds Bold, which goes instead of Roman.
    EXPECT_EQ(scan("X-RegularRomanBold", ""), (std::vector<int32_t>{12}));
    // Regular at 1 goes first; Roman's recorded position 2 is past the end.
    EXPECT_EQ(scan("X-ItalicRegularRoman", ""), (std::vector<int32_t>{0, 12}));
}

TEST_F(KeywordTableTest, SemiFormsNeedBold)
{
    EXPECT_EQ(scan("X-SemiBold", ""), (std::vector<int32_t>{15}));
    EXPECT_EQ(scan("X-SemiBoldItalic", ""), (std::vector<int32_t>{15, 0}));
    EXPECT_EQ(scan("X-SemiLight", ""), (std::vector<int32_t>{9}));
    EXPECT_EQ(scan("X-Sb", ""), (std::vector<int32_t>{4}));
    EXPECT_EQ(scan("X-SbBold", ""), (std::vector<int32_t>{4}));
    EXPECT_EQ(scan("X-Semi", "Y Semibold"), (std::vector<int32_t>{15}));
    EXPECT_EQ(scan("X-Semi", "Y semibold"), (std::vector<int32_t>{}));
}

TEST_F(KeywordTableTest, ATrailingDemiIsCompletedWithBold)
{
    std::vector<SStyleComponent> found = LxFontStyleScan::ScanFontForStyleComponents("Bookman-Demi", "");
    ASSERT_EQ(constants(found), (std::vector<int32_t>{16, 1}));
    EXPECT_TRUE(found[1].display.empty());
    EXPECT_FALSE(found[1].isModifier);
    EXPECT_EQ(scan("Bookman-DemiItalic", ""), (std::vector<int32_t>{16, 0}));
}

TEST_F(KeywordTableTest, HelveticaNeueThinIsLight)
{
    std::vector<SStyleComponent> found = LxFontStyleScan::ScanFontForStyleComponents("HelveticaNeue-Thin", "");
    ASSERT_EQ(constants(found), (std::vector<int32_t>{9}));
    EXPECT_EQ(found[0].display, "Light");
    EXPECT_EQ(scan("Helvetica-Thin", "Helvetica Neue Thin"), (std::vector<int32_t>{35}));
}

TEST(StyleScan, UserStylesAreFoundInEitherNameIgnoringCase)
{
    EXPECT_TRUE(LxFontStyleScan::ScanFontForUserStyle("Arial", "Bold", "BOLD"));
    EXPECT_TRUE(LxFontStyleScan::ScanFontForUserStyle("ARIALBLACK", "", "black"));
    EXPECT_FALSE(LxFontStyleScan::ScanFontForUserStyle("Arial", "Regular", "bold"));
}

}  // namespace
