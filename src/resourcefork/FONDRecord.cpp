#include "resourcefork/FONDRecord.h"

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

std::vector<AssociationEntry> Entries(ByteView fond)
{
    std::vector<AssociationEntry> entries;
    const int count = EntryCount(fond);
    for (int i = 0; i < count; ++i) {
        auto entry = EntryAt(fond, size_t(i));
        if (!entry) break;  // every later entry lies further out
        entries.push_back(*entry);
    }
    return entries;
}

uint32_t StyleMappingOffset(ByteView fond)
{
    uint32_t offset = 0;
    if (fond.size() < kHeaderSize || !fond.u32(kStyleMappingOffset, offset)) return 0;
    return offset;
}

}  // namespace FOND
