// typeprobe match A B: the attributes two faces share and those that differ,
// as the library compares them (names without regard to letter case for
// "same", byte for byte for "differs"; empty names and zero numbers never
// differ), and whether their identity checksums agree.
#include <sys/stat.h>

#include <cerrno>
#include <cstring>
#include <iostream>

#include "Attributes.h"
#include "Commands.h"
#include "Diagnostics.h"
#include "ExitCodes.h"
#include "JsonFace.h"
#include "Library.h"
#include "TextTable.h"

namespace tpcli {

namespace {

std::optional<FontFile> OpenFace(const std::string& path, unsigned long face)
{
    struct stat info {};
    if (::stat(path.c_str(), &info) != 0) {
        const int error = errno;
        if (::stat((path + ".bin").c_str(), &info) != 0) {
            ReportProblem(path, std::strerror(error));
            return std::nullopt;
        }
    }
    auto file = FontFile::Open(path, FullMask(), 0);
    if (!file) {
        ReportProblem(path, "not a font");
        return std::nullopt;
    }
    if (face >= file->faceCount()) {
        ReportProblem(path, "no face " + std::to_string(face) + " (the file has " +
                                std::to_string(file->faceCount()) + ")");
        return std::nullopt;
    }
    return file;
}

// The attributes the library compares; the others are shown for reference.
constexpr unsigned long kCompared = kTP_AttrKindName | kTP_AttrFamilyName |
                                    kTP_AttrPostScriptName | kTP_AttrFoundryName |
                                    kTP_AttrVersion | kTP_AttrKerningChecksum |
                                    kTP_AttrOutlineFileSize | kTP_AttrPrinterFontName;

std::string Verdict(unsigned long bit, unsigned long matching, unsigned long differing)
{
    if (!(bit & kCompared)) return "not compared";
    const bool same = matching & bit, differs = differing & bit;
    if (same && differs) return "same, letter case differs";
    if (same) return "same";
    if (differs) return "differs";
    return "-";
}

void PrintTable(const Face& a, const Face& b, unsigned long matching, unsigned long differing)
{
    TextTable table({"ATTRIBUTE", "A", "B", "RESULT"});
    for (const Attribute& attribute : AllAttributes()) {
        const std::string valueA = a.display(attribute.bit), valueB = b.display(attribute.bit);
        table.add({attribute.name, valueA.empty() ? "-" : valueA, valueB.empty() ? "-" : valueB,
                   Verdict(attribute.bit, matching, differing)});
    }
    table.print(std::cout);
    const bool sameRelease = a.number(kTP_AttrTypeprobeChecksum) == b.number(kTP_AttrTypeprobeChecksum);
    std::cout << "\n"
              << (sameRelease ? "Same identity checksum: the same release of the same face."
                              : "Different identity checksums.")
              << '\n';
}

nlohmann::ordered_json Side(const std::string& path, const Face& face)
{
    return {{"path", path}, {"face", FaceJson(face)}};
}

}  // namespace

int RunMatch(const MatchOptions& options)
{
    auto fileA = OpenFace(options.a, options.faceA);
    auto fileB = OpenFace(options.b, options.faceB);
    if (!fileA || !fileB) return kExitFailure;
    unsigned long matching = 0, differing = 0;
    Library().TP_Match(fileA->array(), options.faceA, fileB->array(), options.faceB, &matching, &differing);
    const Face a = fileA->face(options.faceA), b = fileB->face(options.faceB);
    if (options.format == "json") {
        nlohmann::ordered_json json;
        json["a"] = Side(options.a, a);
        json["b"] = Side(options.b, b);
        json["matching"] = AttributeNames(matching);
        json["differing"] = AttributeNames(differing);
        json["sameChecksum"] =
            a.number(kTP_AttrTypeprobeChecksum) == b.number(kTP_AttrTypeprobeChecksum);
        std::cout << JsonText(json, 2) << '\n';
    } else {
        PrintTable(a, b, matching, differing);
    }
    return kExitOk;
}

}  // namespace tpcli
