#include "fontfiles/SfntPlatform.h"

#include "fontfiles/SfntDirectory.h"

int GetPlatformTTF(ByteView font, LxString* platform)
{
    if (!platform || font.size() <= OffsetTable::sfntVersion.end()) return 0;
    *platform = "mac";
    uint32_t version = 0;
    font.read(0, OffsetTable::sfntVersion, version);
    // A "true"-tagged Mac TrueType font stays "mac".
    if (version != kSfntVersionTrueType && version != kSfntVersionOTTO) return 1;
    for (const char* tag : {"OS/2", "cmap", "name", "post", "maxp", "head", "hhea", "hmtx"}) {
        if (!FindValidTable(font, tag)) return 1;
    }
    auto kern = FindSpecifiedTable(font, "kern");
    if (kern && !ValidateDirectoryEntry(&*kern, font)) return 1;
    *platform = "crossplatform";
    return 1;
}

std::optional<TDirectoryEntry> KerningChecksumTable(ByteView font)
{
    for (const char* tag : {"kern", "GPOS", "glyf"}) {
        if (auto table = FindSpecifiedTable(font, tag)) return table;
    }
    return std::nullopt;
}

int GetTrueTypeKerningTableChecksum(ByteView font, uint32_t* checksum)
{
    if (!checksum) return 0;
    const std::optional<TDirectoryEntry> table = KerningChecksumTable(font);
    if (!table || !ValidateDirectoryEntry(&*table, font)) return 0;
    *checksum = 0;
    if (table->length % 4 != 0) {
        *checksum = table->checkSum;
        return 1;
    }
    // Strictly inside on both ends, deliberately: a table at byte 0 or one
    // ending on the buffer's last byte sums to 0.
    const uint32_t end = table->offset + table->length;
    if (table->offset == 0 || end >= font.size()) return 1;
    uint32_t sum = 0;
    for (uint32_t at = 0; at < table->length; at += 4) {
        uint32_t word = 0;
        if (!font.u32(size_t(table->offset) + at, word)) break;
        sum += word;
    }
    *checksum = sum;
    return 1;
}
