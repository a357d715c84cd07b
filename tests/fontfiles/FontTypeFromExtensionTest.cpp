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
// The classic rules read the bytes only of a file without a known name;
// every format reads them first, the name only a hint.
TEST(FontType, MagicDecidesWithoutAKnownExtensionOrWithEveryFormat)
{
    const std::string pfb = std::string("\x80\x01\x10\0\0\0", 6) + "%!PS-AdobeFont-1.0: A";
    const struct {
        std::string name, bytes;
        const char *classic, *allFormats;
    } cases[] = {
        {"font", "ttcf", "TrueType", "TrueType Collection"},
        {"font", "OTTO", "OpenType - PS", "OpenType - PS"},
        {"font", "true", "", "TrueType"},
        {"font.otb", std::string("\0\1\0\0", 4), "", "TrueType"},
        {"font.otf", std::string("\0\1\0\0", 4), "OpenType - TT", "OpenType - TT"},
        {"font.ttf", "OTTO", "TrueType", "OpenType - PS"},
        {"font", "typ1", "", "PostScript"},
        {"font.pfb", pfb, "", "PostScript"},
        {"font.pfb", "\x80\x02" + pfb.substr(2), "", ""},
        {"font.t1", "%!FontType1-1.0: A", "", "PostScript"},
        {"font", "%!PS-Adobe-3.0 Resource-CIDFont", "", "PostScript"},
        {"font.ps", "%!PS-Adobe-3.0 a document", "PostScript", ""},
        {"font.pfm", std::string("\0\1\xB3\x01", 4), "PostScript", ""},
        {"font.afm", "StartFontMetrics 2.0", "", ""},
        {"font.ttf", "wOF2", "TrueType", ""},
    };
    TempFolder dir;
    for (const auto& c : cases) {
        testfiles::writeFile(dir / c.name, c.bytes + std::string(200, '\0'));
        for (const bool allFormats : {false, true}) {
            TFontData font;
            initializeAndConstructFontInfo(font, nullptr, dir / c.name);
            LxString kind;
            getMetaData_FontType(font, nullptr, 0, &kind, ReadOptions{allFormats});
            EXPECT_EQ(kind.str(), allFormats ? c.allFormats : c.classic) << c.name << " " << c.bytes.substr(0, 4)
                                                                         << (allFormats ? " every format" : "");
        }
    }
}

}  // namespace
