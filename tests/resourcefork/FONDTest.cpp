// Font family records: the bounds every reader keeps, style names and
// printer-font names, and double-byte families.
#include <gtest/gtest.h>

#include "common/FondBuilder.h"
#include "common/MacFixtures.h"
#include "resourcefork/FONDStyleNames.h"
#include "resourcefork/PascalStrings.h"
#include "resourcefork/PrinterFontNames.h"
#include "resourcefork/TypeprobeResourceFile.h"
#include "support/Refusal.h"

namespace {

using namespace fondbuilder;
using namespace macfixtures;

ResourceHandlePtr Handle(const Bytes& data) { return std::make_unique<ResourceHandle>(ResourceHandle{fourCC("FOND"), 128, true, "Family", data, 0}); }

std::string Pascal(const unsigned char* p) { return std::string(PascalText(p)); }

// Any open file: the FOND questions read only the handle they are given.
std::unique_ptr<TypeprobeResourceFile> AnyFile() { return TypeprobeResourceFile::initWithFile(CorpusPath("ps-family/DejaVuSerif.bin"), true); }

TEST(PascalStrings, StayInsideTheirLimits)
{
    unsigned char dst[kPascalBufferSize], src[kPascalBufferSize];
    const struct { std::string dst, src; size_t limit; std::string expected; } appends[] = {
        {std::string(200, 'a'), std::string(100, 'b'), kPascalBufferSize, std::string(200, 'a') + std::string(55, 'b')},
        {"abc", "bbbbbbbbbb", 10, "abcbbbbbb"}, {"abc", "def", 7, "abcdef"}, {"abcdefghij", "x", 10, "abcdefghij"},
    };
    for (const auto& c : appends) {
        SetPascalText(c.dst, dst, sizeof dst);
        SetPascalText(c.src, src, sizeof src);
        AppendPascalString(dst, src, c.limit);
        EXPECT_EQ(Pascal(dst), c.expected) << c.dst << " + " << c.src;
    }
    SetPascalText("hello", src, sizeof src);
    for (auto [limit, expected] : {std::pair<size_t, const char*>{6, "hello"}, {5, "hell"}, {1, ""}})
        EXPECT_EQ((CopyPascalString(src, dst, limit), Pascal(dst)), expected) << limit;
    CopyPascalString(nullptr, dst, sizeof dst);
    EXPECT_EQ(dst[0], 0);
    SetPascalText(" ~\x1F\x7F\x80Z", dst, sizeof dst);
    CopyPascalStringAsciiLimit(dst, dst, sizeof dst);
    EXPECT_EQ(Pascal(dst), " ~???Z");

    const Bytes list = {3, 'o', 'n', 'e', 3, 't', 'w', 'o', 5, 't', 'h'};
    const struct { int n; size_t limit; const char* expected; } names[] = {
        {2, sizeof dst, "two"}, {1, 3, "on"}, {3, sizeof dst, ""}, {4, sizeof dst, ""}, {0, sizeof dst, ""}, {-1, sizeof dst, ""}};
    for (const auto& c : names) EXPECT_EQ((GetIndStyleName(ByteView(list), c.n, dst, c.limit), Pascal(dst)), c.expected) << c.n;
}

TEST(FOND, StyleIndexFollowsTheStyleBits)
{
    for (auto [style, index] : {std::pair<int, int>{0x00, 0}, {0x01, 1}, {0x02, 2}, {0x03, 3}, {0x04, 0}, {0x08, 4}, {0x10, 8},
                                {0x20, 16}, {0x40, 32}, {0x60, 16}, {0x7F, 31}, {0x5B, 47}})
        EXPECT_EQ(GetStyleIndex(style), index) << style;
}

TEST(FOND, PrinterFileNamesFollowTheFiveThreeThreeRule)
{
    const std::pair<const char*, const char*> cases[] = {
        {"Helvetica-BoldOblique", "HelveBolObl"}, {"ITC-Garamond-Bold", "GaramBol"}, {"Minion_MM", "Minio"},
        {"Univers-55", "Unive55"}, {"Univers-57Condensed", "Unive5Con"}, {"Caf\xE9-Bold", "Caf?Bol"}, {"", ""},
        {"Name_", "Name_"},  // the last character is never examined
    };
    for (auto [psName, fileName] : cases) {
        unsigned char in[kPascalBufferSize], out[kPascalBufferSize];
        SetPascalText(psName, in, sizeof in);
        GetPostScriptFontFileName(in, out);
        EXPECT_EQ(Pascal(out), fileName) << psName;
    }
}

TEST(FOND, PostScriptNamesFromTheStyleMappingTable)
{
    // "Times" with a bold-italic descriptor naming a hyphen and "BoldItalic";
    // name codes past the string count (9) or negative (-3) give the base
    // name, the last string (6) string 1 twice.
    std::vector<int8_t> codes = {0, 9, -3, 2, 6};
    codes.resize(48);
    const Bytes good = BuildFond({.entries = {{12, 0, 200}, {12, 3, 201}}, .nameCodes = codes,
                                  .strings = {"Times", std::string("\x03\x04", 2), "-", "BoldItalic", "Bold", "\x01\x01"}});
    const size_t table = 54 + 12, strings = table + 60;
    const struct { const char* what; size_t at; Bytes bytes; int style; const char* name; } cases[] = {
        {"plain", 0, {}, 0, "Times"},
        {"descriptor", 0, {}, 3, "Times-BoldItalic"},
        {"code past the count", 0, {}, 1, "Times"},
        {"negative code", 0, {}, 2, "Times"},
        {"code equal to the count", 0, {}, 0x08, "TimesTimesTimes"},
        {"non-ASCII", strings + 2, {0xA5}, 3, "T?mes-BoldItalic"},
        {"table offset past the end", 24, {0x7F, 0xFF, 0xFF, 0xF0}, 3, ""},
        {"table offset wraps", 24, {0xFF, 0xFF, 0xFF, 0xFF}, 3, ""},
        {"base name runs off the end", strings, {0xF0}, 3, ""},
        {"descriptor names a string past the end", strings + 6 + 2, {0x7F}, 3, "Times-"},
        {"descriptor runs off the end", strings + 6, {0x90}, 3, "Times"},
        {"a long string walks backwards", strings + 6 + 3, {0x90}, 3, nullptr},
        {"string count larger than the table", table + 58, {0x7F, 0xFF}, 3, "Times-BoldItalic"},
    };
    unsigned char name[kPascalBufferSize];
    for (const auto& c : cases) {
        Bytes damaged = good;
        std::copy(c.bytes.begin(), c.bytes.end(), damaged.begin() + std::ptrdiff_t(c.at));
        GetPrinterFontNameFromResource(Handle(damaged).get(), c.style, name, sizeof name);
        if (c.name) {
            EXPECT_EQ(Pascal(name), c.name) << c.what;
        }
    }
    for (size_t length = 0; length < good.size(); ++length)  // no read past the handle
        GetPrinterFontNameFromResource(Handle(Slice(good, 0, length)).get(), 3, name, sizeof name);
    GetPrinterFontNameFromResource(Handle(Slice(good, 0, 51)).get(), 0, name, sizeof name);
    EXPECT_EQ(Pascal(name), "");
}

TEST(FOND, EveryReaderStaysInsideTheRecord)
{
    // A double-byte family (ID 0x4000), a bitmap of style 1, an outline of
    // style 2, then its style-mapping table at 66.
    FondRecipe recipe{.familyID = 0x4000, .entries = {{12, 1, 5}, {0, 2, 6}}, .strings = {"A-B-C"}};
    const Bytes full = BuildFond(recipe);
    auto file = AnyFile();
    const struct { size_t length; uint32_t styleOffset; bool doubleByte; std::vector<int16_t> styles; int16_t secondID; const char* reason; } cases[] = {
        {51, 0, false, {}, -1, "FOND: 51 bytes, shorter than its header (52 bytes)"}, {52, 66, true, {}, -1, ""},
        {59, 66, true, {}, -1, "FOND: 2 association entries claimed, the record (59 bytes) holds 0"},
        {60, 66, true, {1}, -1, "holds 1"}, {65, 66, true, {1}, -1, "holds 1"}, {66, 66, true, {1, 2}, 6, ""},
    };
    for (const auto& c : cases) {
        RefusalLog log;
        auto fond = Handle(Slice(full, 0, c.length));
        EXPECT_EQ(file->getStyleOffsetFromFOND(fond.get()), c.styleOffset) << c.length;
        EXPECT_EQ(file->isDoubleByteFOND(fond.get()), c.doubleByte) << c.length;
        EXPECT_EQ(file->getSortedStylesForFOND(fond.get()), c.styles) << c.length;
        EXPECT_EQ(file->getResIDForFOND(fond.get(), 1), c.secondID) << c.length;
        EXPECT_EQ(file->styleExists(2, fond.get()), c.secondID != -1) << c.length;
        EXPECT_EQ(file->shouldHavePrinterFile(fond.get(), 2), c.secondID == -1) << c.length;
        EXPECT_EQ(log.text().empty(), !*c.reason) << c.length;
        EXPECT_NE(log.text().find(c.reason), std::string::npos) << c.length << ": " << log.text();
    }
    EXPECT_EQ(file->getResIDForFOND(nullptr, 0), -1);
    // Counts that claim more entries than the record holds, or fewer than none.
    recipe.strings.clear();
    Bytes claimed = BuildFond(recipe);
    claimed.resize(claimed.size() + 3);
    const struct { uint8_t count; std::vector<int16_t> styles; const char* reason; } counts[] = {
        {0x7F, {1, 2}, "FOND: 32640 association entries claimed, the record (69 bytes) holds 2"},
        {0x80, {}, "FOND: negative association entry count (-32639)"}, {0xFF, {}, ""}};
    for (auto [count, styles, reason] : counts) {
        claimed[52] = claimed[53] = count;
        RefusalLog log;
        EXPECT_EQ(file->getSortedStylesForFOND(Handle(claimed).get()), styles) << int(count);
        EXPECT_EQ(log.text(), reason);
        EXPECT_EQ(file->getResIDForFOND(Handle(claimed).get(), 2), -1);
    }
}

TEST(FOND, SortedStylesTieTheBoundsTestToTheFONDsPosition)
{
    // The k-th FOND's entries count only when it holds 54 + 6 x (k + 1)
    // bytes (intended): the second, one entry in 60 bytes, gives nothing.
    TempDir dir;
    WriteFile(dir / "f.dfont", ResourceFile({{"FOND", 10, "A", BuildFond({.entries = {{12, 0, 1}}})},
                                             {"FOND", 20, "B", BuildFond({.entries = {{12, 1, 2}}})},
                                             {"FOND", 30, "C", BuildFond({.entries = {{12, 2, 3}, {12, 4, 4}, {12, 8, 5}}})}}));
    auto file = TypeprobeResourceFile::initWithFile(dir / "f.dfont", true);
    ASSERT_TRUE(file);
    EXPECT_EQ(file->getSortedStyles(), (std::vector<int16_t>{0, 2, 4, 8}));
}

TEST(FOND, PrinterFilesAndPaths)
{
    // Two families name "SerifBol" for a bitmap style; a third family's
    // outline for "Times" takes "Times" off the list again.
    // The double-byte family's name runs up to its second "-", "/" kept as ":".
    const Bytes bold = BuildFond({.entries = {{12, 2, 1}}, .strings = {"Serif-Bold"}});
    TempDir dir;
    WriteFile(dir / "fonts/suitcase", ResourceFile({{"FOND", 1, "Times", BuildFond({.entries = {{12, 0, 3}, {0, 1, 4}}, .strings = {"Times"}})},
                                                   {"FOND", 2, "Serif", bold}, {"FOND", 3, "Serif", bold},
                                                   {"FOND", 4, "Ryumin", BuildFond({.international = 1, .entries = {{12, 4, 5}}, .strings = {"../outside-x-y"}})}}));
    WriteFile(dir / "fonts/SerifBol", Text("printer font"));
    WriteFile(dir / "fonts/..:outside-x", Text("printer font"));
    WriteFile(dir / "outside-x", Text("beside the fonts folder"));
    std::filesystem::create_directory(dir / "fonts/Times");
    auto file = TypeprobeResourceFile::initWithFile(dir / "fonts/suitcase", true);
    ASSERT_TRUE(file);
    std::vector<std::string> files;
    for (const LxString& path : file->getPrinterFiles()) files.push_back(path.str());
    EXPECT_EQ(files, (std::vector<std::string>{dir / "fonts/SerifBol", dir / "fonts/..:outside-x"}));

    auto fond = [&](int16_t id) { return file->getResourceHandleForType(fourCC("FOND"), id); };
    EXPECT_EQ(CreatePrinterPath(file.get(), fond(2).get(), 2).value_or("").str(), dir / "fonts/SerifBol");
    EXPECT_EQ(CreatePrinterPath(file.get(), fond(4).get(), 4).value_or("").str(), dir / "fonts/..:outside-x");
    EXPECT_FALSE(CreatePrinterPath(file.get(), fond(1).get(), 0));  // a folder
    EXPECT_FALSE(CreatePrinterPath(file.get(), fond(1).get(), 1));  // an outline
    EXPECT_FALSE(CreatePrinterPath(nullptr, fond(2).get(), 2));
    // A double-byte name with one hyphen gives no name and no path; the
    // 5+3+3 name keeps a "/" after the first letter.
    const auto osaka = Handle(BuildFond({.international = 1, .entries = {{12, 4, 5}}, .strings = {"Osaka-Mono"}}));
    EXPECT_EQ(file->getPSPrinterNameForFOND(osaka.get(), 4).str(), "");
    EXPECT_FALSE(CreatePrinterPath(file.get(), osaka.get(), 4));
    EXPECT_EQ(file->getPSPrinterNameForFOND(Handle(BuildFond({.entries = {{12, 4, 5}}, .strings = {"A/../x"}})).get(), 4).str(), "A:..:");
}

TEST(FOND, DoubleByteFamilyIDsAndNameEncodings)
{
    // The first entry's size decides how every entry is probed (intended).
    const std::string mincho = "\x96\xBE\x92\xA9", japanese = "\xE6\x98\x8E\xE6\x9C\x9D",
                      roman = "\xC3\xB1\xC3\xA6\xC3\xAD\xC2\xA9";  // Shift-JIS, and as each reads it
    const FondRecipe outline{.international = 1, .entries = {{0, 0, 500}}},
        bitmap{.international = 1, .entries = {{12, 0, 501}, {10, 0, 502}}},
        bitmapWithNames{.international = 1, .entries = bitmap.entries, .strings = {"Ryumin-Light-83pv-RKSJ-H"}};
    const struct { const char* what; std::vector<TestResource> extra; FondRecipe recipe; std::string expected; } cases[] = {
        {"Type 1 CID outline", {{"sfnt", 500, std::nullopt, Text("typ1 data")}}, outline, japanese},
        {"TrueType outline", {{"sfnt", 500, std::nullopt, Text(std::string("\0\1\0\0 data", 9))}}, outline, roman},
        {"no outline", {}, outline, roman},
        {"bitmap with a FONT", {{"FONT", 502, std::nullopt, Text("f")}}, bitmap, roman},
        {"bitmap without FONTs", {}, bitmap, roman},
        {"bitmap without FONTs, with a style table", {}, bitmapWithNames, japanese},
    };
    for (const auto& c : cases) {
        std::vector<TestResource> resources = c.extra;
        resources.push_back({"FOND", 1, mincho, BuildFond(c.recipe)});
        TempDir dir;
        WriteFile(dir / "f.dfont", ResourceFile(resources));
        auto family = TypeprobeResourceFile::initWithFile(dir / "f.dfont", true);
        ASSERT_TRUE(family) << c.what;
        auto fond = family->getResourceHandleForType(fourCC("FOND"), 1);
        EXPECT_EQ(family->getResourceNameFromFOND(fond.get()).str(), c.expected) << c.what;
    }
}

TEST(FOND, PurgingAndPromotingEditTheTableAndTheStyleNames)
{
    // Styles 0, 1 (bold: "Times" and string 3) and 2; the style table after the entries.
    std::vector<int8_t> codes(48, 0);
    codes[1] = 2;
    const Bytes family = BuildFond({.entries = {{12, 0, 200}, {12, 1, 201}, {0, 2, 202}}, .nameCodes = codes,
                                    .strings = {"Times", "\x03", "-Bold"}});
    TempDir dir;
    WriteFile(dir / "f.dfont", ResourceFile({{"FOND", 1, "Times", family}, {"NFNT", 201, std::nullopt, Text("strike")}}));
    auto file = TypeprobeResourceFile::initWithFile(dir / "f.dfont", false);
    ASSERT_TRUE(file);
    auto purged = file->getResourceHandleForType(fourCC("FOND"), 1), promoted = file->getResourceHandleForType(fourCC("FOND"), 1);
    file->purgeFromFOND(purged.get(), {1}, true);
    EXPECT_EQ(file->getSortedStylesForFOND(purged.get()), (std::vector<int16_t>{0, 2}));
    EXPECT_EQ(std::make_pair(purged->size(), file->getStyleOffsetFromFOND(purged.get())), std::make_pair(family.size() - 6, uint32_t(54 + 12)));
    EXPECT_EQ(file->getPostScriptNameForFOND(purged.get(), 0).str(), "Times");  // the table moved with its offset
    EXPECT_EQ(file->countResType(fourCC("NFNT")), 0);
    file->promoteFOND(promoted.get(), 1);
    EXPECT_EQ(promoted->name + " " + file->getPostScriptNameForFOND(promoted.get(), 0).str(), "Times-Bold Times-Bold");
    EXPECT_EQ(file->getSortedNFNTsForFOND(promoted.get(), 0), (std::vector<int16_t>{200, 201}));
}

}  // namespace
