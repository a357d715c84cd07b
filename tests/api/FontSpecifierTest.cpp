#include <gtest/gtest.h>

#include "api/FontSpecifier.h"
#include "typeprobe/typeprobe.h"

namespace {

constexpr unsigned long kComparedNames = kTP_AttrKindName | kTP_AttrFamilyName |
                                         kTP_AttrPostScriptName | kTP_AttrFoundryName |
                                         kTP_AttrVersion | kTP_AttrPrinterFontName;
constexpr unsigned long kComparedNumbers = kTP_AttrKerningChecksum | kTP_AttrOutlineFileSize;

TP_FontSpecifier Face(const char* name)
{
    TP_FontSpecifier f;
    f.kindName = f.familyName = f.postScriptName = f.foundryName = f.version = f.printerFontName =
        name;
    f.fullName = f.displayName = f.platform = name;
    f.kerningChecksum = f.outlineFileSize = 7;
    f.typeprobeChecksum = f.legacyTypeprobeChecksum = 9;
    f.validAttributes = kTP_AllAttributes;
    return f;
}

TEST(FontSpecifier, DefaultsAreEmptyZeroAndMinusOne)
{
    TP_FontSpecifier f;
    EXPECT_TRUE(f.kindName.empty() && f.postScriptName.empty() && f.platform.empty());
    EXPECT_EQ(f.kerningChecksum + f.typeprobeChecksum + f.legacyTypeprobeChecksum, 0u);
    EXPECT_EQ(f.outlineFileSize, 0u);
    EXPECT_EQ(f.fondStyle, -1);
    EXPECT_EQ(f.firstResourceID, -1);
    EXPECT_EQ(f.fondResourceID, -1);
    EXPECT_EQ(f.fileCreator | f.fileType | f.outlineFileCreator | f.outlineFileType, 0u);
    EXPECT_EQ(f.validAttributes, 0u);
    EXPECT_EQ(f.MatchingAttributes(f), 0u);
    EXPECT_EQ(f.DifferingAttributes(f), 0u);
}

TEST(FontSpecifier, CaseOnlyDifferencesBothMatchAndDiffer)
{
    TP_FontSpecifier a = Face("Name"), b = Face("NAME");
    EXPECT_EQ(a.MatchingAttributes(b), kComparedNames | kComparedNumbers);
    EXPECT_EQ(a.DifferingAttributes(b), kComparedNames);
    EXPECT_EQ(a.DifferingAttributes(a), 0u);
}

TEST(FontSpecifier, UncomparedAttributesNeverCount)
{
    TP_FontSpecifier a = Face("x"), b = Face("x");
    b.fullName = b.displayName = b.platform = "other";
    b.typeprobeChecksum = b.legacyTypeprobeChecksum = 1;
    EXPECT_EQ(a.MatchingAttributes(b), kComparedNames | kComparedNumbers);
    EXPECT_EQ(a.DifferingAttributes(b), 0u);
}

TEST(FontSpecifier, EmptyAndZeroValues)
{
    TP_FontSpecifier a = Face("x"), b = Face("y");
    a.kerningChecksum = b.kerningChecksum = 0;  // zero on both: neither
    a.outlineFileSize = 0;                      // zero on one side: neither
    a.familyName = b.familyName = "";           // two empties match, never differ
    a.version = "";                             // one empty: neither
    EXPECT_EQ(a.MatchingAttributes(b), static_cast<unsigned long>(kTP_AttrFamilyName));
    EXPECT_EQ(a.DifferingAttributes(b),
              kComparedNames & ~static_cast<unsigned long>(kTP_AttrFamilyName | kTP_AttrVersion));
}

TEST(FontSpecifier, OnlyBitsValidInBothAreCompared)
{
    TP_FontSpecifier a = Face("x"), b = Face("y");
    a.validAttributes = kTP_AttrPostScriptName | kTP_AttrKerningChecksum;
    b.validAttributes = kTP_AttrPostScriptName | kTP_AttrVersion;
    b.kerningChecksum = 8;
    EXPECT_EQ(a.DifferingAttributes(b), static_cast<unsigned long>(kTP_AttrPostScriptName));
    b.postScriptName = "x";
    EXPECT_EQ(a.MatchingAttributes(b), static_cast<unsigned long>(kTP_AttrPostScriptName));
}

}  // namespace
