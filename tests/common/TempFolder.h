// A fresh folder under `base` (by default the temporary directory), removed
// with everything in it, locked or not, when the test ends.
#pragma once

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <string>

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

    // Writes a file (making no folders); returns its path.
    std::string file(const std::string& relative, const std::string& bytes = "") const
    {
        std::string path = *this / relative;
        int fd = ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
        if (fd >= 0) {
            if (::write(fd, bytes.data(), bytes.size()) != ssize_t(bytes.size())) path.clear();
            ::close(fd);
        }
        return path;
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
