#include <gtest/gtest.h>

#include <zlib.h>

#include <map>
#include <memory>
#include <thread>

#include "api/FontArray.h"
#include "common/DebianFonts.h"
#include "common/FileIO.h"
#include "common/Oracle.h"
#include "common/TempFolder.h"
#include "typeprobe/typeprobe.h"

namespace {

struct ArrayDeleter {
    void operator()(TP_FontArray* array) const { TP_SpecifierFree(array); }
};
using Array = std::unique_ptr<TP_FontArray, ArrayDeleter>;

Array identify(const std::string& path, unsigned long mask = kTP_AllAttributes)
{
    TP_FontArray* array = nullptr;
    if (TP_CreateSpecifier(path.c_str(), 0, mask, &array) != 0) return nullptr;
    return Array(array);
}

uint32_t fileCRC(const std::string& path)
{
    auto bytes = testfiles::readFile(path);
    return uint32_t(crc32(0, bytes.data(), uInt(bytes.size())));
}

TEST(TP_CreateSpecifier, ArgumentsAndMissingFiles)
{
    TP_FontArray* array = reinterpret_cast<TP_FontArray*>(0x1);
    EXPECT_EQ(TP_CreateSpecifier(nullptr, 0, kTP_AllAttributes, &array), 1u);
    EXPECT_EQ(TP_CreateSpecifier("/usr/share/fonts", 0, kTP_AllAttributes, nullptr), 1u);
    EXPECT_EQ(TP_CreateSpecifier("/no/such/font.ps", 0, kTP_AllAttributes, &array), 1u);
    EXPECT_EQ(array, reinterpret_cast<TP_FontArray*>(0x1));  // untouched

    TempFolder dir;
    EXPECT_EQ(TP_CreateSpecifier(dir.file("notes.txt", "just text").c_str(), 0, kTP_AllAttributes,
                                 &array),
              1u);
    EXPECT_EQ(TP_CreateSpecifier(dir.file("font.pfb", "\x80\x01 no face").c_str(), 0,
                                 kTP_AllAttributes, &array),
              1u);
}

TEST(TP_CreateSpecifier, ADataForkFontIsOneFaceWithoutResources)
{
    const std::string path = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";
    Array fonts = identify(path);
    ASSERT_TRUE(fonts);
    ASSERT_EQ(fonts->size(), 1u);
    const TP_FontSpecifier face = fonts->at(0);
    EXPECT_EQ(face.kindName.str(), "OpenType - TT");  // it carries GSUB
    EXPECT_EQ(face.postScriptName.str(), "DejaVuSans");
    EXPECT_EQ(face.familyName.str(), "DejaVu Sans");
    EXPECT_EQ(face.platform.str(), "crossplatform");
    EXPECT_EQ(face.fondResourceID, -1);
    EXPECT_EQ(face.firstResourceID, -1);
    EXPECT_EQ(face.fondStyle, 0);
    EXPECT_EQ(face.fileType, 0u);
    EXPECT_EQ(face.typeprobeChecksum, fileCRC(path));
    EXPECT_EQ(face.outlineFileSize, testfiles::readFile(path).size());
}

TEST(TP_CreateSpecifier, Type1TextFilesByTheirExtensionOrHeader)
{
    const std::string t1 = "/usr/share/fonts/type1/urw-base35/NimbusSans-Bold.t1";
    auto text = testfiles::readFile(t1);
    if (text.empty()) GTEST_SKIP() << t1 << " is not installed";
    TempFolder dir;
    // ".t1" is not an extension the library knows; ".ps" is.
    EXPECT_FALSE(identify(t1));
    testfiles::writeFile(dir / "NimbusSans-Bold.ps", text);
    Array fonts = identify(dir / "NimbusSans-Bold.ps");
    ASSERT_TRUE(fonts);
    TP_FontSpecifier face = fonts->at(0);
    EXPECT_EQ(face.kindName.str(), "PostScript");
    EXPECT_EQ(face.postScriptName.str(), "NimbusSans-Bold");
    EXPECT_EQ(face.familyName.str(), "Nimbus Sans");
    EXPECT_EQ(face.platform.str(), "mac");
    char foundry[32];
    TP_GetFoundryName(fonts.get(), 0, foundry, sizeof foundry);
    EXPECT_STREQ(foundry, "URW");

    // Without an extension, a length word at byte 2 equal to the file's
    // length and "copyright" near the start make a Type 1 file.
    std::string header = "\x80\x01....(c) Copyright URW /FontName /Headed def";
    header.resize(200, ' ');
    header[2] = 0, header[3] = 0, header[4] = 0, header[5] = char(200);
    testfiles::writeFile(dir / "Headed", header);
    fonts = identify(dir / "Headed");
    ASSERT_TRUE(fonts);
    EXPECT_EQ(fonts->at(0).postScriptName.str(), "Headed");
}

// Each call reads the file afresh: nothing read for one identification is
// kept for the next.
TEST(TP_CreateSpecifier, AFileChangedBetweenCallsIsReadAfresh)
{
    const std::string sans = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";
    const std::string mono = "/usr/share/fonts/truetype/dejavu/DejaVuSansMono.ttf";
    if (testfiles::readFile(sans).empty() || testfiles::readFile(mono).empty())
        GTEST_SKIP() << "fonts-dejavu-core is not installed";
    TempFolder dir;
    const std::string path = dir / "font.ttf";
    for (const std::string& source : {sans, mono, sans}) {
        testfiles::writeFile(path, testfiles::readFile(source));
        Array fonts = identify(path);
        ASSERT_TRUE(fonts);
        EXPECT_EQ(fonts->at(0).typeprobeChecksum, fileCRC(source));
        EXPECT_EQ(fonts->at(0).outlineFileSize, testfiles::readFile(source).size());
        EXPECT_EQ(fonts->at(0).postScriptName.str(), source == sans ? "DejaVuSans" : "DejaVuSansMono");
    }
}

TEST(TP_CreateSpecifier, AMaskOfZeroStillYieldsFaces)
{
    Array fonts = identify("/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf", 0);
    ASSERT_TRUE(fonts);
    char buffer[16];
    unsigned long value;
    EXPECT_EQ(TP_GetPostScriptName(fonts.get(), 0, buffer, sizeof buffer), 5u);
    EXPECT_EQ(TP_GetTypeprobeChecksum(fonts.get(), 0, &value), 5u);
    EXPECT_EQ(fonts->at(0).validAttributes, 0u);
}

// Every sfnt font of the Debian packages: its checksum is the CRC-32 of the
// file, and its names are the Windows English records the selection rules
// pick when the font has no Macintosh English records.
TEST(TP_CreateSpecifier, DebianDataForkFontsAgreeWithFontTools)
{
    const auto paths = debianfonts::files({".ttf", ".otf"});
    if (paths.empty()) GTEST_SKIP() << "no Debian font packages installed";
    std::string list;
    for (const auto& path : paths) list += " " + path;
    // path|has Mac English records|Mac PostScript name absent or equal|
    // PostScript name|family (16, else 1)
    auto expected = oracle::python(
        "import sys\nfrom fontTools.ttLib import TTFont\n"
        "for p in sys.argv[1:]:\n"
        " n = TTFont(p, lazy=True)[\"name\"]\n"
        " w = lambda i: (n.getName(i, 3, 1, 0x409) or \"\") and n.getName(i, 3, 1, 0x409).toUnicode()\n"
        " m = n.getName(6, 1, 0, 0)\n"
        " mac = any(r.platformID == 1 and r.langID == 0 for r in n.names)\n"
        " same = m is None or m.toUnicode() == w(6)\n"
        " print(p + \"|\" + str(mac) + \"|\" + str(same) + \"|\" + w(6) + \"|\" + (w(16) or w(1)))",
        list);
    ASSERT_EQ(expected.size(), paths.size()) << "fontTools did not run";
    size_t comparedNames = 0, comparedFamilies = 0;
    for (const std::string& line : expected) {
        std::vector<std::string> field;
        for (size_t at = 0, next; (next = line.find('|', at)) != std::string::npos; at = next + 1)
            field.push_back(line.substr(at, next - at));
        field.push_back(line.substr(line.rfind('|') + 1));
        ASSERT_EQ(field.size(), 5u) << line;
        const std::string& path = field[0];
        Array fonts = identify(path);
        ASSERT_TRUE(fonts) << path;
        ASSERT_EQ(fonts->size(), 1u) << path;
        const TP_FontSpecifier face = fonts->at(0);
        EXPECT_EQ(face.typeprobeChecksum, fileCRC(path)) << path;
        EXPECT_EQ(face.legacyTypeprobeChecksum, fileCRC(path)) << path;
        EXPECT_EQ(face.platform.str(), "crossplatform") << path;
        if (field[2] == "True") {
            EXPECT_EQ(face.postScriptName.str(), field[3]) << path;
            ++comparedNames;
        }
        if (field[1] == "False") {
            EXPECT_EQ(face.familyName.str(), field[4]) << path;
            ++comparedFamilies;
        }
    }
    std::printf("%zu fonts identified; %zu PostScript names and %zu families compared\n",
                paths.size(), comparedNames, comparedFamilies);
}

TEST(TP_CreateSpecifier, CollectionsAgreeWithFontTools)
{
    const auto paths = debianfonts::files({".ttc"});
    if (paths.empty()) GTEST_SKIP() << "no collections installed";
    for (const std::string& path : paths) {
        auto expected = oracle::python(
            "import sys\nfrom fontTools.ttLib import TTCollection\n"
            "for f in TTCollection(sys.argv[1], lazy=True): print(f[\"name\"].getDebugName(6))",
            path);
        Array fonts = identify(path);
        ASSERT_TRUE(fonts) << path;
        ASSERT_EQ(fonts->size(), expected.size()) << path;
        for (unsigned long i = 0; i < fonts->size(); ++i) {
            EXPECT_EQ(fonts->at(i).postScriptName.str(), expected[i]) << path;
            EXPECT_EQ(fonts->at(i).kindName.str(), "TrueType Collection") << path;
        }
    }
}

std::string signature(const TP_FontArray& fonts)
{
    std::string text;
    for (const TP_FontSpecifier& f : fonts.faces())
        text += f.postScriptName.str() + "|" + f.familyName.str() + "|" +
                std::to_string(f.typeprobeChecksum) + "|" + std::to_string(f.kerningChecksum) +
                "|" + std::to_string(f.legacyTypeprobeChecksum) + ";";
    return text;
}

TEST(TP_CreateSpecifier, ThreadsGetTheSerialResults)
{
    std::vector<std::string> paths = debianfonts::files({".ttf", ".otf"});
    paths.push_back(std::string(TYPEPROBE_TEST_DATA_DIR) + "/mac/tt-family/DejaVuSans.suit");
    paths.push_back(std::string(TYPEPROBE_TEST_DATA_DIR) + "/mac/ps-family/DejaVuSerif.bin");
    if (paths.size() > 24) paths.resize(24);
    std::map<std::string, std::string> serial;
    for (const auto& path : paths) {
        Array fonts = identify(path);
        serial[path] = fonts ? signature(*fonts) : "none";
    }
    std::vector<std::map<std::string, std::string>> results(4);
    std::vector<std::thread> threads;
    for (size_t t = 0; t < results.size(); ++t) {
        threads.emplace_back([&, t] {
            for (size_t i = 0; i < paths.size(); ++i) {
                const std::string& path = paths[(i + t * 5) % paths.size()];
                Array fonts = identify(path);
                results[t][path] = fonts ? signature(*fonts) : "none";
            }
        });
    }
    for (auto& thread : threads) thread.join();
    for (const auto& result : results) EXPECT_EQ(result, serial);
}

}  // namespace
