// Faces and files between the tool's records and the catalog's rows.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include <Catalog.h>

#include "DuplicateGroups.h"
#include "FileIdentification.h"
#include "FontFile.h"
#include "Summary.h"

namespace tpcli {

tpcatalog::FaceRow RowOf(const Face& face);

// A stored file as a report of "identify", shown under `shownPath`, with the
// attributes of `mask`. The row's faces move into the report.
FileReport ReportOf(tpcatalog::FileRow&& row, const std::string& shownPath, unsigned long mask);


struct ShownFile {
    std::string path;  // as a walk of the command-line path would show it
    tpcatalog::FileRow row;
};

// The catalog's files at or below `paths` (every file when there are none),
// each once, in the order a walk of the paths lists them. A path the catalog
// knows nothing below is reported and counted in `errors`.
std::vector<ShownFile> FilesInWalkOrder(tpcatalog::Catalog& catalog,
                                        const std::vector<std::string>& paths, size_t& errors);

// The catalog a command uses: `option`, else $XDG_DATA_HOME/typeprobe/catalog.sqlite
// (~/.local/share when unset).
std::string CatalogFile(const std::string& option);

// The faces of the catalog's files at or below `paths`, as "duplicates" reads
// them from the files; nothing when the catalog cannot be used (reported).
std::optional<Summary> CatalogFaces(const std::string& file, const std::vector<std::string>& paths,
                                    unsigned long mask, std::vector<FaceAt>& faces);

}  // namespace tpcli
