// Names from the clear text of a Type 1 font, and the companion files of
// Windows PostScript fonts.
#include "fontfiles/Type1MetaData.h"

#include <gtest/gtest.h>

#include "common/FileIO.h"
#include "common/TempFolder.h"

namespace {

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

}  // namespace
