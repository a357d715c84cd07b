#include <gtest/gtest.h>

#include "fontfiles/Type1MetaData.h"
#include "common/FondBuilder.h"
#include "common/MacFixtures.h"
#include "resourcefork/PostScriptResources.h"
#include "resourcefork/ResourceFileAccess.h"

namespace {

using namespace fondbuilder;
using namespace macfixtures;
using namespace std::string_literals;

// The eight outputs of the collector, all wanted.
struct Names {
    LxString printer, kind, foundry, family, version, psName, display, full;
};

int Collect(const TypeprobeResourceFile* file, const std::string& path, const ResourceHandle* fond,
            int16_t style, Names& n)
{
    return CollectPSMetaDataMac(file, LxString(path), fond, style, &n.printer, &n.kind, &n.foundry,
                                &n.family, &n.version, &n.psName, &n.display, &n.full);
}

ResourceHandlePtr FirstFOND(const TypeprobeResourceFile* file)
{
    return getHandleOfTypeAndIndex(file, kTypeFOND, 1);
}

// A family with one 10-point strike of the plain style.
FondRecipe OneStyle()
{
    FondRecipe recipe;
    recipe.entries = {{10, 0, 128}};
    return recipe;
}

// A POST chunk of Type 1 text (chunk header 1, 0), padded to `size`.
Bytes Chunk(const std::string& text, size_t size = 0)
{
    ByteWriter w;
    w.u8(1).u8(0).bytes(text);
    if (size > w.size()) w.zeros(size - w.size());
    return w.take();
}

// A suitcase (and its printer font, when given) written as data-fork
// resource files into a fresh folder.
struct Family {
    TempDir dir;
    std::string suitcase;
    ResourceFilePtr file;
    ResourceHandlePtr fond;

