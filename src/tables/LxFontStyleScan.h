// Turns two font names into the built-in styles (named weights, widths,
// slopes and variants) they express, through the keyword table
// KeywordTable.plist: the names are split into capitalised words, the words
// become style components, a few fixed rules repair known ambiguities, and
// the built-in styles that fit the components best are picked.
#pragma once

#include <plist/plist.h>

#include <cstdint>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

// One keyword component.
struct SStyleComponent {
    int32_t styleConstant = 0;  // identity; the fixed rules know components by it
    bool isModifier = false;    // modifies the component that follows it
    bool compounds = false;     // combines with others into compound styles
    std::string display;
    std::vector<std::string> matchStrings;  // the words that select it
};

// One built-in style: a named list of components.
struct SBuiltinStyle {
    std::string display;
    std::vector<int32_t> components;
    bool isWeight = false;  // weight styles and the others compete separately
};

// The keyword table lacks one of its arrays.
class DataRetrieveError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

class LxFontStyleScan {
public:
    // Loads the tables on the first call that does not throw; safe when
    // several threads make it at once. A missing table loads nothing.
    static void Initialize();
    // Reads the keyword table from the resource folder.
    static void OSLoadStyleResources();
    // Fills the tables from a keyword table's root dictionary; throws
    // DataRetrieveError when "Components" or "Styles" is missing.
    static void LoadStyleResources(plist_t root);

    // The first component (in table order) with a match string equal to
    // `word`, case-sensitively; `out` is untouched when there is none.
    static bool MatchStyleComponent(const std::string& word, SStyleComponent& out);
    static std::vector<SStyleComponent> ScanFontForStyleComponents(const std::string& firstName,
                                                                   const std::string& secondName);
    static unsigned long FindBuiltinMatchesForStyleComponents(std::vector<SStyleComponent> components,
                                                              std::vector<SBuiltinStyle>& styles);
    static unsigned long ScanFontForBuiltinStyles(std::string firstName, std::string secondName,
                                                  std::vector<SBuiltinStyle>& styles);
    // Whether `userStyle` occurs in either name, ignoring ASCII case.
    static bool ScanFontForUserStyle(std::string firstName, std::string secondName,
                                     std::string userStyle);

    static std::vector<SStyleComponent> gStyleComponents;
    static std::map<int32_t, SStyleComponent> gStyleComponentMap;
    static std::vector<SBuiltinStyle> gBuiltinStyles;
    static bool g_bInitialized;
};
