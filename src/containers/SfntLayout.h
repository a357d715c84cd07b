// The records at the start of an sfnt and of a TrueType collection, named
// as the OpenType documentation names their fields. They stand with the
// containers: an sfnt is the container of its tables, and the web-font
// decoders lay out the sfnt they rebuild with them.
#pragma once

#include <cstdint>

#include "support/ByteView.h"

// The offset table that opens every sfnt; its table records follow it.
struct OffsetTable {
    static constexpr Field<uint32_t> sfntVersion{0};
    static constexpr Field<uint16_t> numTables{4}, searchRange{6}, entrySelector{8}, rangeShift{10};
    static constexpr size_t size = 12;
};

// One table record of the directory: where a table lies in the font.
struct TableRecord {
    static constexpr Field<uint32_t> tableTag{0}, checksum{4}, offset{8}, length{12};
    static constexpr size_t size = 16;
};

// The collection header; the offsets of its faces' offset tables follow,
// numFonts of them.
struct TTCHeader {
    static constexpr Field<uint32_t> ttcTag{0};
    static constexpr Field<uint16_t> majorVersion{4}, minorVersion{6};
    static constexpr Field<uint32_t> numFonts{8}, tableDirectoryOffsets{12};
    static constexpr size_t size = 12;
};

// A table's room in an sfnt: its length rounded up to whole 4-byte words.
constexpr uint64_t PaddedTableLength(uint64_t length)
{
    return (length + 3) & ~uint64_t(3);
}

// No font comes near this size; a decoder claiming a larger font is a
// decompression bomb, refused before anything is allocated.
inline constexpr uint64_t kLargestDecodedSfnt = 256u << 20;

constexpr uint32_t kSfntVersionTrueType = 0x00010000;
constexpr uint32_t kSfntVersionOTTO = fourCC("OTTO");
constexpr uint32_t kSfntVersionTrue = fourCC("true");
constexpr uint32_t kSfntVersionTyp1 = fourCC("typ1");
constexpr uint32_t kCollectionTag = fourCC("ttcf");
