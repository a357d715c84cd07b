// Every attribute of every face of a fixed corpus (Debian font packages and
// the Mac test fonts), read through the exported accessors and compared with
// the values recorded in tests/data/recorded-identification.txt. Work that
// changes how fonts are read must leave every value as it was.
//
// To record anew (only when a change of output is intended):
//   TYPEPROBE_RECORD=1 build/bin/test_api --gtest_filter='RecordedIdentification.*'
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "api/FontArray.h"
#include "common/Oracle.h"
#include "typeprobe/typeprobe.h"

namespace {

namespace fs = std::filesystem;

const char* const kRecordFile = TYPEPROBE_TEST_DATA_DIR "/recorded-identification.txt";
const char* const kMacGroup = "mac";

const std::vector<std::string>& debianPackages()
{
    static const std::vector<std::string> names = {
        "fonts-dejavu-core", "fonts-liberation2", "fonts-urw-base35", "fonts-texgyre",
        "fonts-noto-cjk",    "fonts-wqy-zenhei",  "fonts-lmodern",    "lmodern",          "xfonts-scalable"};
    return names;
}

struct ArrayDeleter {
    void operator()(TP_FontArray* array) const { TP_SpecifierFree(array); }
};

// Tabs, line ends and backslashes escaped, so that one face is one line.
std::string escaped(const std::string& text)
{
    std::string out;
    for (char c : text) {
        if (c == '\t') out += "\\t";
        else if (c == '\n') out += "\\n";
        else if (c == '\\') out += "\\\\";
        else out += c;
    }
    return out;
}

// Paths inside the test data folder are written relative to it.
std::string machineIndependent(std::string text)
{
    const std::string root = std::string(TYPEPROBE_TEST_DATA_DIR) + "/";
    for (size_t at; (at = text.find(root)) != std::string::npos;) text.replace(at, root.size(), "$DATA/");
    return text;
}

using TextAccessor = unsigned long (*)(TP_FontArray*, unsigned long, char*, int);
using NumberAccessor = unsigned long (*)(TP_FontArray*, unsigned long, unsigned long*);

std::string text(TextAccessor get, TP_FontArray* array, unsigned long index)
{
    char buffer[4096] = {};
    const unsigned long result = get(array, index, buffer, sizeof buffer);
    if (result != 0) return "!" + std::to_string(result);
    return escaped(machineIndependent(buffer));
}

std::string number(NumberAccessor get, TP_FontArray* array, unsigned long index, bool hex)
{
    unsigned long value = 0;
    const unsigned long result = get(array, index, &value);
    if (result != 0) return "!" + std::to_string(result);
    std::ostringstream out;
    if (hex) out << std::hex;
    out << value;
    return out.str();
}

// The columns of one face, in the order of the header line.
const char* const kColumns =
    "# key\tface\tkind\tfamily\tpostscript\tfull\tdisplay\tprinter\tplatform\tkern\tchecksum\t"
    "legacy\toutline\tfoundry\tlegacyFoundry\tversion\tmmFile\tfond\tstyle\tfirstRes\t"
    "type\tcreator\toutlineType\toutlineCreator";

std::string hex(uint32_t value)
{
    std::ostringstream out;
    out << std::hex << value;
    return out.str();
}

// One line per face of the file, or one "-" line when it has none.
std::vector<std::string> describe(const std::string& key, const std::string& path)
{
    TP_FontArray* raw = nullptr;
    if (TP_CreateSpecifier(path.c_str(), 0, kTP_AllAttributes, &raw) != 0) return {key + "\t-"};
    std::unique_ptr<TP_FontArray, ArrayDeleter> fonts(raw);
    std::vector<std::string> lines;
    unsigned long count = 0;
    TP_GetFontCount(raw, &count);
    for (unsigned long i = 0; i < count; ++i) {
        const TP_FontSpecifier face = fonts->at(i);
        const std::vector<std::string> columns = {
            key, std::to_string(i), text(TP_GetKindName, raw, i), text(TP_GetFamilyName, raw, i),
            text(TP_GetPostScriptName, raw, i), text(TP_GetFullName, raw, i),
            text(TP_GetDisplayName, raw, i), text(TP_GetPrinterFont, raw, i),
            text(TP_GetPlatform, raw, i), number(TP_GetKerningChecksum, raw, i, true),
            number(TP_GetTypeprobeChecksum, raw, i, true),
            number(TP_GetLegacyTypeprobeChecksum, raw, i, true),
            number(TP_GetOutlineFileSize, raw, i, false), text(TP_GetFoundryName, raw, i),
            text(TP_GetLegacyFoundryName, raw, i), text(TP_GetVersion, raw, i),
            text(TP_GetWindowsMMFile, raw, i), std::to_string(face.fondResourceID),
            std::to_string(face.fondStyle), std::to_string(face.firstResourceID),
            hex(face.fileType), hex(face.fileCreator), hex(face.outlineFileType),
            hex(face.outlineFileCreator)};
        std::string line;
        for (const std::string& column : columns) line += (line.empty() ? "" : "\t") + column;
        lines.push_back(line);
    }
    return lines;
}

std::string installedVersion(const std::string& package)
{
    auto out = oracle::lines("dpkg-query -W -f='${Status}|${Version}' " + package + " 2>/dev/null");
    if (out.empty() || out[0].rfind("install ok installed|", 0) != 0) return "";
    return out[0].substr(out[0].find('|') + 1);
}

bool isFontFile(const std::string& path)
{
    static const std::vector<std::string> extensions = {".ttf", ".ttc", ".otf", ".pfb", ".pfa",
                                                        ".pfm", ".afm", ".t1"};
    const std::string extension = fs::path(path).extension().string();
    return std::find(extensions.begin(), extensions.end(), extension) != extensions.end();
}

// The package's own font files (not links), sorted.
std::vector<std::string> packageFiles(const std::string& package)
{
    std::vector<std::string> files;
    for (const std::string& path : oracle::lines("dpkg -L " + package + " 2>/dev/null"))
        if (isFontFile(path) && fs::is_regular_file(fs::symlink_status(path))) files.push_back(path);
    std::sort(files.begin(), files.end());
    return files;
}

// The Mac test fonts: every file below tests/data/mac but the scripts that
// made them and the notes.
std::vector<std::string> macFiles()
{
    const fs::path root = fs::path(TYPEPROBE_TEST_DATA_DIR) / "mac";
    std::vector<std::string> files;
    for (const auto& entry : fs::recursive_directory_iterator(root)) {
        const std::string relative = fs::relative(entry.path(), root).string();
        const std::string extension = entry.path().extension().string();
        if (!entry.is_regular_file() || relative.rfind("scripts/", 0) == 0 || extension == ".md" ||
            extension == ".txt")
            continue;
        files.push_back(entry.path().string());
    }
    std::sort(files.begin(), files.end());
    return files;
}

// One group per package (keyed "package:path") and one for the Mac fonts
// (keyed "mac:path below tests/data/mac").
struct Group {
    std::string name, version;
    std::vector<std::string> lines;
};

Group describeGroup(const std::string& name, const std::string& version,
                    const std::vector<std::string>& files, const std::string& stripPrefix)
{
    Group group{name, version, {}};
    for (const std::string& path : files) {
        const std::string key = name + ":" + path.substr(stripPrefix.size());
        for (std::string& line : describe(key, path)) group.lines.push_back(std::move(line));
    }
    return group;
}

std::vector<Group> describeCorpus()
{
    std::vector<Group> groups;
    for (const std::string& package : debianPackages()) {
        const std::string version = installedVersion(package);
        if (!version.empty()) groups.push_back(describeGroup(package, version, packageFiles(package), ""));
    }
    groups.push_back(describeGroup(kMacGroup, "-", macFiles(), std::string(TYPEPROBE_TEST_DATA_DIR) + "/mac/"));
    return groups;
}

// The recorded file: "= name version" starts a group; "#" lines are notes.
std::map<std::string, Group> readRecord()
{
    std::map<std::string, Group> groups;
    std::ifstream in(kRecordFile);
    Group* current = nullptr;
    for (std::string line; std::getline(in, line);) {
        if (line.empty() || line[0] == '#') continue;
        if (line.rfind("= ", 0) == 0) {
            std::istringstream fields(line.substr(2));
            Group group;
            fields >> group.name >> group.version;
            current = &(groups[group.name] = group);
        } else if (current) {
            current->lines.push_back(line);
        }
    }
    return groups;
}

void writeRecord(const std::vector<Group>& groups)
{
    std::ofstream out(kRecordFile, std::ios::trunc);
    out << "# Every attribute of every face, as TP_CreateSpecifier with kTP_AllAttributes\n"
           "# gives it. \"!n\" is an accessor's non-zero result, \"-\" a file without faces,\n"
           "# $DATA the tests/data folder. Written by RecordedIdentificationTest.\n";
    out << kColumns << "\n";
    for (const Group& group : groups) {
        out << "= " << group.name << " " << group.version << "\n";
        for (const std::string& line : group.lines) out << line << "\n";
    }
}

TEST(RecordedIdentification, EveryAttributeOfEveryFaceIsAsRecorded)
{
    const std::vector<Group> actual = describeCorpus();
    if (const char* record = std::getenv("TYPEPROBE_RECORD"); record && *record == '1') {
        writeRecord(actual);
        GTEST_SKIP() << "recorded " << kRecordFile;
    }
    const std::map<std::string, Group> recorded = readRecord();
    ASSERT_FALSE(recorded.empty()) << kRecordFile << " is missing";
    size_t compared = 0;
    for (const Group& group : actual) {
        auto found = recorded.find(group.name);
        ASSERT_NE(found, recorded.end()) << group.name << " was not recorded";
        // Another release of a package holds other fonts: nothing to compare.
        if (found->second.version != group.version) {
            std::cout << "[ note ] " << group.name << " " << group.version << " is installed, "
                      << found->second.version << " was recorded: not compared\n";
            continue;
        }
        const std::vector<std::string>& expected = found->second.lines;
        EXPECT_EQ(group.lines.size(), expected.size()) << group.name;
        for (size_t i = 0; i < std::min(group.lines.size(), expected.size()); ++i)
            EXPECT_EQ(group.lines[i], expected[i]) << group.name << " line " << i;
        compared += group.lines.size();
    }
    EXPECT_GT(compared, 0u);
}

}  // namespace
