// PostScript names, version and kind: from the clear text of a Type 1 font,
// the companion files of Windows PostScript fonts, and a Mac family's FOND
// and the POST resources of its printer font.
#include "fontfiles/PostScriptResources.h"

#include <gtest/gtest.h>

#include "common/FondBuilder.h"
#include "common/MacFixtures.h"
#include "fontfiles/CollectMetaData.h"
#include "fontfiles/Type1MetaData.h"
#include "resourcefork/ResourceFileAccess.h"
#include "support/Refusal.h"

namespace {

using namespace fondbuilder;
using namespace macfixtures;
using namespace std::string_literals;

TEST(FindBlobForToken, ValueForms)
{
    const struct { std::string text; const char* token; std::string value; } cases[] = {
        {"/FontName /Helvetica-Bold def", "/fontname", "Helvetica-Bold"}, {"/FONTNAME /MixedCase def", "/fontname", "MixedCase"},
        {"/FullName (Helvetica (Bold)) readonly def", "/fullname", "Helvetica (Bold)"},
        {"/version  \n (001.002) def", "/version", "001.002"}, {"/Matrix [0.001 [0] 0] def", "/matrix", "0.001 [0] 0"},
        {"/Proc {dup {pop} if} def", "/proc", "dup {pop} if"}, {"/UniqueID 5021 def", "/uniqueid", "5021"},
        {"/FontName /Foo\ndef x", "/fontname", "Foo\ndef"},  // only a blank ends a name (intended)
        {"/Notice (open", "/notice", "open"},                 // an open group runs to the end
        {"/Notice (ab", "/missing", "untouched"}, {"/Notice (" + std::string(5000, 'n') + ")", "/notice", std::string(3999, 'n')},
    };
    for (const auto& c : cases) {
        std::string storage;
        LxString value("untouched");
        findBlobForToken(MakeType1Text(c.text, storage), c.token, &value);
        EXPECT_EQ(value.str(), c.value) << c.text.substr(0, 40);
    }
}

TEST(GatherPostScriptMetaData, ReadsTheFontDictionaryAndTheHeader)
{
    const struct { std::string text; const char* expected; } cases[] = {  // kind|family|version|postScript
        // The header is read from byte 2 on, as in a POST chunk (intended).
        {"\x80\x01%!PS-AdobeFont-1.0: Minion-Regular 001.000\n", "PostScript|Minion||Minion-Regular"},
        {"%!PS-AdobeFont-1.0: Minion-Regular 001.000\n", "PostScript|||"},
        {"/FullName (Only Full) def", "PostScript|Only Full||Only Full"},
        {"/CIDFontName /Ryumin-Light def /CIDFontVersion 2.01 def /version (9) def /FontName /Other def /WeightVector [0.5 0.5] def",
         "PostScript - MM||2.01|Ryumin-Light"},
    };
    for (const auto& c : cases) {
        std::string storage;
        LxString kind, foundry, family, version, postScriptName, displayName, fullName;
        GatherPostScriptMetaDataFromData(MakeType1Text(c.text, storage), &kind, &foundry, &family, &version,
                                         &postScriptName, &displayName, &fullName);
        EXPECT_EQ(kind.str() + "|" + family.str() + "|" + version.str() + "|" + postScriptName.str(), c.expected) << c.text;
        EXPECT_EQ(displayName.str() + fullName.str(), postScriptName.str() + postScriptName.str());
    }
}

TEST(WindowsCompanionNames, ShapeRules)
{
    const struct { const char* name; const char* printer; const char* mmm; } cases[] = {
        {"ABCD____.PFM", "ABCD____.pfb", nullptr}, {"/f/abcde.mmm", "/f/abcde.pfb", nullptr},
        {"MyMM__.Pfb", nullptr, "MyMM__.mmm"},     {"ab.pfb", nullptr, "ab.mmm"},
        {"a.pfm", nullptr, nullptr},               {"abcdef.pfb", nullptr, "abcdef.mmm"},
        {"abcdef.pfm", "abcdef.pfb", nullptr},     {"abcdefpfm", nullptr, nullptr},
    };
    for (const auto& c : cases) {
        LxString printer, mmm;
        EXPECT_EQ(GetWindowsPSPrinterFontNameFromFontName(c.name, &printer), c.printer != nullptr) << c.name;
        EXPECT_EQ(printer.str(), c.printer ? c.printer : "") << c.name;
        EXPECT_EQ(GetWindowsMMMFontNameFromPrinterFontName(c.name, &mmm), c.mmm != nullptr) << c.name;
        EXPECT_EQ(mmm.str(), c.mmm ? c.mmm : "") << c.name;
    }
}

TEST(CollectPSMetaDataFromFile, ResultCodesAndThePrinterFontOverride)
{
    TempFolder dir;
    testfiles::writeFile(dir / "a.ps", std::string("/FontName /FromA def"));
    testfiles::writeFile(dir / "b.ps", std::string("/FontName /FromB def"));
    const struct { std::string path, printer; int result; const char* name; } cases[] = {
        {dir / "a.ps", "", 0, "FromA"}, {dir / "a.ps", dir / "b.ps", 0, "FromB"}, {dir / "none.ps", "", 6, ""}, {"", "", -1, ""},
        {"/usr/share/fonts/type1/urw-base35/NimbusSans-Regular.t1", "", 0, "NimbusSans-Regular"}};
    for (const auto& c : cases) {
        LxString printer(c.printer), name;
        EXPECT_EQ(CollectPSMetaDataFromFile(c.path, &printer, nullptr, nullptr, nullptr, nullptr, &name, nullptr, nullptr),
                  c.result) << c.path;
        EXPECT_EQ(name.str(), c.name) << c.path;
        EXPECT_EQ(printer.str(), c.result == -1 ? "" : c.printer.empty() ? c.path : c.printer) << c.path;
    }
}


// The eight outputs of the collector, all wanted.
struct Names {
    LxString printer, kind, foundry, family, version, psName, display, full;
};

// A FOND with one 10-point strike of the plain style.
FondRecipe OneStyle(std::vector<std::string> strings = {}) { return {.entries = {{10, 0, 128}}, .strings = std::move(strings)}; }

// A POST chunk of Type 1 text (chunk header 1, 0), padded to `size`.
Bytes Chunk(const std::string& text, size_t size = 0)
{
    return Text(("\x01\0"s + text).append(size > text.size() + 2 ? size - text.size() - 2 : 0, '\0'));
}

// A suitcase and, when given, its printer font "SerifBol", written as
// data-fork resource files into a fresh folder.
struct Family {
    TempDir dir;
    std::string suitcase = dir / "Family.suit";
    ResourceFilePtr file;
    ResourceHandlePtr fond;

