#include <gtest/gtest.h>

#include "common/FileIO.h"
#include "common/TempFolder.h"
#include "fontfiles/FontKind.h"
#include "fontfiles/TFontData.h"

namespace {

TEST(FontTypeFromExtension, TableOfPaths)
{
    const std::pair<const char*, short> cases[] = {
        {"font.ttf", kExtensionTTF}, {"Font.TTF", kExtensionTTF}, {"/a/b.otf", kExtensionOTF}, {"x.ps", kExtensionPS},
        {"x.dfont", kExtensionDFont}, {"x.ttc", kExtensionTTC}, {"x.fot", kExtensionFOT}, {"x.fnt", kExtensionFNT},
        {"x.fon", kExtensionFON}, {"x.pfm", kExtensionPFM}, {"x.pfb", kExtensionPFB}, {"x.mmm", kExtensionMMM},
        {"x.inf", kExtensionINF}, {"font.ttf6", kExtensionUnknown}, {"archive.backup", kExtensionUnknown},
        {"a.b/font", kExtensionUnknown}, {"", kExtensionUnknown}, {"font.", kExtensionUnknown}, {"a.ttf/b.ps", kExtensionPS},
    };
    for (auto [path, kind] : cases) EXPECT_EQ(fontTypeFromExtension(path), kind) << path;
    EXPECT_EQ(fontTypeFromExtension(nullptr), kExtensionUnknown);
}

// Without a known extension the magic decides: a collection known only by
// its magic is plain TrueType (intended).
TEST(FontType, MagicDecidesWithoutAKnownExtension)
{
    TempFolder dir;
    for (auto [magic, expected] : {std::pair{"ttcf", "TrueType"}, {"OTTO", "OpenType - PS"}, {"true", ""}}) {
        testfiles::writeFile(dir / "font", std::string(magic) + std::string(60, '\0'));
        TFontData font;
        initializeAndConstructFontInfo(font, nullptr, dir / "font");
        LxString kind;
        getMetaData_FontType(font, nullptr, 0, &kind);
        EXPECT_EQ(kind.str(), expected) << magic;
    }
}

}  // namespace
