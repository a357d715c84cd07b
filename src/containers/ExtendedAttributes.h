// Extended attributes of a file: where Linux file systems (and netatalk)
// keep a Mac file's resource fork and Finder info.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "support/ByteView.h"

namespace ExtendedAttributes {

// What macOS writes onto foreign volumes (SMB, NFS, ext4 via Samba).
inline constexpr const char* kResourceFork = "user.com.apple.ResourceFork";
inline constexpr const char* kFinderInfo = "user.com.apple.FinderInfo";
// netatalk 3: the resource fork raw, the metadata as an AppleDouble header.
inline constexpr const char* kNetatalkResourceFork = "user.org.netatalk.ResourceFork";
inline constexpr const char* kNetatalkMetadata = "user.org.netatalk.Metadata";

// Whether the file has any extended attribute at all (of any namespace);
// one look that spares asking for each name on the many files without any.
bool HasAny(const std::string& path);

// Length of the attribute's value; nothing when the file has no such
// attribute or the file system keeps none.
std::optional<uint64_t> Size(const std::string& path, const char* name);

// The whole value; nothing when it is missing or cannot be read.
std::optional<std::vector<uint8_t>> Read(const std::string& path, const char* name);

// Replaces (or creates) the attribute; false when the file system refuses.
// Makes the active ReadScope forget.
bool Write(const std::string& path, const char* name, ByteView value);

}  // namespace ExtendedAttributes
