#include <gtest/gtest.h>

#include "KeywordFixture.h"

namespace {

using keywords::KeywordTableTest;
using Constants = std::vector<int32_t>;

TEST_F(KeywordTableTest, MissingArraysAreDataRetrieveErrors)
{
    plist_t noStyles = keywords::table({{1, "Bold", false, true, {"Bold"}}}, {});
    plist_dict_remove_item(noStyles, "Styles");
    for (auto [root, message] : {std::pair{plist_new_dict(), "Components"}, {plist_new_array(), "Components"}, {noStyles, "Style"}}) {
        std::string what = "no error";
        try { LxFontStyleScan::LoadStyleResources(root); } catch (const DataRetrieveError& error) { what = error.what(); }
        EXPECT_EQ(what, "KeywordTable.plist - " + std::string(message) + " array");
        plist_free(root);
    }
    // The components were loaded before the styles were found missing.
    EXPECT_EQ(keywords::constants(LxFontStyleScan::gStyleComponents), Constants{1});
}

// Each entry is skipped or kept on its own: a missing key, a text of 512
// bytes (the reading buffer holds 511) or an entry that is no dictionary.
TEST_F(KeywordTableTest, EntriesAreSkippedOrKeptOneByOne)
{
    plist_t root = keywords::table(
        {{1, "Bold", false, true, {"Bold", std::string(512, 'B'), std::string(511, 'b')}},
         {2, std::string(512, 'D'), false, true, {"Long"}}, {3, std::string(511, 'd'), false, false, {"Fits"}},
         {4, "Unflagged", false, true, {"Unflagged"}}, {5, "Plain", true, true, {"Plain"}},
         {7, "First", false, true, {"First"}}, {7, "Second", false, false, {"Second"}}},
        {{"Bold", {1}, true}, {std::string(512, 'S'), {1}, true}, {std::string(511, 's'), {1}, false},
         {"Unweighted", {1}, false}});
    plist_t components = plist_dict_get_item(root, "Components");
    plist_dict_remove_item(plist_array_get_item(components, 3), "is-modifier");
    plist_dict_remove_item(plist_array_get_item(components, 4), "compounds");
    plist_array_append_item(components, plist_new_string("not a dictionary"));
    plist_dict_remove_item(plist_array_get_item(plist_dict_get_item(root, "Styles"), 3), "isweight");
    LoadRoot(root);

    const auto& loaded = LxFontStyleScan::gStyleComponents;
    ASSERT_EQ(keywords::constants(loaded), (Constants{1, 3, 5, 7, 7}));
    EXPECT_EQ(loaded[0].matchStrings, (std::vector<std::string>{"Bold", std::string(511, 'b')}));
    EXPECT_TRUE(loaded[0].compounds && !loaded[0].isModifier);
    EXPECT_TRUE(loaded[2].isModifier && !loaded[2].compounds);
    const auto& kept = LxFontStyleScan::gBuiltinStyles;
    ASSERT_EQ(kept.size(), 2u);
    EXPECT_TRUE(kept[0].display == "Bold" && kept[0].isWeight && !kept[1].isWeight);
    // A later component with the same constant replaces the earlier in the
    // map, while the scan still finds the earlier by its own word.
    SStyleComponent found;
    EXPECT_EQ(LxFontStyleScan::gStyleComponentMap.at(7).display, "Second");
    EXPECT_TRUE(LxFontStyleScan::MatchStyleComponent("First", found) && found.display == "First");
}

// Any number is a constant, read as signed 32-bit: negative ones, reals
// (cut towards zero, the lossy conversion still counts) and not strings.
TEST_F(KeywordTableTest, StyleConstantsAreAnyNumberReadAsSigned32Bit)
{
    plist_t root = keywords::table({{-3, "Minus", false, false, {"Minus"}}}, {{"Mixed", {-3}, false}});
    plist_t list = plist_dict_get_item(plist_array_get_item(plist_dict_get_item(root, "Styles"), 0), "components");
    for (plist_t item : {plist_new_string("9"), plist_new_real(9.0), plist_new_real(2.5), plist_new_uint(4294967296ull + 7)})
        plist_array_append_item(list, item);
    plist_dict_set_item(plist_array_get_item(plist_dict_get_item(root, "Components"), 0), "style-constant", plist_new_real(-3.0));
    LoadRoot(root);
    EXPECT_EQ(LxFontStyleScan::gStyleComponents.at(0).styleConstant, -3);
    EXPECT_EQ(LxFontStyleScan::gBuiltinStyles.at(0).components, (Constants{-3, 9, 2, 7}));
}

}  // namespace
