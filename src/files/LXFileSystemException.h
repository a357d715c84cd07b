// The failure of a file-system operation: an OSErrException whose code is a
// platform error number narrowed to 16 bits, plus its meaning as a
// LxFileSystem::FileSysErrorCode.
#pragma once

#include <string>

#include "files/LxFileSystem.h"
#include "support/OSErrException.h"

class LXFileSystemException : public OSErrException {
public:
    // From a meaning; the stored code is the platform number that stands for it.
    LXFileSystemException(const char* message, LxFileSystem::FileSysErrorCode error);
    LXFileSystemException(const std::string& message, LxFileSystem::FileSysErrorCode error);
    // From a raw platform number, which is stored as it is (narrowed to 16 bits).
    LXFileSystemException(const char* message, long platformCode);
    LXFileSystemException(const std::string& message, long platformCode);

    LxFileSystem::FileSysErrorCode GetFileSysError() const { return error_; }

private:
    LxFileSystem::FileSysErrorCode error_;
};

// Throws the exception the file-system operations use: the message is the
// code itself, so a missing file reads "-43:-43". The doubled form is intended.
[[noreturn]] void ThrowFileSystemError(long platformCode);
// The same for the current errno.
[[noreturn]] void ThrowFileSystemErrno();
