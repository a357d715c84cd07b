// The font family record (FOND resource), big-endian: its layout, as the
// Font Manager names it, and bounds-checked readers for its association
// table. Every reader wants 54 bytes (52 for the header-only tests) and
// skips an association entry that does not lie wholly inside.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "support/ByteView.h"

namespace FOND {

// The family record header (FamRec).
struct Header {
    static constexpr Field<uint16_t> ffFlags{0};
    static constexpr Field<int16_t> ffFamID{2}, ffFirstChar{4}, ffLastChar{6}, ffAscent{8},
        ffDescent{10}, ffLeading{12}, ffWidMax{14};
    static constexpr Field<uint32_t> ffWTabOff{16}, ffKernOff{20}, ffStylOff{24};
    static constexpr Field<int16_t> ffProperty{28};  // 9 words
    static constexpr Field<uint16_t> ffIntl{46};     // 2 words
    static constexpr Field<uint16_t> ffVersion{50};
    static constexpr size_t size = 52;
};

// The font association table follows the header: the number of entries
// minus one, then the entries.
struct FontAssoc {
    static constexpr Field<int16_t> numAssoc{Header::size};
    static constexpr size_t entries = numAssoc.end();
};

// An association entry (AsscEntry): a font of one size and style.
struct AsscEntry {
    static constexpr Field<uint16_t> fontSize{0};
    static constexpr Field<int16_t> fontStyle{2}, fontID{4};
    static constexpr size_t size = 6;
};

// The style-mapping table (StyleTable), at ffStylOff; its name table
// (string count, then Pascal strings, the first the base PostScript name)
// follows the 48 name codes, one per style index.
struct StyleTable {
    static constexpr Field<uint16_t> fontClass{0};
    static constexpr Field<uint32_t> offset{2}, reserved{6};
    static constexpr Field<int8_t> indexes{10};
    static constexpr size_t indexCount = 48;
    static constexpr Field<int16_t> stringCount{indexes.offset + indexCount};
    static constexpr size_t strings = stringCount.end();
};

// The kerning table (KernTable), at ffKernOff: the number of entries minus
// one, then per style an entry header and its kerning pairs.
struct KernTable {
    static constexpr Field<int16_t> numKerns{0};
    static constexpr size_t size = 2;
};

struct KernEntry {
    static constexpr Field<int16_t> kernStyle{0};
    static constexpr Field<uint16_t> kernLength{2};  // the number of pairs that follow
    static constexpr size_t size = 4;
    static constexpr size_t pairSize = 4;  // first and second character, a 16-bit width
};

inline constexpr size_t kHeaderSize = Header::size;
inline constexpr size_t kFamilyID = Header::ffFamID.offset;
inline constexpr size_t kEntries = FontAssoc::entries;

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
    return FontAssoc::entries + index * AsscEntry::size;
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
