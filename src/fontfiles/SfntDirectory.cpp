#include "fontfiles/SfntDirectory.h"

#include <cstring>

namespace {

bool tagMatches(uint32_t entryTag, const char* wanted)
{
    // The tag is compared as a C string: a NUL byte ends it early, so an
    // entry tagged "ab\0\0" answers to "ab".
    char text[5] = {};
    for (int i = 0; i < 4; ++i) text[i] = char((entryTag >> (24 - 8 * i)) & 0xFF);
    return std::strcmp(text, wanted) == 0;
}

}  // namespace

std::optional<TDirectoryEntry> FindSpecifiedTable(ByteView font, const char* tag)
{
    if (!tag || font.size() <= kSfntHeaderSize) return std::nullopt;
    int16_t numTables = 0;
    if (!font.i16(4, numTables)) return std::nullopt;
    for (int i = 1; i <= numTables; ++i) {
        const size_t entryEnd = kSfntHeaderSize + kDirectoryEntrySize * size_t(i);
        // The buffer must reach strictly past the entry's end.
        if (font.size() <= entryEnd) return std::nullopt;
        TDirectoryEntry entry;
        entry.entryOffset = entryEnd - kDirectoryEntrySize;
        ByteReader reader(font, entry.entryOffset);
        if (!(reader.tag(entry.tag) && reader.u32(entry.checkSum) && reader.u32(entry.offset) &&
              reader.u32(entry.length)))
            return std::nullopt;
        if (tagMatches(entry.tag, tag)) return entry;
    }
    return std::nullopt;
}

bool ValidateDirectoryEntry(const TDirectoryEntry* entry, ByteView font)
{
    if (!entry || font.empty()) return false;
    if (!font.contains(entry->entryOffset, kDirectoryEntrySize)) return false;
    // The sum wraps at 32 bits as the fields are read; the table's bytes
    // are still only ever reached through bounded reads.
    const uint32_t end = entry->offset + entry->length;
    return font.size() >= end;
}

std::optional<TDirectoryEntry> FindValidTable(ByteView font, const char* tag)
{
    auto entry = FindSpecifiedTable(font, tag);
    if (entry && ValidateDirectoryEntry(&*entry, font)) return entry;
    return std::nullopt;
}
