#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tables/CClassificationMappings.h"

namespace {

const std::string kFixture = TYPEPROBE_TEST_DATA_DIR "/tables/DefaultClassifications.plist";

std::vector<std::string> texts(const std::vector<LxString>& list)
{
    std::vector<std::string> out;
    for (const LxString& item : list) out.push_back(item.str());
    return out;
}

TEST(ClassificationMappings, WholeFamilyNamesMatchIgnoringCase)
{
    CClassificationMappings mappings;
    mappings.LoadMappingsFromFile(kFixture);
    ASSERT_TRUE(mappings.IsLoaded());
    EXPECT_EQ(mappings.GetClassNameFromFontFamily("Helvetica").str(), "Sans Serif");
    EXPECT_EQ(mappings.GetClassNameFromFontFamily("HELVETICA").str(), "Sans Serif");
    EXPECT_EQ(mappings.GetClassNameFromFontFamily("\xC3\x89LAN").str(), "Serif");  // ÉLAN
    EXPECT_EQ(mappings.GetClassNameFromFontFamily("Helvetica Neue").str(), "--");
    EXPECT_EQ(mappings.GetClassNameFromFontFamily("helv").str(), "--");
    EXPECT_EQ(mappings.GetClassNameFromFontFamily("").str(), "--");
    EXPECT_EQ(mappings.GetClassNameFromFontFamily("\xFF\xFE").str(), "--");  // not UTF-8
}

TEST(ClassificationMappings, ValuesMustBeTextsThatFitTheBuffer)
{
    CClassificationMappings mappings;
    mappings.LoadMappingsFromFile(kFixture);
    EXPECT_EQ(mappings.GetClassNameFromFontFamily("edge").str(), std::string(1023, 'y'));
    EXPECT_EQ(mappings.GetClassNameFromFontFamily("overlong").str(), "--");
    EXPECT_EQ(mappings.GetClassNameFromFontFamily("numbered").str(), "--");
}

TEST(ClassificationMappings, TheTablesNoneIsListedAsUnknown)
{
    CClassificationMappings mappings;
    mappings.LoadMappingsFromFile(kFixture);
    std::vector<LxString> list{"stale"};
    mappings.GetListOfBuiltinClasses(list);
    EXPECT_EQ(texts(list), (std::vector<std::string>{"--", "Serif", "Sans Serif", "Script", "--"}));
    EXPECT_EQ(CClassificationMappings::GetUnknownClassificationName().str(), "--");
}

TEST(ClassificationMappings, ReplacementIsExactAndCounted)
{
    CClassificationMappings mappings;
    mappings.LoadMappingsFromFile(kFixture);
    EXPECT_EQ(mappings.ReplaceDefaultClassification(u"serif", u"Roman"), 0);
    EXPECT_EQ(mappings.ReplaceDefaultClassification(u"--", u"Unclassified"), 2);
    std::vector<LxString> list;
    mappings.GetListOfBuiltinClasses(list);
    EXPECT_EQ(texts(list),
              (std::vector<std::string>{"Unclassified", "Serif", "Sans Serif", "Script", "Unclassified"}));
}

TEST(ClassificationMappings, WithoutATableEverythingIsUnknown)
{
    CClassificationMappings mappings;
    mappings.LoadMappingsFromFile(TYPEPROBE_TEST_DATA_DIR "/tables/missing.plist");
    EXPECT_FALSE(mappings.IsLoaded());
    EXPECT_EQ(mappings.GetClassNameFromFontFamily("Helvetica").str(), "--");
    std::vector<LxString> list{"stale"};
    mappings.GetListOfBuiltinClasses(list);
    EXPECT_TRUE(list.empty());
    EXPECT_EQ(mappings.ReplaceDefaultClassification(u"None", u"--"), 0);
    // A root that is not a dictionary counts as no table.
    mappings.LoadMappingsFromFile(TYPEPROBE_TEST_DATA_DIR "/tables/FoundryNameTable.plist");
    EXPECT_FALSE(mappings.IsLoaded());
}

}  // namespace
