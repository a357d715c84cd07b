#include "containers/Woff.h"

#include <zlib.h>

#include <algorithm>

#include "containers/SfntLayout.h"
#include "support/ByteWriter.h"
#include "support/Refusal.h"

namespace Woff {

namespace {

// Deflate never shrinks data by more than about 1:1032; a table that claims
// more is refused before its room is allocated.
constexpr uint64_t kDeflateRatio = 1032;

struct Table {
    uint32_t tag = 0, offset = 0, compLength = 0, origLength = 0, origChecksum = 0;
    uint64_t placed = 0;  // where it lies in the rebuilt sfnt
};

std::optional<Table> readEntry(ByteView woff, size_t index)
{
    const size_t at = WOFFHeader::size + index * TableDirectoryEntry::size;
    Table table;
    if (!woff.read(at, TableDirectoryEntry::tag, table.tag) ||
        !woff.read(at, TableDirectoryEntry::offset, table.offset) ||
        !woff.read(at, TableDirectoryEntry::compLength, table.compLength) ||
        !woff.read(at, TableDirectoryEntry::origLength, table.origLength) ||
        !woff.read(at, TableDirectoryEntry::origChecksum, table.origChecksum))
        return Refuse("WOFF: table directory entry ", index, " cut short");
    const std::string tag = fourCCString(table.tag);
    const uint64_t directoryEnd = WOFFHeader::size + uint64_t(index + 1) * TableDirectoryEntry::size;
    if (uint64_t(table.offset) + table.compLength > woff.size())
        return Refuse("WOFF: table '", tag, "' (offset ", table.offset, ", length ",
                      table.compLength, ") runs past the end of the file (", woff.size(), " bytes)");
    if (table.offset < directoryEnd)
        return Refuse("WOFF: table '", tag, "' at offset ", table.offset, " lies inside the table directory");
    if (table.compLength > table.origLength)
        return Refuse("WOFF: table '", tag, "' is stored in ", table.compLength,
                      " bytes, more than its ", table.origLength, " bytes in the font");
    if (table.compLength < table.origLength && table.origLength > table.compLength * kDeflateRatio)
        return Refuse("WOFF: table '", tag, "' cannot inflate from ", table.compLength, " to ",
                      table.origLength, " bytes");
    return table;
}

// The entries, checked one by one and against each other.
std::optional<std::vector<Table>> readDirectory(ByteView woff, uint16_t count)
{
    std::vector<Table> tables;
    tables.reserve(count);
    for (size_t i = 0; i < count; ++i) {
        auto table = readEntry(woff, i);
        if (!table) return std::nullopt;
        if (!tables.empty() && table->tag <= tables.back().tag)
            return Refuse("WOFF: table '", fourCCString(table->tag), "' follows '",
                          fourCCString(tables.back().tag), "' out of tag order");
        tables.push_back(*table);
    }
    return tables;
}

bool placeData(ByteView woff, const Table& table, std::vector<uint8_t>& sfnt)
{
    const ByteView stored = *woff.sub(table.offset, table.compLength);
    uint8_t* place = sfnt.data() + table.placed;
    if (table.compLength == table.origLength) return stored.copy(0, stored.size(), place);
    uLongf inflated = table.origLength;
    const int result = uncompress(place, &inflated, stored.data(), table.compLength);
    const std::string tag = fourCCString(table.tag);
    if (result == Z_BUF_ERROR && inflated == table.origLength)
        return Refuse("WOFF: table '", tag, "' decompresses to more than the ", table.origLength,
                      " bytes its entry claims");
    if (result != Z_OK)
        return Refuse("WOFF: table '", tag, "' is not valid zlib data (zlib error ", result, ")");
    if (inflated != table.origLength)
        return Refuse("WOFF: table '", tag, "' decompresses to ", inflated, " bytes, not the ",
                      table.origLength, " its entry claims");
    return true;
}

}  // namespace

bool Claims(ByteView bytes)
{
    uint32_t signature = 0;
    return bytes.read(0, WOFFHeader::signature, signature) && signature == kSignature;
}

std::optional<std::vector<uint8_t>> DecodeToSfnt(ByteView woff)
{
    if (!Claims(woff)) return std::nullopt;
    uint32_t flavor = 0, length = 0, totalSfntSize = 0;
    uint16_t numTables = 0, reserved = 0;
    if (!woff.read(0, WOFFHeader::flavor, flavor) || !woff.read(0, WOFFHeader::length, length) ||
        !woff.read(0, WOFFHeader::numTables, numTables) ||
        !woff.read(0, WOFFHeader::reserved, reserved) ||
        !woff.read(0, WOFFHeader::totalSfntSize, totalSfntSize) ||
        !woff.contains(0, WOFFHeader::size))
        return Refuse("WOFF: header cut short (", woff.size(), " of ", WOFFHeader::size, " bytes)");
    if (length != woff.size())
        return Refuse("WOFF: header claims ", length, " bytes, the file holds ", woff.size());
    if (reserved != 0) return Refuse("WOFF: reserved header field is ", reserved, ", not 0");
    if (numTables == 0) return Refuse("WOFF: no tables");
    if (totalSfntSize > kLargestSfnt)
        return Refuse("WOFF: header claims an sfnt of ", totalSfntSize, " bytes, more than the ",
                      kLargestSfnt, " any font needs");

    auto tables = readDirectory(woff, numTables);
    if (!tables) return std::nullopt;
    // The rebuilt font keeps the order of the tables' data.
    std::vector<Table*> byOffset;
    for (Table& table : *tables) byOffset.push_back(&table);
    std::stable_sort(byOffset.begin(), byOffset.end(),
                     [](const Table* a, const Table* b) { return a->offset < b->offset; });
    uint64_t place = OffsetTable::size + uint64_t(numTables) * TableRecord::size;
    for (size_t i = 0; i < byOffset.size(); ++i) {
        Table& table = *byOffset[i];
        if (i > 0 && table.offset < uint64_t(byOffset[i - 1]->offset) + byOffset[i - 1]->compLength)
            return Refuse("WOFF: table '", fourCCString(table.tag), "' overlaps table '",
                          fourCCString(byOffset[i - 1]->tag), "'");
        table.placed = place;
        place += PaddedTableLength(table.origLength);
    }
    if (place != totalSfntSize)
        return Refuse("WOFF: tables rebuild an sfnt of ", place, " bytes, the header claims ",
                      totalSfntSize);

    ByteWriter header;
    unsigned entrySelector = 0;
    while ((2u << entrySelector) <= numTables) ++entrySelector;
    const uint16_t searchRange = uint16_t(TableRecord::size << entrySelector);
    header.zeros(OffsetTable::size + numTables * TableRecord::size);
    header.putU32(OffsetTable::sfntVersion.offset, flavor);
    header.putU16(OffsetTable::numTables.offset, numTables);
    header.putU16(OffsetTable::searchRange.offset, searchRange);
    header.putU16(OffsetTable::entrySelector.offset, uint16_t(entrySelector));
    header.putU16(OffsetTable::rangeShift.offset, uint16_t(numTables * TableRecord::size - searchRange));
    for (size_t i = 0; i < tables->size(); ++i) {
        const Table& table = (*tables)[i];
        const size_t at = OffsetTable::size + i * TableRecord::size;
        header.putU32(at + TableRecord::tableTag.offset, table.tag);
        header.putU32(at + TableRecord::checksum.offset, table.origChecksum);
        header.putU32(at + TableRecord::offset.offset, uint32_t(table.placed));
        header.putU32(at + TableRecord::length.offset, table.origLength);
    }

    std::vector<uint8_t> sfnt(totalSfntSize);
    header.view().copy(0, header.size(), sfnt.data());
    for (const Table& table : *tables)
        if (!placeData(woff, table, sfnt)) return std::nullopt;
    return sfnt;
}

}  // namespace Woff
