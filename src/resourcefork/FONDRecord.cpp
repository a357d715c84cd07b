#include "resourcefork/FONDRecord.h"

#include <algorithm>

#include "support/Refusal.h"

namespace FOND {

namespace {

// The entries that lie wholly inside a record that holds the table's count.
size_t entriesInside(ByteView fond)
{
    return (fond.size() - FontAssoc::entries) / AsscEntry::size;
}

}  // namespace

int EntryCount(ByteView fond)
{
    int16_t countMinusOne = 0;
    if (fond.size() < FontAssoc::entries || !fond.read(0, FontAssoc::numAssoc, countMinusOne)) {
        Refuse("FOND: ", fond.size(), " bytes, too short for the association table (",
               FontAssoc::entries, " bytes)");
        return 0;
    }
    const int count = countMinusOne + 1;
    if (count < 0) {
        Refuse("FOND: negative association entry count (", count, ")");
    } else if (size_t(count) > entriesInside(fond)) {
        Refuse("FOND: ", count, " association entries claimed, the record (", fond.size(),
               " bytes) holds ", entriesInside(fond));
    }
    return count;
}

std::optional<AssociationEntry> EntryAt(ByteView fond, size_t index)
{
    AssociationEntry entry;
    const size_t at = EntryOffset(index);
    if (fond.size() < FontAssoc::entries || !fond.contains(at, AsscEntry::size) ||
        !fond.read(at, AsscEntry::fontSize, entry.size) ||
        !fond.read(at, AsscEntry::fontStyle, entry.style) ||
        !fond.read(at, AsscEntry::fontID, entry.id))
        return std::nullopt;
    return entry;
}

AssociationEntry EntryInside(ByteView fond, size_t index)
{
    // One bounds check for the whole entry: tables are walked once per face.
    uint8_t bytes[AsscEntry::size] = {};
    fond.copy(EntryOffset(index), AsscEntry::size, bytes);
    const ByteView entry(bytes, AsscEntry::size);
    AssociationEntry result;
    if (!(entry.read(0, AsscEntry::fontSize, result.size) &&
          entry.read(0, AsscEntry::fontStyle, result.style) &&
          entry.read(0, AsscEntry::fontID, result.id)))
        return {};
    return result;
}

EntryRange Entries(ByteView fond)
{
    const int count = EntryCount(fond);
    if (count <= 0) return EntryRange(fond, 0);
    // Every entry after the first one that runs past the end lies further out.
    return EntryRange(fond, std::min(size_t(count), entriesInside(fond)));
}

uint32_t StyleMappingOffset(ByteView fond)
{
    uint32_t offset = 0;
    if (fond.size() < Header::size || !fond.read(0, Header::ffStylOff, offset)) {
        if (!fond.empty())  // empty: no handle, not a broken one
            Refuse("FOND: ", fond.size(), " bytes, shorter than its header (", Header::size,
                   " bytes)");
        return 0;
    }
    return offset;
}

}  // namespace FOND
