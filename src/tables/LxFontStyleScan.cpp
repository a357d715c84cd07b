// Scanning of font names into style components, with the fixed repairs.
#include "tables/LxFontStyleScan.h"

#include <algorithm>
#include <cctype>
#include <string_view>

#include "tables/StyleWords.h"

namespace {

// Style constants that the fixed rules know; the keyword table numbers its
// components to fit them.
enum : int32_t {
    kItalic = 0,
    kBold = 1,
    kSemiboldWord = 4,
    kExtra = 5,
    kLight = 9,
    kRoman = 12,
    kRegular = 13,
    kSemi = 15,
    kDemi = 16,
    kThin = 35,
};

constexpr long kNotSeen = -1;

bool contains(const std::string& text, std::string_view part, size_t from = 0)
{
    return text.find(part, from) != std::string::npos;
}

std::vector<std::string> splitWords(const std::string& name, bool multipleMaster)
{
    std::vector<std::string> words;
    // Words start after the first byte: the start of the family name never
    // begins a style word. Intended.
    size_t position = 1;
    while (position != std::string::npos && position < name.size()) {
        std::string word = local_styleSubstring(name, position, multipleMaster);
        if (!word.empty()) words.push_back(word);
    }
    return words;
}

SStyleComponent bareComponent(int32_t constant, bool isModifier)
{
    SStyleComponent component;
    component.styleConstant = constant;
    component.isModifier = isModifier;
    return component;
}

std::vector<SStyleComponent> componentsOf(const std::vector<std::string>& words, bool xlightRule)
{
    std::vector<SStyleComponent> components;
    for (const std::string& word : words) {
        SStyleComponent component;
        if (LxFontStyleScan::MatchStyleComponent(word, component)) {
            components.push_back(component);
        } else if (xlightRule && word == "Xlight") {
            components.push_back(bareComponent(kExtra, true));
            components.push_back(bareComponent(kLight, false));
        }
    }
    return components;
}

void appendInstanceWords(const std::string& firstName, std::vector<std::string>& a,
                         std::vector<std::string>& b)
{
    static const struct {
        const char* suffix;
        const char* first;
        const char* second;
    } kSuffixes[] = {
        {"_XC", "Extra", "Cond"}, {"_XL", "Extra", "Lt"},  {"_XB", "Extra", "Black"},
        {"_UB", "Ultra", "Black"}, {"_SB", "Semi", "Bold"},
    };
    for (const auto& suffix : kSuffixes) {
        if (!contains(firstName, suffix.suffix)) continue;
        for (auto* list : {&a, &b}) {
            list->push_back(suffix.first);
            list->push_back(suffix.second);
        }
    }
}

void eraseAt(std::vector<SStyleComponent>& components, long position)
{
    // A recorded position may lie past the end after earlier removals.
    if (position >= 0 && size_t(position) < components.size())
        components.erase(components.begin() + position);
}

void repair(std::vector<SStyleComponent>& components, const std::string& firstName,
            const std::string& secondName)
{
    long bold = kNotSeen, regular = kNotSeen, roman = kNotSeen, semi = kNotSeen;
    bool boldSeen = false, italicSeen = false, semiBold = false;
    const bool helveticaNeue = contains(firstName, "HelveticaNeue");
    for (size_t i = 0; i < components.size(); ++i) {
        const int32_t constant = components[i].styleConstant;
        if (constant == kBold) {
            boldSeen = true;
            bold = long(i);
        }
        if (constant == kItalic) italicSeen = true;
        if (constant == kRegular) regular = long(i);
        if (constant == kRoman) roman = long(i);
        if (constant == kSemi || constant == kSemiboldWord) {
            semi = long(i);
            semiBold = semiBold ||
                       (i + 1 < components.size() && components[i + 1].styleConstant == kBold) ||
                       constant == kSemiboldWord || contains(firstName, "Semibold") ||
                       contains(secondName, "Semibold");
        }
        if (constant == kThin && helveticaNeue) LxFontStyleScan::MatchStyleComponent("Light", components[i]);
    }
    // Positions are the ones recorded above, not adjusted for earlier
    // removals, so one removal can shift what a later one takes. Intended.
    if (italicSeen || boldSeen) {
        eraseAt(components, regular);
        eraseAt(components, roman);
    }
    if (semiBold && boldSeen) eraseAt(components, bold);
    if (semi != kNotSeen && !semiBold) eraseAt(components, semi);
}

std::string lowered(std::string text)
{
    for (char& c : text) c = char(std::tolower(static_cast<unsigned char>(c)));
    return text;
}

}  // namespace

bool LxFontStyleScan::MatchStyleComponent(const std::string& word, SStyleComponent& out)
{
    for (const SStyleComponent& component : gStyleComponents) {
        const auto& strings = component.matchStrings;
        if (std::find(strings.begin(), strings.end(), word) != strings.end()) {
            out = component;
            return true;
        }
    }
    return false;
}

std::vector<SStyleComponent> LxFontStyleScan::ScanFontForStyleComponents(const std::string& firstName,
                                                                         const std::string& secondName)
{
    const bool multipleMaster = contains(firstName, "MM");
    std::vector<std::string> a = splitWords(firstName, multipleMaster);
    std::vector<std::string> b = splitWords(secondName, multipleMaster);
    if (multipleMaster) appendInstanceWords(firstName, a, b);
    if (contains(firstName, "OsF")) {
        a.push_back("OsF");
        b.clear();
    }
    if (!multipleMaster) {
        if (contains(firstName, "SC", 1)) {
            a.push_back("Small");
            a.push_back("Caps");
        }
        if (contains(firstName, "CY", 1)) a.push_back("Cyrillic");
    }
    std::vector<SStyleComponent> ca = componentsOf(a, true);
    std::vector<SStyleComponent> cb = componentsOf(b, false);
    std::vector<SStyleComponent> result = cb.size() > ca.size() ? cb : ca;
    repair(result, firstName, secondName);
    // A trailing Demi means Demi Bold.
    if (!result.empty() && result.back().styleConstant == kDemi) result.push_back(bareComponent(kBold, false));
    return result;
}

unsigned long LxFontStyleScan::ScanFontForBuiltinStyles(std::string firstName, std::string secondName,
                                                        std::vector<SBuiltinStyle>& styles)
{
    styles.clear();
    return FindBuiltinMatchesForStyleComponents(ScanFontForStyleComponents(firstName, secondName),
                                                styles);
}

bool LxFontStyleScan::ScanFontForUserStyle(std::string firstName, std::string secondName,
                                           std::string userStyle)
{
    const std::string style = lowered(userStyle);
    return contains(lowered(firstName), style) || contains(lowered(secondName), style);
}
