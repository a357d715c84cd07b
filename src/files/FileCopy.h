// Copying of directory entries with everything the file system keeps for
// them: data, "user." extended attributes (where a Mac file's resource fork
// and Finder info may live), permission bits and dates.
#pragma once

#include <string>

namespace FileCopy {

// Copies the regular file `from` to a new file `to`, which must not exist
// (-48). Returns 0 or a platform error number; a partial copy is removed.
short CopyEntry(const std::string& from, const std::string& to);

// Copies the folder `from` with everything in it to a new folder `to`.
// Links are copied as links; devices, pipes and sockets are left out.
short CopyTree(const std::string& from, const std::string& to);

// The AppleDouble companion "._name" that may hold a file's resource fork
// and Finder info beside it.
std::string CompanionPath(const std::string& path);

}  // namespace FileCopy
