#include <gtest/gtest.h>

#include "KeywordFixture.h"

namespace {

using keywords::Component;
using keywords::KeywordTableTest;
using keywords::Style;

std::string messageOfLoading(plist_t root)
{
    try {
        LxFontStyleScan::LoadStyleResources(root);
    } catch (const DataRetrieveError& error) {
        return error.what();
    }
    return "no error";
}

TEST_F(KeywordTableTest, MissingArraysAreDataRetrieveErrors)
{
    plist_t root = plist_new_dict();
    EXPECT_EQ(messageOfLoading(root), "KeywordTable.plist - Components array");
    plist_t components = plist_new_array();
    plist_array_append_item(components, keywords::componentNode({1, "Bold", false, true, {"Bold"}}));
    plist_dict_set_item(root, "Components", components);
    EXPECT_EQ(messageOfLoading(root), "KeywordTable.plist - Style array");
    // The components were loaded before the styles were found missing.
    ASSERT_EQ(LxFontStyleScan::gStyleComponents.size(), 1u);
    EXPECT_EQ(LxFontStyleScan::gStyleComponents[0].display, "Bold");
    plist_free(root);
    plist_t notADictionary = plist_new_array();
    EXPECT_EQ(messageOfLoading(notADictionary), "KeywordTable.plist - Components array");
    plist_free(notADictionary);
}

TEST_F(KeywordTableTest, EntriesMissingAKeyOrTooLongAreSkipped)
{
    plist_t root = keywords::table(
        {{1, "Bold", false, true, {"Bold", std::string(512, 'B'), std::string(511, 'b')}},
         {2, std::string(512, 'D'), false, true, {"Long"}},
         {3, std::string(511, 'd'), false, false, {"Fits"}}},
        {{"Bold", {1}, true}, {std::string(512, 'S'), {1}, true}});
    plist_t components = plist_dict_get_item(root, "Components");
    plist_t withoutModifierFlag = keywords::componentNode({4, "Unflagged", false, true, {"Unflagged"}});
    plist_dict_remove_item(withoutModifierFlag, "is-modifier");
    plist_array_append_item(components, withoutModifierFlag);
    plist_t withoutCompoundsFlag = keywords::componentNode({5, "Plain", true, true, {"Plain"}});
    plist_dict_remove_item(withoutCompoundsFlag, "compounds");
    plist_array_append_item(components, withoutCompoundsFlag);
    plist_array_append_item(components, plist_new_string("not a dictionary"));
    plist_t styles = plist_dict_get_item(root, "Styles");
    plist_t withoutWeightFlag = keywords::styleNode({"Unweighted", {1}, false});
    plist_dict_remove_item(withoutWeightFlag, "isweight");
    plist_array_append_item(styles, withoutWeightFlag);
    plist_t mixed = keywords::styleNode({"Mixed", {0}, false});
    plist_array_append_item(plist_dict_get_item(mixed, "components"), plist_new_string("9"));
    plist_array_append_item(plist_dict_get_item(mixed, "components"), plist_new_uint(9));
    plist_array_append_item(styles, mixed);
    LxFontStyleScan::gStyleComponentMap.clear();
    LxFontStyleScan::LoadStyleResources(root);
    plist_free(root);

    const auto& loaded = LxFontStyleScan::gStyleComponents;
    ASSERT_EQ(loaded.size(), 3u);
    EXPECT_EQ(loaded[0].matchStrings, (std::vector<std::string>{"Bold", std::string(511, 'b')}));
    EXPECT_EQ(loaded[1].styleConstant, 3);
    EXPECT_EQ(loaded[2].styleConstant, 5);
    EXPECT_TRUE(loaded[2].isModifier);
    EXPECT_FALSE(loaded[2].compounds);
    const auto& styles2 = LxFontStyleScan::gBuiltinStyles;
    ASSERT_EQ(styles2.size(), 2u);
    EXPECT_EQ(styles2[0].display, "Bold");
    EXPECT_TRUE(styles2[0].isWeight);
    EXPECT_EQ(styles2[1].components, (std::vector<int32_t>{0, 9}));
}

TEST_F(KeywordTableTest, LaterComponentsWithTheSameConstantReplaceEarlierOnesInTheMap)
{
    Load({{7, "First", false, true, {"First"}}, {7, "Second", false, false, {"Second"}}}, {});
    EXPECT_EQ(LxFontStyleScan::gStyleComponents.size(), 2u);
    EXPECT_EQ(LxFontStyleScan::gStyleComponentMap.at(7).display, "Second");
    // The scan still finds the first by its own word.
    SStyleComponent found;
    ASSERT_TRUE(LxFontStyleScan::MatchStyleComponent("First", found));
    EXPECT_EQ(found.display, "First");
}

TEST_F(KeywordTableTest, NegativeConstantsAreRead)
{
    Load({{-3, "Minus", false, false, {"Minus"}}}, {{"Minus", {-3}, false}});
    EXPECT_EQ(LxFontStyleScan::gStyleComponents.at(0).styleConstant, -3);
    EXPECT_EQ(LxFontStyleScan::gBuiltinStyles.at(0).components, (std::vector<int32_t>{-3}));
}

}  // namespace