    Family(const std::string& fondName, const FondRecipe& recipe,
           std::vector<TestResource> more = {}, const std::string& printerName = "",
           const std::vector<TestResource>& printer = {})
    {
        suitcase = dir / "Family.suit";
        more.insert(more.begin(), TestResource{"FOND", recipe.familyID, fondName, BuildFond(recipe)});
        WriteFile(suitcase, ResourceFile(more));
        if (!printerName.empty()) WriteFile(dir / printerName, ResourceFile(printer));
        file = AllocateResourceFile(suitcase, true);
        fond = FirstFOND(file.get());
    }
};

// -------------------------------------------------------------- corpus ---

TEST(CollectPSMetaDataMac, ReadsEachStyleFromItsPrinterFont)
{
    const std::string suitcase = CorpusPath("ps-family/DejaVuSerif.bin");
    ResourceFilePtr file = AllocateResourceFile(suitcase, true);
    ASSERT_TRUE(file);
    ResourceHandlePtr fond = FirstFOND(file.get());
    // Names as fontTools' t1Lib reads them from the LWFN files.
    const struct {
        int16_t style;
        const char* printer;
        const char* psName;
    } cases[] = {
        {0, "DejaVuSer", "DejaVuSerif"},
        {1, "DejaVuSerBol", "DejaVuSerif-Bold"},
        {2, "DejaVuSerIta", "DejaVuSerif-Italic"},
        {3, "DejaVuSerBolIta", "DejaVuSerif-BoldItalic"},
    };
    for (const auto& c : cases) {
        Names n;
        EXPECT_EQ(Collect(file.get(), suitcase, fond.get(), c.style, n), 0) << c.style;
        // The logical name, as formed: the file itself is "NAME.bin".
        EXPECT_EQ(n.printer.str(), CorpusPath("ps-family/") + c.printer);
        EXPECT_EQ(n.psName.str(), c.psName);
        EXPECT_EQ(n.full.str(), c.psName);
        EXPECT_EQ(n.family.str(), "DejaVu Serif");
        EXPECT_EQ(n.version.str(), "2.37");
        EXPECT_EQ(n.kind.str(), "PostScript");
        EXPECT_EQ(n.display.str(), "DejaVu Serif");  // the FOND's family name
    }
}

TEST(CollectPSMetaDataMac, TrueTypeSuitcaseNeedsNoPrinterFont)
{
    const std::string suitcase = CorpusPath("tt-family/DejaVuSans.suit");
    ResourceFilePtr file = AllocateResourceFile(suitcase, true);
    ResourceHandlePtr fond = FirstFOND(file.get());
    Names n;
    n.kind = "TrueType";
    EXPECT_EQ(Collect(file.get(), suitcase, fond.get(), 1, n), -1);
    EXPECT_EQ(n.printer.str(), "");
    EXPECT_EQ(n.psName.str(), "");  // no repair from the FOND
    EXPECT_EQ(n.kind.str(), "TrueType");
    EXPECT_EQ(n.display.str(), "DejaVu Sans");
}

TEST(CollectPSMetaDataMac, MissingPrinterFontTakesTheNameFromTheFOND)
{
    TempDir dir;
    const std::string suitcase = dir / "DejaVuSerif.bin";
    WriteFile(suitcase, ReadFile(CorpusPath("ps-family/DejaVuSerif.bin")));
    ResourceFilePtr file = AllocateResourceFile(suitcase, true);
    ResourceHandlePtr fond = FirstFOND(file.get());
    Names n;
    EXPECT_EQ(Collect(file.get(), suitcase, fond.get(), 1, n), 6);
    EXPECT_EQ(n.printer.str(), dir / "DejaVuSerBol");
    EXPECT_EQ(n.psName.str(), "DejaVuSerif-Bold");
    EXPECT_EQ(n.family.str(), "");  // no fallback to the file name
    EXPECT_EQ(n.kind.str(), "");
    EXPECT_EQ(n.display.str(), "DejaVu Serif");
}

TEST(CollectPSMetaDataMac, SameNamesFromAnAppleSingleFamily)
{
    TempDir dir;
    for (const char* name : {"DejaVuSerif", "DejaVuSerBolIta"}) {
        MacParts parts = PartsOfMacBinary(ReadFile(CorpusPath("ps-family/") + name + ".bin"));
        WriteFile(dir / name, AppleSingleFile(parts));
    }
    ResourceFilePtr file = AllocateResourceFile(dir / "DejaVuSerif", true);
    ASSERT_TRUE(file);
    ResourceHandlePtr fond = FirstFOND(file.get());
    Names n;
    EXPECT_EQ(Collect(file.get(), dir / "DejaVuSerif", fond.get(), 3, n), 0);
    EXPECT_EQ(n.printer.str(), dir / "DejaVuSerBolIta");
    EXPECT_EQ(n.psName.str(), "DejaVuSerif-BoldItalic");
    EXPECT_EQ(n.version.str(), "2.37");
}

TEST(CollectPSMetaDataMac, NullFileOrFamilyTouchesNothing)
{
    ResourceFilePtr file = AllocateResourceFile(CorpusPath("ps-family/DejaVuSerif.bin"), true);
    ResourceHandlePtr fond = FirstFOND(file.get());
    ResourceHandle empty;
    Names n;
    EXPECT_EQ(Collect(nullptr, "x", fond.get(), 0, n), -1);
    EXPECT_EQ(Collect(file.get(), "x", nullptr, 0, n), -1);
    EXPECT_EQ(Collect(file.get(), "x", &empty, 0, n), -1);
    EXPECT_TRUE(n.display.empty() && n.kind.empty() && n.printer.empty());
    // Outputs not asked for stay unasked.
    EXPECT_EQ(CollectPSMetaDataMac(file.get(), LxString(CorpusPath("ps-family/DejaVuSerif.bin")),
                                   fond.get(), 2, nullptr, nullptr, nullptr, nullptr, nullptr,
                                   nullptr, nullptr, nullptr),
              0);
}

// ---------------------------------------------------- byte-built families ---

TEST(CollectPSMetaDataMac, KindOfDoubleByteAndMultipleMasterFamilies)
{
    const Bytes trueData = Text("true\0\0\0\0"s);
    const Bytes typ1Data = Text("typ1\0\0\0\0"s);
    const struct {
        const char* what;
        const char* fondName;
        uint16_t international;
        int16_t familyID;
        std::vector<Assoc> entries;
        std::optional<Bytes> sfnt;  // resource 300
        const char* kind;
    } cases[] = {
        {"A-CID name", "A-CID Ryumin", 1, 128, {{0, 0, 300}}, trueData, "CID"},
        {"CID-B name", "Ryumin CID-B", 1, 128, {{0, 0, 300}}, trueData, "CID"},
        {"typ1 outline", "Ryumin", 0, 0x4000, {{0, 0, 300}}, typ1Data, "CID"},
        {"plain outline", "Osaka", 1, 128, {{0, 0, 300}}, trueData, ""},
        {"outline missing", "Osaka", 1, 128, {{0, 0, 300}}, std::nullopt, "OCF"},
        {"bitmaps only", "Osaka", 0, 0x41FF, {{12, 0, 300}}, trueData, "OCF"},
        {"other style's outline", "A-CID Ryumin", 1, 128, {{0, 1, 300}}, trueData, "OCF"},
        {"single-byte", "A-CID Ryumin", 0, 0x4200, {{0, 0, 300}}, typ1Data, ""},
        {"multiple master", "%MMyriadMM_215 LT", 1, 128, {{0, 0, 300}}, typ1Data,
         "PostScript - MM"},
    };
    for (const auto& c : cases) {
        FondRecipe recipe = OneStyle();
        recipe.familyID = c.familyID;
        recipe.international = c.international;
        recipe.entries = c.entries;
        std::vector<TestResource> more;
        if (c.sfnt) more.push_back({"sfnt", 300, std::nullopt, *c.sfnt});
        Family family(c.fondName, recipe, more);
        Names n;
        Collect(family.file.get(), family.suitcase, family.fond.get(), 0, n);
        EXPECT_EQ(n.kind.str(), c.kind) << c.what;
    }
}

TEST(CollectPSMetaDataMac, MultipleMasterInstanceNames)
{
    FondRecipe recipe = OneStyle();
    recipe.strings = {"MyriadMM_215_LT_300_CN"};
    Family family("%MMyriadMM_215 LT 300 CN", recipe);
    Names n;
    EXPECT_EQ(Collect(family.file.get(), family.suitcase, family.fond.get(), 0, n), 6);
    EXPECT_EQ(n.printer.str(), family.dir / "MyriaMM");
    EXPECT_EQ(n.kind.str(), "PostScript - MM");
    EXPECT_EQ(n.display.str(), "MyriadMM");
    EXPECT_EQ(n.psName.str(), "Myriad");  // repaired from the FOND's name

    // The marker alone, "_" straight after it: the whole name is kept.
    Family bare("%M_Myriad MM_x", recipe);
    Names m;
    Collect(bare.file.get(), bare.suitcase, bare.fond.get(), 0, m);
    EXPECT_EQ(m.display.str(), "%M_Myriad MM_x");
    EXPECT_EQ(m.kind.str(), "PostScript - MM");

    // "MM" without a later "_" marks no multiple master, but an "MM" in
    // the PostScript name does when the name is repaired.
    Family byPSName("%MMyriadMM", recipe);
    Names p;
    Collect(byPSName.file.get(), byPSName.suitcase, byPSName.fond.get(), 0, p);
    EXPECT_EQ(p.display.str(), "MyriadMM");
    EXPECT_EQ(p.kind.str(), "PostScript - MM");

    recipe.strings = {"Myriad-Regular"};
    Family plain("%MMyriadMM", recipe);
    Names q;
    EXPECT_EQ(Collect(plain.file.get(), plain.suitcase, plain.fond.get(), 0, q), 6);
    EXPECT_EQ(q.display.str(), "%MMyriadMM");
    EXPECT_EQ(q.psName.str(), "Myriad-Regular");
    EXPECT_EQ(q.kind.str(), "");
}

TEST(CollectPSMetaDataMac, PrinterFontChunksAreReadUpToTheRules)
{
    const std::string header = "/FontName /Serif-Bold def\n";
    const std::string familyKey = "/FamilyName (Serif Family) def\n";
    const struct {
        const char* what;
        std::vector<TestResource> chunks;
        int status;
        const char* family;  // "" when none was read: the suitcase's file name
    } cases[] = {
        {"no POST 501", {{"POST", 502, std::nullopt, Chunk(header + familyKey)}}, -1, ""},
        {"empty POST 501", {{"POST", 501, std::nullopt, {}}}, -1, ""},
        {"header in 501", {{"POST", 501, std::nullopt, Chunk(header + familyKey, 2048)}}, 0,
         "Serif Family"},
        {"family in 502",
         {{"POST", 501, std::nullopt, Chunk(header, 2048)},
          {"POST", 502, std::nullopt, Chunk(familyKey)}},
         0, "Serif Family"},
        {"full-sized 502 ends the walk",
         {{"POST", 501, std::nullopt, Chunk(header, 2048)},
          {"POST", 502, std::nullopt, Chunk(familyKey, 2048)}},
         0, "Family.suit"},
        {"503 is never read",
         {{"POST", 501, std::nullopt, Chunk(header)},
          {"POST", 502, std::nullopt, Chunk("x")},
          {"POST", 503, std::nullopt, Chunk(familyKey)}},
         0, "Family.suit"},
    };
    FondRecipe recipe = OneStyle();
    recipe.strings = {"Serif-Bold"};
    for (const auto& c : cases) {
        Family family("Serif", recipe, {}, "SerifBol", c.chunks);
        Names n;
        EXPECT_EQ(Collect(family.file.get(), family.suitcase, family.fond.get(), 0, n), c.status)
            << c.what;
        EXPECT_EQ(n.family.str(), c.family) << c.what;
        EXPECT_EQ(n.psName.str(), "Serif-Bold") << c.what;  // from the text or from the FOND
        EXPECT_EQ(n.printer.str(), family.dir / "SerifBol") << c.what;
    }
}

TEST(CollectPSMetaData, FallsBackToThePrinterFontAsText)
{
    FondRecipe recipe = OneStyle();
    recipe.strings = {"Serif-Bold"};
    Family family("Serif", recipe);
    // A printer font kept as plain Type 1 text rather than POST resources.
    WriteFile(family.dir / "SerifBol", Text("%!PS-AdobeFont-1.0: Other-Bold 001.000\n"
                                            "/FamilyName (Other) def\n"
                                            "/FontName /Other-Bold def\n"));
    Names n;
    EXPECT_EQ(CollectPSMetaData(family.file.get(), LxString(family.suitcase), family.fond.get(), 0,
                                &n.printer, &n.kind, &n.foundry, &n.family, &n.version, &n.psName,
                                &n.display, &n.full),
              0);
    EXPECT_EQ(n.printer.str(), family.dir / "SerifBol");
    EXPECT_EQ(n.psName.str(), "Other-Bold");
    EXPECT_EQ(n.family.str(), "Other");
    EXPECT_EQ(n.kind.str(), "PostScript");

    // Read from the resources: the text reader is not asked.
    const std::string suitcase = CorpusPath("ps-family/DejaVuSerif.bin");
    ResourceFilePtr file = AllocateResourceFile(suitcase, true);
    ResourceHandlePtr fond = FirstFOND(file.get());
    Names m;
    EXPECT_EQ(CollectPSMetaData(file.get(), LxString(suitcase), fond.get(), 2, &m.printer, &m.kind,
                                &m.foundry, &m.family, &m.version, &m.psName, &m.display, &m.full),
              0);
    EXPECT_EQ(m.psName.str(), "DejaVuSerif-Italic");
}

// ------------------------------------------------------------- gathering ---

TEST(GatherMetaDataFromHandle, SeesZeroBytesAsUnderscores)
{
    const struct {
        std::string data;
        int status;
        const char* psName;
    } cases[] = {
        {"\x01\0/FontName /Abc\0Def def"s, 0, "Abc_Def"},
        {"\x01\0/FONTNAME /MixedCase def"s, 0, "MixedCase"},
        {"\x01\0/Weight (Bold)"s, -1, ""},
        {"", -1, ""},
    };
    for (const auto& c : cases) {
        ResourceHandle handle;
        handle.data = Text(c.data);
        LxString kind, psName;
        EXPECT_EQ(GatherMetaDataFromHandle(&handle, &kind, nullptr, nullptr, nullptr, &psName,
                                           nullptr, nullptr),
                  c.status);
        EXPECT_EQ(psName.str(), c.psName);
        EXPECT_EQ(kind.str(), c.data.empty() ? "" : "PostScript");
    }
    EXPECT_EQ(GatherMetaDataFromHandle(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                       nullptr, nullptr),
              -1);
}

TEST(Collect_sfnt_MetaDataFromPrinterInfo, StopsAtTheFirstNamedResource)
{
    FondRecipe recipe = OneStyle();
    recipe.entries = {{0, 0, 301}, {0, 0, 300}, {0, 0, 302}, {0, 1, 303}};
    Family family("Serif", recipe,
                  {{"sfnt", 300, std::nullopt, Text("typ1 no names")},
                   {"sfnt", 301, std::nullopt, Text("typ1 /FontName /First def")},
                   {"sfnt", 302, std::nullopt, Text("typ1 /FontName /Second def")},
                   {"sfnt", 303, std::nullopt, Text("typ1 nothing")}});
    LxString psName;
    EXPECT_EQ(Collect_sfnt_MetaDataFromPrinterInfo(family.file.get(), family.fond.get(), 0, nullptr,
                                                   nullptr, nullptr, nullptr, &psName, nullptr,
                                                   nullptr),
              0);
    EXPECT_EQ(psName.str(), "First");
    EXPECT_EQ(Collect_sfnt_MetaDataFromPrinterInfo(family.file.get(), family.fond.get(), 1, nullptr,
                                                   nullptr, nullptr, nullptr, &psName, nullptr,
                                                   nullptr),
              -1);
    EXPECT_EQ(Collect_sfnt_MetaDataFromPrinterInfo(family.file.get(), family.fond.get(), 5, nullptr,
                                                   nullptr, nullptr, nullptr, &psName, nullptr,
                                                   nullptr),
              -1);
    EXPECT_EQ(Collect_sfnt_MetaDataFromPrinterInfo(nullptr, family.fond.get(), 0, nullptr, nullptr,
                                                   nullptr, nullptr, &psName, nullptr, nullptr),
              -1);
}

}  // namespace
