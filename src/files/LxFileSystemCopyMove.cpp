// Copying and moving of files and folders by LxFileSystem.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>

#include "files/FileCopy.h"
#include "files/FileSystemWrappers.h"
#include "files/LXFileSystemException.h"
#include "files/LxDirectorySpecification.h"
#include "files/LxFileSpecification.h"
#include "files/LxFileSystem.h"
#include "files/LxFileSystemParser.h"
#include "support/MacErrors.h"
#include "files/SpecificationHelpers.h"

using SpecificationHelpers::PathOf;

namespace {

std::string parentOf(const std::string& path)
{
    std::string parent = LxFileSystemParser::GetPathDeletingLastPathComponent(LxString(path)).str();
    return parent.empty() ? "." : parent;
}

bool entryExists(const std::string& path)
{
    struct stat status;
    return lstat(path.c_str(), &status) == 0;
}

// Renames without replacing an existing target. Returns 0 or a platform
// error number; a file system that cannot rename that way reports -50.
short renameNoReplace(const std::string& from, const std::string& to)
{
    if (renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) return 0;
    if (errno == ENOSYS) return MacError::paramErr;
    return MacError::FromErrno(errno);
}

bool fallsBackToCopy(short error)
{
    return error == MacError::diffVolErr || error == MacError::paramErr;
}

// Whether `path` is `folder` or lies inside it, judged on the disk so that
// links and "." or ".." cannot hide it.
bool isWithin(const std::string& path, const std::string& folder)
{
    struct stat target;
    if (stat(folder.c_str(), &target) != 0) return false;
    char resolved[PATH_MAX];
    if (!realpath(parentOf(path).c_str(), resolved)) return false;
    std::string current = resolved;
    for (;;) {
        struct stat status;
        if (stat(current.c_str(), &status) == 0 && status.st_dev == target.st_dev &&
            status.st_ino == target.st_ino)
            return true;
        if (current == "/") return false;
        current = parentOf(current);
    }
}

bool canPlace(const std::string& from, const std::string& to)
{
    return entryExists(from) && !entryExists(to) &&
           LxFileSystem::IsValidDirectory(LxDirectorySpecification(LxString(parentOf(to)))) &&
           access(parentOf(to).c_str(), W_OK | X_OK) == 0 &&
           access(parentOf(from).c_str(), W_OK | X_OK) == 0;
}

}  // namespace

void LxFileSystem::CopyFile(const LxFileSpecification& from, const LxFileSpecification& to)
{
    std::string source = PathOf(from);
    std::string target = PathOf(to);
    if (source.empty() || target.empty()) ThrowFileSystemError(MacError::fnfErr);
    if (short error = FileCopy::CopyEntry(source, target)) ThrowFileSystemError(error);
    std::string companion = FileCopy::CompanionPath(source);
    if (!entryExists(companion)) return;
    if (short error = FileCopy::CopyEntry(companion, FileCopy::CompanionPath(target))) {
        unlink(target.c_str());
        ThrowFileSystemError(error);
    }
}

void LxFileSystem::MoveFile(const LxFileSpecification& from, const LxFileSpecification& to)
{
    std::string source = PathOf(from);
    std::string target = PathOf(to);
    if (source.empty() || target.empty()) ThrowFileSystemError(MacError::fnfErr);
    short error = renameNoReplace(source, target);
    if (error == 0) {
        std::string companion = FileCopy::CompanionPath(source);
        if (entryExists(companion)) renameNoReplace(companion, FileCopy::CompanionPath(target));
        return;
    }
    if (!fallsBackToCopy(error)) ThrowFileSystemError(error);
    CopyFile(from, to);
    DeleteFile(from, false);
}

void LxFileSystem::MoveDirectory(const LxDirectorySpecification& from,
                                 const LxDirectorySpecification& to)
{
    std::string source = PathOf(from);
    std::string target = PathOf(to);
    if (source.empty() || target.empty()) ThrowFileSystemError(MacError::fnfErr);
    if (isWithin(target, source)) ThrowFileSystemError(MacError::paramErr);
    short error = renameNoReplace(source, target);
    if (error == 0) return;
    if (!fallsBackToCopy(error)) ThrowFileSystemError(error);
    if (short copyError = FileCopy::CopyTree(source, target)) ThrowFileSystemError(copyError);
    if (int removeError = OSRemoveDirectoryTree(LxString(source), false))
        ThrowFileSystemError(removeError);
}

void LxFileSystem::CopyDirectory(const LxDirectorySpecification& from,
                                 const LxDirectorySpecification& to, const char* name)
{
    std::string source = PathOf(from);
    if (source.empty() || PathOf(to).empty()) ThrowFileSystemError(MacError::fnfErr);
    LxString copyName(name ? name : "");
    if (copyName.empty()) from.GetName(copyName);
    std::string target = PathOf(LxDirectorySpecification(to, copyName));
    if (isWithin(target, source)) ThrowFileSystemError(MacError::paramErr);
    if (short error = FileCopy::CopyTree(source, target)) ThrowFileSystemError(error);
}

bool LxFileSystem::CanMoveFile(const LxFileSpecification& from, const LxFileSpecification& to)
{
    std::string source = PathOf(from);
    std::string target = PathOf(to);
    return !source.empty() && !target.empty() && IsValidFile(from) && canPlace(source, target);
}

bool LxFileSystem::CanMoveDirectory(const LxDirectorySpecification& from,
                                    const LxDirectorySpecification& to)
{
    std::string source = PathOf(from);
    std::string target = PathOf(to);
    return !source.empty() && !target.empty() && IsValidDirectory(from) &&
           canPlace(source, target) && !isWithin(target, source);
}
