// The sfnt table directory: finding a table and checking that its entry
// lies inside the font. Fonts are untrusted; every lookup is bounded by the
// buffer's size.
#pragma once

#include <cstdint>
#include <optional>

#include "containers/SfntLayout.h"
#include "support/ByteView.h"

// One table record, as read.
struct TDirectoryEntry {
    uint32_t tag = 0;
    uint32_t checkSum = 0;
    uint32_t offset = 0;  // from the start of the font
    uint32_t length = 0;
    size_t entryOffset = 0;  // where the record itself lies in the font
};

// The record sizes under the names the other layers use.
constexpr size_t kSfntHeaderSize = OffsetTable::size;
constexpr size_t kDirectoryEntrySize = TableRecord::size;

// True when the font starts with a version an sfnt has (TrueType, "OTTO",
// "true", "typ1"). Only such fonts are refused with a reason: other bytes
// never claimed to be an sfnt.
bool ClaimsSfnt(ByteView font);

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

// FindValidTable for a table the reader cannot do without: a directory read
// to its end without it is refused too.
std::optional<TDirectoryEntry> FindRequiredTable(ByteView font, const char* tag);
