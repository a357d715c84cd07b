#include "fontfiles/SfntDirectory.h"

#include <cstring>
#include <string>

#include "support/Refusal.h"

namespace {

bool tagMatches(uint32_t entryTag, const char* wanted)
{
    // The tag is compared as a C string: a NUL byte ends it early, so an
    // entry tagged "ab\0\0" answers to "ab".
    return std::strcmp(fourCCString(entryTag).c_str(), wanted) == 0;
}

enum class Lookup { found, absent, unreadable };

void refuseShortDirectory(ByteView font, int numTables)
{
    if (!ClaimsSfnt(font)) return;
    const size_t needed = OffsetTable::size + TableRecord::size * size_t(numTables);
    if (font.size() < needed)
        Refuse("sfnt: table directory of ", numTables, " entries needs ", needed,
               " bytes, the font has ", font.size());
    else
        Refuse("sfnt: table directory of ", numTables, " entries fills the whole font (",
               font.size(), " bytes); a record counts only when the font goes on past it");
}

// Walks the directory up to the entry tagged `tag`. `unreadable` when the
// walk cannot go on: refused, for a font that claims to be an sfnt.
Lookup lookup(ByteView font, const char* tag, TDirectoryEntry& entry, int& numTables)
{
    if (!tag) return Lookup::unreadable;
    if (font.size() <= OffsetTable::size) {
        if (ClaimsSfnt(font))
            Refuse("sfnt: the font has ", font.size(), " bytes, no room for a table record");
        return Lookup::unreadable;
    }
    uint16_t count = 0;
    if (!font.read(0, OffsetTable::numTables, count)) return Lookup::unreadable;
    // Read signed, deliberately: a count from 0x8000 up finds nothing.
    numTables = int16_t(count);
    if (numTables < 0) {
        if (ClaimsSfnt(font))
            Refuse("sfnt: numTables ", count, " is 32768 or more, read as negative");
        return Lookup::unreadable;
    }
    for (int i = 0; i < numTables; ++i) {
        const size_t at = OffsetTable::size + TableRecord::size * size_t(i);
        // The buffer must reach strictly past the record's end.
        if (font.size() <= at + TableRecord::size) {
            refuseShortDirectory(font, numTables);
            return Lookup::unreadable;
        }
        entry.entryOffset = at;
        if (!(font.read(at, TableRecord::tableTag, entry.tag) &&
              font.read(at, TableRecord::checksum, entry.checkSum) &&
              font.read(at, TableRecord::offset, entry.offset) &&
              font.read(at, TableRecord::length, entry.length)))
            return Lookup::unreadable;
        if (tagMatches(entry.tag, tag)) return Lookup::found;
    }
    return Lookup::absent;
}

}  // namespace

bool ClaimsSfnt(ByteView font)
{
    uint32_t version = 0;
    if (!font.read(0, OffsetTable::sfntVersion, version)) return false;
    return version == kSfntVersionTrueType || version == kSfntVersionOTTO ||
           version == kSfntVersionTrue || version == kSfntVersionTyp1;
}

std::optional<TDirectoryEntry> FindSpecifiedTable(ByteView font, const char* tag)
{
    TDirectoryEntry entry;
    int numTables = 0;
    if (lookup(font, tag, entry, numTables) != Lookup::found) return std::nullopt;
    return entry;
}

bool ValidateDirectoryEntry(const TDirectoryEntry* entry, ByteView font)
{
    if (!entry || font.empty()) return false;
    if (!font.contains(entry->entryOffset, TableRecord::size)) {
        if (ClaimsSfnt(font))
            Refuse("sfnt: table record at ", entry->entryOffset, " lies past the end of the font (",
                   font.size(), " bytes)");
        return false;
    }
    // The sum wraps at 32 bits as the fields are read; the table's bytes
    // are still only ever reached through bounded reads.
    const uint32_t end = entry->offset + entry->length;
    if (font.size() >= end) return true;
    if (ClaimsSfnt(font))
        Refuse("sfnt: table '", fourCCString(entry->tag), "' (offset ", entry->offset, ", length ",
               entry->length, ") runs past the end of the font (", font.size(), " bytes)");
    return false;
}

std::optional<TDirectoryEntry> FindValidTable(ByteView font, const char* tag)
{
    auto entry = FindSpecifiedTable(font, tag);
    if (entry && ValidateDirectoryEntry(&*entry, font)) return entry;
    return std::nullopt;
}

std::optional<TDirectoryEntry> FindRequiredTable(ByteView font, const char* tag)
{
    TDirectoryEntry entry;
    int numTables = 0;
    switch (lookup(font, tag, entry, numTables)) {
    case Lookup::found:
        if (ValidateDirectoryEntry(&entry, font)) return entry;
        break;
    case Lookup::absent:
        if (ClaimsSfnt(font))
            Refuse("sfnt: no '", tag, "' table among the ", numTables, " in the directory");
        break;
    case Lookup::unreadable: break;
    }
    return std::nullopt;
}
