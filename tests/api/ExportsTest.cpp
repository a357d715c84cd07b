#include <gtest/gtest.h>

#include <cstring>
#include <stdexcept>
#include <string>

#include "api/FontArray.h"
#include "typeprobe/typeprobe.h"

namespace {

// A heap array as the creation functions hand it out; released by the
// exported TP_SpecifierFree.
TP_FontArray* NewArray(unsigned long faces, uint32_t valid = kTP_AllAttributes)
{
    auto* array = new TP_FontArray;
    for (unsigned long i = 0; i < faces; ++i) {
        TP_FontSpecifier f;
        f.kindName = "OpenType - PS";
        f.familyName = "Family";
        f.postScriptName = "Family-Bold";
        f.fullName = "Family Bold";
        f.displayName = "Family Bold Menu";
        f.printerFontName = "/Fonts/FamilBol";
        f.platform = "crossplatform";
        f.kerningChecksum = 0x11111111;
        f.typeprobeChecksum = 0xFFFFFFFF;
        f.legacyTypeprobeChecksum = 0x33333333;
        f.outlineFileSize = 4096 + i;
        f.fondResourceID = 256;
        f.fondStyle = short(i);
        f.validAttributes = valid;
        array->Append(f);
    }
    return array;
}

struct ArrayHolder {
    TP_FontArray* array;
    ~ArrayHolder() { TP_SpecifierFree(array); }
};

using TextAccessor = unsigned long (*)(TP_FontArray*, unsigned long, char*, int);
using NumberAccessor = unsigned long (*)(TP_FontArray*, unsigned long, unsigned long*);

TEST(Exports, TextAccessorsDeliverTheirFieldUnderTheirBit)
{
    struct Case {
        TextAccessor get;
        unsigned long bit;
        const char* expected;
    } cases[] = {
        {TP_GetKindName, kTP_AttrKindName, "OpenType - PS"},
        {TP_GetFamilyName, kTP_AttrFamilyName, "Family"},
        {TP_GetPostScriptName, kTP_AttrPostScriptName, "Family-Bold"},
        {TP_GetFullName, kTP_AttrFullName, "Family Bold"},
        {TP_GetDisplayName, kTP_AttrDisplayName, "Family Bold Menu"},
        {TP_GetPrinterFont, kTP_AttrPrinterFontName, "/Fonts/FamilBol"},
        {TP_GetPlatform, kTP_AttrPlatform, "crossplatform"},
    };
    for (const Case& c : cases) {
        ArrayHolder all{NewArray(1)}, without{NewArray(1, kTP_AllAttributes & ~c.bit)};
        char buffer[64] = "untouched";
        EXPECT_EQ(c.get(without.array, 0, buffer, sizeof buffer), 5u) << c.expected;
        EXPECT_STREQ(buffer, "untouched");
        EXPECT_EQ(c.get(all.array, 0, buffer, sizeof buffer), 0u);
        EXPECT_STREQ(buffer, c.expected);
        EXPECT_EQ(c.get(nullptr, 0, buffer, sizeof buffer), 1u);
        EXPECT_EQ(c.get(all.array, 0, nullptr, sizeof buffer), 1u);
        EXPECT_THROW(c.get(all.array, 1, buffer, sizeof buffer), std::out_of_range);
    }
}

TEST(Exports, NumberAccessorsDeliverTheirFieldUnderTheirBit)
{
    struct Case {
        NumberAccessor get;
        unsigned long bit;
        unsigned long expected;
    } cases[] = {
        {TP_GetKerningChecksum, kTP_AttrKerningChecksum, 0x11111111},
        {TP_GetTypeprobeChecksum, kTP_AttrTypeprobeChecksum, 0xFFFFFFFF},
        {TP_GetLegacyTypeprobeChecksum, kTP_AttrLegacyTypeprobeChecksum, 0x33333333},
        {TP_GetOutlineFileSize, kTP_AttrOutlineFileSize, 4097},
    };
    for (const Case& c : cases) {
        ArrayHolder all{NewArray(2)}, without{NewArray(2, kTP_AllAttributes & ~c.bit)};
        unsigned long value = 42;
        EXPECT_EQ(c.get(without.array, 1, &value), 5u) << c.expected;
        EXPECT_EQ(value, 42u);
        EXPECT_EQ(c.get(all.array, 1, &value), 0u);
        EXPECT_EQ(value, c.expected);
        EXPECT_EQ(c.get(nullptr, 1, &value), 1u);
        EXPECT_EQ(c.get(all.array, 1, nullptr), 1u);
        EXPECT_THROW(c.get(all.array, 2, &value), std::out_of_range);
    }
}

TEST(Exports, CopyOutRuleAtTheBufferEdges)
{
    ArrayHolder holder{NewArray(1)};  // family name "Family": 6 characters
    struct Case {
        int length;
        const char* expected;
    } cases[] = {
        {7, "Family"}, {6, "Famil"}, {1, ""}, {0, "xxxxxxxxx"}, {-3, "xxxxxxxxx"},
    };
    for (const Case& c : cases) {
        char buffer[10] = "xxxxxxxxx";
        EXPECT_EQ(TP_GetFamilyName(holder.array, 0, buffer, c.length), 0u) << c.length;
        EXPECT_STREQ(buffer, c.expected) << c.length;
        if (c.length > 0) {  // nothing past the given length is written
            EXPECT_EQ(std::string(buffer + c.length, 9 - c.length), std::string(9 - c.length, 'x'));
        }
    }
}

TEST(Exports, FontCount)
{
    ArrayHolder holder{NewArray(3)};
    unsigned long count = 0;
    EXPECT_EQ(TP_GetFontCount(holder.array, &count), 0u);
    EXPECT_EQ(count, 3u);
    EXPECT_EQ(TP_GetFontCount(nullptr, &count), 1u);
    EXPECT_EQ(TP_GetFontCount(holder.array, nullptr), 1u);
}

TEST(Exports, FontIndexForFONDResourceID)
{
    ArrayHolder holder{NewArray(3)};
    unsigned long index = 77;
    EXPECT_EQ(TP_GetFontIndexForFONDResourceID(holder.array, 256, 2, &index), 0u);
    EXPECT_EQ(index, 2u);
    index = 77;
    EXPECT_EQ(TP_GetFontIndexForFONDResourceID(holder.array, 256, 5, &index), 1u);
    EXPECT_EQ(index, 0u);
    index = 77;
    EXPECT_EQ(TP_GetFontIndexForFONDResourceID(nullptr, 256, 0, &index), 1u);
    EXPECT_EQ(index, 0u);
}

TEST(Exports, MatchZeroesOutputsAndChecksIndexes)
{
    ArrayHolder a{NewArray(2)}, b{NewArray(1)};
    unsigned long matching = 9, differing = 9;
    EXPECT_EQ(TP_Match(a.array, 2, b.array, 0, &matching, &differing), 4u);
    EXPECT_EQ(matching, 0u);
    EXPECT_EQ(differing, 0u);
    matching = differing = 9;
    EXPECT_EQ(TP_Match(a.array, 0, b.array, 1, &matching, &differing), 4u);
    EXPECT_EQ(matching + differing, 0u);
    EXPECT_EQ(TP_Match(a.array, 0, nullptr, 0, &matching, &differing), 1u);
    EXPECT_EQ(TP_Match(a.array, 0, b.array, 0, nullptr, &differing), 1u);

    // Face 1 of A has a different outline size from face 0 of B.
    EXPECT_EQ(TP_Match(a.array, 1, b.array, 0, &matching, &differing), 0u);
    const unsigned long names = kTP_AttrKindName | kTP_AttrFamilyName | kTP_AttrPostScriptName |
                                kTP_AttrPrinterFontName;
    // Empty foundry and version match too.
    EXPECT_EQ(matching, names | kTP_AttrFoundryName | kTP_AttrVersion | kTP_AttrKerningChecksum);
    EXPECT_EQ(differing, static_cast<unsigned long>(kTP_AttrOutlineFileSize));
}

TEST(Exports, SpecifierFree)
{
    EXPECT_EQ(TP_SpecifierFree(nullptr), 1u);
    EXPECT_EQ(TP_SpecifierFree(NewArray(2)), 0u);  // the sanitizer build checks the release
}

}  // namespace
