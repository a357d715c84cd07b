// WOFF 1.0: a hostile WOFF either rebuilds into an sfnt of the size its
// header claims, with a table record for every directory entry pointing
// inside it, or is refused.
#include <cstdint>

#include "FuzzSupport.h"
#include "containers/Woff.h"
#include "containers/SfntLayout.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    fuzzsupport::HeardRefusals heard;
    const ByteView woff(data, size);
    auto sfnt = Woff::DecodeToSfnt(woff);
    FUZZ_CHECK(!sfnt || Woff::Claims(woff));
    if (!sfnt) return 0;
    const ByteView font(*sfnt);
    uint32_t total = 0, flavor = 0, version = 0;
    uint16_t count = 0, tables = 0;
    FUZZ_CHECK(woff.read(0, Woff::WOFFHeader::totalSfntSize, total) && total == font.size());
    FUZZ_CHECK(woff.read(0, Woff::WOFFHeader::flavor, flavor) && font.read(0, OffsetTable::sfntVersion, version) && version == flavor);
    FUZZ_CHECK(woff.read(0, Woff::WOFFHeader::numTables, count) && font.read(0, OffsetTable::numTables, tables) && tables == count);
    for (size_t i = 0; i < tables; ++i) {
        uint32_t offset = 0, length = 0;
        const size_t record = OffsetTable::size + i * TableRecord::size;
        FUZZ_CHECK(font.read(record, TableRecord::offset, offset) && font.read(record, TableRecord::length, length));
        FUZZ_CHECK(offset % 4 == 0 && font.contains(offset, length));
    }
    return 0;
}
