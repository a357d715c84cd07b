#include "files/FileSystemWrappers.h"

#include <dirent.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <memory>

#include "files/LXFileSystemException.h"
#include "files/LxDirectorySpecification.h"
#include "files/LxFileSpecification.h"
#include "files/LxFileSystem.h"
#include "support/MacErrors.h"

namespace {

// Runs a throwing file-system operation and turns its failure into a code.
template <typename Operation>
int codeOf(Operation operation)
{
    try {
        operation();
        return 0;
    } catch (const OSErrException& error) {
        return int(error.GetErrorCode());
    }
}

struct DirCloser {
    void operator()(DIR* dir) const { closedir(dir); }
};

int removeTree(const std::string& path, bool force)
{
    struct stat status;
    if (lstat(path.c_str(), &status) != 0) return MacError::FromErrno(errno);
    if (!S_ISDIR(status.st_mode))
        return unlink(path.c_str()) == 0 ? 0 : MacError::FromErrno(errno);
    if (force) chmod(path.c_str(), (status.st_mode & 07777) | S_IRWXU);
    int first = 0;
    {
        std::unique_ptr<DIR, DirCloser> dir(opendir(path.c_str()));
        if (!dir) return MacError::FromErrno(errno);
        while (const dirent* entry = readdir(dir.get())) {
            std::string name = entry->d_name;
            if (name == "." || name == "..") continue;
            int error = removeTree(path + "/" + name, force);
            if (error && !first) first = error;
        }
    }
    if (rmdir(path.c_str()) != 0 && !first) first = MacError::FromErrno(errno);
    return first;
}

}  // namespace

bool OSPathExists(const LxString& path)
{
    struct stat status;
    return !path.empty() && stat(path.c_str(), &status) == 0;
}

int OSRemoveFile(const LxString& path, bool force)
{
    if (force) chmod(path.c_str(), 0777);
    int error = codeOf([&] { LxFileSystem::DeleteFile(LxFileSpecification(path), false); });
    if (error == 0) return 0;
    return std::remove(path.c_str());
}

int OSCreateDir(const LxString& path)
{
    return codeOf([&] { LxFileSystem::CreateDirectory(LxDirectorySpecification(path)); });
}

int OSRemoveDir(const LxString& path)
{
    return codeOf([&] { LxFileSystem::DeleteDirectory(LxDirectorySpecification(path), false); });
}

int OSCopyFile(const LxString& from, const LxString& to, bool failIfExists)
{
    if (!failIfExists && OSPathExists(to)) {
        if (int error = OSRemoveFile(to, false)) return error;
    }
    return codeOf(
        [&] { LxFileSystem::CopyFile(LxFileSpecification(from), LxFileSpecification(to)); });
}

int OSMoveFile(const LxString& from, const LxString& to)
{
    return codeOf(
        [&] { LxFileSystem::MoveFile(LxFileSpecification(from), LxFileSpecification(to)); });
}

int OSRemoveDirectoryTree(const LxString& path, bool force)
{
    if (path.empty()) return MacError::paramErr;
    return removeTree(path.str(), force);
}
