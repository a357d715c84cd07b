#include "resourcefork/FONDRecord.h"

#include <algorithm>

namespace FOND {

int EntryCount(ByteView fond)
{
    int16_t countMinusOne = 0;
    if (fond.size() < kEntries || !fond.i16(kEntryCountMinusOne, countMinusOne)) return 0;
    return countMinusOne + 1;
}

std::optional<AssociationEntry> EntryAt(ByteView fond, size_t index)
{
    AssociationEntry entry;
    const size_t at = EntryOffset(index);
    if (fond.size() < kEntries || !fond.contains(at, kEntrySize) || !fond.u16(at, entry.size) ||
        !fond.i16(at + 2, entry.style) || !fond.i16(at + 4, entry.id))
        return std::nullopt;
    return entry;
}

AssociationEntry EntryInside(ByteView fond, size_t index)
{
    // One bounds check for the whole entry: tables are walked once per face.
    uint8_t bytes[kEntrySize] = {};
    fond.copy(EntryOffset(index), kEntrySize, bytes);
    ByteReader entry(ByteView(bytes, kEntrySize));
    AssociationEntry result;
    if (!(entry.u16(result.size) && entry.i16(result.style) && entry.i16(result.id))) return {};
    return result;
}

EntryRange Entries(ByteView fond)
{
    const int count = EntryCount(fond);
    if (count <= 0) return EntryRange(fond, 0);
    // Every entry after the first one that runs past the end lies further out.
    const size_t inside = (fond.size() - kEntries) / kEntrySize;
    return EntryRange(fond, std::min(size_t(count), inside));
}

uint32_t StyleMappingOffset(ByteView fond)
{
    uint32_t offset = 0;
    if (fond.size() < kHeaderSize || !fond.u32(kStyleMappingOffset, offset)) return 0;
    return offset;
}

}  // namespace FOND
