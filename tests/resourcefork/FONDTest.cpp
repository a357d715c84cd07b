#include <gtest/gtest.h>

#include "resourcefork/FONDStyleNames.h"
#include "common/FondBuilder.h"
#include "common/MacFixtures.h"
#include "resourcefork/PascalStrings.h"
#include "resourcefork/PrinterFontNames.h"
#include "resourcefork/TypeprobeResourceFile.h"

namespace {

using namespace fondbuilder;
using namespace macfixtures;

ResourceHandlePtr Handle(const Bytes& data, const std::string& name = "Family", int16_t id = 128)
{
    auto handle = std::make_unique<ResourceHandle>();
    handle->type = fourCC("FOND");
    handle->id = id;
    handle->hasName = true;
    handle->name = name;
    handle->data = data;
    return handle;
}

std::string PostScriptName(const ResourceHandle* fond, int style)
{
    unsigned char name[kPascalBufferSize];
    GetPrinterFontNameFromResource(fond, style, name, sizeof name);
    return std::string(PascalText(name));
}

// "Times" with a bold-italic descriptor naming a hyphen and "BoldItalic".
FondRecipe Times()
{
    FondRecipe recipe;
    recipe.entries = {{12, 0, 200}, {12, 3, 201}};
    recipe.strings = {"Times", std::string("\x03\x04", 2), "-", "BoldItalic", "Bold", "\x01\x01"};
    recipe.nameCodes[3] = 2;
    return recipe;
}

std::unique_ptr<TypeprobeResourceFile> Corpus(const char* relative)
{
    return TypeprobeResourceFile::initWithFile(CorpusPath(relative), true);
}

// ------------------------------------------------------------ names ---

TEST(FOND, StyleIndexFollowsTheStyleBits)
{
    const std::pair<int, int> cases[] = {
        {0x00, 0},  {0x01, 1},  {0x02, 2},  {0x03, 3},  {0x04, 0},  {0x08, 4},
        {0x10, 8},  {0x20, 16}, {0x40, 32}, {0x60, 16}, {0x7F, 31}, {0x5B, 47},
    };
    for (auto [style, index] : cases) EXPECT_EQ(GetStyleIndex(style), index) << style;
}

TEST(FOND, PrinterFileNamesFollowTheFiveThreeThreeRule)
{
    const std::pair<const char*, const char*> cases[] = {
        {"Helvetica-BoldOblique", "HelveBolObl"},
        {"ITC-Garamond-Bold", "GaramBol"},
        {"Minion_MM", "Minio"},
        {"Univers-55", "Unive55"},
        {"Univers-57Condensed", "Unive5Con"},
        {"DejaVuSerif-BoldItalic", "DejaVuSerBolIta"},
        {"Times-Roman", "TimesRom"},
        {"Name_", "Name_"},  // the last character is never examined
        {"Caf\xE9-Bold", "Caf?Bol"},
        {"", ""},
    };
    for (auto [psName, fileName] : cases) {
        unsigned char in[kPascalBufferSize], out[kPascalBufferSize];
        SetPascalText(psName, in, sizeof in);
        GetPostScriptFontFileName(in, out);
        EXPECT_EQ(PascalText(out), fileName) << psName;
    }
}

TEST(FOND, PostScriptNamesFromTheStyleMappingTable)
{
    FondRecipe recipe = Times();
    recipe.nameCodes[1] = 9;   // past the string count: base name
    recipe.nameCodes[2] = -3;  // negative: base name
    recipe.nameCodes[4] = 6;   // descriptor naming string 1 twice
    auto fond = Handle(BuildFond(recipe));
    EXPECT_EQ(PostScriptName(fond.get(), 0), "Times");
    EXPECT_EQ(PostScriptName(fond.get(), 3), "Times-BoldItalic");
    EXPECT_EQ(PostScriptName(fond.get(), 1), "Times");
    EXPECT_EQ(PostScriptName(fond.get(), 2), "Times");
    EXPECT_EQ(PostScriptName(fond.get(), 0x08), "TimesTimesTimes");
    EXPECT_EQ(PostScriptName(nullptr, 0), "");

    recipe.strings[0] = "T\xA5mes\x7F";
    EXPECT_EQ(PostScriptName(Handle(BuildFond(recipe)).get(), 3), "T?mes?-BoldItalic");
}

TEST(FOND, HostileStyleMappingTablesGiveShortNamesNotCrashes)
{
    const Bytes good = BuildFond(Times());
    const size_t table = 54 + 12;
    struct Case {
        const char* what;
        size_t at;
        std::vector<uint8_t> bytes;
        const char* name;
    };
    const Case cases[] = {
        {"table offset past the end", 24, {0x7F, 0xFF, 0xFF, 0xF0}, ""},
        {"table offset wraps", 24, {0xFF, 0xFF, 0xFF, 0xFF}, ""},
        {"base name runs off the end", table + 60, {0xF0}, ""},
        {"descriptor names a string past the end", table + 60 + 6 + 2, {0x7F}, "Times-"},
        {"descriptor runs off the end", table + 60 + 6, {0x90}, "Times"},
        {"a long string walks backwards", table + 60 + 6 + 3, {0x90}, nullptr},
        {"string count larger than the table", table + 58, {0x7F, 0xFF}, "Times-BoldItalic"},
    };
    for (const Case& c : cases) {
        Bytes damaged = good;
        std::copy(c.bytes.begin(), c.bytes.end(), damaged.begin() + std::ptrdiff_t(c.at));
        const std::string name = PostScriptName(Handle(damaged).get(), 3);
        if (c.name) {
            EXPECT_EQ(name, c.name) << c.what;
        }
    }
    for (size_t length = 0; length < good.size(); ++length)
        PostScriptName(Handle(Slice(good, 0, length)).get(), 3);  // no read past the handle
    EXPECT_EQ(PostScriptName(Handle(Slice(good, 0, 51)).get(), 0), "");
}

TEST(FOND, PascalStringsStayInsideTheirLimit)
{
    unsigned char a[kPascalBufferSize], b[kPascalBufferSize];
    SetPascalText(std::string(200, 'a'), a, sizeof a);
    SetPascalText(std::string(100, 'b'), b, sizeof b);
    AppendPascalString(a, b, sizeof a);
    EXPECT_EQ(a[0], 255);
    SetPascalText("abc", a, sizeof a);
    AppendPascalString(a, b, 10);
    EXPECT_EQ(PascalText(a), "abcbbbbbb");
    CopyPascalString(b, a, 5);
    EXPECT_EQ(PascalText(a), "bbbb");
    CopyPascalString(nullptr, a, 5);
    EXPECT_EQ(a[0], 0);

    const Bytes list = {3, 'o', 'n', 'e', 3, 't', 'w', 'o', 5, 't', 'h'};
    GetIndStyleName(ByteView(list), 2, a, sizeof a);
    EXPECT_EQ(PascalText(a), "two");
    GetIndStyleName(ByteView(list), 1, a, 3);
    EXPECT_EQ(PascalText(a), "on");
    GetIndStyleName(ByteView(list), 3, a, sizeof a);  // runs off the list
    EXPECT_EQ(PascalText(a), "");
}

// ------------------------------------------------------- association ---

TEST(FOND, CorpusBitmapFamily)
{
    auto file = Corpus("ps-family/DejaVuSerif.bin");
    ASSERT_TRUE(file);
    auto fond = file->getResourceHandleForType(fourCC("FOND"), 1096);
    ASSERT_TRUE(fond);
    EXPECT_EQ(file->getSortedStylesForFOND(fond.get()), (std::vector<int16_t>{0, 1, 2, 3}));
    EXPECT_EQ(file->getSortedStyles(), (std::vector<int16_t>{0, 1, 2, 3}));
    const int16_t ids[] = {1096, 1098, 1100, 1102, 1097, 1099, 1101, 1103};
    for (int i = 0; i < 8; ++i) EXPECT_EQ(file->getResIDForFOND(fond.get(), i), ids[i]);
    EXPECT_EQ(file->getResIDForFOND(fond.get(), 8), -1);
    EXPECT_EQ(file->getResIDForFOND(fond.get(), -1), -1);
    EXPECT_EQ(file->getSortedNFNTsForFOND(fond.get(), 1), (std::vector<int16_t>{1098, 1099}));
    EXPECT_TRUE(file->styleExists(3, fond.get()));
    EXPECT_FALSE(file->styleExists(4, fond.get()));
    EXPECT_EQ(file->getResourceNameFromFOND(fond.get()).str(), "DejaVu Serif");
    EXPECT_FALSE(file->isDoubleByteFOND(fond.get()));
    EXPECT_EQ(file->getStyleOffsetFromFOND(fond.get()), 8898u);

    const char* psNames[] = {"DejaVuSerif", "DejaVuSerif-Bold", "DejaVuSerif-Italic",
                             "DejaVuSerif-BoldItalic"};
    const char* printerNames[] = {"DejaVuSer", "DejaVuSerBol", "DejaVuSerIta", "DejaVuSerBolIta"};
    std::vector<std::string> expectedFiles;
    for (int16_t style = 0; style < 4; ++style) {
        EXPECT_TRUE(file->shouldHavePrinterFile(fond.get(), style));
        EXPECT_EQ(file->getPostScriptNameForFOND(fond.get(), style).str(), psNames[style]);
        EXPECT_EQ(file->getPSPrinterNameForFOND(fond.get(), style).str(), printerNames[style]);
        expectedFiles.push_back(CorpusPath("ps-family/") + printerNames[style]);
        // The printer fonts sit beside the suitcase as NAME.bin.
        auto path = CreatePrinterPath(file.get(), fond.get(), style);
        ASSERT_TRUE(path);
        EXPECT_EQ(path->str(), expectedFiles.back());
    }
    std::vector<std::string> files;
    for (const LxString& path : file->getPrinterFiles()) files.push_back(path.str());
    EXPECT_EQ(files, expectedFiles);
}

TEST(FOND, CorpusOutlineFamilyNeedsNoPrinterFiles)
{
    auto file = Corpus("tt-family/DejaVuSans.suit");
    ASSERT_TRUE(file);
    auto fond = file->getResourceHandleForType(fourCC("FOND"), 13490);
    ASSERT_TRUE(fond);
    EXPECT_EQ(file->getSortedNFNTsForFOND(fond.get(), 0), (std::vector<int16_t>{13490, 13490}));
    EXPECT_EQ(file->getPostScriptNameForFOND(fond.get(), 3).str(), "DejaVuSans-BoldOblique");
    for (int16_t style = 0; style < 4; ++style) {
        EXPECT_FALSE(file->shouldHavePrinterFile(fond.get(), style));
        EXPECT_FALSE(CreatePrinterPath(file.get(), fond.get(), style));
    }
    EXPECT_TRUE(file->getPrinterFiles().empty());
    auto dfont = Corpus("dfont/DejaVuSans.dfont");
    ASSERT_TRUE(dfont);
    EXPECT_EQ(dfont->getResourceNameFromFOND(dfont->getResourceHandleForType(fourCC("FOND"), 13490).get()).str(),
              "DejaVu Sans");
}

TEST(FOND, PrinterPathNeedsAnExistingFile)
{
    TempDir dir;
    WriteFile(dir / "Serif.bin", ReadFile(CorpusPath("ps-family/DejaVuSerif.bin")));
    WriteFile(dir / "DejaVuSerBol.bin", ReadFile(CorpusPath("ps-family/DejaVuSerBol.bin")));
    WriteFile(dir / "DejaVuSerIta", Text("a plain file will do"));
    std::filesystem::create_directory(dir / "DejaVuSerBolIta");
    auto file = TypeprobeResourceFile::initWithFile(dir / "Serif.bin", true);
    ASSERT_TRUE(file);
    auto fond = file->getResourceHandleForType(fourCC("FOND"), 1096);
    EXPECT_FALSE(CreatePrinterPath(file.get(), fond.get(), 0));  // missing
    EXPECT_EQ(CreatePrinterPath(file.get(), fond.get(), 1).value_or("").str(), dir / "DejaVuSerBol");
    EXPECT_EQ(CreatePrinterPath(file.get(), fond.get(), 2).value_or("").str(), dir / "DejaVuSerIta");
    EXPECT_FALSE(CreatePrinterPath(file.get(), fond.get(), 3));  // a folder
    EXPECT_FALSE(CreatePrinterPath(nullptr, fond.get(), 1));
    EXPECT_EQ(file->getPrinterFiles().size(), 4u);  // not checked for existence
}

TEST(FOND, NullAndShortRecordsGiveNeutralAnswers)
{
    auto file = Corpus("ps-family/DejaVuSerif.bin");
    ASSERT_TRUE(file);
    auto shortFond = Handle(Bytes(53, 0));
    const ResourceHandle* shortOne = shortFond.get();
    for (const ResourceHandle* fond : {static_cast<const ResourceHandle*>(nullptr), shortOne}) {
        EXPECT_FALSE(file->styleExists(0, fond));
        EXPECT_TRUE(file->getSortedStylesForFOND(fond).empty());
        EXPECT_EQ(file->getResIDForFOND(fond, 0), -1);
        EXPECT_TRUE(file->getSortedNFNTsForFOND(fond, 0).empty());
        EXPECT_TRUE(file->shouldHavePrinterFile(fond, 0));
        EXPECT_FALSE(file->isDoubleByteFOND(fond));
        EXPECT_EQ(file->getStyleOffsetFromFOND(fond), 0u);
        EXPECT_EQ(file->getPostScriptNameForFOND(fond, 0).str(), "");
    }
    EXPECT_EQ(file->getPSPrinterNameForFOND(nullptr, 0).str(), "");
    EXPECT_EQ(file->getResourceNameFromFOND(nullptr).str(), "");
}

TEST(FOND, EntriesOutsideTheHandleAreSkipped)
{
    auto file = Corpus("ps-family/DejaVuSerif.bin");
    ASSERT_TRUE(file);
    FondRecipe recipe;
    recipe.entries = {{0, 2, 7}, {12, 1, 5}, {12, 0, 6}};
    Bytes bytes = BuildFond(recipe);
    bytes[52] = 0x7F;  // 32768 entries claimed
    bytes.resize(54 + 6 * 2 + 3);
    auto fond = Handle(bytes);
    EXPECT_EQ(file->getSortedStylesForFOND(fond.get()), (std::vector<int16_t>{1, 2}));
    EXPECT_FALSE(file->styleExists(0, fond.get()));
    EXPECT_EQ(file->getResIDForFOND(fond.get(), 1), 5);
    EXPECT_EQ(file->getResIDForFOND(fond.get(), 2), -1);
    EXPECT_FALSE(file->shouldHavePrinterFile(fond.get(), 2));
    bytes[52] = 0x80;  // a negative count
    EXPECT_TRUE(file->getSortedStylesForFOND(Handle(bytes).get()).empty());
}

TEST(FOND, SortedStylesTieTheBoundsTestToTheFONDsPosition)
{
    // The k-th FOND's entries count only when it holds 54 + 6 x (k + 1)
    // bytes (intended): the second, one entry in 60 bytes, gives nothing.
    FondRecipe first, second, third;
    first.entries = {{12, 0, 1}};
    second.entries = {{12, 1, 2}};
    third.entries = {{12, 2, 3}, {12, 4, 4}, {12, 8, 5}};
    TempDir dir;
    WriteFile(dir / "f.dfont", ResourceFile({{"FOND", 10, "A", BuildFond(first)},
                                             {"FOND", 20, "B", BuildFond(second)},
                                             {"FOND", 30, "C", BuildFond(third)}}));
    auto file = TypeprobeResourceFile::initWithFile(dir / "f.dfont", true);
    ASSERT_TRUE(file);
    EXPECT_EQ(file->getSortedStyles(), (std::vector<int16_t>{0, 2, 4, 8}));
}

TEST(FOND, DoubleByteFamilies)
{
    auto file = Corpus("ps-family/DejaVuSerif.bin");
    ASSERT_TRUE(file);
    const std::pair<int16_t, bool> ids[] = {{0x3FFF, false}, {0x4000, true}, {0x41FF, true}, {0x4200, false}};
    for (auto [id, doubleByte] : ids) {
        FondRecipe recipe;
        recipe.familyID = id;
        recipe.entries = {{0, 0, 1}};
        EXPECT_EQ(file->isDoubleByteFOND(Handle(BuildFond(recipe)).get()), doubleByte) << id;
    }
    FondRecipe recipe;
    recipe.international = 1;
    recipe.entries = {{0, 0, 1}};
    recipe.strings = {"Ryumin-Light-83pv-RKSJ-H"};
    auto fond = Handle(BuildFond(recipe));
    EXPECT_TRUE(file->isDoubleByteFOND(fond.get()));
    EXPECT_EQ(file->getPSPrinterNameForFOND(fond.get(), 0).str(), "Ryumin-Light");
    recipe.strings = {"Osaka-Mono"};
    fond = Handle(BuildFond(recipe));
    EXPECT_EQ(file->getPSPrinterNameForFOND(fond.get(), 0).str(), "");
    EXPECT_FALSE(CreatePrinterPath(file.get(), fond.get(), 0));
}

TEST(FOND, PrinterFileNamesStayInTheSuitcasesFolder)
{
    // A PostScript name with "/" in it names a file whose POSIX name has
    // ":" instead, in the suitcase's own folder.
    TempDir dir;
    std::filesystem::create_directories(dir / "fonts");
    WriteFile(dir / "outside-x", Text("a file beside the fonts folder"));
    WriteFile(dir / "fonts/..:outside-x", Text("the printer font"));
    WriteFile(dir / "fonts/suitcase", ResourceFile({{"NFNT", 1, std::nullopt, Text("strike")}}));
    auto file = TypeprobeResourceFile::initWithFile(dir / "fonts/suitcase", true);
    ASSERT_TRUE(file);
    FondRecipe recipe;
    recipe.international = 1;  // double-byte: the name up to its second "-"
    recipe.entries = {{12, 0, 1}};
    recipe.strings = {"../outside-x-y"};
    auto fond = Handle(BuildFond(recipe));
    EXPECT_EQ(file->getPSPrinterNameForFOND(fond.get(), 0).str(), "..:outside-x");
    auto path = CreatePrinterPath(file.get(), fond.get(), 0);
    ASSERT_TRUE(path);
    EXPECT_EQ(path->str(), dir / "fonts/..:outside-x");
    recipe.international = 0;  // the 5+3+3 name keeps a "/" after the first letter
    recipe.strings = {"A/../x"};
    EXPECT_EQ(file->getPSPrinterNameForFOND(Handle(BuildFond(recipe)).get(), 0).str(), "A:..:");
}

TEST(FOND, DoubleByteFamilyNamesPickTheirEncoding)
{
    const std::string mincho = "\x96\xBE\x92\xA9";  // Shift-JIS
    FondRecipe outline, bitmap;
    outline.international = 1;
    outline.entries = {{0, 0, 500}};
    bitmap.international = 1;
    bitmap.entries = {{12, 0, 501}, {10, 0, 502}};
    FondRecipe bitmapWithNames = bitmap;
    bitmapWithNames.strings = {"Ryumin-Light-83pv-RKSJ-H"};
    struct Case {
        const char* what;
        std::vector<TestResource> extra;
        FondRecipe recipe;
        const char* expected;
    };
    const Case cases[] = {
        {"Type 1 CID outline", {{"sfnt", 500, std::nullopt, Text("typ1 data")}}, outline, "\xE6\x98\x8E\xE6\x9C\x9D"},
        {"TrueType outline", {{"sfnt", 500, std::nullopt, Text(std::string("\0\1\0\0 data", 9))}}, outline,
         "\xC3\xB1\xC3\xA6\xC3\xAD\xC2\xA9"},
        {"no outline", {}, outline, "\xC3\xB1\xC3\xA6\xC3\xAD\xC2\xA9"},
        {"bitmap with a FONT", {{"FONT", 502, std::nullopt, Text("f")}}, bitmap,
         "\xC3\xB1\xC3\xA6\xC3\xAD\xC2\xA9"},
        {"bitmap without FONTs", {}, bitmap, "\xC3\xB1\xC3\xA6\xC3\xAD\xC2\xA9"},
        {"bitmap without FONTs, with a style table", {}, bitmapWithNames, "\xE6\x98\x8E\xE6\x9C\x9D"},
    };
    for (const Case& c : cases) {
        std::vector<TestResource> resources = c.extra;
        resources.push_back({"FOND", 1, mincho, BuildFond(c.recipe)});
        TempDir dir;
        WriteFile(dir / "f.dfont", ResourceFile(resources));
        auto file = TypeprobeResourceFile::initWithFile(dir / "f.dfont", true);
        ASSERT_TRUE(file) << c.what;
        auto fond = file->getResourceHandleForType(fourCC("FOND"), 1);
        EXPECT_EQ(file->getResourceNameFromFOND(fond.get()).str(), c.expected) << c.what;
    }
}

TEST(FOND, MultipleMasterNamesAreRepaired)
{
    auto file = Corpus("ps-family/DejaVuSerif.bin");
    ASSERT_TRUE(file);
    auto fond = file->getResourceHandleForType(fourCC("FOND"), 1096);
    struct Case {
        const char* name;
        bool flagIn;
        const char* result;
        bool flagOut;
    };
    const Case cases[] = {
        {"Helvetica", false, "Helvetica", false},
        {"Helvetica", true, "Helvetica", true},
        {"MinionMM_367_400", false, "Minion", true},
        {"AdobeSansMM", false, "AdobeSans", true},
        {"Foo%MBarMMBaz_1", false, "BarBaz", true},
        {"Foo%MBar", false, "Bar", true},
    };
    for (const Case& c : cases) {
        bool flag = c.flagIn;
        EXPECT_EQ(file->normalizePostScriptName(c.name, fond.get(), &flag).str(), c.result) << c.name;
        EXPECT_EQ(flag, c.flagOut) << c.name;
    }
    bool flag = false;
    EXPECT_EQ(file->normalizePostScriptName("AMM", nullptr, &flag).str(), "AMM");
    EXPECT_FALSE(flag);
    EXPECT_EQ(file->normalizePostScriptName("AMM", fond.get(), nullptr).str(), "AMM");
}

// ----------------------------------------------------------- editing ---

TEST(FOND, PurgingStylesCompactsTheRecordAndDropsTheirStrikes)
{
    TempDir dir;
    WriteFile(dir / "Serif", ReadFile(CorpusPath("ps-family/DejaVuSerif.bin")));
    {
        auto file = TypeprobeResourceFile::initWithFile(dir / "Serif", false);
        ASSERT_TRUE(file);
        auto fond = file->getResourceHandleForType(fourCC("FOND"), 1096);
        file->purgeFromFOND(fond.get(), {1, 2}, true);
        EXPECT_EQ(fond->size(), 9004u - 24);
        EXPECT_EQ(file->getSortedResIDsForType(fourCC("NFNT")),
                  (std::vector<int16_t>{1096, 1097, 1102, 1103}));
    }
    auto file = TypeprobeResourceFile::initWithFile(dir / "Serif", true);
    ASSERT_TRUE(file);
    auto fond = file->getResourceHandleForType(fourCC("FOND"), 1096);
    ASSERT_TRUE(fond);
    EXPECT_EQ(fond->size(), 9004u - 24);
    uint32_t width = 0, kerning = 0, style = 0;
    fond->view().u32(16, width);
    fond->view().u32(20, kerning);
    fond->view().u32(24, style);
    EXPECT_EQ(width, 150u - 24);
    EXPECT_EQ(kerning, 2224u - 24);
    EXPECT_EQ(style, 8898u - 24);
    EXPECT_EQ(file->getSortedStylesForFOND(fond.get()), (std::vector<int16_t>{0, 3}));
    EXPECT_EQ(file->getPostScriptNameForFOND(fond.get(), 3).str(), "DejaVuSerif-BoldItalic");
    if (FontToolsAvailable()) {
        const std::string listing = FontToolsListing({"macbinary", dir / "Serif"});
        EXPECT_EQ(listing.substr(0, 7), "crc ok\n");
        EXPECT_NE(listing.find("FOND 1096 \"DejaVu Serif\" 8980"), std::string::npos) << listing;
    }
}

TEST(FOND, PurgeAllButKeepsOneStyleAndTheResources)
{
    TempDir dir;
    WriteFile(dir / "Serif", ReadFile(CorpusPath("ps-family/DejaVuSerif.bin")));
    auto file = TypeprobeResourceFile::initWithFile(dir / "Serif", false);
    ASSERT_TRUE(file);
    auto fond = file->getResourceHandleForType(fourCC("FOND"), 1096);
    file->purgeAllBut(2, fond.get());
    EXPECT_EQ(file->getSortedNFNTsForFOND(fond.get(), 2), (std::vector<int16_t>{1100, 1101}));
    EXPECT_EQ(file->getResIDForFOND(fond.get(), 2), -1);
    EXPECT_EQ(file->countResType(fourCC("NFNT")), 8);
    EXPECT_EQ(file->getResourceHandleForType(fourCC("FOND"), 1096)->size(), 9004u - 36);
}

TEST(FOND, PromotingAStyleMakesItThePlainStyle)
{
    TempDir dir;
    WriteFile(dir / "Serif", ReadFile(CorpusPath("ps-family/DejaVuSerif.bin")));
    {
        auto file = TypeprobeResourceFile::initWithFile(dir / "Serif", false);
        ASSERT_TRUE(file);
        auto fond = file->getResourceHandleForType(fourCC("FOND"), 1096);
        file->purgeAllBut(3, fond.get());
        file->promoteFOND(fond.get(), 3);
    }
    auto file = TypeprobeResourceFile::initWithFile(dir / "Serif", true);
    ASSERT_TRUE(file);
    auto fond = file->getResourceHandleForType(fourCC("FOND"), 1096);
    ASSERT_TRUE(fond);
    EXPECT_EQ(fond->name, "DejaVuSerif-BoldItalic");
    EXPECT_EQ(file->getSortedStylesForFOND(fond.get()), (std::vector<int16_t>{0}));
    EXPECT_EQ(file->getPostScriptNameForFOND(fond.get(), 0).str(), "DejaVuSerif-BoldItalic");
    EXPECT_EQ(file->getPostScriptNameForFOND(fond.get(), 1).str(), "DejaVuSerif-BoldItalic");
    // Kerning: the promoted style's entry becomes 0, every other 1.
    uint32_t kerning = 0;
    fond->view().u32(20, kerning);
    std::vector<int16_t> kernStyles;
    size_t at = kerning + 2;
    for (int i = 0; i < 4; ++i) {
        int16_t s = 0;
        uint16_t pairs = 0;
        ASSERT_TRUE(fond->view().i16(at, s) && fond->view().u16(at + 2, pairs));
        kernStyles.push_back(s);
        at += 4 + 4 * size_t(pairs);
    }
    EXPECT_EQ(kernStyles, (std::vector<int16_t>{1, 1, 1, 0}));
}

}  // namespace