    Family(const std::string& fondName, const FondRecipe& recipe, std::vector<TestResource> more = {},
           const std::optional<std::vector<TestResource>>& printer = std::nullopt)
    {
        more.push_back({"FOND", recipe.familyID, fondName, BuildFond(recipe)});
        WriteFile(suitcase, ResourceFile(more));
        if (printer) WriteFile(dir / "SerifBol", ResourceFile(*printer));
        file = AllocateResourceFile(suitcase, true);
        fond = getHandleOfTypeAndIndex(file.get(), kTypeFOND, 1);
    }
    int Collect(Names& n, int16_t style = 0) const
    {
        return CollectPSMetaDataMac(file.get(), LxString(suitcase), fond.get(), style, &n.printer, &n.kind,
                                    &n.foundry, &n.family, &n.version, &n.psName, &n.display, &n.full);
    }
};

// The kind of double-byte and multiple-master families, and the names of
// multiple-master ones; no printer font lies beside any of them.
TEST(CollectPSMetaDataMac, DoubleByteAndMultipleMasterFamilies)
{
    const std::string trueData = "true\0\0\0\0"s, typ1Data = "typ1\0\0\0\0"s;
    const char* instance = "MyriadMM_215_LT_300_CN";  // string 1 of the style table
    const Assoc bitmap = {10, 0, 128};
    const struct { const char* fondName; uint16_t international; int16_t familyID; Assoc entry; std::string sfnt; const char* psName; std::string expected; } cases[] = {
        // result:display|kind|PostScript name
        {"A-CID Ryumin", 1, 128, {0, 0, 300}, trueData, nullptr, "-1:A-CID Ryumin|CID|"},
        {"Ryumin CID-B", 1, 128, {0, 0, 300}, trueData, nullptr, "-1:Ryumin CID-B|CID|"},
        {"Ryumin", 0, 0x4000, {0, 0, 300}, typ1Data, nullptr, "-1:Ryumin|CID|"},
        {"Osaka", 1, 128, {0, 0, 300}, trueData, nullptr, "-1:Osaka||"},
        {"Osaka", 1, 128, {0, 0, 300}, "", nullptr, "-1:Osaka|OCF|"},  // the outline is missing
        {"Osaka", 0, 0x41FF, {12, 0, 300}, trueData, nullptr, "6:Osaka|OCF|"},
        {"A-CID Ryumin", 1, 128, {0, 1, 300}, trueData, nullptr, "6:A-CID Ryumin|OCF|"},  // another style's outline
        {"A-CID Ryumin", 0, 0x4200, {0, 0, 300}, typ1Data, nullptr, "-1:A-CID Ryumin||"},
        {"%MMyriadMM_215 LT", 1, 128, {0, 0, 300}, typ1Data, nullptr, "-1:MyriadMM|PostScript - MM|"},
        {"%MMyriadMM_215 LT 300 CN", 0, 128, bitmap, "", instance, "6:MyriadMM|PostScript - MM|Myriad"},
        {"%M_Myriad MM_x", 0, 128, bitmap, "", instance, "6:%M_Myriad MM_x|PostScript - MM|Myriad"},
        // "MM" without a later "_" marks nothing; "MM" in the PostScript name does.
        {"%MMyriadMM", 0, 128, bitmap, "", instance, "6:MyriadMM|PostScript - MM|Myriad"},
        {"%MMyriadMM", 0, 128, bitmap, "", "Myriad-Regular", "6:%MMyriadMM||Myriad-Regular"},
        {"Family", 0, 128, bitmap, "", "Foo%MBarMMBaz_1", "6:Family|PostScript - MM|BarBaz"},  // from the "%M" on
        {"Family", 0, 128, bitmap, "", "Foo%MBar", "6:Family|PostScript - MM|Bar"},
    };
    for (const auto& c : cases) {
        FondRecipe recipe{.familyID = c.familyID, .international = c.international, .entries = {c.entry}};
        if (c.psName) recipe.strings = {c.psName};
        std::vector<TestResource> more;
        if (!c.sfnt.empty()) more.push_back({"sfnt", 300, std::nullopt, Text(c.sfnt)});
        Names n;
        const int result = Family(c.fondName, recipe, more).Collect(n);
        EXPECT_EQ(std::to_string(result) + ":" + n.display.str() + "|" + n.kind.str() + "|" + n.psName.str(), c.expected) << c.fondName << " " << c.familyID;
    }
}

TEST(CollectPSMetaDataMac, PrinterFontChunksAreReadUpToTheRules)
{
    const std::string header = "/FontName /Serif-Bold def\n", familyKey = "/FamilyName (Serif Family) def\n";
    auto post = [](int16_t id, const std::string& text, size_t size = 0) { return TestResource{"POST", id, std::nullopt, Chunk(text, size)}; };
    using Chunks = std::optional<std::vector<TestResource>>;
    const struct { const char* what; Chunks chunks; int status; const char* family; bool refused = false; } cases[] = {  // family "": not read
        {"printer font missing", std::nullopt, 6, ""},
        {"no POST 501", Chunks({post(502, header + familyKey)}), -1, "", true},
        {"empty POST 501", Chunks({{"POST", 501, std::nullopt, {}}}), -1, "", true},
        {"header in 501", Chunks({post(501, header + familyKey, 2048)}), 0, "Serif Family"},
        {"family in 502", Chunks({post(501, header, 2048), post(502, familyKey)}), 0, "Serif Family"},
        {"full-sized 502 ends the walk", Chunks({post(501, header, 2048), post(502, familyKey, 2048)}), 0, "Family.suit"},
        {"503 is never read", Chunks({post(501, header), post(502, "x"), post(503, familyKey)}), 0, "Family.suit"},
    };
    for (const auto& c : cases) {
        Family family("Serif", OneStyle({"Serif-Bold"}), {}, c.chunks);
        Names n;
        RefusalLog log;
        EXPECT_EQ(family.Collect(n), c.status) << c.what;
        EXPECT_EQ(log.text(), c.refused ? "printer font: " + family.dir / "SerifBol" + " has no text in POST 501 (missing or empty)" : "");
        EXPECT_EQ(n.family.str(), c.family) << c.what;
        // The PostScript name from the text or from the FOND; the family's name from the FOND.
        EXPECT_EQ(n.printer.str() + "|" + n.psName.str() + "|" + n.display.str(), family.dir / "SerifBol|Serif-Bold|Serif") << c.what;
    }
}

TEST(CollectPSMetaDataMac, NoPrinterFontNeededOrNoFamily)
{
    Family family("Serif", {.entries = {{0, 0, 128}}, .strings = {"Serif-Bold"}}, {{"sfnt", 128, std::nullopt, Text("true\0\0\0\0"s)}});
    Names n;
    n.kind = "TrueType";
    EXPECT_EQ(family.Collect(n), -1);
    EXPECT_EQ(n.printer.str() + "|" + n.psName.str() + "|" + n.kind.str() + "|" + n.display.str(), "||TrueType|Serif");

    ResourceHandle empty;
    for (auto [file, fond] : {std::pair<const TypeprobeResourceFile*, const ResourceHandle*>{nullptr, family.fond.get()},
                              {family.file.get(), nullptr}, {family.file.get(), &empty}}) {
        Names m;
        EXPECT_EQ(CollectPSMetaDataMac(file, "x", fond, 0, &m.printer, &m.kind, nullptr, nullptr, nullptr, nullptr, &m.display, nullptr), -1);
        EXPECT_EQ(m.display.str() + m.kind.str() + m.printer.str(), "");
    }
    Family bitmap("Serif", OneStyle({"Serif-Bold"}), {}, std::vector<TestResource>{{"POST", 501, std::nullopt, Chunk("/FontName /X def")}});
    EXPECT_EQ(CollectPSMetaDataMac(bitmap.file.get(), LxString(bitmap.suitcase), bitmap.fond.get(), 0, nullptr, nullptr,
                                   nullptr, nullptr, nullptr, nullptr, nullptr, nullptr), 0);  // nothing wanted
}

TEST(CollectPSMetaData, FallsBackToThePrinterFontAsText)
{
    Family family("Serif", OneStyle({"Serif-Bold"}));
    WriteFile(family.dir / "SerifBol", Text("%!PS-AdobeFont-1.0: Other-Bold 001.000\n/FamilyName (Other) def\n/FontName /Other-Bold def\n"));
    Names n;
    EXPECT_EQ(CollectPSMetaData(family.file.get(), LxString(family.suitcase), family.fond.get(), 0, &n.printer, &n.kind,
                                &n.foundry, &n.family, &n.version, &n.psName, &n.display, &n.full), 0);
    EXPECT_EQ(n.printer.str(), family.dir / "SerifBol");
    EXPECT_EQ(n.psName.str() + "|" + n.family.str() + "|" + n.kind.str(), "Other-Bold|Other|PostScript");
}

TEST(GatherMetaDataFromHandle, SeesZeroBytesAsUnderscores)
{
    const struct { std::string data; int status; const char* psName; } cases[] = {
        {"\x01\0/FontName /Abc\0Def def"s, 0, "Abc_Def"}, {"\x01\0/FONTNAME /MixedCase def"s, 0, "MixedCase"},
        {"\x01\0/Weight (Bold)"s, -1, ""}, {"", -1, ""}};
    for (const auto& c : cases) {
        ResourceHandle handle;
        handle.data = Text(c.data);
        LxString kind, psName;
        EXPECT_EQ(GatherMetaDataFromHandle(&handle, &kind, nullptr, nullptr, nullptr, &psName, nullptr, nullptr), c.status);
        EXPECT_EQ(psName.str(), c.psName);
        EXPECT_EQ(kind.str(), c.data.empty() ? "" : "PostScript");
    }
    EXPECT_EQ(GatherMetaDataFromHandle(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr), -1);
}

}  // namespace
