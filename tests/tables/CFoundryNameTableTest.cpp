#include <gtest/gtest.h>

#include <string>

#include "support/ByteView.h"
#include "tables/CFoundryNameTable.h"

namespace {

const std::string kData = TYPEPROBE_TEST_DATA_DIR "/tables/";

class FoundryNameTableTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        table_.LoadTableFromFiles(kData + "FoundryNameTable.plist",
                                  kData + "QuestionableCreatorCodes.plist");
    }
    CFoundryNameTable table_;
};

TEST_F(FoundryNameTableTest, QuestionableCodesCompareAllFourBytesExactly)
{
    EXPECT_TRUE(table_.IsQuestionableCreatorCode(fourCC("DMOV")));
    EXPECT_TRUE(table_.IsQuestionableCreatorCode(fourCC("ACp1")));
    EXPECT_FALSE(table_.IsQuestionableCreatorCode(fourCC("ACP1")));
    EXPECT_FALSE(table_.IsQuestionableCreatorCode(fourCC("dmov")));
    EXPECT_FALSE(table_.IsQuestionableCreatorCode(0));
}

TEST_F(FoundryNameTableTest, CreatorCodesAreKnownIgnoringCase)
{
    LxString foundry;
    EXPECT_TRUE(table_.IsKnownCreatorCode(fourCC("ACME"), foundry));
    EXPECT_EQ(foundry.str(), "Acme Type");
    // The same letters that the questionable list tells apart by case.
    LxString upper, lower;
    EXPECT_TRUE(table_.IsKnownCreatorCode(fourCC("ACP1"), upper));
    EXPECT_TRUE(table_.IsKnownCreatorCode(fourCC("ACp1"), lower));
    EXPECT_EQ(upper.str(), "Type Works");
    EXPECT_EQ(lower.str(), "Type Works");
}

TEST_F(FoundryNameTableTest, UnknownZeroNamelessAndPrefilledCodesAreNotKnown)
{
    LxString foundry;
    EXPECT_FALSE(table_.IsKnownCreatorCode(0, foundry));
    EXPECT_FALSE(table_.IsKnownCreatorCode(fourCC("ZZZZ"), foundry));
    EXPECT_FALSE(table_.IsKnownCreatorCode(fourCC("NONM"), foundry));  // entry has no name
    EXPECT_TRUE(foundry.empty());
    LxString prefilled("Earlier");
    EXPECT_FALSE(table_.IsKnownCreatorCode(fourCC("ACME"), prefilled));
    EXPECT_EQ(prefilled.str(), "Earlier");
}

TEST_F(FoundryNameTableTest, PatternsMatchAnywhereInTheLowerCasedName)
{
    LxString foundry;
    EXPECT_TRUE(table_.ContainsKnownFoundryName("Copyright 1999 ACME TYPE FOUNDRY", &foundry, nullptr));
    EXPECT_EQ(foundry.str(), "Acme Type");
    EXPECT_TRUE(table_.ContainsKnownFoundryName("Type Works Ltd", nullptr, nullptr));
    // Patterns are not lower-cased: one stored with a capital never matches.
    EXPECT_FALSE(table_.ContainsKnownFoundryName("UPPER upper Upper", &foundry, nullptr));
}

TEST_F(FoundryNameTableTest, TheEarliestMatchingEntryWinsAndNamelessOnesAreSkipped)
{
    LxString foundry;
    EXPECT_TRUE(table_.ContainsKnownFoundryName("Lettering by Type Works for Acme", &foundry, nullptr));
    EXPECT_EQ(foundry.str(), "Acme Type");
    EXPECT_TRUE(table_.ContainsKnownFoundryName("a nameless design", &foundry, nullptr));
    EXPECT_EQ(foundry.str(), "Acme Nameless");
}

TEST_F(FoundryNameTableTest, FallbackEntriesMetOnTheWayGoToTheFallbackOutput)
{
    LxString foundry, fallback;
    EXPECT_FALSE(table_.ContainsKnownFoundryName("Nothing known", &foundry, &fallback));
    EXPECT_TRUE(foundry.empty());
    EXPECT_EQ(fallback.str(), "Last Fallback");
    // A match stops the walk before the last fallback entry.
    LxString early;
    EXPECT_TRUE(table_.ContainsKnownFoundryName("acme", &foundry, &early));
    EXPECT_EQ(early.str(), "First Fallback");
}

TEST_F(FoundryNameTableTest, CanonicalNamePrefersCodeThenNameThenFallback)
{
    EXPECT_EQ(table_.GetCanonicalFoundryName(fourCC("TWRK"), "Acme").str(), "Type Works");
    EXPECT_EQ(table_.GetCanonicalFoundryName(0, "Acme").str(), "Acme Type");
    EXPECT_EQ(table_.GetCanonicalFoundryName(fourCC("ZZZZ"), "Nobody").str(), "Last Fallback");
    CFoundryNameTable noFallback;
    noFallback.LoadTableFromFiles(kData + "NoFallbackFoundryNameTable.plist", "");
    EXPECT_EQ(noFallback.GetCanonicalFoundryName(0, "Nobody").str(), "--");
    EXPECT_EQ(noFallback.GetCanonicalFoundryName(0, "ACME").str(), "Acme Type");
}

TEST(FoundryNameTable, WithoutATableEveryQueryFails)
{
    CFoundryNameTable table;
    table.LoadTableFromFiles(kData + "missing.plist", kData + "missing.plist");
    LxString foundry, fallback;
    EXPECT_FALSE(table.IsKnownCreatorCode(fourCC("ACME"), foundry));
    EXPECT_FALSE(table.ContainsKnownFoundryName("acme", &foundry, &fallback));
    EXPECT_FALSE(table.IsQuestionableCreatorCode(fourCC("DMOV")));
    EXPECT_EQ(table.GetCanonicalFoundryName(fourCC("ACME"), "acme").str(), "--");
    // A table whose root is not an array is as good as none.
    table.LoadTableFromFiles(kData + "DefaultClassifications.plist", "");
    EXPECT_EQ(table.GetCanonicalFoundryName(0, "acme").str(), "--");
}

}  // namespace
