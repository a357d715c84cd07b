// TP_CreateSpecifierWithOptions: with no options the classic entry, field
// by field; with kTP_AllFormats every font on a real disk, known by its bytes.
#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

#include "api/FontArray.h"
#include "common/FileIO.h"
#include "common/Oracle.h"
#include "common/SfntBuilder.h"
#include "common/TempFolder.h"
#include "typeprobe/typeprobe.h"

namespace {

const std::string kUrw = "/usr/share/fonts/type1/urw-base35/";
const std::string kTtc = "/usr/share/fonts/truetype/wqy/wqy-zenhei.ttc";

// Every field of every face, one line each; the result code when there is
// no array.
std::vector<std::string> faces(const std::string& path, unsigned long options, bool classicEntry = false)
{
    TP_FontArray* array = nullptr;
    const unsigned long result = classicEntry
                                     ? TP_CreateSpecifier(path.c_str(), 0, kTP_AllAttributes, &array)
                                     : TP_CreateSpecifierWithOptions(path.c_str(), options, kTP_AllAttributes, &array);
    if (result != kTP_Success) return {"result " + std::to_string(result)};
    std::vector<std::string> lines;
    for (unsigned long i = 0; i < array->size(); ++i) {
        const TP_FontSpecifier f = array->at(i);
        std::ostringstream line;
        for (const LxString* text : {&f.kindName, &f.familyName, &f.postScriptName, &f.fullName, &f.displayName,
                                     &f.foundryName, &f.version, &f.printerFontName, &f.platform})
            line << text->str() << '|';
        for (const int64_t number :
             {int64_t(f.kerningChecksum), int64_t(f.typeprobeChecksum), int64_t(f.legacyTypeprobeChecksum),
              int64_t(f.outlineFileSize), int64_t(f.fondStyle), int64_t(f.firstResourceID), int64_t(f.fondResourceID),
              int64_t(f.fileCreator), int64_t(f.fileType), int64_t(f.outlineFileCreator), int64_t(f.outlineFileType),
              int64_t(f.validAttributes)})
            line << number << '|';
        lines.push_back(line.str());
    }
    TP_SpecifierFree(array);
    return lines;
}

// Kind and PostScript name of the first face; empty when there is none.
std::string kindAndName(const std::string& path, unsigned long options)
{
    const std::vector<std::string> all = faces(path, options);
    if (all.front().starts_with("result ")) return "";
    std::istringstream line(all.front());
    std::string kind, family, postScriptName;
    std::getline(line, kind, '|'), std::getline(line, family, '|'), std::getline(line, postScriptName, '|');
    return kind + " " + postScriptName;
}

TEST(TP_CreateSpecifierWithOptions, NoOptionsIsTheClassicEntry)
{
    std::vector<std::string> paths = {kUrw + "NimbusSans-Regular.t1", kUrw + "NimbusSans-Regular.afm",
                                      "/usr/share/fonts/opentype/urw-base35/NimbusSans-Regular.otf",
                                      "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf", kTtc,
                                      "/usr/share/texmf/fonts/type1/public/lm/lmr10.pfb"};
    for (const auto& entry : std::filesystem::recursive_directory_iterator(TYPEPROBE_TEST_DATA_DIR "/mac"))
        if (entry.is_regular_file()) paths.push_back(entry.path());
    for (const std::string& path : paths) EXPECT_EQ(faces(path, 0), faces(path, 0, true)) << path;
}

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
    const std::string lmodern = "/usr/share/texmf/fonts/type1/public/lm/lmr10.pfb";
    const struct {
        std::string path, classic, allFormats;
    } cases[] = {
        {kUrw + "NimbusSans-Regular.t1", "", "PostScript NimbusSans-Regular"},
        {lmodern, "", "PostScript LMRoman10-Regular"},
        {kUrw + "NimbusSans-Regular.afm", "", ""},
        {"/usr/share/fonts/opentype/urw-base35/NimbusSans-Regular.otf", "OpenType - PS NimbusSans-Regular",
         "OpenType - PS NimbusSans-Regular"},
        {dir / "zenhei", "", "TrueType Collection WenQuanYiZenHei"},
        {dir / "nameless.ttf", "", "TrueType "},
        {dir / "broken.otb", "", "TrueType "},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(kindAndName(c.path, 0), c.classic) << c.path;
        EXPECT_EQ(kindAndName(c.path, kTP_AllFormats), c.allFormats) << c.path;
    }
    // A collection of any name gives every face as the ".ttc" path does.
    EXPECT_EQ(faces(dir / "zenhei", kTP_AllFormats), faces(kTtc, 0));
    EXPECT_EQ(faces(kTtc, kTP_AllFormats), faces(kTtc, 0));
    // fontTools reads the same names from the Type 1 fonts.
    const auto names = oracle::python(
        "import sys\nfrom fontTools.t1Lib import T1Font\nfor p in sys.argv[1:]:\n"
        " f = T1Font(p); f.parse(); print(f.font[\"FontName\"])",
        kUrw + "NimbusSans-Regular.t1 " + lmodern);
    EXPECT_EQ(names, (std::vector<std::string>{"NimbusSans-Regular", "LMRoman10-Regular"}));
}

}  // namespace
