// identify: the shape of each output format, what other readers make of it,
// the chosen attributes, and the order of the output whatever -j says.
#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <set>

#include "ToolRun.h"
#include "common/FileIO.h"
#include "common/Oracle.h"
#include "common/TempFolder.h"
#include "typeprobe/typeprobe.h"

namespace {

using namespace tooltest;
namespace fs = std::filesystem;

// Faces the library reads back from a document the tool wrote.
unsigned long FacesReadBack(const std::string& document, bool xml)
{
    TP_FontArray* array = nullptr;
    const unsigned long code = xml ? TP_CreateSpecifierFromXML(document.c_str(), &array)
                                   : TP_CreateSpecifierFromPropertyList(document.c_str(), &array);
    unsigned long count = 0;
    if (code == 0) TP_GetFontCount(array, &count);
    TP_SpecifierFree(array);
    return count;
}

std::string FaceAt(const nlohmann::json& path, const nlohmann::json& face)
{
    return path.get<std::string>() + "#" + face["index"].dump();
}

TEST(Identify, EveryFormatHoldsEveryFaceOfEveryFile)
{
    const std::string suitcase = MacCorpus("tt-family/DejaVuSans.suit");
    const std::string other = kLiberationDir + "/LiberationSans-Regular.ttf";
    std::map<std::string, std::string> out;
    for (const char* format : {"table", "json", "jsonl", "xml", "plist"}) {
        const Outcome run = Typeprobe({"identify", "-f", format, suitcase, other});
        EXPECT_EQ(run.status, 0) << format;
        EXPECT_EQ(run.err, "2 files, 5 faces, 0 files without a face, 0 errors\n") << format;
        out[format] = run.out;
    }
    const Strings table = Lines(out["table"]);
    ASSERT_EQ(table.size(), 6u) << out["table"];
    // The file is named on its first face's row only; columns line up.
    EXPECT_EQ(table[1].rfind(suitcase + "  ", 0), 0u);
    EXPECT_EQ(table[2].find_first_not_of(' '), table[0].find("POSTSCRIPT NAME"));
    EXPECT_EQ(table[5].rfind(other + "  ", 0), 0u);

    const Strings faces{suitcase + "#0", suitcase + "#1", suitcase + "#2", suitcase + "#3", other + "#0"};
    Strings json, jsonl;
    const auto document = nlohmann::json::parse(out["json"]);
    for (const auto& file : document["files"])
        for (const auto& face : file["faces"]) json.push_back(FaceAt(file["path"], face));
    for (const std::string& line : Lines(out["jsonl"])) {
        const auto face = nlohmann::json::parse(line);
        jsonl.push_back(FaceAt(face["path"], face));
    }
    EXPECT_EQ(json, faces);
    EXPECT_EQ(jsonl, faces);
    EXPECT_EQ(document["summary"], nlohmann::json::parse(R"({"files":2,"faces":5,"filesWithoutFace":0,"errors":0})"));

    // The library reads both documents back; another reader reads the
    // property list, with each face's file.
    EXPECT_NE(out["xml"].find("\t<!-- " + other + " -->\n"), std::string::npos);
    EXPECT_EQ(FacesReadBack(out["xml"], true), 5u);
    EXPECT_EQ(FacesReadBack(out["plist"], false), 5u);
    TempFolder dir;
    EXPECT_EQ(oracle::python("import sys, plistlib\nfor d in plistlib.load(open(sys.argv[1], \"rb\")): print(d[\"Path\"])",
                             dir.file("faces.plist", out["plist"])),
              (Strings{suitcase, suitcase, suitcase, suitcase, other}));
}

TEST(Identify, NoFaceIsStillADocument)
{
    const std::string readme = MacCorpus("README.md");
    const std::pair<std::string, std::string> cases[] = {
        {"table", ""},
        {"jsonl", ""},
        {"json", nlohmann::ordered_json::parse(R"({"files": [{"path": ")" + readme + R"(", "error": "not a font", "faces": []}],
                 "summary": {"files": 1, "faces": 0, "filesWithoutFace": 1, "errors": 1}})").dump(2) + "\n"},
        {"xml", "<?xml version=\"1.0\" encoding=\"utf-8\" ?>\n<TypeprobeData>\n</TypeprobeData>\n"},
        {"plist", "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
                  "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n<plist version=\"1.0\">\n<array/>\n</plist>\n"},
    };
    for (const auto& [format, out] : cases) {
        const Outcome run = Typeprobe({"identify", "-q", "-f", format, readme});
        EXPECT_EQ(run.status, 1) << format;
        EXPECT_EQ(run.out, out) << format;
    }
}

// --explain: each file refused for its own reason says which; a font of
// which a part was refused keeps its faces and says which part.
TEST(Identify, ExplainSaysWhichRuleRefusedTheFile)
{
    TempFolder dir;
    const std::vector<uint8_t> sans = testfiles::readFile(kSans);
    const auto collection = [&](uint32_t second) {
        std::vector<uint8_t> bytes = {'t', 't', 'c', 'f', 0, 1, 0, 0, 0, 0, 0, 2, 0, 0, 0, 20};
        for (int shift = 24; shift >= 0; shift -= 8) bytes.push_back(uint8_t(second >> shift));
        bytes.insert(bytes.end(), sans.begin(), sans.end());
        return bytes;
    };
    std::vector<uint8_t> dfont = testfiles::readFile(MacCorpus("dfont/DejaVuSans.dfont"));
    const size_t map = size_t(dfont[4]) << 24 | size_t(dfont[5]) << 16 | size_t(dfont[6]) << 8 | dfont[7];
    dfont.at(map + 25) = 4;  // the type list would start inside the map's own header
    testfiles::writeFile(dir / "cut.ttf", std::vector<uint8_t>(sans.begin(), sans.begin() + 5000));
    testfiles::writeFile(dir / "partly.ttc", collection(0x7FFFFFFF));
    testfiles::writeFile(dir / "map.dfont", dfont);
    fs::copy_file(MacCorpus("ps-family/DejaVuSer.bin"), dir / "printer.bin");
    testfiles::writeFile(dir / "notes.ttf", std::vector<uint8_t>{'H', 'e', 'l', 'l', 'o', ',', ' ', 'w', 'o', 'r', 'l', 'd'});
    const Strings expected = At({"typeprobe: @/cut.ttf: not a font: sfnt: table 'name' (offset 680660, length 15624) runs past the end",
                                 "typeprobe: @/map.dfont: not a font: resource map: type list offset",
                                 "typeprobe: @/notes.ttf: not a font: no font signature: the file starts with \"Hello, w\"",
                                 "typeprobe: @/partly.ttc: partly refused: collection: offset entry 1 points past the end",
                                 "typeprobe: @/printer.bin: not a font: resource file: a PostScript printer font ('POST' resources) without"},
                                dir.path());
    const Strings lines = Lines(Typeprobe({"identify", "-q", "--explain", "-a", "kind", dir.path()}).err);
    ASSERT_EQ(lines.size(), expected.size()) << Typeprobe({"identify", "--explain", dir.path()}).err;
    for (size_t i = 0; i < lines.size(); ++i) EXPECT_EQ(lines[i].substr(0, expected[i].size()), expected[i]);
    const nlohmann::json json = Typeprobe({"identify", "-q", "--explain", "-f", "json", dir / "cut.ttf", dir / "partly.ttc"}).json();
    EXPECT_EQ(json["files"][0]["error"].get<std::string>().substr(0, 17), "not a font: sfnt:");
    EXPECT_EQ(json["files"][1]["refused"].get<std::string>().substr(0, 27), "collection: offset entry 1 ");
}

TEST(Identify, AttributesChooseTheKeysAndTheColumns)
{
    const std::string dfont = MacCorpus("dfont/DejaVuSans.dfont");
    Outcome run = Typeprobe({"identify", "-f", "jsonl", "-a", "postscript-name,checksum", "--attributes",
                         "outline-size", dfont});
    ASSERT_EQ(run.status, 0) << run.err;
    std::set<std::string> keys;
    const auto face = run.json();
    for (const auto& [key, value] : face.items()) keys.insert(key);
    EXPECT_EQ(keys, (std::set<std::string>{"path", "index", "postScriptName", "checksum", "outlineFileSize",
                                           "wrapper", "container"}));

    run = Typeprobe({"identify", "-a", "0x1001", dfont});
    ASSERT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(Lines(run.out), (Strings{"FILE" + std::string(dfont.size() - 2, ' ') + "POSTSCRIPT NAME  FAMILY",
                                       dfont + "  DejaVuSans       DejaVu Sans"}));
}

// The fonts of fonts-dejavu-core and fonts-liberation2 (scripts/setup.sh)
// and the Mac corpus.
Strings LibraryFonts()
{
    Strings fonts{MacCorpus("dfont/DejaVuSans.dfont"), MacCorpus("tt-family/DejaVuSans.suit"),
                  MacCorpus("ps-family/DejaVuSerif.bin")};
    for (const char* name : {"Sans", "Sans-Bold", "SansMono", "SansMono-Bold", "Serif", "Serif-Bold"})
        fonts.push_back(kDejaVuDir + "/DejaVu" + name + ".ttf");
    for (const char* family : {"Mono", "Sans", "Serif"})
        for (const char* style : {"Bold", "BoldItalic", "Italic", "Regular"})
            fonts.push_back(kLiberationDir + "/Liberation" + family + "-" + style + ".ttf");
    return fonts;
}

TEST(Identify, OutputOrderIsTheSameWhateverTheNumberOfJobs)
{
    TempFolder dir;
    const Strings fonts = LibraryFonts();
    const auto name = [&](const std::string& folder, size_t i) {
        return dir / (folder + "/" + std::to_string(10 + i) + fs::path(fonts[i]).extension().string());
    };
    Strings expected;  // command-line order, then name order in each folder
    for (const char* folder : {"b", "a"}) {
        dir.folder(folder);
        // Made last name first, so that the order on disk is not the names'.
        for (size_t i = fonts.size(); i-- > 0;)
            ASSERT_TRUE(fs::copy_file(fonts[i], name(folder, i))) << fonts[i] << ": run scripts/setup.sh";
        for (size_t i = 0; i < fonts.size(); ++i) expected.push_back(name(folder, i));
    }
    std::string first;
    for (const char* jobs : {"1", "3", "16"}) {
        const Outcome run = Typeprobe({"identify", "-f", "jsonl", "-j", jobs, dir / "b", dir / "a"});
        ASSERT_EQ(run.status, 0) << run.err;
        if (first.empty()) first = run.out;
        EXPECT_EQ(run.out, first) << "-j " << jobs;
        Strings files;
        for (const std::string& line : Lines(run.out)) {
            const std::string path = nlohmann::json::parse(line)["path"];
            if (files.empty() || files.back() != path) files.push_back(path);
        }
        EXPECT_EQ(files, expected) << "-j " << jobs;
    }
}

}  // namespace
