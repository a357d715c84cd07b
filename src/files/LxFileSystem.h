// Static file-system operations on file and folder specifications. Failures
// throw LXFileSystemException carrying the platform error number; the two
// validity tests never throw.
#pragma once

#include <cstdint>

#include "support/LxString.h"

class LxFileSpecification;
class LxDirectorySpecification;

class LxFileSystem {
public:
    // 'TEXT' and 'ttxt': the Finder codes of a file whose codes are unknown.
    static constexpr uint32_t kDefaultFileType = 0x54455854;
    static constexpr uint32_t kDefaultCreatorType = 0x74747874;

    enum FileSysErrorCode {
        kNoError = 0,
        kFileNotFound,
        kDirectoryNotFound,
        kDuplicateName,
        kBadName,
        kIOError,
        kParameterError,
        kDifferentVolume,
        kNotAFile,
        kAccessDenied,
        kVolumeLocked,
        kDiskFull,
        kBusy,
        kTooManyOpenFiles,
        kOutOfMemory,
        kNoSuchVolume,
        kCannotMakePath,
        kUnknownError,
    };
    // The meaning of a platform error number, and back.
    static FileSysErrorCode TranslateError(long platformCode);
    static long PlatformCodeFor(FileSysErrorCode error);

    // Data fork plus resource fork; the sum of both is intended.
    static unsigned long GetFileSize(const LxFileSpecification& file);
    static bool IsValidFile(const LxFileSpecification& file);
    static bool IsValidDirectory(const LxDirectorySpecification& folder);
    // Seconds since 1904-01-01.
    static long GetFileModDate(const LxFileSpecification& file);
    static void SetFileModDate(const LxFileSpecification& file, long date);

    // An existing folder is no error.
    static void CreateDirectory(const LxDirectorySpecification& folder);
    // Creates an empty file; an existing one is an error (-48) unless
    // `replaceExisting`, which empties it.
    static void CreateFile(const LxFileSpecification& file, bool replaceExisting);
    // `force` first clears the read-only state.
    static void DeleteFile(const LxFileSpecification& file, bool force);
    static void DeleteDirectory(const LxDirectorySpecification& folder, bool force);

    // Both take the target's full path: the copy or the moved item lands in
    // the target's parent under the target's name. A target that exists is
    // an error (-48).
    static void CopyFile(const LxFileSpecification& from, const LxFileSpecification& to);
    static void MoveFile(const LxFileSpecification& from, const LxFileSpecification& to);
    static void MoveDirectory(const LxDirectorySpecification& from,
                              const LxDirectorySpecification& to);
    // Copies the folder tree `from` into the folder `to`, as `name` (or under
    // its own name when `name` is null or empty).
    static void CopyDirectory(const LxDirectorySpecification& from,
                              const LxDirectorySpecification& to, const char* name);
    static bool CanMoveFile(const LxFileSpecification& from, const LxFileSpecification& to);
    static bool CanMoveDirectory(const LxDirectorySpecification& from,
                                 const LxDirectorySpecification& to);

    // The lock flag is a missing write permission here.
    static bool IsLockedFile(const LxFileSpecification& file);
    static void SetReadOnly(const LxFileSpecification& file, bool readOnly);
    static void SetReadOnly(const LxDirectorySpecification& folder, bool readOnly);

    // Whether the folder is the root of a mounted volume.
    static bool IsRootDirectory(const LxDirectorySpecification& folder);
    static unsigned long long GetFreeByteCountOnDrive(const LxString& path);
    static bool IsValidDrive(const LxString& path);
    // No volume sharing here: always false.
    static bool MacIsVolumeShared(short volume);
    static LxDirectorySpecification GetCurrentDirectory();
    static void SetCurrentDirectory(const LxDirectorySpecification& folder);
};
