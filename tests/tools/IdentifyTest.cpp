// identify: the JSON output's fields and values, formats, order under -j.
#include <gtest/gtest.h>
#include <zlib.h>

#include <filesystem>
#include <set>

#include "ToolRun.h"
#include "common/FileIO.h"
#include "common/Oracle.h"
#include "common/TempFolder.h"
#include "typeprobe/typeprobe.h"

namespace {

using tooltest::Typeprobe;
namespace fs = std::filesystem;

unsigned long Crc32Of(const std::string& path)
{
    const auto bytes = testfiles::readFile(path);
    return crc32(0, bytes.data(), uInt(bytes.size()));
}

std::string Hex(unsigned long value)
{
    char text[16];
    std::snprintf(text, sizeof text, "%08lX", value);
    return text;
}

TEST(Identify, JsonDescribesADataForkFontWithItsFileChecksum)
{
    REQUIRE_SYSTEM_FONTS();
    const auto run = Typeprobe({"identify", "--format", "json", tooltest::kSans});
    ASSERT_EQ(run.status, 0) << run.err;
    const auto json = run.json();
    ASSERT_EQ(json["files"].size(), 1u);
    const auto& file = json["files"][0];
    EXPECT_EQ(file["path"], tooltest::kSans);
    ASSERT_EQ(file["faces"].size(), 1u);
    const auto& face = file["faces"][0];
    EXPECT_EQ(face["index"], 0);
    EXPECT_EQ(face["postScriptName"], "DejaVuSans");
    EXPECT_EQ(face["family"], "DejaVu Sans");
    EXPECT_EQ(face["fullName"], "DejaVu Sans");
    EXPECT_EQ(face["kind"], "OpenType - TT");
    EXPECT_EQ(face["platform"], "crossplatform");
    EXPECT_EQ(face["version"], "2.37");
    // A cross-platform font's identity rests on the CRC-32 of its data fork.
    EXPECT_EQ(face["checksum"], Hex(Crc32Of(tooltest::kSans)));
    EXPECT_EQ(face["outlineFileSize"], fs::file_size(tooltest::kSans));
    EXPECT_EQ(face["printerFont"], "");
    EXPECT_EQ(json["summary"],
              nlohmann::json({{"files", 1}, {"faces", 1}, {"filesWithoutFace", 0}, {"errors", 0}}));
    EXPECT_EQ(run.err, "1 file, 1 face, 0 files without a face, 0 errors\n");
}

TEST(Identify, NamesAgreeWithFontToolsAcrossAFolder)
{
    REQUIRE_SYSTEM_FONTS();
    const auto expected = oracle::python(
        "import sys, os\nfrom fontTools.ttLib import TTFont\n"
        "d = sys.argv[1]\n"
        "for n in sorted(os.listdir(d)):\n"
        "  f = TTFont(os.path.join(d, n), lazy=True)\n"
        "  print(os.path.join(d, n) + \"|\" + f[\"name\"].getDebugName(6) + \"|\" + "
        "f[\"name\"].getDebugName(1))",
        tooltest::kLiberationDir);
    ASSERT_FALSE(expected.empty()) << "fontTools did not run";
    const auto run = Typeprobe({"identify", "-f", "jsonl", "-q", tooltest::kLiberationDir});
    ASSERT_EQ(run.status, 0) << run.err;
    std::vector<std::string> got;
    for (const std::string& line : run.outLines()) {
        const auto face = nlohmann::json::parse(line);
        got.push_back(face["path"].get<std::string>() + "|" +
                      face["postScriptName"].get<std::string>() + "|" +
                      face["family"].get<std::string>());
        EXPECT_EQ(face["checksum"], Hex(Crc32Of(face["path"])));
    }
    EXPECT_EQ(got, expected);
    EXPECT_EQ(run.err, "");  // --quiet
}

TEST(Identify, MacSuitcaseFacesComeInOrderWithMacPlatform)
{
    const auto run = Typeprobe({"identify", "-f", "json", tooltest::MacCorpus("tt-family")});
    ASSERT_EQ(run.status, 0) << run.err;
    const auto files = run.json()["files"];
    ASSERT_EQ(files.size(), 1u);
    EXPECT_EQ(files[0]["path"], tooltest::MacCorpus("tt-family/DejaVuSans.suit"));
    std::vector<std::string> names;
    for (const auto& face : files[0]["faces"]) {
        names.push_back(face["postScriptName"]);
        EXPECT_EQ(face["kind"], "TrueType");
        EXPECT_EQ(face["platform"], "mac");
        EXPECT_EQ(face["family"], "DejaVu Sans");
    }
    EXPECT_EQ(names, (std::vector<std::string>{"DejaVuSans", "DejaVuSans-Bold",
                                               "DejaVuSans-Oblique", "DejaVuSans-BoldOblique"}));
}

TEST(Identify, AttributesChooseTheKeysAndTheColumns)
{
    REQUIRE_SYSTEM_FONTS();
    auto run = Typeprobe({"identify", "-f", "jsonl", "-a", "postscript-name,checksum",
                          "--attributes", "outline-size", tooltest::kSans});
    ASSERT_EQ(run.status, 0) << run.err;
    std::set<std::string> keys;
    const auto face = nlohmann::json::parse(run.out);
    for (const auto& [key, value] : face.items()) keys.insert(key);
    EXPECT_EQ(keys, (std::set<std::string>{"path", "index", "postScriptName", "checksum",
                                           "outlineFileSize"}));

    run = Typeprobe({"identify", "-a", "0x1001", tooltest::kSans});
    ASSERT_EQ(run.status, 0) << run.err;
    ASSERT_EQ(run.outLines().size(), 2u);
    EXPECT_EQ(run.outLines()[0], "FILE" + std::string(tooltest::kSans.size() - 2, ' ') +
                                     "POSTSCRIPT NAME  FAMILY");
    EXPECT_EQ(run.outLines()[1], tooltest::kSans + "  DejaVuSans       DejaVu Sans");
}

TEST(Identify, TheDefaultTableShowsTheMainColumnsOneRowPerFace)
{
    const auto run = Typeprobe({"identify", tooltest::MacCorpus("tt-family/DejaVuSans.suit")});
    ASSERT_EQ(run.status, 0) << run.err;
    const auto lines = run.outLines();
    ASSERT_EQ(lines.size(), 5u);
    for (const char* heading : {"FILE", "POSTSCRIPT NAME", "KIND", "FAMILY", "VERSION",
                                "PLATFORM", "CHECKSUM"})
        EXPECT_NE(lines[0].find(heading), std::string::npos) << heading;
    // Columns line up: every row has its kind where the heading has KIND.
    const size_t kind = lines[0].find("KIND");
    for (size_t i = 1; i < lines.size(); ++i) EXPECT_EQ(lines[i].substr(kind, 8), "TrueType");
    // The file is named on its first face's row only.
    EXPECT_EQ(lines[1].rfind(tooltest::MacCorpus("tt-family/DejaVuSans.suit"), 0), 0u);
    EXPECT_EQ(lines[2].find_first_not_of(' '), lines[0].find("POSTSCRIPT NAME"));
}

TEST(Identify, OutputOrderIsTheSameWhateverTheNumberOfJobs)
{
    REQUIRE_SYSTEM_FONTS();
    const std::vector<std::string> paths{tooltest::kDejaVuDir, tooltest::MacCorpus(""),
                                         tooltest::kLiberationDir};
    std::vector<std::string> outputs;
    for (const char* jobs : {"1", "3", "16"}) {
        std::vector<std::string> args{"identify", "-f", "jsonl", "-j", jobs};
        args.insert(args.end(), paths.begin(), paths.end());
        const auto run = Typeprobe(args);
        ASSERT_EQ(run.status, 0) << run.err;
        outputs.push_back(run.out);
    }
    EXPECT_EQ(outputs[0], outputs[1]);
    EXPECT_EQ(outputs[0], outputs[2]);
    // Command-line order first, then name order inside each folder.
    std::vector<std::string> files;
    for (const std::string& line : tooltest::Run::lines(outputs[0])) {
        const std::string path = nlohmann::json::parse(line)["path"];
        if (files.empty() || files.back() != path) files.push_back(path);
    }
    ASSERT_GT(files.size(), 30u);
    EXPECT_EQ(files.front(), tooltest::kDejaVuDir + "/DejaVuMathTeXGyre.ttf");
    EXPECT_EQ(files.back(), tooltest::kLiberationDir + "/LiberationSerif-Regular.ttf");
    auto dejavuEnd = std::find_if(files.begin(), files.end(), [](const std::string& path) {
        return path.rfind(tooltest::kDejaVuDir, 0) != 0;
    });
    EXPECT_TRUE(std::is_sorted(files.begin(), dejavuEnd));
}

// The library's own document for one file, made in process.
std::string LibraryDocument(const std::string& path, bool xml)
{
    TP_FontArray* array = nullptr;
    if (TP_CreateSpecifier(path.c_str(), 0, kTP_AllAttributes, &array) != 0) return "";
    std::string buffer(1 << 20, '\0');
    unsigned long length = buffer.size();
    if (xml)
        TP_GetXMLRepresentation(array, buffer.data(), &length);
    else
        TP_GetPropertyListRepresentation(array, buffer.data(), &length);
    TP_SpecifierFree(array);
    return buffer.substr(0, buffer.find('\0'));
}

unsigned long LibraryChecksum(const std::string& path)
{
    TP_FontArray* array = nullptr;
    unsigned long checksum = 0;
    if (TP_CreateSpecifier(path.c_str(), 0, kTP_AttrTypeprobeChecksum, &array) != 0) return 0;
    TP_GetTypeprobeChecksum(array, 0, &checksum);
    TP_SpecifierFree(array);
    return checksum;
}

// The lines of an XML document between its two header lines and its closing line.
std::string FaceBlocks(const std::string& document)
{
    auto lines = tooltest::Run::lines(document);
    std::string blocks;
    for (size_t i = 2; i + 1 < lines.size(); ++i) blocks += lines[i] + "\n";
    return blocks;
}

TEST(Identify, XmlIsTheLibrarysDocumentForAllFilesAtOnce)
{
    REQUIRE_SYSTEM_FONTS();
    const std::string suitcase = tooltest::MacCorpus("tt-family/DejaVuSans.suit");
    const auto run = Typeprobe({"identify", "-f", "xml", suitcase, tooltest::kLiberationSans});
    ASSERT_EQ(run.status, 0) << run.err;
    const std::string first = LibraryDocument(suitcase, true);
    const auto firstLines = tooltest::Run::lines(first);
    ASSERT_GT(firstLines.size(), 3u);
    EXPECT_EQ(run.out, firstLines[0] + "\n" + firstLines[1] + "\n" +
                           "\t<!-- " + suitcase + " -->\n" + FaceBlocks(first) +
                           "\t<!-- " + tooltest::kLiberationSans + " -->\n" +
                           FaceBlocks(LibraryDocument(tooltest::kLiberationSans, true)) +
                           firstLines.back() + "\n");
    // The library reads the merged document back: four faces, then one.
    TP_FontArray* array = nullptr;
    ASSERT_EQ(TP_CreateSpecifierFromXML(run.out.c_str(), &array), 0u);
    unsigned long count = 0;
    TP_GetFontCount(array, &count);
    char name[64] = "";
    if (count == 5) TP_GetPostScriptName(array, 4, name, sizeof name);
    TP_SpecifierFree(array);
    EXPECT_EQ(count, 5u);
    EXPECT_STREQ(name, "LiberationSans");
}

TEST(Identify, PropertyListHoldsEveryFaceWithItsFilesPath)
{
    REQUIRE_SYSTEM_FONTS();
    const std::string dfont = tooltest::MacCorpus("dfont/DejaVuSans.dfont");
    const auto run = Typeprobe({"identify", "-f", "plist", dfont, tooltest::kSansBold});
    ASSERT_EQ(run.status, 0) << run.err;
    TempFolder dir;
    const std::string plist = dir.file("faces.plist", run.out);
    const auto entries = oracle::python(
        "import sys, plistlib\n"
        "for d in plistlib.load(open(sys.argv[1], \"rb\")): "
        "print(d[\"Path\"] + \"|\" + d[\"PostScriptName\"] + \"|\" + d[\"Checksum\"])",
        plist);
    EXPECT_EQ(entries, (std::vector<std::string>{
                           dfont + "|DejaVuSans|" + Hex(LibraryChecksum(dfont)),
                           tooltest::kSansBold + "|DejaVuSans-Bold|" + Hex(Crc32Of(tooltest::kSansBold))}));
    TP_FontArray* array = nullptr;
    ASSERT_EQ(TP_CreateSpecifierFromPropertyList(run.out.c_str(), &array), 0u);
    unsigned long count = 0;
    TP_GetFontCount(array, &count);
    TP_SpecifierFree(array);
    EXPECT_EQ(count, 2u);
}

TEST(Identify, RepresentationsOfNoFaceAreStillDocuments)
{
    const std::string readme = tooltest::MacCorpus("README.md");
    const auto xml = Typeprobe({"identify", "-f", "xml", "-q", tooltest::MacCorpus("scripts")});
    EXPECT_EQ(xml.status, 0) << xml.err;
    EXPECT_EQ(xml.out, "<?xml version=\"1.0\" encoding=\"utf-8\" ?>\n<TypeprobeData>\n</TypeprobeData>\n");
    const auto plist = Typeprobe({"identify", "-f", "plist", readme});
    EXPECT_EQ(plist.status, 1);
    EXPECT_NE(plist.out.find("<array/>"), std::string::npos) << plist.out;
}

}  // namespace
