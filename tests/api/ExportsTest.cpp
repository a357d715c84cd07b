// The exported query functions on hand-built arrays: result codes, the
// copy-out rule, and how faces are compared, found and de-duplicated.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <stdexcept>
#include <string>
#include <vector>

#include "api/FontArray.h"
#include "common/SfntBuilder.h"
#include "support/ByteView.h"
#include "typeprobe/typeprobe.h"

namespace {

using TextAccessor = unsigned long (*)(TP_FontArray*, unsigned long, char*, int);
using NumberAccessor = unsigned long (*)(TP_FontArray*, unsigned long, unsigned long*);

TP_FontSpecifier Face(const char* name = "Name", uint32_t valid = kTP_AllAttributes)
{
    TP_FontSpecifier f;
    f.kindName = f.familyName = f.postScriptName = f.fullName = f.displayName = name;
    f.foundryName = "(URW)++ Design & Development", f.version = "Version 1.002;PS 001.002";
    f.printerFontName = "/Fonts/MyMM____.PFB", f.platform = "crossplatform";
    f.kerningChecksum = 0x11111111, f.typeprobeChecksum = 0xFFFFFFFF, f.legacyTypeprobeChecksum = 0x33333333;
    f.outlineFileSize = 4096, f.validAttributes = valid;
    return f;
}

TP_FontArray Array(const std::vector<TP_FontSpecifier>& faces)
{
    TP_FontArray array;
    for (const TP_FontSpecifier& face : faces) array.Append(face);
    return array;
}

// A number accessor in a text accessor's shape: the value, in hex, once one
// was written.
template <NumberAccessor get>
unsigned long Hex(TP_FontArray* array, unsigned long index, char* buffer, int length)
{
    unsigned long value = 0xDEAD;
    const unsigned long code = get(array, index, buffer ? &value : nullptr);
    if (value != 0xDEAD) std::snprintf(buffer, size_t(length), "%lx", value);
    return code;
}

// 1 for a null handle or output, 5 without the attribute's bit, else 0 and
// the value. Only TP_GetWindowsMMFile checks the index (1); the others let
// the array's range error escape (kept as it is).
TEST(Exports, PerFaceAccessorResultCodes)
{
    const struct { TextAccessor get; uint32_t bit; const char* value; bool checksIndex; } cases[] = {
        {TP_GetKindName, kTP_AttrKindName, "Name", false}, {TP_GetFamilyName, kTP_AttrFamilyName, "Name", false},
        {TP_GetPostScriptName, kTP_AttrPostScriptName, "Name", false}, {TP_GetFullName, kTP_AttrFullName, "Name", false},
        {TP_GetDisplayName, kTP_AttrDisplayName, "Name", false}, {TP_GetPlatform, kTP_AttrPlatform, "crossplatform", false},
        {TP_GetPrinterFont, kTP_AttrPrinterFontName, "/Fonts/MyMM____.PFB", false},
        {TP_GetVersion, kTP_AttrVersion, "1.002", false}, {TP_GetFoundryName, kTP_AttrFoundryName, "URW", false},
        {TP_GetLegacyFoundryName, kTP_AttrFoundryName, "URW", false},
        {TP_GetWindowsMMFile, kTP_AttrWindowsMMFile, "/Fonts/MyMM____.mmm", true},
        {Hex<TP_GetKerningChecksum>, kTP_AttrKerningChecksum, "11111111", false},
        {Hex<TP_GetOutlineFileSize>, kTP_AttrOutlineFileSize, "1000", false},
        {Hex<TP_GetTypeprobeChecksum>, kTP_AttrTypeprobeChecksum, "ffffffff", false},
        {Hex<TP_GetLegacyTypeprobeChecksum>, kTP_AttrLegacyTypeprobeChecksum, "33333333", false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.value);
        TP_FontArray all = Array({Face()}), without = Array({Face("Name", kTP_AllAttributes & ~c.bit)});
        char buffer[64] = "untouched";
        EXPECT_EQ(c.get(&without, 0, buffer, sizeof buffer), 5u);
        EXPECT_STREQ(buffer, "untouched");
        EXPECT_EQ(c.get(nullptr, 0, buffer, sizeof buffer), 1u);
        EXPECT_EQ(c.get(&all, 0, nullptr, sizeof buffer), 1u);
        EXPECT_EQ(c.get(&all, 0, buffer, sizeof buffer), 0u);
        EXPECT_STREQ(buffer, c.value);
        if (c.checksIndex) {
            EXPECT_EQ(c.get(&all, 1, buffer, sizeof buffer), 1u);
        } else {
            EXPECT_THROW(c.get(&all, 1, buffer, sizeof buffer), std::out_of_range);
        }
    }
    // The copy-out rule: at most length - 1 characters and a terminator,
    // nothing past the length, nothing at all for a length below 1.
    TP_FontArray array = Array({Face("Family")});
    const struct { int length; const char* expected; } lengths[] = {{7, "Family"}, {6, "Famil"}, {1, ""}, {0, "xxxxxxxxx"}, {-3, "xxxxxxxxx"}};
    for (const auto& c : lengths) {
        char buffer[10] = "xxxxxxxxx";
        EXPECT_EQ(TP_GetFamilyName(&array, 0, buffer, c.length), 0u) << c.length;
        EXPECT_STREQ(buffer, c.expected) << c.length;
        EXPECT_EQ(std::string(buffer + std::max(c.length, 1), 9 - std::max(c.length, 1)), std::string(9 - std::max(c.length, 1), 'x'));
    }
}

TEST(Exports, ArrayFunctionsResultCodes)
{
    TP_FontArray two = Array({Face("A"), Face("B")}), one = Array({Face("A")});
    unsigned long count = 9, matching = 9, differing = 9;
    EXPECT_EQ(TP_GetFontCount(&two, &count), 0u);
    EXPECT_EQ(count, 2u);
    EXPECT_EQ(TP_GetFontCount(nullptr, &count), 1u);
    EXPECT_EQ(TP_GetFontCount(&two, nullptr), 1u);
    // TP_Match zeroes both outputs before it checks the indexes.
    EXPECT_EQ(TP_Match(&two, 2, &one, 0, &matching, &differing), 4u);
    EXPECT_EQ(matching + differing, 0u);
    EXPECT_EQ(TP_Match(&two, 0, &one, 1, &matching, &differing), 4u);
    EXPECT_EQ(TP_Match(&two, 0, nullptr, 0, &matching, &differing), 1u);
    EXPECT_EQ(TP_Match(&two, 0, &one, 0, nullptr, &differing), 1u);
    EXPECT_EQ(TP_Match(&two, 1, &one, 0, &matching, &differing), 0u);
    EXPECT_EQ(differing, static_cast<unsigned long>(kTP_AttrKindName | kTP_AttrFamilyName | kTP_AttrPostScriptName));
    EXPECT_EQ(TP_SpecifierFree(nullptr), 1u);
    EXPECT_EQ(TP_SpecifierFree(new TP_FontArray(two)), 0u);
    TP_GetTypeprobeVersion(nullptr, nullptr);  // null outputs are skipped
    char reason[8];
    EXPECT_EQ(TP_ExplainRefusals(nullptr, reason, 8) + TP_ExplainRefusals("x", nullptr, 8), 2u);
    // The wrapping accessors check the index and need no attribute bit.
    for (auto get : {TP_GetWrapper, TP_GetContainer}) {
        EXPECT_EQ(get(&two, 2, reason, 8), 4u);
        EXPECT_EQ(get(nullptr, 0, reason, 8) + get(&two, 0, nullptr, 8), 2u);
        EXPECT_EQ(get(&two, 1, reason, 8), 0u);
    }
}

TEST(Exports, FontIndexForFONDResourceID)
{
    std::vector<TP_FontSpecifier> faces(4);
    faces[0].fondResourceID = 128, faces[0].fondStyle = 1;
    faces[1].fondResourceID = -2, faces[1].fondStyle = -1;     // sign-extended
    faces[2].fondResourceID = 65534, faces[2].fondStyle = 0;   // same low 16 bits
    faces[3].fondResourceID = 128, faces[3].fondStyle = 1;     // a second face: not the first
    TP_FontArray array = Array(faces);
    const struct { short id, style; unsigned long result, index; } cases[] = {{128, 1, 0, 0}, {-2, -1, 0, 1}, {-2, 0, 1, 0}, {128, 2, 1, 0}};
    for (const auto& c : cases) {
        unsigned long index = 77;
        EXPECT_EQ(TP_GetFontIndexForFONDResourceID(&array, c.id, c.style, &index), c.result) << c.id;
        EXPECT_EQ(index, c.index) << c.id;
    }
    unsigned long index = 77;
    EXPECT_EQ(TP_GetFontIndexForFONDResourceID(nullptr, 128, 1, &index), 1u);
    EXPECT_EQ(index, 0u);
}

// Texts the accessors derive: the version cut to its number, the foundry
// resolved through the shipped table ("mac"
// faces, any case, take the legacy path, where creator codes come first
// unless they are questionable), the multiple-master file of a .PFB only.
TEST(Exports, DerivedTexts)
{
    struct Row {
        TextAccessor get;
        const char *version = "", *foundry = "", *platform = "crossplatform", *printer = "/Fonts/MyMM____.PFB";
        uint32_t fileCreator = 0, outlineCreator = 0, valid = kTP_AllAttributes;
        unsigned long code = 0;
        const char* expected;
    };
    const Row rows[] = {
        {.get = TP_GetVersion, .version = "Version 1.002;PS 001.002", .expected = "1.002"}, {.get = TP_GetVersion, .version = "001.000", .expected = "001.000"},
        {.get = TP_GetVersion, .version = "v2.0-beta3 build", .expected = "2.0-"}, {.get = TP_GetVersion, .version = "no digits here", .expected = ""},
        {.get = TP_GetVersion, .expected = ""}, {.get = TP_GetFoundryName, .expected = "--"},
        {.get = TP_GetFoundryName, .foundry = "Copyright (c) 2003 by Bitstream, Inc. DejaVu changes", .expected = "DejaVu"},
        {.get = TP_GetFoundryName, .foundry = "Nobody in particular", .expected = "--"},
        {.get = TP_GetFoundryName, .foundry = "Nobody in particular", .platform = "MAC", .outlineCreator = fourCC("ASPF"), .expected = "Adobe"},
        {.get = TP_GetLegacyFoundryName, .foundry = "(URW)++ Design", .platform = "mac", .fileCreator = fourCC("DMOV"), .expected = "URW"},
        {.get = TP_GetLegacyFoundryName, .foundry = "Nobody in particular", .outlineCreator = fourCC("ASPF"), .expected = "Adobe"},
        {.get = TP_GetWindowsMMFile, .valid = kTP_AttrWindowsMMFile, .code = 1, .expected = "untouched"},
        {.get = TP_GetWindowsMMFile, .printer = "/Fonts/Other.ttf", .code = 1, .expected = "untouched"},
    };
    for (const Row& row : rows) {
        TP_FontSpecifier face = Face("Name", row.valid);
        face.version = row.version, face.foundryName = row.foundry, face.platform = row.platform, face.printerFontName = row.printer;
        face.fileCreator = row.fileCreator, face.outlineFileCreator = row.outlineCreator;
        TP_FontArray array = Array({face});
        char buffer[128] = "untouched";
        EXPECT_EQ(row.get(&array, 0, buffer, sizeof buffer), row.code) << row.expected;
        EXPECT_STREQ(buffer, row.expected) << row.version << row.foundry << row.printer;
    }
}

constexpr unsigned long kNames = kTP_AttrKindName | kTP_AttrFamilyName | kTP_AttrPostScriptName |
                                 kTP_AttrFoundryName | kTP_AttrVersion | kTP_AttrPrinterFontName;
constexpr unsigned long kNumbers = kTP_AttrKerningChecksum | kTP_AttrOutlineFileSize;

// Matching ignores case and counts two empties; differing is exact and
// needs both sides non-empty: the two are deliberately not complements.
TEST(Exports, MatchingAndDifferingAttributes)
{
    const auto same = [](const char* a, const char* b) {
        TP_FontSpecifier x = Face(a), y = Face(b);
        x.foundryName = x.version = x.printerFontName = a;
        y.foundryName = y.version = y.printerFontName = b;
        return std::make_pair(x, y);
    };
    auto [lower, upper] = same("Name", "NAME");
    auto [x, y] = same("x", "x");
    y.fullName = y.displayName = y.platform = "other";
    y.typeprobeChecksum = y.legacyTypeprobeChecksum = 1;
    auto [e1, e2] = same("x", "y");
    e1.kerningChecksum = e2.kerningChecksum = e1.outlineFileSize = 0;
    e1.familyName = e2.familyName = e1.version = "";
    auto [v1, v2] = same("x", "y");
    v1.validAttributes = kTP_AttrPostScriptName | kTP_AttrKerningChecksum;
    v2.validAttributes = kTP_AttrPostScriptName | kTP_AttrVersion;
    const struct { const char* what; TP_FontSpecifier a, b; unsigned long matching, differing; } cases[] = {
        {"case only", lower, upper, kNames | kNumbers, kNames},
        {"uncompared fields", x, y, kNames | kNumbers, 0},
        {"empty and zero", e1, e2, kTP_AttrFamilyName, kNames & ~(kTP_AttrFamilyName | kTP_AttrVersion)},
        {"only bits valid in both", v1, v2, 0, kTP_AttrPostScriptName},
        {"nothing valid", TP_FontSpecifier(), TP_FontSpecifier(), 0, 0},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(c.a.MatchingAttributes(c.b), c.matching) << c.what;
        EXPECT_EQ(c.a.DifferingAttributes(c.b), c.differing) << c.what;
    }
}

TEST(Exports, RemoveDups)
{
    struct Row { const char* name; int32_t firstResourceID, fondStyle; const char* tag; };
    const struct { const char* what; std::vector<Row> faces; std::vector<std::string> kept; } cases[] = {
        {"a later face with a resource and smaller style takes the first's place", {{"A", 0, 3, "a1"}, {"B", 0, 0, "b"}, {"A", 5, 1, "a2"}}, {"a2", "b"}},
        {"no resource of its own: no replacement", {{"A", 0, 3, "a1"}, {"A", 0, 1, "a2"}}, {"a1"}},
        {"equal style: no replacement", {{"A", 1, 3, "a1"}, {"A", 4, 3, "a2"}}, {"a1"}},
        {"the best so far is the one to beat", {{"A", 0, 5, "a1"}, {"A", 1, 2, "a2"}, {"A", 1, 4, "a3"}}, {"a2"}},
        {"empty names collapse", {{"", 0, 0, "e1"}, {"", 0, 0, "e2"}, {"", 0, 0, "e3"}}, {"e1"}},
        {"case forms keep entries and borrow across", {{"Abc", 0, 3, "up"}, {"abc", 5, 2, "low"}}, {"low", "low"}},
        {"each case form its own entry", {{"abc", 5, 2, "low"}, {"Abc", 0, 3, "up"}}, {"low", "up"}},
    };
    for (const auto& c : cases) {
        TP_FontArray array;
        for (const Row& row : c.faces) {
            TP_FontSpecifier f;
            f.postScriptName = row.name, f.familyName = row.tag, f.firstResourceID = row.firstResourceID, f.fondStyle = row.fondStyle;
            array.Append(f);
        }
        array.RemoveDups();
        std::vector<std::string> kept;
        for (const TP_FontSpecifier& f : array.faces()) kept.push_back(f.familyName.str());
        EXPECT_EQ(kept, c.kept) << c.what;
    }
}

TEST(Exports, PostScriptNameFromNamesTable)
{
    const auto named = testfonts::fontWithNames({{3, 1, 0x409, 6, testfonts::utf16be(u"Foo-Bold")}});
    const auto nameless = testfonts::sfnt(0x00010000, {{"head", "1234"}});
    int resourceFile = 0;
    char* handle = nullptr;
    const struct { const std::vector<uint8_t>& font; void* resourceFile; const char* expected; } cases[] = {
        {named, &resourceFile, "Foo-Bold"}, {named, nullptr, "untouched"}, {nameless, &resourceFile, "untouched"}};
    for (const auto& c : cases) {
        char buffer[32] = "untouched";
        TP_GetPostScriptNameFromNamesTable(reinterpret_cast<const char*>(c.font.data()), c.font.size(), c.resourceFile, &handle, 0, buffer, sizeof buffer);
        EXPECT_STREQ(buffer, c.expected);
    }
}

}  // namespace
