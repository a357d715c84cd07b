// Thin wrappers over the file system that return codes instead of throwing:
// 0 for success, a platform error number or -1 for failure.
#pragma once

#include "support/LxString.h"

// Whether anything exists at the path (links followed).
bool OSPathExists(const LxString& path);
// With `force`, first chmod 0777; then deletes the file, falling back to
// remove(). 0 or the result of remove().
int OSRemoveFile(const LxString& path, bool force);
int OSCreateDir(const LxString& path);
int OSRemoveDir(const LxString& path);
// Like the Windows call: with `failIfExists` an existing target is an error
// (-48), otherwise it is replaced.
int OSCopyFile(const LxString& from, const LxString& to, bool failIfExists);
int OSMoveFile(const LxString& from, const LxString& to);
// Deletes the folder and everything in it; links are removed, never
// followed. With `force`, write-protected folders are opened up first.
// Keeps going after a failure and returns the first one.
int OSRemoveDirectoryTree(const LxString& path, bool force);
