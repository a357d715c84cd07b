// Names, version and kind of a PostScript family from its FOND and the POST
// resources of its printer font.
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

TEST(CollectPSMetaDataMac, KindOfDoubleByteAndMultipleMasterFamilies)
{
    const std::string trueData = "true\0\0\0\0"s, typ1Data = "typ1\0\0\0\0"s;
    const struct { const char* fondName; uint16_t international; int16_t familyID; Assoc entry; std::string sfnt; const char* kind; } cases[] = {
        {"A-CID Ryumin", 1, 128, {0, 0, 300}, trueData, "CID"},
        {"Ryumin CID-B", 1, 128, {0, 0, 300}, trueData, "CID"},
        {"Ryumin", 0, 0x4000, {0, 0, 300}, typ1Data, "CID"},
        {"Osaka", 1, 128, {0, 0, 300}, trueData, ""},
        {"Osaka", 1, 128, {0, 0, 300}, "", "OCF"},  // the outline is missing
        {"Osaka", 0, 0x41FF, {12, 0, 300}, trueData, "OCF"},
        {"A-CID Ryumin", 1, 128, {0, 1, 300}, trueData, "OCF"},  // another style's outline
        {"A-CID Ryumin", 0, 0x4200, {0, 0, 300}, typ1Data, ""},
        {"%MMyriadMM_215 LT", 1, 128, {0, 0, 300}, typ1Data, "PostScript - MM"},
    };
    for (const auto& c : cases) {
        const FondRecipe recipe{.familyID = c.familyID, .international = c.international, .entries = {c.entry}};
        std::vector<TestResource> more;
        if (!c.sfnt.empty()) more.push_back({"sfnt", 300, std::nullopt, Text(c.sfnt)});
        Names n;
        Family(c.fondName, recipe, more).Collect(n);
        EXPECT_EQ(n.kind.str(), c.kind) << c.fondName << " " << c.familyID;
    }
}

TEST(CollectPSMetaDataMac, MultipleMasterNames)
{
    const char* instance = "MyriadMM_215_LT_300_CN";  // string 1 of the style table
    const struct { const char* fondName, *psName, *expected; } cases[] = {  // display|kind|PostScript name
        {"%MMyriadMM_215 LT 300 CN", instance, "MyriadMM|PostScript - MM|Myriad"},
        {"%M_Myriad MM_x", instance, "%M_Myriad MM_x|PostScript - MM|Myriad"},
        // "MM" without a later "_" marks nothing; "MM" in the PostScript name does.
        {"%MMyriadMM", instance, "MyriadMM|PostScript - MM|Myriad"},
        {"%MMyriadMM", "Myriad-Regular", "%MMyriadMM||Myriad-Regular"},
        {"Family", "Foo%MBarMMBaz_1", "Family|PostScript - MM|BarBaz"},  // from the "%M" on
        {"Family", "Foo%MBar", "Family|PostScript - MM|Bar"},
    };
    for (const auto& c : cases) {
        Names n;
        EXPECT_EQ(Family(c.fondName, OneStyle({c.psName})).Collect(n), 6) << c.fondName;  // no printer font beside it
        EXPECT_EQ(n.display.str() + "|" + n.kind.str() + "|" + n.psName.str(), c.expected) << c.fondName;
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
