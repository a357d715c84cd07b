// typeprobe split FILE.ttc DIR
#include <sys/stat.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <iostream>
#include <sstream>

#include "Commands.h"
#include "Diagnostics.h"
#include "ExitCodes.h"
#include "FontFile.h"
#include "JsonFace.h"
#include "Library.h"
#include "TextTable.h"

namespace tpcli {

namespace {

// Room for the paths of any real collection; a longer list is cut.
constexpr unsigned long kListCapacity = 1 << 20;

bool MakeFolder(const std::string& directory)
{
    std::error_code error;
    std::filesystem::create_directories(directory, error);
    if (error || !std::filesystem::is_directory(directory)) {
        ReportProblem(directory, error ? error.message() : "not a folder");
        return false;
    }
    return true;
}

std::string FailureText(unsigned long code)
{
    switch (code) {
    case 4: return "a face could not be written";
    case 5: return "a face lies outside the file";
    default: return "a face cannot stand alone";
    }
}

// The written paths, as the folder was named: the library puts "./" before a
// relative folder name without a slash.
std::vector<std::string> SplitLines(const std::string& list, const std::string& directory)
{
    const bool dotted = directory.rfind("./", 0) == 0;
    std::vector<std::string> lines;
    std::istringstream in(list);
    for (std::string line; std::getline(in, line);) {
        if (!dotted && line.rfind("./", 0) == 0) line.erase(0, 2);
        if (!line.empty()) lines.push_back(line);
    }
    return lines;
}

void Print(const std::vector<std::string>& written, const std::string& format)
{
    TextTable table({"FILE", "POSTSCRIPT NAME", "FAMILY"});
    auto json = nlohmann::ordered_json::array();
    for (const std::string& path : written) {
        Face face;
        if (auto file = FontFile::Open(path, kTP_AttrPostScriptName | kTP_AttrFamilyName, 0))
            if (file->faceCount() > 0) face = file->face(0);
        table.add({path, face.text(kTP_AttrPostScriptName), face.text(kTP_AttrFamilyName)});
        json.push_back({{"path", path},
                        {"postScriptName", face.text(kTP_AttrPostScriptName)},
                        {"family", face.text(kTP_AttrFamilyName)}});
    }
    if (format == "json")
        std::cout << JsonText(json, 2) << '\n';
    else if (!table.empty())
        table.print(std::cout);
}

}  // namespace

int RunSplit(const SplitOptions& options)
{
    struct stat info {};
    if (::stat(options.collection.c_str(), &info) != 0) {
        ReportProblem(options.collection, std::strerror(errno));
        return kExitFailure;
    }
    const bool created = !std::filesystem::exists(options.directory);
    if (!MakeFolder(options.directory)) return kExitFailure;
    std::string list(kListCapacity, '\0');
    unsigned long length = kListCapacity, count = 0;
    const unsigned long result = Library().TP_SeparateTTCFonts(
        options.collection.c_str(), options.directory.c_str(), list.data(), &length, &count);
    list.resize(list.find('\0'));
    Print(SplitLines(list, options.directory), options.format);
    if (count == 0 && created) {
        std::error_code ignored;
        std::filesystem::remove(options.directory, ignored);
    }
    if (count == 0 && result == kTP_NullArgumentOrNotFound) {
        ReportProblem(options.collection, "not a TrueType collection");
        return kExitFailure;
    }
    if (result != kTP_Success) {
        ReportProblem(options.collection, FailureText(result));
        return kExitFailure;
    }
    return kExitOk;
}

}  // namespace tpcli
