#include <gtest/gtest.h>

#include "KeywordFixture.h"

namespace {

using keywords::displays;
using keywords::KeywordTableTest;

std::vector<std::string> stylesOf(const std::string& first, const std::string& second = "")
{
    std::vector<SBuiltinStyle> styles{SBuiltinStyle{"stale", {}, false}};
    unsigned long count = LxFontStyleScan::ScanFontForBuiltinStyles(first, second, styles);
    EXPECT_EQ(count, styles.size());
    return displays(styles);
}

TEST_F(KeywordTableTest, AnExactFitIsTheOnlyStyle)
{
    // "Italic Bold" fits as exactly, but comes later.
    EXPECT_EQ(stylesOf("Arial-BoldItalic"), (std::vector<std::string>{"Bold Italic"}));
    EXPECT_EQ(stylesOf("Arial-Bold"), (std::vector<std::string>{"Bold"}));
    EXPECT_EQ(stylesOf("Bookman-Demi"), (std::vector<std::string>{"Demibold"}));
}

TEST_F(KeywordTableTest, WeightsAndOtherStylesCompeteSeparately)
{
    // Bold is the best weight; among the others the two-component styles
    // win and the pure Condensed stays beside them.
    EXPECT_EQ(stylesOf("X-BoldCondItalic"),
              (std::vector<std::string>{"Bold", "Condensed", "Bold Italic", "Italic Bold", "Bold Condensed"}));
}

TEST_F(KeywordTableTest, AModifierMustPrecedeWhatItModifies)
{
    // Extra is followed by Bold here, so Extra Condensed loses its Extra.
    EXPECT_EQ(stylesOf("X-ExtraBoldCond"), (std::vector<std::string>{"Extra Bold", "Condensed", "Bold Condensed"}));
}

TEST_F(KeywordTableTest, AKindWhoseBestLostAModifierKeepsNothing)
{
    // Extra Condensed set the best of the other styles before it lost its
    // misplaced Extra, so no other style is at that best and even the pure
    // Condensed goes. Intended.
    EXPECT_EQ(stylesOf("X-ExtraLightCond"), (std::vector<std::string>{"Extra Light"}));
}

TEST_F(KeywordTableTest, ThePureLowScorerOnlyStaysWhenItIsNoLongerThanTheBest)
{
    EXPECT_EQ(stylesOf("Minion-BoldOsF"), (std::vector<std::string>{"Bold", "Old-Style Figures"}));
    EXPECT_EQ(stylesOf("Minion-RegularSC"), (std::vector<std::string>{"Regular", "Small Caps"}));
}

TEST_F(KeywordTableTest, NoComponentsNoStyles)
{
    EXPECT_EQ(stylesOf("Georgia", "Georgia"), (std::vector<std::string>{}));
    std::vector<SBuiltinStyle> styles;
    EXPECT_EQ(LxFontStyleScan::FindBuiltinMatchesForStyleComponents({}, styles), 0u);
}

TEST_F(KeywordTableTest, AnEmptyTableGivesNoStyles)
{
    Load({}, {});
    EXPECT_TRUE(LxFontStyleScan::gStyleComponents.empty());
    EXPECT_EQ(stylesOf("Arial-BoldItalic", "Arial Bold Italic"), (std::vector<std::string>{}));
}

TEST_F(KeywordTableTest, StylesNamingUnknownConstantsDoNotDisturbTheScan)
{
    Load(keywords::fixtureComponents(), {{"Mystery Bold", {1234, 1}, true}, {"Italic", {0}, false}});
    EXPECT_EQ(stylesOf("X-BoldBoldItalic"), (std::vector<std::string>{"Mystery Bold", "Italic"}));
    EXPECT_EQ(LxFontStyleScan::gStyleComponentMap.count(1234), 0u);
}

}  // namespace
