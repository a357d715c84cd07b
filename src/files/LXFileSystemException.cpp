#include "files/LXFileSystemException.h"

#include <cerrno>
#include <cstdint>

#include "support/MacErrors.h"

LXFileSystemException::LXFileSystemException(const char* message,
                                             LxFileSystem::FileSysErrorCode error)
    : OSErrException(message, LxFileSystem::PlatformCodeFor(error)), error_(error)
{
}

LXFileSystemException::LXFileSystemException(const std::string& message,
                                             LxFileSystem::FileSysErrorCode error)
    : OSErrException(message, LxFileSystem::PlatformCodeFor(error)), error_(error)
{
}

LXFileSystemException::LXFileSystemException(const char* message, long platformCode)
    : OSErrException(message, int16_t(platformCode)),
      error_(LxFileSystem::TranslateError(int16_t(platformCode)))
{
}

LXFileSystemException::LXFileSystemException(const std::string& message, long platformCode)
    : OSErrException(message, int16_t(platformCode)),
      error_(LxFileSystem::TranslateError(int16_t(platformCode)))
{
}

void ThrowFileSystemError(long platformCode)
{
    throw LXFileSystemException(std::to_string(int16_t(platformCode)), platformCode);
}

void ThrowFileSystemErrno()
{
    ThrowFileSystemError(MacError::FromErrno(errno));
}
