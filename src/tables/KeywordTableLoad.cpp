// Loading of the style scanner's keyword table.
#include <mutex>

#include "support/ResourceDirectory.h"
#include "support/XCFUtils.h"
#include "tables/LxFontStyleScan.h"
#include "tables/TableValues.h"

std::vector<SStyleComponent> LxFontStyleScan::gStyleComponents;
std::map<int32_t, SStyleComponent> LxFontStyleScan::gStyleComponentMap;
std::vector<SBuiltinStyle> LxFontStyleScan::gBuiltinStyles;
bool LxFontStyleScan::g_bInitialized = false;

namespace {

// Texts of the keyword table are read through a buffer of this size.
constexpr size_t kKeywordBufferSize = 512;

bool readNumber(plist_t node, int32_t& out)
{
    plist_type type = node ? plist_get_node_type(node) : PLIST_NONE;
    if (type != PLIST_UINT && type != PLIST_REAL) return false;
    long value = 0;
    // A 32-bit read keeps the approximate value of a lossy conversion.
    XCFUtils::GetLongFromCFValue(node, value);
    out = int32_t(value);
    return true;
}

bool readBool(plist_t dict, const char* key)
{
    bool value = false;
    XCFUtils::GetBoolFromCFValue(XCFUtils::GetCFBooleanFromDict(dict, key), value);
    return value;
}

bool readComponent(plist_t entry, SStyleComponent& component)
{
    plist_t display = XCFUtils::GetCFStringFromDict(entry, "display");
    plist_t constant = XCFUtils::GetCFNumberFromDict(entry, "style-constant");
    plist_t matchStrings = XCFUtils::GetCFArrayFromDict(entry, "match-strings");
    if (!display || !constant || !matchStrings || !XCFUtils::GetCFBooleanFromDict(entry, "is-modifier"))
        return false;
    if (!TableString(display, kKeywordBufferSize, component.display)) return false;
    component.isModifier = readBool(entry, "is-modifier");
    component.compounds = readBool(entry, "compounds");
    readNumber(constant, component.styleConstant);
    uint32_t count = TableArraySize(matchStrings);
    for (uint32_t i = 0; i < count; ++i) {
        std::string word;
        if (TableString(plist_array_get_item(matchStrings, i), kKeywordBufferSize, word))
            component.matchStrings.push_back(word);
    }
    return true;
}

bool readStyle(plist_t entry, SBuiltinStyle& style)
{
    plist_t display = XCFUtils::GetCFStringFromDict(entry, "display");
    plist_t components = XCFUtils::GetCFArrayFromDict(entry, "components");
    if (!display || !components || !XCFUtils::GetCFBooleanFromDict(entry, "isweight")) return false;
    if (!TableString(display, kKeywordBufferSize, style.display)) return false;
    style.isWeight = readBool(entry, "isweight");
    uint32_t count = TableArraySize(components);
    for (uint32_t i = 0; i < count; ++i) {
        int32_t constant = 0;
        if (readNumber(plist_array_get_item(components, i), constant))
            style.components.push_back(constant);
    }
    return true;
}

}  // namespace

void LxFontStyleScan::Initialize()
{
    // A load that throws leaves the flag unset, so the next call tries again.
    static std::once_flag loaded;
    std::call_once(loaded, [] {
        OSLoadStyleResources();
        g_bInitialized = true;
    });
}

void LxFontStyleScan::OSLoadStyleResources()
{
    std::string path = ResourceDirectory::FilePath("KeywordTable.plist");
    if (path.empty()) return;
    PlistHolder root(
        XCFUtils::XCFCreateCFPropertyListFromPath(path.c_str(), XCFUtils::kPropertyListImmutable));
    // Without a table the scanner silently knows no styles.
    if (!root) return;
    LoadStyleResources(root.get());
}

void LxFontStyleScan::LoadStyleResources(plist_t root)
{
    bool isDict = root && plist_get_node_type(root) == PLIST_DICT;
    plist_t components = isDict ? XCFUtils::GetCFArrayFromDict(root, "Components") : nullptr;
    plist_t styles = isDict ? XCFUtils::GetCFArrayFromDict(root, "Styles") : nullptr;
    if (!components) throw DataRetrieveError("KeywordTable.plist - Components array");
    gStyleComponents.clear();
    uint32_t count = TableArraySize(components);
    for (uint32_t i = 0; i < count; ++i) {
        plist_t entry = plist_array_get_item(components, i);
        SStyleComponent component;
        if (!entry || plist_get_node_type(entry) != PLIST_DICT || !readComponent(entry, component))
            continue;
        gStyleComponents.push_back(component);
        gStyleComponentMap[component.styleConstant] = component;
    }
    if (!styles) throw DataRetrieveError("KeywordTable.plist - Style array");
    gBuiltinStyles.clear();
    count = TableArraySize(styles);
    for (uint32_t i = 0; i < count; ++i) {
        plist_t entry = plist_array_get_item(styles, i);
        SBuiltinStyle style;
        if (entry && plist_get_node_type(entry) == PLIST_DICT && readStyle(entry, style))
            gBuiltinStyles.push_back(style);
    }
}
