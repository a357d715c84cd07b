#include "files/LxFileHierarchyTraverser.h"

#include <dirent.h>
#include <sys/stat.h>

#include <algorithm>
#include <memory>
#include <string>

#include "files/SpecificationHelpers.h"

namespace {

struct DirCloser {
    void operator()(DIR* dir) const { closedir(dir); }
};

std::vector<std::string> listFolder(const std::string& path)
{
    std::vector<std::string> names;
    std::unique_ptr<DIR, DirCloser> dir(opendir(path.c_str()));
    if (!dir) return names;
    while (const dirent* entry = readdir(dir.get())) {
        std::string name = entry->d_name;
        if (name != "." && name != "..") names.push_back(name);
    }
    std::sort(names.begin(), names.end());
    return names;
}

}  // namespace

LxFileHierarchyTraverser::~LxFileHierarchyTraverser() = default;

bool LxFileHierarchyTraverser::TraverseFileHierarchy(const LxDirectorySpecification& root,
                                                     long depth)
{
    std::string rootPath = SpecificationHelpers::PathOf(root);
    if (rootPath.empty()) return true;
    for (const std::string& name : listFolder(rootPath)) {
        std::string path = SpecificationHelpers::Join(rootPath, name).str();
        struct stat entry;
        if (lstat(path.c_str(), &entry) != 0) continue;
        if (S_ISDIR(entry.st_mode)) {
            if (!FilterFolder(LxDirectorySpecification(LxString(path)), depth)) return false;
            continue;
        }
        if (S_ISLNK(entry.st_mode)) {
            struct stat target;
            // A dangling link cannot be read; a link to a folder is not followed.
            if (stat(path.c_str(), &target) != 0 || S_ISDIR(target.st_mode)) continue;
        }
        if (!FilterFile(LxFileSpecification(LxString(path)), depth)) return false;
    }
    return true;
}

bool LxFileHierarchyTraverser::FilterFile(const LxFileSpecification&, long)
{
    return true;
}

bool LxFileHierarchyTraverser::FilterFolder(const LxDirectorySpecification& folder, long depth)
{
    return TraverseFileHierarchy(folder, depth + 1);
}

LxFileHierarchyScanner::LxFileHierarchyScanner(std::vector<LxFileSpecification>* files,
                                               std::vector<LxDirectorySpecification>* folders,
                                               long maxDepth)
    : files_(files), folders_(folders), maxDepth_(maxDepth)
{
}

bool LxFileHierarchyScanner::FilterFile(const LxFileSpecification& file, long)
{
    if (files_) files_->push_back(file);
    return true;
}

bool LxFileHierarchyScanner::FilterFolder(const LxDirectorySpecification& folder, long depth)
{
    if (folders_) folders_->push_back(folder);
    if (maxDepth_ == -1 || maxDepth_ > depth) return TraverseFileHierarchy(folder, depth + 1);
    return true;
}

LxDirectoryScanner::LxDirectoryScanner(const LxDirectorySpecification& root, long maxDepth)
{
    LxFileHierarchyScanner scanner(&files_, &folders_, maxDepth);
    scanner.TraverseFileHierarchy(root, 0);
}
