// "catalog scan": brings the catalog up to date with the files under some
// paths. A file is read only when its stamp (size, modification time, device,
// inode and the places of its Mac forks) differs from the one stored, as
// fontconfig decides whether its cache still holds; files gone from under
// the paths leave the catalog.
#pragma once

#include <optional>
#include <set>
#include <string>
#include <vector>

#include <Catalog.h>

#include "FileRun.h"

namespace tpcli {

// Folders that hold Mac sidecars, looked up once per folder of a run rather
// than once per file.
struct SidecarFolders {
    std::set<std::string> appleDouble;    // folders holding ".AppleDouble"
    std::set<std::string> macosx;         // folders holding "__MACOSX"
    std::set<std::string> dotUnderscore;  // folders holding "._" files
};

// What the folders of `paths` (absolute) and their ancestors hold.
SidecarFolders FindSidecarFolders(const std::vector<std::string>& paths);

// The stamp of the file at the task's absolute path (its MacBinary copy for
// a logical Mac file), from what the walk learned of it when it can; nothing
// when it cannot be examined.
std::optional<tpcatalog::FileStamp> StampFile(const FileTask& task, const SidecarFolders& folders);

struct ScanCounts {
    size_t added = 0, changed = 0, removed = 0, unchanged = 0, errors = 0;
    // "3 new, 1 changed, 0 removed, 120 unchanged, 0 errors"
    std::string line() const;
};

// Scans `paths` (made absolute) into `catalog`; problems go to standard
// error as they are met.
ScanCounts ScanIntoCatalog(tpcatalog::Catalog& catalog, const std::vector<std::string>& paths,
                           const RunOptions& options);

// A command-line path as the catalog keeps it: absolute, without "." and
// ".." steps or a trailing slash.
std::string CatalogPathOf(const std::string& path);

}  // namespace tpcli
