// AppleSingle and AppleDouble: a header (magic, version, 16 filler bytes, an
// entry count) and a table of entries (id, offset, length) that place a Mac
// file's data fork, resource fork and Finder info inside one file. An
// AppleSingle file carries the whole Mac file; an AppleDouble file (a `._`
// sidecar, netatalk's .AppleDouble folder and metadata attribute) carries all
// but the data fork. macOS fills the filler with "Mac OS X" and makes its
// Finder info entry longer than 32 bytes (extended attributes follow the
// first 32); both layouts are read the same way.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "support/ByteView.h"

namespace AppleDouble {

inline constexpr uint32_t kAppleSingleMagic = 0x00051600;
inline constexpr uint32_t kAppleDoubleMagic = 0x00051607;
inline constexpr uint32_t kVersion1 = 0x00010000;
inline constexpr uint32_t kVersion2 = 0x00020000;

inline constexpr uint32_t kDataForkID = 1;
inline constexpr uint32_t kResourceForkID = 2;
inline constexpr uint32_t kFinderInfoID = 9;

// The header; 16 filler bytes lie between the version and the count.
struct Header {
    static constexpr Field<uint32_t> magicNumber{0}, versionNumber{4};
    static constexpr Field<uint16_t> numberOfEntries{24};
    static constexpr size_t size = 26;
};

// An entry descriptor; the table of them follows the header.
struct EntryDescriptor {
    static constexpr Field<uint32_t> entryID{0}, entryOffset{4}, entryLength{8};
    static constexpr size_t size = 12;
};

// The Finder info entry starts with the classic FInfo.
struct FinderInfo {
    static constexpr Field<uint32_t> fdType{0}, fdCreator{4};
    static constexpr size_t size = 32;  // FInfo and FXInfo
};

struct Entry {
    uint32_t id = 0;
    uint32_t offset = 0;
    uint32_t length = 0;
};

struct Container {
    uint32_t magic = 0;
    std::vector<Entry> entries;  // in table order

    // The first entry with this id, or null.
    const Entry* find(uint32_t id) const;
};

// Bytes from the start of the file up to the end of the entry table, read
// from the first Header::size bytes; nothing when they are not a header of
// this magic and a known version (only the latter a refusal).
std::optional<size_t> TableLength(ByteView prefix, uint32_t magic);

// Reads the header and entry table held in `table` (the first TableLength
// bytes at least) of a container `containerSize` bytes long. Every entry
// must lie wholly inside the container.
std::optional<Container> Parse(ByteView table, uint64_t containerSize, uint32_t magic);

// Finder type and creator, at the start of a Finder info entry.
bool ReadTypeAndCreator(ByteView finderInfo, uint32_t& type, uint32_t& creator);

// The container with the bytes of entry `id` replaced by `bytes`. Entries
// before it keep their place (macOS keeps absolute offsets inside its long
// Finder info entry); entries after it move. Nothing when the entry is
// missing, overlaps another, or the result would not fit 32-bit offsets.
std::optional<std::vector<uint8_t>> ReplaceEntry(ByteView container, uint32_t magic,
                                                 uint32_t id, ByteView bytes);

}  // namespace AppleDouble
