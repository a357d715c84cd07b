#include "files/LxFileSystem.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <cerrno>
#include <vector>

#include "containers/FileBytes.h"
#include "files/FileCopy.h"
#include "files/LXFileSystemException.h"
#include "files/LxDirectorySpecification.h"
#include "files/LxFileSpecification.h"
#include "support/MacErrors.h"
#include "containers/MacForks.h"
#include "files/SpecificationHelpers.h"

using SpecificationHelpers::PathOf;

namespace {

// Seconds from 1904-01-01, the Mac's epoch, to 1970-01-01.
constexpr long kMacEpochOffset = 2082844800L;

struct ErrorMeaning {
    short code;
    LxFileSystem::FileSysErrorCode meaning;
};

constexpr ErrorMeaning kErrorMeanings[] = {
    {MacError::noErr, LxFileSystem::kNoError},
    {MacError::fnfErr, LxFileSystem::kFileNotFound},
    {MacError::dirNFErr, LxFileSystem::kDirectoryNotFound},
    {MacError::dupFNErr, LxFileSystem::kDuplicateName},
    {MacError::bdNamErr, LxFileSystem::kBadName},
    {MacError::ioErr, LxFileSystem::kIOError},
    {MacError::paramErr, LxFileSystem::kParameterError},
    {MacError::diffVolErr, LxFileSystem::kDifferentVolume},
    {MacError::notAFileErr, LxFileSystem::kNotAFile},
    {MacError::afpAccessDenied, LxFileSystem::kAccessDenied},
    {MacError::wPrErr, LxFileSystem::kVolumeLocked},
    {MacError::dskFulErr, LxFileSystem::kDiskFull},
    {MacError::fBsyErr, LxFileSystem::kBusy},
    {MacError::tmfoErr, LxFileSystem::kTooManyOpenFiles},
    {MacError::memFullErr, LxFileSystem::kOutOfMemory},
    {MacError::nsvErr, LxFileSystem::kNoSuchVolume},
    {MacError::coreFoundationUnknownErr, LxFileSystem::kCannotMakePath},
};

}  // namespace

LxFileSystem::FileSysErrorCode LxFileSystem::TranslateError(long platformCode)
{
    for (const ErrorMeaning& entry : kErrorMeanings)
        if (entry.code == platformCode) return entry.meaning;
    return kUnknownError;
}

long LxFileSystem::PlatformCodeFor(FileSysErrorCode error)
{
    for (const ErrorMeaning& entry : kErrorMeanings)
        if (entry.meaning == error) return entry.code;
    return MacError::ioErr;
}

unsigned long LxFileSystem::GetFileSize(const LxFileSpecification& file)
{
    MacForkInfo info = MacForks::Describe(PathOf(file));
    if (!info.exists) ThrowFileSystemError(MacError::fnfErr);
    return info.dataForkLength + info.resourceForkLength;
}

namespace {

bool hasMode(const std::string& path, mode_t kind)
{
    struct stat status;
    return !path.empty() && stat(path.c_str(), &status) == 0 && (status.st_mode & S_IFMT) == kind;
}

struct stat statOrThrow(const std::string& path)
{
    struct stat status;
    if (path.empty()) ThrowFileSystemError(MacError::fnfErr);
    if (stat(path.c_str(), &status) != 0) ThrowFileSystemErrno();
    return status;
}

void changeMode(const std::string& path, bool readOnly)
{
    struct stat status = statOrThrow(path);
    mode_t mode = status.st_mode & 07777;
    mode = readOnly ? (mode & ~mode_t(0222)) : (mode | S_IWUSR);
    if (chmod(path.c_str(), mode) != 0) ThrowFileSystemErrno();
}

}  // namespace

bool LxFileSystem::IsValidFile(const LxFileSpecification& file)
{
    try {
        const std::string path = PathOf(file);
        if (!path.empty() && FileBytes::RegularFileSize(path)) return true;
        // A logical Mac file kept only in a container (NAME.bin) is valid too.
        struct stat status;
        return !path.empty() && stat(path.c_str(), &status) != 0 && MacForks::Describe(path).exists;
    } catch (const OSErrException&) {
        return false;
    }
}

bool LxFileSystem::IsValidDirectory(const LxDirectorySpecification& folder)
{
    try {
        return hasMode(PathOf(folder), S_IFDIR);
    } catch (const OSErrException&) {
        return false;
    }
}

