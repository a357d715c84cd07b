// TP_CreateSpecifierWithOptions: with no options the classic entry, field
// by field; with kTP_AllFormats every font on a real disk, known by its
// bytes, each face saying what held it.
#include <zlib.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "api/FontArray.h"
#include "common/FaceArrays.h"
#include "common/FileIO.h"
#include "common/Oracle.h"
#include "common/SfntBuilder.h"
#include "common/TempFolder.h"
#include "typeprobe/typeprobe.h"

namespace {

const std::string kUrw = "/usr/share/fonts/type1/urw-base35/";
const std::string kTtc = "/usr/share/fonts/truetype/wqy/wqy-zenhei.ttc";
const std::string kDejaVu = "/usr/share/fonts/truetype/dejavu/";
const std::string kOtf = "/usr/share/fonts/opentype/urw-base35/C059-Bold.otf";

// "kind name version wrapper checksum" of the first face; empty when there is none.
std::string firstFace(const std::string& path, unsigned long options)
{
    const facearrays::Array fonts = facearrays::Identify(path, kTP_AllAttributes, long(options));
    if (!fonts) return "";
    const TP_FontSpecifier& f = fonts->at(0);
    char checksum[16];
    std::snprintf(checksum, sizeof checksum, "%08X", f.typeprobeChecksum);
    return f.kindName.str() + " " + f.postScriptName.str() + " " + f.version.str() + " " + f.wrapper.str() + " " +
           checksum;
}

std::string crcOf(const std::string& path)
{
    const auto bytes = testfiles::readFile(path);
    char text[16];
    std::snprintf(text, sizeof text, "%08lX", crc32(0, bytes.data(), uInt(bytes.size())));
    return text;
}

TEST(TP_CreateSpecifierWithOptions, NoOptionsIsTheClassicEntry)
{
    std::vector<std::string> paths = {kUrw + "NimbusSans-Regular.t1", kUrw + "NimbusSans-Regular.afm",
                                      kOtf, kDejaVu + "DejaVuSans.ttf", kTtc,
                                      "/usr/share/texmf/fonts/type1/public/lm/lmr10.pfb"};
    for (const auto& entry : std::filesystem::recursive_directory_iterator(TYPEPROBE_TEST_DATA_DIR "/mac"))
        if (entry.is_regular_file()) paths.push_back(entry.path());
    for (const std::string& path : paths) EXPECT_EQ(facearrays::Describe(path, 0), facearrays::Describe(path)) << path;
}

// fontTools keeps the font's table order and head's dates only when told
// to; a WOFF2 collection comes from woff2_compress.
const char* kWrap =
    "import sys\nfrom fontTools import subset\nfrom fontTools.ttLib import TTFont, TTCollection\n"
    "out, fonts = sys.argv[1], sys.argv[2:]\n"
    "for n, p in enumerate(fonts):\n"
    "    for flavor in (\"woff\", \"woff2\"):\n"
    "        f = TTFont(p, recalcTimestamp=False); f.flavor = flavor; f.save(f\"{out}/{n}.{flavor}\", reorderTables=False)\n"
    "c = TTCollection()\nfor p in fonts[:2]:\n"
    "    f = TTFont(p); s = subset.Subsetter(); s.populate(text=\"Typeprobe\"); s.subset(f); c.fonts.append(f)\n"
    "c.save(f\"{out}/pair.ttc\")";

TEST(TP_CreateSpecifierWithOptions, EveryFormatOnARealDisk)
{
    TempFolder dir;
    std::filesystem::create_symlink(kTtc, dir / "zenhei");
    std::vector<testfonts::Table> nameless = testfonts::requiredTables(), broken = nameless;
    std::erase_if(nameless, [](const testfonts::Table& table) { return table.tag == "name"; });
    nameless.push_back({"glyf", "trailing"});  // so that the last table counts
    broken.push_back({"glyf", "trailing"});
    testfiles::writeFile(dir / "nameless.ttf", testfonts::sfnt(0x00010000, nameless));
    testfiles::writeFile(dir / "broken.otb", testfonts::sfnt(0x00010000, broken));
    const std::string ttf = kDejaVu + "DejaVuSansMono.ttf", lmodern = "/usr/share/texmf/fonts/type1/public/lm/lmr10.pfb";
    oracle::python(kWrap, dir.path() + " " + ttf + " " + kOtf);
    oracle::lines("woff2_compress " + (dir / "pair.ttc") + " >/dev/null 2>&1; cp " + (dir / "pair.woff2") + " " +
                  (dir / "copy.woff2") + "; woff2_decompress " + (dir / "copy.woff2"));
    const struct {
        std::string path, classic, allFormats;
    } cases[] = {
        {kUrw + "NimbusSans-Regular.t1", "", "PostScript NimbusSans-Regular 1.00 PFA"},
        {lmodern, "", "PostScript LMRoman10-Regular 2.004 PFB"},
        {kUrw + "NimbusSans-Regular.afm", "", ""},
        {kOtf, "OpenType - PS C059-Bold Version 1.00 sfnt " + crcOf(kOtf), "OpenType - PS C059-Bold Version 1.00 sfnt " + crcOf(kOtf)},
        {dir / "zenhei", "", "TrueType Collection WenQuanYiZenHei Version 0.9.45 collection"},
        {dir / "nameless.ttf", "", "TrueType   sfnt"},
        {dir / "broken.otb", "", "TrueType   sfnt"},
        // A WOFF rebuilds its source byte for byte; a WOFF2 decodes to the same names.
        {dir / "0.woff", "", "OpenType - TT DejaVuSansMono Version 2.37 WOFF " + crcOf(ttf)},
        {dir / "1.woff", "", "OpenType - PS C059-Bold Version 1.00 WOFF " + crcOf(kOtf)},
        {dir / "0.woff2", "", "OpenType - TT DejaVuSansMono Version 2.37 WOFF2"},
        {dir / "1.woff2", "", "OpenType - PS C059-Bold Version 1.00 WOFF2"},
        {dir / "pair.woff2", "", "TrueType Collection DejaVuSansMono Version 2.37 WOFF2"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(firstFace(c.path, 0), c.classic) << c.path;
        EXPECT_TRUE(firstFace(c.path, kTP_AllFormats).starts_with(c.allFormats)) << c.path << ": " << firstFace(c.path, kTP_AllFormats);
    }
    // A collection of any name gives every face as the ".ttc" path does; a
    // WOFF2 collection every face of the collection woff2_decompress writes.
    EXPECT_EQ(facearrays::Describe(dir / "zenhei", kTP_AllFormats), facearrays::Describe(kTtc));
    EXPECT_EQ(facearrays::Describe(kTtc, kTP_AllFormats), facearrays::Describe(kTtc));
    const std::string pair = facearrays::Describe(dir / "pair.woff2", kTP_AllFormats);
    EXPECT_EQ(pair, facearrays::Describe(dir / "copy.ttf", kTP_AllFormats));
    EXPECT_EQ(facearrays::Identify(dir / "pair.woff2", kTP_AllAttributes, kTP_AllFormats)->size(), 2u);
    // fontTools reads the same names from the Type 1 fonts.
    const auto names = oracle::python(
        "import sys\nfrom fontTools.t1Lib import T1Font\nfor p in sys.argv[1:]:\n"
        " f = T1Font(p); f.parse(); print(f.font[\"FontName\"])",
        kUrw + "NimbusSans-Regular.t1 " + lmodern);
    EXPECT_EQ(names, (std::vector<std::string>{"NimbusSans-Regular", "LMRoman10-Regular"}));
}

}  // namespace
