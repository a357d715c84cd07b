// A recursive walk over a folder with two hooks: FilterFile for every file,
// FilterFolder for every subfolder. A hook that returns false stops the walk.
// Entries come in byte order of their names, as from a catalog. Files whose
// names begin with "." are visited; links to folders are not followed, so a
// link cannot send the walk round in a loop.
#pragma once

#include <vector>

#include "files/LxDirectorySpecification.h"
#include "files/LxFileSpecification.h"

class LxFileHierarchyTraverser {
public:
    virtual ~LxFileHierarchyTraverser();

    // Visits the entries of `root`, which are at `depth`. False when a hook
    // said stop; true otherwise, also for a folder that cannot be listed.
    bool TraverseFileHierarchy(const LxDirectorySpecification& root, long depth);

protected:
    // Default: go on.
    virtual bool FilterFile(const LxFileSpecification& file, long depth);
    // Default: descend, one level deeper.
    virtual bool FilterFolder(const LxDirectorySpecification& folder, long depth);
};

// Collects files and folders into optional lists, descending while the
// depth stays below `maxDepth` (-1: no limit).
class LxFileHierarchyScanner : public LxFileHierarchyTraverser {
public:
    LxFileHierarchyScanner(std::vector<LxFileSpecification>* files,
                           std::vector<LxDirectorySpecification>* folders, long maxDepth);

protected:
    bool FilterFile(const LxFileSpecification& file, long depth) override;
    bool FilterFolder(const LxDirectorySpecification& folder, long depth) override;

private:
    std::vector<LxFileSpecification>* files_;
    std::vector<LxDirectorySpecification>* folders_;
    long maxDepth_;
};

// Scans `root` from depth 0 when built and keeps what it found.
class LxDirectoryScanner {
public:
    LxDirectoryScanner(const LxDirectorySpecification& root, long maxDepth);

    const std::vector<LxFileSpecification>& GetFiles() const { return files_; }
    const std::vector<LxDirectorySpecification>& GetFolders() const { return folders_; }

private:
    std::vector<LxFileSpecification> files_;
    std::vector<LxDirectorySpecification> folders_;
};
