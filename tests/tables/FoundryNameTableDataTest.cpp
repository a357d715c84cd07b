// The shipped foundry table: its shape, and lookups of real notices.
#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include "support/ByteView.h"
#include "support/ResourceDirectory.h"
#include "support/XCFUtils.h"
#include "tables/CFoundryNameTable.h"
#include "tables/TableValues.h"

namespace {

struct Entry {
    std::string foundry;
    std::string pattern;
};

std::vector<Entry> shippedEntries()
{
    std::vector<Entry> entries;
    std::string path = ResourceDirectory::FilePath("FoundryNameTable.plist");
    PlistHolder list(XCFUtils::XCFCreateCFPropertyListFromPath(path.c_str(), 0));
    for (uint32_t i = 0; i < TableArraySize(list.get()); ++i) {
        plist_t item = plist_array_get_item(list.get(), i);
        Entry entry;
        TableString(plist_dict_get_item(item, "FoundryName"), entry.foundry);
        TableString(plist_dict_get_item(item, "Pattern"), entry.pattern);
        entries.push_back(entry);
    }
    return entries;
}

TEST(FoundryNameTableData, HasManyLowerCasePatternsAndOneFallbackAtTheEnd)
{
    std::vector<Entry> entries = shippedEntries();
    ASSERT_GE(entries.size(), 150u);
    std::set<std::string> foundries;
    size_t fallbacks = 0;
    for (const Entry& entry : entries) {
        EXPECT_FALSE(entry.foundry.empty());
        EXPECT_EQ(entry.pattern, LxString(entry.pattern).ToLower().str());
        foundries.insert(entry.foundry);
        if (entry.pattern.empty()) ++fallbacks;
    }
    EXPECT_GE(foundries.size(), 150u);
    EXPECT_EQ(fallbacks, 1u);
    EXPECT_TRUE(entries.back().pattern.empty());
}

TEST(FoundryNameTableData, NoPatternIsHiddenByAnEarlierOneOfAnotherFoundry)
{
    std::vector<Entry> entries = shippedEntries();
    for (size_t later = 0; later < entries.size(); ++later) {
        for (size_t earlier = 0; earlier < later; ++earlier) {
            const Entry& first = entries[earlier];
            if (first.pattern.empty() || entries[later].pattern.find(first.pattern) == std::string::npos)
                continue;
            EXPECT_EQ(first.foundry, entries[later].foundry) << first.pattern << " hides " << entries[later].pattern;
        }
    }
}

TEST(FoundryNameTableData, RealNoticesFindTheirMaker)
{
    struct Case {
        const char* notice;
        const char* foundry;
    } cases[] = {
        {"Copyright (c) 2003 by Bitstream, Inc. All Rights Reserved.\nDejaVu changes are in public domain",
         "DejaVu"},
        {"Copyright (c) 2003 by Bitstream, Inc. All Rights Reserved.", "Bitstream"},
        {"Copyright (URW)++,Copyright 1999 by (URW)++ Design & Development", "URW"},
        {"Copyright 2006, 2009 for TeX Gyre extensions by B. Jackowski and J.M. Nowacki", "GUST e-foundry"},
        {"Digitized data copyright (c) 2010 Google Corporation.\nCopyright (c) 2012 Red Hat, Inc.",
         "Red Hat"},
        {"Copyright (c) 1985, 1987, 1989 Adobe Systems Incorporated. All Rights Reserved. Helvetica is a "
         "trademark of Linotype-Hell AG and/or its subsidiaries.",
         "Adobe"},
        {"Part of the digitally encoded machine readable outline data is copyrighted (c) 1981 Linotype AG",
         "Linotype"},
        {"(c) 2006 The Monotype Corporation. All Rights Reserved.", "Monotype"},
        {"Copyright 1996 Bitstream Inc. ITC Avant Garde is a registered trademark of International "
         "Typeface Corporation.",
         "Bitstream"},
        {"ITC Avant Garde Gothic", "ITC"},
        {"(c) 1990-99 Apple Computer Inc. (c) 1990-99 Type Solutions Inc.", "Apple"},
        {"Switch Sans by an unknown maker", "Unknown"},
    };
    CFoundryNameTable* table = CFoundryNameTable::GetSharedFoundryNameTable();
    for (const Case& c : cases)
        EXPECT_EQ(table->GetCanonicalFoundryName(0, c.notice).str(), c.foundry) << c.notice;
}

TEST(FoundryNameTableData, ToolCreatorCodesAreQuestionableButFoundryCodesAreKnown)
{
    CFoundryNameTable* table = CFoundryNameTable::GetSharedFoundryNameTable();
    for (uint32_t code : {fourCC("DMOV"), fourCC("movr"), fourCC("ASPF"), fourCC("ACp1"), fourCC("ACP1")})
        EXPECT_TRUE(table->IsQuestionableCreatorCode(code)) << fourCCString(code);
    EXPECT_FALSE(table->IsQuestionableCreatorCode(fourCC("MOVR")));
    LxString foundry;
    EXPECT_TRUE(table->IsKnownCreatorCode(fourCC("aspf"), foundry));
    EXPECT_EQ(foundry.str(), "Adobe");
}

}  // namespace
