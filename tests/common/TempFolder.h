// A fresh folder under `base` (by default the temporary directory), removed
// with everything in it, locked or not, when the test ends.
#pragma once

#include <sys/stat.h>

#include <cstdlib>
#include <string>

#include "common/FileIO.h"
#include "files/FileSystemWrappers.h"

class TempFolder {
public:
    explicit TempFolder(const std::string& base = "")
    {
        const char* env = std::getenv("TMPDIR");
        std::string pattern = (!base.empty() ? base : env && *env ? env : "/tmp") + "/typeprobe-XXXXXX";
        if (mkdtemp(pattern.data())) path_ = pattern;
    }
    ~TempFolder()
    {
        if (!path_.empty()) OSRemoveDirectoryTree(LxString(path_), true);
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    bool valid() const { return !path_.empty(); }
    const std::string& path() const { return path_; }
    // The absolute path of `relative` inside the folder.
    std::string operator/(const std::string& relative) const { return path_ + "/" + relative; }

    // Writes a file, making missing folders first; returns its path.
    std::string file(const std::string& relative, const std::string& bytes = "") const
    {
        testfiles::writeFile(*this / relative, bytes);
        return *this / relative;
    }
    std::string folder(const std::string& relative) const
    {
        std::string path = *this / relative;
        ::mkdir(path.c_str(), 0755);
        return path;
    }

private:
    std::string path_;
};
