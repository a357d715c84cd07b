// The font family record (FOND resource), big-endian: the fields the
// library reads or edits, by offset, and bounds-checked readers for its
// association table. Every reader wants 54 bytes (52 for the header-only
// tests) and skips an association entry that does not lie wholly inside.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "support/ByteView.h"

namespace FOND {

inline constexpr size_t kFamilyID = 2;
inline constexpr size_t kWidthTableOffset = 16;
inline constexpr size_t kKerningTableOffset = 20;
inline constexpr size_t kStyleMappingOffset = 24;
inline constexpr size_t kInternational2 = 48;
inline constexpr size_t kHeaderSize = 52;
inline constexpr size_t kEntryCountMinusOne = 52;
inline constexpr size_t kEntries = 54;
inline constexpr size_t kEntrySize = 6;

// The style-mapping table, from its start.
inline constexpr size_t kNameCodeIndex = 10;  // 48 signed bytes, one per style index
inline constexpr size_t kNameCodeCount = 48;
inline constexpr size_t kStringCount = 58;
inline constexpr size_t kStrings = 60;

// Double-byte families have IDs in this range.
inline constexpr int kDoubleByteFirstID = 0x4000;
inline constexpr int kDoubleByteLastID = 0x41FF;

struct AssociationEntry {
    uint16_t size = 0;  // 0: an outline (sfnt); else a bitmap strike in points
    int16_t style = 0;  // QuickDraw style bits
    int16_t id = 0;     // of the NFNT, FONT or sfnt
};

// The entry count from the header (count minus one, plus one; may be 0 or
// less for a hostile record); 0 for a record shorter than 54 bytes.
int EntryCount(ByteView fond);

// Byte offset of entry `index` in the record.
constexpr size_t EntryOffset(size_t index)
{
    return kEntries + index * kEntrySize;
}

// Entry `index` when it lies wholly inside the record.
std::optional<AssociationEntry> EntryAt(ByteView fond, size_t index);

// Entry `index` of a record known to hold it.
AssociationEntry EntryInside(ByteView fond, size_t index);

// The entries that lie wholly inside the record, in table order, decoded as
// they are visited: the table is walked once per face, so a walk allocates
// nothing.
class EntryRange {
public:
    class iterator {
    public:
        iterator(ByteView fond, size_t index) : fond_(fond), index_(index) {}
        AssociationEntry operator*() const { return EntryInside(fond_, index_); }
        iterator& operator++()
        {
            ++index_;
            return *this;
        }
        bool operator!=(const iterator& other) const { return index_ != other.index_; }

    private:
        ByteView fond_;
        size_t index_;
    };

    EntryRange(ByteView fond, size_t count) : fond_(fond), count_(count) {}
    iterator begin() const { return iterator(fond_, 0); }
    iterator end() const { return iterator(fond_, count_); }
    size_t size() const { return count_; }

private:
    ByteView fond_;
    size_t count_;
};

EntryRange Entries(ByteView fond);

// The style-mapping table's offset; 0 for a record shorter than 52 bytes.
uint32_t StyleMappingOffset(ByteView fond);

}  // namespace FOND
