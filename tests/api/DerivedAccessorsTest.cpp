#include <gtest/gtest.h>

#include <cstring>
#include <memory>

#include "api/FontArray.h"
#include "common/SfntBuilder.h"
#include "typeprobe/typeprobe.h"

namespace {

std::unique_ptr<TP_FontArray> oneFace(const char* version, const char* printerFont,
                                      uint32_t valid = kTP_AllAttributes)
{
    auto array = std::make_unique<TP_FontArray>();
    TP_FontSpecifier face;
    face.version = version;
    face.printerFontName = printerFont;
    face.validAttributes = valid;
    array->Append(face);
    return array;
}

std::string version(const char* text)
{
    auto array = oneFace(text, "");
    char buffer[64] = "untouched";
    EXPECT_EQ(TP_GetVersion(array.get(), 0, buffer, sizeof buffer), 0u);
    return buffer;
}

TEST(TP_GetVersion, CleansTheVersionText)
{
    EXPECT_EQ(version("Version 1.002;PS 001.002"), "1.002");
    EXPECT_EQ(version("001.000"), "001.000");
    EXPECT_EQ(version("v2.0-beta3 build"), "2.0-");
    EXPECT_EQ(version("no digits here"), "");
    EXPECT_EQ(version(""), "");
    auto array = oneFace("1.0", "", kTP_AttrPostScriptName);
    char buffer[8];
    EXPECT_EQ(TP_GetVersion(array.get(), 0, buffer, sizeof buffer), 5u);
}

TEST(TP_GetWindowsMMFile, DerivesTheMetricsFileAndChecksTheIndex)
{
    char buffer[64] = "untouched";
    auto array = oneFace("", "/fonts/MyMM____.PFB");
    EXPECT_EQ(TP_GetWindowsMMFile(array.get(), 0, buffer, sizeof buffer), 0u);
    EXPECT_STREQ(buffer, "/fonts/MyMM____.mmm");
    EXPECT_EQ(TP_GetWindowsMMFile(array.get(), 1, buffer, sizeof buffer), 1u);
    EXPECT_EQ(TP_GetWindowsMMFile(nullptr, 0, buffer, sizeof buffer), 1u);

    auto notPfb = oneFace("", "/fonts/Other.ttf");
    std::strcpy(buffer, "untouched");
    EXPECT_EQ(TP_GetWindowsMMFile(notPfb.get(), 0, buffer, sizeof buffer), 1u);
    EXPECT_STREQ(buffer, "untouched");

    auto noMM = oneFace("", "/fonts/MyMM____.pfb", kTP_AttrPrinterFontName);
    EXPECT_EQ(TP_GetWindowsMMFile(noMM.get(), 0, buffer, sizeof buffer), 5u);
    auto noPrinter = oneFace("", "/fonts/MyMM____.pfb", kTP_AttrWindowsMMFile);
    EXPECT_EQ(TP_GetWindowsMMFile(noPrinter.get(), 0, buffer, sizeof buffer), 1u);
}

TEST(TP_GetPostScriptNameFromNamesTable, NeedsEveryPointer)
{
    auto font = testfonts::fontWithNames({{3, 1, 0x409, 6, testfonts::utf16be(u"Foo-Bold")}});
    const char* data = reinterpret_cast<const char*>(font.data());
    int resourceFile = 0;
    char* handle = nullptr;
    char buffer[32] = "untouched";
    TP_GetPostScriptNameFromNamesTable(data, font.size(), nullptr, &handle, 0, buffer, 32);
    EXPECT_STREQ(buffer, "untouched");
    TP_GetPostScriptNameFromNamesTable(data, font.size(), &resourceFile, &handle, 0, buffer, 32);
    EXPECT_STREQ(buffer, "Foo-Bold");

    auto nameless = testfonts::sfnt(0x00010000, {{"head", "1234"}});
    std::strcpy(buffer, "untouched");
    TP_GetPostScriptNameFromNamesTable(reinterpret_cast<const char*>(nameless.data()),
                                       nameless.size(), &resourceFile, &handle, 0, buffer, 32);
    EXPECT_STREQ(buffer, "untouched");
}

}  // namespace
