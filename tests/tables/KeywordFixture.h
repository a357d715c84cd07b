// A small keyword table built in memory, numbered like the shipped one, and
// a test fixture that swaps it in for the scanner's process-wide tables.
#pragma once

#include <gtest/gtest.h>
#include <plist/plist.h>

#include <cstdint>
#include <initializer_list>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "tables/LxFontStyleScan.h"

namespace keywords {

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

inline plist_t number(int32_t value) { return plist_new_uint(uint64_t(int64_t(value))); }
inline plist_t text(const std::string& value) { return plist_new_string(value.c_str()); }

inline plist_t dict(std::initializer_list<std::pair<const char*, plist_t>> items)
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

inline plist_t componentNode(const Component& c)
{
    return dict({{"display", text(c.display)}, {"is-modifier", plist_new_bool(c.modifier)},
                 {"compounds", plist_new_bool(c.compounds)}, {"style-constant", number(c.constant)},
                 {"match-strings", array(c.words, text)}});
}

inline plist_t styleNode(const Style& s)
{
    return dict({{"display", text(s.display)}, {"components", array(s.components, number)},
                 {"isweight", plist_new_bool(s.weight)}});
}

inline plist_t table(const std::vector<Component>& components, const std::vector<Style>& styles)
{
    return dict({{"Components", array(components, componentNode)}, {"Styles", array(styles, styleNode)}});
}

// The constants the scanner's fixed rules name: 0 Italic, 1 Bold, 4 and 15
// the semi forms, 5 Extra, 9 Light, 12 Roman, 13 Regular, 16 Demi, 35 Thin.
inline const std::vector<Component> kComponents = {
    {0, "Italic", false, true, {"Italic", "It"}}, {1, "Bold", false, true, {"Bold", "Bd"}}, {2, "Oblique", false, true, {"Oblique"}},
    {3, "Medium", false, true, {"Medium"}}, {4, "Semibold", false, true, {"Semibold", "Sb"}}, {5, "Extra", true, true, {"Extra"}},
    {6, "Black", false, true, {"Black"}}, {9, "Light", false, true, {"Light", "Lt"}}, {10, "Condensed", false, false, {"Condensed", "Cond"}},
    {12, "Roman", false, true, {"Roman"}}, {13, "Regular", false, true, {"Regular"}}, {15, "Semi", false, true, {"Semi"}},
    {16, "Demi", false, true, {"Demi"}}, {21, "Small", true, false, {"Small"}}, {22, "Caps", false, false, {"Caps"}},
    {23, "Old-Style Figures", false, false, {"OsF"}}, {35, "Thin", false, true, {"Thin"}}, {41, "Cyrillic", false, false, {"Cyrillic"}},
    {99, "Second Bold", false, false, {"Bold", "Heavy"}}};

inline const std::vector<Style> kStyles = {
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

inline std::vector<int32_t> constants(const std::vector<SStyleComponent>& components)
{
    std::vector<int32_t> out;
    for (const SStyleComponent& c : components) out.push_back(c.styleConstant);
    return out;
}

}  // namespace keywords
