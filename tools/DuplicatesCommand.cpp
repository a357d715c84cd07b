// typeprobe duplicates PATH...
#include <iostream>

#include "CatalogRows.h"
#include "Commands.h"
#include "Diagnostics.h"
#include "DuplicateGroups.h"
#include "ExitCodes.h"
#include "JsonFace.h"
#include "TextTable.h"

namespace tpcli {

namespace {

constexpr unsigned long kDuplicateMask = kTP_AttrPostScriptName | kTP_AttrKindName |
                                         kTP_AttrFamilyName | kTP_AttrVersion |
                                         kTP_AttrTypeprobeChecksum;

// The file, with the face number when the file holds several faces.
std::string Where(const FaceAt& at)
{
    if (at.facesInFile < 2) return at.path;
    return at.path + " [face " + std::to_string(at.face.index) + "]";
}

std::string Dash(const std::string& text) { return text.empty() ? "-" : text; }

void PrintSameRelease(const std::vector<SameRelease>& groups)
{
    std::cout << "Same release (" << groups.size() << (groups.size() == 1 ? " group" : " groups")
              << ")\n";
    TextTable table({"CHECKSUM", "POSTSCRIPT NAME", "VERSION", "FILE"});
    for (const SameRelease& group : groups) {
        bool first = true;
        for (const FaceAt& at : group.faces) {
            table.add({first ? HexChecksum(group.checksum) : "",
                       Dash(at.face.text(kTP_AttrPostScriptName)),
                       Dash(at.face.text(kTP_AttrVersion)), Where(at)});
            first = false;
        }
    }
    table.print(std::cout);
}

void PrintConflicts(const std::vector<Conflict>& conflicts)
{
    std::cout << "Conflicting releases (" << conflicts.size()
              << (conflicts.size() == 1 ? " PostScript name" : " PostScript names") << ")\n";
    TextTable table({"POSTSCRIPT NAME", "CHECKSUM", "VERSION", "FILE"});
    for (const Conflict& conflict : conflicts) {
        bool firstRow = true;
        for (const Release& release : conflict.releases) {
            bool firstOfRelease = true;
            for (const FaceAt& at : release.faces) {
                table.add({firstRow ? conflict.postScriptName : "",
                           firstOfRelease ? HexChecksum(release.checksum) : "",
                           Dash(at.face.text(kTP_AttrVersion)), Where(at)});
                firstRow = firstOfRelease = false;
            }
        }
    }
    table.print(std::cout);
}

nlohmann::ordered_json FacesJson(const std::vector<FaceAt>& faces)
{
    auto json = nlohmann::ordered_json::array();
    for (const FaceAt& at : faces) {
        nlohmann::ordered_json entry{{"path", at.path}};
        entry.update(FaceJson(at.face));
        json.push_back(std::move(entry));
    }
    return json;
}

nlohmann::ordered_json GroupsJson(const DuplicateGroups& groups)
{
    nlohmann::ordered_json json;
    json["sameRelease"] = nlohmann::ordered_json::array();
    for (const SameRelease& group : groups.sameRelease)
        json["sameRelease"].push_back(
            {{"checksum", HexChecksum(group.checksum)}, {"faces", FacesJson(group.faces)}});
    json["conflicts"] = nlohmann::ordered_json::array();
    for (const Conflict& conflict : groups.conflicts) {
        auto releases = nlohmann::ordered_json::array();
        for (const Release& release : conflict.releases)
            releases.push_back(
                {{"checksum", HexChecksum(release.checksum)}, {"faces", FacesJson(release.faces)}});
        json["conflicts"].push_back(
            {{"postScriptName", conflict.postScriptName}, {"releases", std::move(releases)}});
    }
    return json;
}

}  // namespace

int RunDuplicates(const DuplicatesOptions& options)
{
    std::vector<FaceAt> faces;
    if (options.paths.empty() && !options.catalog) {
        ReportError("duplicates: PATH is required (or --catalog)");
        return kExitUsage;
    }
    const std::optional<Summary> found =
        options.catalog ? CatalogFaces(*options.catalog, options.paths, kDuplicateMask, faces)
                        : RunFiles(options.paths,
                                   {kDuplicateMask, Representation::None,
                                    RecognitionOptions(options.classic)},
                                   options.run, [&](const FileReport& report) {
                                       for (const Face& face : report.faces)
                                           faces.push_back({report.task.path,
                                                            report.faces.size(), face});
                                   });
    if (!found) return kExitFailure;
    const Summary& summary = *found;
    const DuplicateGroups groups = GroupDuplicates(faces);
    if (options.format == "json") {
        auto json = GroupsJson(groups);
        json["summary"] = SummaryJson(summary);
        std::cout << JsonText(json, 2) << '\n';
    } else if (groups.sameRelease.empty() && groups.conflicts.empty()) {
        std::cout << "No duplicate faces.\n";
    } else {
        if (!groups.sameRelease.empty()) PrintSameRelease(groups.sameRelease);
        if (!groups.sameRelease.empty() && !groups.conflicts.empty()) std::cout << '\n';
        if (!groups.conflicts.empty()) PrintConflicts(groups.conflicts);
    }
    std::cout.flush();
    if (!options.quiet) std::cerr << summary.line() << '\n';
    return summary.errors ? kExitFailure : kExitOk;
}

}  // namespace tpcli