long LxFileSystem::GetFileModDate(const LxFileSpecification& file)
{
    return long(statOrThrow(PathOf(file)).st_mtim.tv_sec) + kMacEpochOffset;
}

void LxFileSystem::SetFileModDate(const LxFileSpecification& file, long date)
{
    std::string path = PathOf(file);
    if (path.empty()) ThrowFileSystemError(MacError::fnfErr);
    struct timespec times[2] = {};
    times[0].tv_nsec = UTIME_OMIT;
    times[1].tv_sec = time_t(date - kMacEpochOffset);
    if (utimensat(AT_FDCWD, path.c_str(), times, 0) != 0) ThrowFileSystemErrno();
}

void LxFileSystem::CreateDirectory(const LxDirectorySpecification& folder)
{
    std::string path = PathOf(folder);
    if (path.empty()) ThrowFileSystemError(MacError::coreFoundationUnknownErr);
    if (mkdir(path.c_str(), 0777) != 0 && errno != EEXIST) ThrowFileSystemErrno();
}

void LxFileSystem::CreateFile(const LxFileSpecification& file, bool replaceExisting)
{
    std::string path = PathOf(file);
    if (path.empty()) ThrowFileSystemError(MacError::fnfErr);
    int flags = O_WRONLY | O_CREAT | O_CLOEXEC | (replaceExisting ? O_TRUNC : O_EXCL);
    int fd = open(path.c_str(), flags, 0666);
    if (fd < 0) ThrowFileSystemErrno();
    close(fd);
}

void LxFileSystem::DeleteFile(const LxFileSpecification& file, bool force)
{
    std::string path = PathOf(file);
    if (path.empty()) ThrowFileSystemError(MacError::fnfErr);
    if (force) SetReadOnly(file, false);
    if (unlink(path.c_str()) != 0) ThrowFileSystemErrno();
    // The resource fork goes with the file, wherever it is kept.
    unlink(FileCopy::CompanionPath(path).c_str());
}

void LxFileSystem::DeleteDirectory(const LxDirectorySpecification& folder, bool force)
{
    std::string path = PathOf(folder);
    if (path.empty()) ThrowFileSystemError(MacError::fnfErr);
    if (force) SetReadOnly(folder, false);
    if (rmdir(path.c_str()) != 0) ThrowFileSystemErrno();
}

bool LxFileSystem::IsLockedFile(const LxFileSpecification& file)
{
    return (statOrThrow(PathOf(file)).st_mode & 0222) == 0;
}

void LxFileSystem::SetReadOnly(const LxFileSpecification& file, bool readOnly)
{
    changeMode(PathOf(file), readOnly);
}

void LxFileSystem::SetReadOnly(const LxDirectorySpecification& folder, bool readOnly)
{
    changeMode(PathOf(folder), readOnly);
}

bool LxFileSystem::IsRootDirectory(const LxDirectorySpecification& folder)
{
    std::string path = PathOf(folder);
    struct stat self = statOrThrow(path);
    struct stat parent = statOrThrow(path + "/..");
    return self.st_dev != parent.st_dev || self.st_ino == parent.st_ino;
}

unsigned long long LxFileSystem::GetFreeByteCountOnDrive(const LxString& path)
{
    struct statvfs volume;
    if (path.empty()) ThrowFileSystemError(MacError::nsvErr);
    if (statvfs(path.c_str(), &volume) != 0) ThrowFileSystemErrno();
    return (unsigned long long)volume.f_bavail * volume.f_frsize;
}

bool LxFileSystem::IsValidDrive(const LxString& path)
{
    struct statvfs volume;
    return hasMode(path.str(), S_IFDIR) && statvfs(path.c_str(), &volume) == 0;
}

bool LxFileSystem::MacIsVolumeShared(short)
{
    return false;
}

LxDirectorySpecification LxFileSystem::GetCurrentDirectory()
{
    std::vector<char> buffer(4096);
    while (!getcwd(buffer.data(), buffer.size())) {
        if (errno != ERANGE || buffer.size() > (1u << 20)) ThrowFileSystemErrno();
        buffer.resize(buffer.size() * 2);
    }
    return LxDirectorySpecification(LxString(buffer.data()));
}

void LxFileSystem::SetCurrentDirectory(const LxDirectorySpecification& folder)
{
    std::string path = PathOf(folder);
    if (path.empty()) ThrowFileSystemError(MacError::fnfErr);
    if (chdir(path.c_str()) != 0) ThrowFileSystemErrno();
}
