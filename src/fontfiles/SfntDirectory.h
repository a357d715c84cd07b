// The sfnt table directory: finding a table and checking that its entry
// lies inside the font. Fonts are untrusted; every lookup is bounded by the
// buffer's size.
#pragma once

#include <cstdint>
#include <optional>

#include "support/ByteView.h"

// One 16-byte directory record, as read.
struct TDirectoryEntry {
    uint32_t tag = 0;
    uint32_t checkSum = 0;
    uint32_t offset = 0;  // from the start of the font
    uint32_t length = 0;
    size_t entryOffset = 0;  // where the record itself lies in the font
};

constexpr size_t kSfntHeaderSize = 12;
constexpr size_t kDirectoryEntrySize = 16;

constexpr uint32_t kSfntVersionTrueType = 0x00010000;
constexpr uint32_t kSfntVersionOTTO = 0x4F54544F;  // "OTTO"
constexpr uint32_t kSfntVersionTrue = 0x74727565;  // "true"
constexpr uint32_t kCollectionTag = 0x74746366;    // "ttcf"

// The first entry whose tag, read as a C string of at most four characters,
// equals `tag`. An entry counts only when the buffer extends at least one
// byte past its end.
std::optional<TDirectoryEntry> FindSpecifiedTable(ByteView font, const char* tag);

// True when the entry's own record lies inside the font and the font holds
// offset + length bytes (a 32-bit sum, as the fields are read).
bool ValidateDirectoryEntry(const TDirectoryEntry* entry, ByteView font);

// Presence and validity together: the table's entry when it exists and
// validates.
std::optional<TDirectoryEntry> FindValidTable(ByteView font, const char* tag);
