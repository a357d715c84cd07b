// Which reader takes a whole file: by its name, by its first bytes, and what
// the collector says when none does.
#include <gtest/gtest.h>

#include "common/FileIO.h"
#include "common/SfntBuilder.h"
#include "common/TempFolder.h"
#include "fontfiles/CollectMetaData.h"
#include "fontfiles/FontKind.h"
#include "fontfiles/TFontData.h"
#include "support/Refusal.h"

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


// A PFB segment header giving `length`, then the text.
std::string PFB(uint32_t length, const std::string& text)
{
    return std::string("\x80\x01", 2) + char(length >> 24) + char(length >> 16) + char(length >> 8) + char(length) + text;
}

TEST(CollectMetaData, SaysWhyNoReaderTookTheFile)
{
    const auto real = testfiles::readFile("/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf");
    ASSERT_GT(real.size(), 5000u);
    const std::string dejaVu(real.begin(), real.end()), text = "%!PS-AdobeFont-1.0: Foo 001.000\n" + std::string(200, ' ');
    const auto ttc = testfonts::collection({{{"name", "n"}}});
    const std::string notice = "(c) Copyright URW /FontName /Headed def" + std::string(100, ' ');
    const struct { const char* name; std::string bytes; const char* reason; } cases[] = {  // reason null: read
        {"DejaVuSans.ttf", dejaVu, nullptr},
        {"Cut.ttf", dejaVu.substr(0, 5000), "sfnt: table 'name' (offset 680660, length 15624) runs past the end of the font (5000 bytes)"},
        {"notes.ttf", "Hello, world\n", "no font signature: the file starts with \"Hello, w\"; not an sfnt, a collection, PostScript Type 1"},
        {"notes", "\x1F\x8B\"\\abcde", "no font signature: the file starts with \"\\x1F\\x8B\\x22\\x5Cabcd\";"},
        {"empty.otf", "", "no font signature: the file is empty"},
        {"DejaVuSans", dejaVu, "kind: an sfnt other than \"OTTO\" is read only from a file named .ttf, .otf or .dfont"},
        {"font.fon", "MZ" + std::string(200, '\0'), "kind: no reader takes a file named \".fon\" on its own"},
        {"Collection", std::string(ttc.begin(), ttc.end()), "collection: the file is one, but only a file named .ttc"},
        {"Text", text, "Type 1 header: the segment length at byte 2 reads 1347628353, not the file's length 232 (a \"%!\" text"},
        {"Short", PFB(56, std::string(50, ' ')), "Type 1 header: the file has 56 bytes, fewer than the 117 its check reads"},
        {"NoNotice", PFB(200, std::string(194, ' ')), "Type 1 header: no \"copyright\" in the 60 bytes after the segment header"},
        {"Headed", PFB(uint32_t(notice.size() + 6), notice), nullptr},
    };
    TempFolder dir;
    for (const auto& c : cases) {
        testfiles::writeFile(dir / c.name, c.bytes);
        RefusalLog log;
        LxString printer, kind, platform, postScriptName;
        const int result = CollectMetaData(nullptr, LxString(dir / c.name), nullptr, 0, &printer, &kind, &platform, nullptr,
                                           nullptr, nullptr, &postScriptName, nullptr, nullptr, nullptr, ReadOptions{});
        EXPECT_EQ(result == 0, !c.reason) << c.name << ": " << result;
        EXPECT_TRUE(c.reason ? log.text().find(c.reason) == 0 : log.text().empty()) << c.name << ": " << log.text();
    }
}

}  // namespace
