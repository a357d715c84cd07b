// Plain file access for the fork containers: sizes, byte ranges, rewrites.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "support/ByteView.h"
#include "support/SharedBytes.h"

// Inside a ReadScope each file is looked up and mapped once, and the reads
// below are served from that mapping.
namespace FileBytes {

// The size of a regular file (symbolic links followed); nothing for a
// missing path, a folder or a device.
std::optional<uint64_t> RegularFileSize(const std::string& path);

// The whole regular file, mapped read-only; nothing when it is missing, not
// a regular file or unreadable.
std::optional<SharedBytes> Map(const std::string& path);

// Exactly `length` bytes from `offset`; false when the file is shorter.
bool ReadRange(const std::string& path, uint64_t offset, uint64_t length,
               std::vector<uint8_t>& out);

// At most `length` bytes from the start (fewer for a shorter file).
bool ReadPrefix(const std::string& path, uint64_t length, std::vector<uint8_t>& out);

// The whole regular file.
bool ReadAll(const std::string& path, std::vector<uint8_t>& out);

// Replaces the contents of an existing file in place, so that its extended
// attributes, owner and permissions stay. Makes the active ReadScope forget.
bool Rewrite(const std::string& path, ByteView bytes);

}  // namespace FileBytes
