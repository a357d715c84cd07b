// The foundry and classification tables, on small tables in tests/data, and
// the folder the shipped tables are looked for in.
#include <gtest/gtest.h>

#include <climits>
#include <cstdlib>
#include <string>
#include <tuple>
#include <vector>

#include "support/ByteView.h"
#include "support/ResourceDirectory.h"
#include "tables/CClassificationMappings.h"
#include "tables/CFoundryNameTable.h"
#include "typeprobe/typeprobe.h"

namespace {

const std::string kData = TYPEPROBE_TEST_DATA_DIR "/tables/";

// Questionable codes compare all 32 bits; known codes ignore case: two codes
// that differ only in case are one foundry yet only one is questionable.
// Name patterns are found anywhere in the lower-cased name, in table order;
// fallback entries met on the way go to the fallback output.
TEST(FoundryNameTable, CreatorCodesAndNamePatterns)
{
    CFoundryNameTable table;
    table.LoadTableFromFiles(kData + "FoundryNameTable.plist", kData + "QuestionableCreatorCodes.plist");
    const struct { uint32_t code; bool questionable; const char* known; /* null: not known */ } codes[] = {
        {fourCC("DMOV"), true, nullptr}, {fourCC("dmov"), false, nullptr}, {fourCC("ACp1"), true, "Type Works"},
        {fourCC("ACP1"), false, "Type Works"}, {fourCC("ACME"), false, "Acme Type"}, {fourCC("ZZZZ"), false, nullptr},
        {fourCC("NONM"), false, nullptr} /* its entry has no name */, {0, false, nullptr}};
    for (const auto& c : codes) {
        LxString foundry;
        EXPECT_EQ(table.IsQuestionableCreatorCode(c.code), c.questionable) << fourCCString(c.code);
        EXPECT_EQ(table.IsKnownCreatorCode(c.code, foundry), c.known != nullptr) << fourCCString(c.code);
        EXPECT_EQ(foundry.str(), c.known ? c.known : "") << fourCCString(c.code);
    }
    LxString prefilled("Earlier");
    EXPECT_FALSE(table.IsKnownCreatorCode(fourCC("ACME"), prefilled));
    EXPECT_EQ(prefilled.str(), "Earlier");

    const struct { const char* name; const char* foundry; /* null: no match */ const char* fallback; } names[] = {
        {"Copyright 1999 ACME TYPE FOUNDRY", "Acme Type", "First Fallback"},
        {"Lettering by Type Works for Acme", "Acme Type", "First Fallback"},  // earliest entry wins
        {"a nameless design", "Acme Nameless", "First Fallback"},  // nameless entries are passed
        {"UPPER upper Upper", nullptr, "Last Fallback"},  // a stored capital never matches
    };
    for (const auto& c : names) {
        LxString foundry, fallback;
        EXPECT_EQ(table.ContainsKnownFoundryName(c.name, &foundry, &fallback), c.foundry != nullptr) << c.name;
        EXPECT_EQ(foundry.str() + "|" + fallback.str(), std::string(c.foundry ? c.foundry : "") + "|" + c.fallback) << c.name;
    }
    EXPECT_TRUE(table.ContainsKnownFoundryName("acme", nullptr, nullptr));
}

TEST(FoundryNameTable, CanonicalNamePrefersCodeThenNameThenFallbackThenUnknown)
{
    CFoundryNameTable table, noFallback;
    table.LoadTableFromFiles(kData + "FoundryNameTable.plist", kData + "QuestionableCreatorCodes.plist");
    noFallback.LoadTableFromFiles(kData + "NoFallbackFoundryNameTable.plist", "");
    EXPECT_EQ(table.GetCanonicalFoundryName(fourCC("TWRK"), "Acme").str(), "Type Works");
    EXPECT_EQ(table.GetCanonicalFoundryName(0, "Acme").str(), "Acme Type");
    EXPECT_EQ(table.GetCanonicalFoundryName(fourCC("ZZZZ"), "Nobody").str(), "Last Fallback");
    EXPECT_EQ(noFallback.GetCanonicalFoundryName(0, "Nobody").str(), "--");
    EXPECT_EQ(noFallback.GetCanonicalFoundryName(0, "ACME").str(), "Acme Type");
    // A root that is no array reads as no table: every query fails.
    CFoundryNameTable none;
    none.LoadTableFromFiles(kData + "DefaultClassifications.plist", kData + "missing.plist");
    LxString foundry, fallback;
    EXPECT_FALSE(none.IsKnownCreatorCode(fourCC("ACME"), foundry) || none.ContainsKnownFoundryName("acme", &foundry, &fallback) ||
                 none.IsQuestionableCreatorCode(fourCC("DMOV")));
    EXPECT_EQ(none.GetCanonicalFoundryName(fourCC("ACME"), "acme").str(), "--");
}

// Only the whole family name matches, ignoring case; values must be texts
// of at most 1023 bytes.
TEST(ClassificationMappings, Lookups)
{
    CClassificationMappings mappings;
    mappings.LoadMappingsFromFile(kData + "DefaultClassifications.plist");
    ASSERT_TRUE(mappings.IsLoaded());
    const std::pair<std::string, std::string> cases[] = {
        {"HELVETICA", "Sans Serif"}, {"\xC3\x89LAN", "Serif"}, {"Helvetica Neue", "--"}, {"helv", "--"},
        {"\xFF\xFE", "--"}, {"edge", std::string(1023, 'y')}, {"overlong", "--"}, {"numbered", "--"}};
    for (const auto& [family, expected] : cases)
        EXPECT_EQ(mappings.GetClassNameFromFontFamily(family).str(), expected) << family;
    // The table's "None" is listed as the unknown marker; replacement is exact.
    EXPECT_EQ(mappings.ReplaceDefaultClassification(u"serif", u"Roman"), 0);
    EXPECT_EQ(mappings.ReplaceDefaultClassification(u"--", u"Unclassified"), 2);
    std::vector<LxString> list{"stale"}, none{"stale"};
    mappings.GetListOfBuiltinClasses(list);
    EXPECT_EQ(list, (std::vector<LxString>{"Unclassified", "Serif", "Sans Serif", "Script", "Unclassified"}));

    CClassificationMappings noDictionary;  // a root that is no dictionary reads as no table
    noDictionary.LoadMappingsFromFile(kData + "FoundryNameTable.plist");
    noDictionary.GetListOfBuiltinClasses(none);
    EXPECT_TRUE(!noDictionary.IsLoaded() && none.empty() && noDictionary.GetClassNameFromFontFamily("Helvetica").str() == "--");
}

// The second family is asked only when the first is unknown.
TEST(GetClassificationFromFamily, NullsAndTheAlternateFamily)
{
    char buffer[256] = "keep";
    EXPECT_EQ(TP_GetClassificationFromFamily(nullptr, "Times", buffer, 8) + TP_GetClassificationFromFamily("Times", "Times", nullptr, 8), 2u);
    EXPECT_EQ(TP_GetClassificationFromFamily("Times", nullptr, buffer, 0), 0u);
    EXPECT_STREQ(buffer, "keep");
    for (auto [family, alternate, expected] : {std::tuple{"No Such Family", "TIMES", "Transitional Serif"}, {"Courier", "Times", "Monospaced"}}) {
        ASSERT_EQ(TP_GetClassificationFromFamily(family, alternate, buffer, sizeof buffer), 0u);
        EXPECT_STREQ(buffer, expected) << family;
    }
}

// The variable wins (without trailing slashes); empty, the folder comes from
// the loaded program's prefix: <build>/bin gives <build>/share/typeprobe.
TEST(ResourceDirectory, VariableThenTheProgramsPrefix)
{
    const char* saved = std::getenv("TYPEPROBE_RESOURCE_DIR");
    const std::string previous = saved ? saved : "";
    setenv("TYPEPROBE_RESOURCE_DIR", "/opt/tables//", 1);
    EXPECT_EQ(ResourceDirectory::FilePath("KeywordTable.plist"), "/opt/tables/KeywordTable.plist");
    setenv("TYPEPROBE_RESOURCE_DIR", "", 1);
    char resolved[PATH_MAX];
    ASSERT_NE(realpath(TYPEPROBE_BUILD_DIR, resolved), nullptr);
    EXPECT_EQ(ResourceDirectory::Path(), std::string(resolved) + "/share/typeprobe");
    saved ? setenv("TYPEPROBE_RESOURCE_DIR", previous.c_str(), 1) : unsetenv("TYPEPROBE_RESOURCE_DIR");
}

}  // namespace
