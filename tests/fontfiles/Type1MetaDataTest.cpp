#include <gtest/gtest.h>

#include <filesystem>

#include "common/FileIO.h"
#include "common/TempFolder.h"
#include "fontfiles/Type1MetaData.h"

namespace {

struct Gathered {
    LxString kind, foundry, family, version, postScriptName, displayName, fullName;
};

Gathered gather(std::string_view verbatim)
{
    std::string storage;
    Gathered g;
    GatherPostScriptMetaDataFromData(MakeType1Text(verbatim, storage), &g.kind, &g.foundry,
                                     &g.family, &g.version, &g.postScriptName, &g.displayName,
                                     &g.fullName);
    return g;
}

LxString blob(std::string_view verbatim, const char* token)
{
    std::string storage;
    LxString value("untouched");
    findBlobForToken(MakeType1Text(verbatim, storage), token, &value);
    return value;
}

TEST(FindBlobForToken, ValueForms)
{
    EXPECT_EQ(blob("/FontName /Helvetica-Bold def", "/fontname").str(), "Helvetica-Bold");
    EXPECT_EQ(blob("/FullName (Helvetica (Bold)) readonly def", "/fullname").str(),
              "Helvetica (Bold)");
    EXPECT_EQ(blob("/FONTNAME /MixedCase def", "/fontname").str(), "MixedCase");
    EXPECT_EQ(blob("/version  \n (001.002) def", "/version").str(), "001.002");
    EXPECT_EQ(blob("/Matrix [0.001 [0] 0] def", "/matrix").str(), "0.001 [0] 0");
    EXPECT_EQ(blob("/Proc {dup {pop} if} def", "/proc").str(), "dup {pop} if");
    EXPECT_EQ(blob("/UniqueID 5021 def", "/uniqueid").str(), "5021");
    // Only a blank ends a name: a line end does not.
    EXPECT_EQ(blob("/FontName /Foo\ndef x", "/fontname").str(), "Foo\ndef");
    // An unclosed group runs to the end of the text.
    EXPECT_EQ(blob("/Notice (open", "/notice").str(), "open");
    EXPECT_EQ(blob("/Notice (ab", "/missing").str(), "untouched");
}

TEST(FindBlobForToken, ValuesAreCappedAt3999Characters)
{
    std::string text = "/Notice (" + std::string(5000, 'n') + ")";
    EXPECT_EQ(blob(text, "/notice").length(), 3999u);
}

TEST(GatherPostScriptMetaData, ReadsTheFontDictionary)
{
    Gathered g = gather(
        "%!PS-AdobeFont-1.0: Nimbus-Regular 1.00\n/FontInfo 10 dict dup begin\n"
        "/version (1.05) readonly def\n/FullName (Nimbus Sans Regular) readonly def\n"
        "/FamilyName (Nimbus Sans) readonly def\nend readonly def\n/FontName /NimbusSans-Regular def\n");
    EXPECT_EQ(g.kind.str(), "PostScript");
    EXPECT_EQ(g.version.str(), "1.05");
    EXPECT_EQ(g.family.str(), "Nimbus Sans");
    EXPECT_EQ(g.postScriptName.str(), "NimbusSans-Regular");
    EXPECT_EQ(g.displayName.str(), "NimbusSans-Regular");
    EXPECT_EQ(g.fullName.str(), "NimbusSans-Regular");
}

TEST(GatherPostScriptMetaData, HeaderNamesAreReadFromByteTwoOn)
{
    // As in a POST chunk: two header bytes precede the text.
    Gathered g = gather("\x80\x01%!PS-AdobeFont-1.0: Minion-Regular 001.000\n");
    EXPECT_EQ(g.family.str(), "Minion");
    EXPECT_EQ(g.postScriptName.str(), "Minion-Regular");
    // A bare file starting with the header gives no header value.
    Gathered bare = gather("%!PS-AdobeFont-1.0: Minion-Regular 001.000\n");
    EXPECT_EQ(bare.family.str(), "");
    EXPECT_EQ(bare.postScriptName.str(), "");
}

TEST(GatherPostScriptMetaData, CIDAndMultipleMasterKeys)
{
    Gathered g = gather("/CIDFontName /Ryumin-Light def /CIDFontVersion 2.01 def /version (9) def "
                        "/FontName /Other def /WeightVector [0.5 0.5] def");
    EXPECT_EQ(g.postScriptName.str(), "Ryumin-Light");
    EXPECT_EQ(g.version.str(), "2.01");
    EXPECT_EQ(g.kind.str(), "PostScript - MM");
}

TEST(WindowsCompanionNames, ShapeRules)
{
    LxString out;
    EXPECT_TRUE(GetWindowsPSPrinterFontNameFromFontName("ABCD____.PFM", &out));
    EXPECT_EQ(out.str(), "ABCD____.pfb");
    EXPECT_TRUE(GetWindowsPSPrinterFontNameFromFontName("/f/abcde.mmm", &out));
    EXPECT_EQ(out.str(), "/f/abcde.pfb");
    EXPECT_FALSE(GetWindowsPSPrinterFontNameFromFontName("a.pfm", &out));
    EXPECT_FALSE(GetWindowsPSPrinterFontNameFromFontName("abcdef.pfb", &out));
    EXPECT_TRUE(GetWindowsMMMFontNameFromPrinterFontName("MyMM__.Pfb", &out));
    EXPECT_EQ(out.str(), "MyMM__.mmm");
    EXPECT_FALSE(GetWindowsMMMFontNameFromPrinterFontName("abcdef.pfm", &out));
}

TEST(CollectPSMetaDataFromFile, ResultCodesAndThePrinterFontOverride)
{
    TempFolder dir;
    testfiles::writeFile((dir / "a.ps"), std::string("/FontName /FromA def"));
    testfiles::writeFile((dir / "b.ps"), std::string("/FontName /FromB def"));
    LxString name, printer;
    EXPECT_EQ(CollectPSMetaDataFromFile((dir / "a.ps"), nullptr, nullptr, nullptr, nullptr,
                                        nullptr, &name, nullptr, nullptr),
              0);
    EXPECT_EQ(name.str(), "FromA");
    printer = (dir / "b.ps");
    EXPECT_EQ(CollectPSMetaDataFromFile((dir / "a.ps"), &printer, nullptr, nullptr, nullptr,
                                        nullptr, &name, nullptr, nullptr),
              0);
    EXPECT_EQ(name.str(), "FromB");
    printer = "";
    EXPECT_EQ(CollectPSMetaDataFromFile((dir / "none.ps"), &printer, nullptr, nullptr, nullptr,
                                        nullptr, &name, nullptr, nullptr),
              6);
    EXPECT_EQ(printer.str(), (dir / "none.ps"));
    EXPECT_EQ(CollectPSMetaDataFromFile("", nullptr, nullptr, nullptr, nullptr, nullptr, &name,
                                        nullptr, nullptr),
              -1);
}

TEST(CollectPSMetaDataFromFile, RealType1Fonts)
{
    const std::string folder = "/usr/share/fonts/type1/urw-base35";
    if (!std::filesystem::exists(folder)) GTEST_SKIP() << folder << " is not installed";
    LxString kind, family, version, name;
    ASSERT_EQ(CollectPSMetaDataFromFile(folder + "/NimbusSans-Regular.t1", nullptr, &kind, nullptr,
                                        &family, &version, &name, nullptr, nullptr),
              0);
    EXPECT_EQ(kind.str(), "PostScript");
    EXPECT_EQ(family.str(), "Nimbus Sans");
    EXPECT_EQ(name.str(), "NimbusSans-Regular");
    EXPECT_FALSE(version.empty());
}

}  // namespace
