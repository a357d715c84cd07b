// The keyword table: what loading keeps of it, what the scanner finds in
// names with it, and TP_GetStyles on the shipped one.
#include <gtest/gtest.h>
#include <plist/plist.h>

#include <cstdint>
#include <initializer_list>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "tables/LxFontStyleScan.h"
#include "typeprobe/typeprobe.h"

namespace {

using Words = std::vector<std::string>;
using Constants = std::vector<int32_t>;

// A small keyword table built in memory, numbered like the shipped one.
struct Component {
    int32_t constant;
    std::string display;
    bool modifier, compounds;
    std::vector<std::string> words;
};

struct Style {
    std::string display;
    std::vector<int32_t> components;
    bool weight;
};

plist_t number(int32_t value) { return plist_new_uint(uint64_t(int64_t(value))); }
plist_t text(const std::string& value) { return plist_new_string(value.c_str()); }

plist_t dict(std::initializer_list<std::pair<const char*, plist_t>> items)
{
    plist_t node = plist_new_dict();
    for (const auto& [key, value] : items) plist_dict_set_item(node, key, value);
    return node;
}

template <typename T, typename Make>
plist_t array(const std::vector<T>& items, Make make)
{
    plist_t list = plist_new_array();
    for (const T& item : items) plist_array_append_item(list, make(item));
    return list;
}

plist_t componentNode(const Component& c)
{
    return dict({{"display", text(c.display)}, {"is-modifier", plist_new_bool(c.modifier)},
                 {"compounds", plist_new_bool(c.compounds)}, {"style-constant", number(c.constant)},
                 {"match-strings", array(c.words, text)}});
}

plist_t styleNode(const Style& s)
{
    return dict({{"display", text(s.display)}, {"components", array(s.components, number)},
                 {"isweight", plist_new_bool(s.weight)}});
}

plist_t table(const std::vector<Component>& components, const std::vector<Style>& styles)
{
    return dict({{"Components", array(components, componentNode)}, {"Styles", array(styles, styleNode)}});
}

// The constants the scanner's fixed rules name: 0 Italic, 1 Bold, 4 and 15
// the semi forms, 5 Extra, 9 Light, 12 Roman, 13 Regular, 16 Demi, 35 Thin.
const std::vector<Component> kComponents = {
    {0, "Italic", false, true, {"Italic", "It"}}, {1, "Bold", false, true, {"Bold", "Bd"}}, {2, "Oblique", false, true, {"Oblique"}},
    {3, "Medium", false, true, {"Medium"}}, {4, "Semibold", false, true, {"Semibold", "Sb"}}, {5, "Extra", true, true, {"Extra"}},
    {6, "Black", false, true, {"Black"}}, {9, "Light", false, true, {"Light", "Lt"}}, {10, "Condensed", false, false, {"Condensed", "Cond"}},
    {12, "Roman", false, true, {"Roman"}}, {13, "Regular", false, true, {"Regular"}}, {15, "Semi", false, true, {"Semi"}},
    {16, "Demi", false, true, {"Demi"}}, {21, "Small", true, false, {"Small"}}, {22, "Caps", false, false, {"Caps"}},
    {23, "Old-Style Figures", false, false, {"OsF"}}, {35, "Thin", false, true, {"Thin"}}, {41, "Cyrillic", false, false, {"Cyrillic"}},
    {99, "Second Bold", false, false, {"Bold", "Heavy"}}};

const std::vector<Style> kStyles = {
    {"Light", {9}, true}, {"Regular", {13}, true}, {"Semibold", {4}, true}, {"Semibold", {15}, true},
    {"Demibold", {16, 1}, true}, {"Bold", {1}, true}, {"Extra Bold", {5, 1}, true}, {"Black", {6}, true},
    {"Extra Light", {5, 9}, true}, {"Thin", {35}, true}, {"Medium", {3}, true}, {"Italic", {0}, false},
    {"Condensed", {10}, false}, {"Small Caps", {21, 22}, false}, {"Old-Style Figures", {23}, false},
    {"Cyrillic", {41}, false}, {"Bold Italic", {1, 0}, false}, {"Italic Bold", {0, 1}, false},
    {"Extra Condensed", {5, 10}, false}, {"Bold Condensed", {1, 10}, false}};

// Swaps the fixture table in for the test and the previous tables back
// afterwards; the shipped table is loaded first so that a later
// Initialize() does not replace the fixture.
class KeywordTableTest : public ::testing::Test {
protected:
    static auto tables()
    {
        return std::tie(LxFontStyleScan::gStyleComponents, LxFontStyleScan::gStyleComponentMap,
                        LxFontStyleScan::gBuiltinStyles);
    }
    void SetUp() override
    {
        LxFontStyleScan::Initialize();
        saved_ = tables();
        LoadRoot(table(kComponents, kStyles));
    }
    void TearDown() override { tables() = saved_; }
    // Takes the root and frees it.
    static void LoadRoot(plist_t root)
    {
        LxFontStyleScan::gStyleComponentMap.clear();
        LxFontStyleScan::LoadStyleResources(root);
        plist_free(root);
    }

private:
    std::tuple<std::vector<SStyleComponent>, std::map<int32_t, SStyleComponent>, std::vector<SBuiltinStyle>> saved_;
};

std::vector<int32_t> constants(const std::vector<SStyleComponent>& components)
{
    std::vector<int32_t> out;
    for (const SStyleComponent& c : components) out.push_back(c.styleConstant);
    return out;
}

TEST_F(KeywordTableTest, MissingArraysAreDataRetrieveErrors)
{
    plist_t noStyles = table({{1, "Bold", false, true, {"Bold"}}}, {});
    plist_dict_remove_item(noStyles, "Styles");
    for (auto [root, message] : {std::pair{plist_new_dict(), "Components"}, {plist_new_array(), "Components"}, {noStyles, "Style"}}) {
        std::string what = "no error";
        try { LxFontStyleScan::LoadStyleResources(root); } catch (const DataRetrieveError& error) { what = error.what(); }
        EXPECT_EQ(what, "KeywordTable.plist - " + std::string(message) + " array");
        plist_free(root);
    }
    // The components were loaded before the styles were found missing.
    EXPECT_EQ(constants(LxFontStyleScan::gStyleComponents), Constants{1});
}

// Each entry is skipped or kept on its own: a missing key, a text of 512
// bytes (the reading buffer holds 511) or an entry that is no dictionary.
TEST_F(KeywordTableTest, EntriesAreSkippedOrKeptOneByOne)
{
    plist_t root = table(
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
    ASSERT_EQ(constants(loaded), (Constants{1, 3, 5, 7, 7}));
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
    plist_t root = table({{-3, "Minus", false, false, {"Minus"}}}, {{"Mixed", {-3}, false}});
    plist_t list = plist_dict_get_item(plist_array_get_item(plist_dict_get_item(root, "Styles"), 0), "components");
    for (plist_t item : {plist_new_string("9"), plist_new_real(9.0), plist_new_real(2.5), plist_new_uint(4294967296ull + 7)})
        plist_array_append_item(list, item);
    plist_dict_set_item(plist_array_get_item(plist_dict_get_item(root, "Components"), 0), "style-constant", plist_new_real(-3.0));
    LoadRoot(root);
    EXPECT_EQ(LxFontStyleScan::gStyleComponents.at(0).styleConstant, -3);
    EXPECT_EQ(LxFontStyleScan::gBuiltinStyles.at(0).components, (Constants{-3, 9, 2, 7}));
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
        EXPECT_EQ(constants(LxFontStyleScan::ScanFontForStyleComponents(c.first, c.second)), c.found)
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
    LoadRoot(table(kComponents, {{"Mystery Bold", {1234, 1}, true}, {"Italic", {0}, false}}));
    EXPECT_EQ(stylesOf("X-BoldBoldItalic"), (Words{"Mystery Bold", "Italic"}));
    LoadRoot(table({}, {}));
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
