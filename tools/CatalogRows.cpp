#include "CatalogRows.h"

#include <algorithm>
#include <cstdlib>
#include <set>

#include "CatalogScan.h"
#include "Diagnostics.h"

namespace tpcli {

tpcatalog::FaceRow RowOf(const Face& face)
{
    tpcatalog::FaceRow row;
    row.index = face.index;
    row.mask = face.mask;
    row.texts = face.texts;
    row.numbers = face.numbers;
    row.legacyFoundry = face.legacyFoundry;
    row.wrapper = face.wrapper;
    row.container = face.container;
    return row;
}

namespace {

// The face with the attributes of `mask` that the row holds.
Face FaceOf(tpcatalog::FaceRow&& row, unsigned long mask)
{
    Face face;
    face.index = row.index;
    face.mask = row.mask & mask;
    face.texts = std::move(row.texts);
    face.numbers = std::move(row.numbers);
    std::erase_if(face.texts, [&](const auto& entry) { return !(entry.first & mask); });
    std::erase_if(face.numbers, [&](const auto& entry) { return !(entry.first & mask); });
    if (face.has(kTP_AttrFoundryName)) face.legacyFoundry = std::move(row.legacyFoundry);
    face.wrapper = std::move(row.wrapper);
    face.container = std::move(row.container);
    return face;
}

}  // namespace

FileReport ReportOf(tpcatalog::FileRow&& row, const std::string& shownPath, unsigned long mask)
{
    FileReport report;
    report.task = {shownPath, false, {}};
    const bool known = row.outcome >= 0 && row.outcome <= int(FileReport::Outcome::Failed);
    report.outcome = known ? FileReport::Outcome(row.outcome) : FileReport::Outcome::Failed;
    // The line reported when the file was read stands as it was.
    if (!row.error.empty()) {
        report.outcome = FileReport::Outcome::Failed;
        report.message = row.error;
    }
    for (tpcatalog::FaceRow& face : row.faces) report.faces.push_back(FaceOf(std::move(face), mask));
    return report;
}


namespace {

// Walks list a folder's entries in byte order and go into a folder where its
// name falls: paths in the order of their components, '/' before any byte.
bool WalkOrder(const std::string& a, const std::string& b)
{
    return std::lexicographical_compare(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) {
        const int kx = x == '/' ? -1 : static_cast<unsigned char>(x);
        const int ky = y == '/' ? -1 : static_cast<unsigned char>(y);
        return kx < ky;
    });
}

// `path` (at or below `root`, absolute) shown below `given`, the
// command-line spelling of `root`.
std::string Shown(const std::string& path, const std::string& root, const std::string& given)
{
    std::string rest = path.substr(root.size());
    if (root == "/") rest = "/" + rest;
    if (!given.empty() && given.back() == '/' && !rest.empty()) rest.erase(0, 1);
    return given + rest;
}

}  // namespace

std::vector<ShownFile> FilesInWalkOrder(tpcatalog::Catalog& catalog,
                                        const std::vector<std::string>& paths, size_t& errors)
{
    std::vector<ShownFile> shown;
    std::set<std::string> seen;
    const std::vector<std::string> roots = paths.empty() ? std::vector<std::string>{""} : paths;
    for (const std::string& given : roots) {
        const std::string root = given.empty() ? "" : CatalogPathOf(given);
        auto rows = catalog.filesUnder(root);
        if (rows.empty() && !given.empty()) {
            ReportProblem(given, "not in the catalog");
            ++errors;
        }
        std::sort(rows.begin(), rows.end(), [](const auto& a, const auto& b) { return WalkOrder(a.path, b.path); });
        for (auto& row : rows) {
            if (!seen.insert(row.path).second) continue;
            std::string path = given.empty() ? row.path : Shown(row.path, root, given);
            shown.push_back({std::move(path), std::move(row)});
        }
    }
    return shown;
}

std::string CatalogFile(const std::string& option)
{
    if (!option.empty()) return option;
    const char* data = std::getenv("XDG_DATA_HOME");
    const char* home = std::getenv("HOME");
    const std::string base = data && *data ? data : std::string(home ? home : ".") + "/.local/share";
    return base + "/typeprobe/catalog.sqlite";
}

std::optional<Summary> CatalogFaces(const std::string& file, const std::vector<std::string>& paths,
                                    unsigned long mask, std::vector<FaceAt>& faces)
{
    const std::string path = CatalogFile(file);
    try {
        tpcatalog::Catalog catalog(path, tpcatalog::Catalog::Use::Query);
        Summary summary;
        for (ShownFile& shown : FilesInWalkOrder(catalog, paths, summary.errors)) {
            const FileReport report = ReportOf(std::move(shown.row), shown.path, mask);
            summary.add(report);
            for (const Face& face : report.faces) faces.push_back({shown.path, report.faces.size(), face});
        }
        return summary;
    } catch (const std::exception& error) {
        ReportError(error.what());
        return std::nullopt;
    }
}

}  // namespace tpcli
