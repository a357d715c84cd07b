// Builds small sfnt fonts, collections and naming tables byte by byte.
#pragma once

#include <string>
#include <vector>

#include "support/ByteWriter.h"

namespace testfonts {

struct Table {
    std::string tag;    // up to four characters; shorter tags are NUL-padded
    std::string bytes;
};

inline uint32_t tagValue(const std::string& tag)
{
    uint32_t value = 0;
    for (size_t i = 0; i < 4; ++i) value = (value << 8) | (i < tag.size() ? uint8_t(tag[i]) : 0);
    return value;
}

// The sum of the bytes' big-endian words, the last one zero-padded.
inline uint32_t paddedSum(const std::string& bytes)
{
    uint32_t sum = 0;
    for (size_t at = 0; at < bytes.size(); at += 4) sum += tagValue(bytes.substr(at, 4));
    return sum;
}

inline uint32_t paddedLength(const std::string& bytes) { return (uint32_t(bytes.size()) + 3) & ~3u; }

// An sfnt whose tables follow the directory back to back, each padded to 4
// bytes. `base` is added to every table offset (for collections).
inline ByteWriter& appendSfnt(ByteWriter& out, uint32_t version, const std::vector<Table>& tables,
                              uint32_t base = 0)
{
    out.u32(version).u16(uint16_t(tables.size())).u16(0).u16(0).u16(0);
    uint32_t offset = base + 12 + 16 * uint32_t(tables.size());
    for (const Table& table : tables) {
        out.u32(tagValue(table.tag)).u32(paddedSum(table.bytes)).u32(offset).u32(uint32_t(table.bytes.size()));
        offset += paddedLength(table.bytes);
    }
    for (const Table& table : tables) out.bytes(table.bytes).pad(4);
    return out;
}

inline std::vector<uint8_t> sfnt(uint32_t version, const std::vector<Table>& tables)
{
    ByteWriter out;
    return appendSfnt(out, version, tables).take();
}

// Tables every Windows system needs, with a little content each.
inline std::vector<Table> requiredTables()
{
    const std::string x(8, 'x');
    return {{"OS/2", x}, {"cmap", x}, {"head", x}, {"hhea", x}, {"hmtx", x}, {"maxp", x}, {"name", x}, {"post", x}};
}

// A collection of faces that share nothing: each face's tables follow its
// own directory.
inline std::vector<uint8_t> collection(const std::vector<std::vector<Table>>& faces,
                                       uint32_t version = 0x00010000)
{
    ByteWriter out;
    out.tag("ttcf").u32(version).u32(uint32_t(faces.size()));
    std::vector<uint32_t> starts;
    uint32_t offset = 12 + 4 * uint32_t(faces.size());
    for (const auto& face : faces) {
        out.u32(offset);
        starts.push_back(offset);
        offset += 12 + 16 * uint32_t(face.size());
        for (const auto& table : face) offset += paddedLength(table.bytes);
    }
    for (size_t i = 0; i < faces.size(); ++i) appendSfnt(out, 0x00010000, faces[i], starts[i]);
    return out.take();
}

struct NameRecord {
    uint16_t platformID, encodingID, languageID, nameID;
    std::string bytes;  // as stored: UTF-16BE for double-byte records
};

// UTF-16BE bytes of a text given as UTF-16 units.
inline std::string utf16be(const std::u16string& text)
{
    std::string out;
    for (char16_t unit : text) out += {char(unit >> 8), char(unit & 0xFF)};
    return out;
}

// A format 0 naming table with the records' strings stored in order.
inline std::string nameTable(const std::vector<NameRecord>& records)
{
    ByteWriter out;
    out.u16(0).u16(uint16_t(records.size())).u16(uint16_t(6 + 12 * records.size()));
    uint16_t offset = 0;
    for (const NameRecord& r : records) {
        out.u16(r.platformID).u16(r.encodingID).u16(r.languageID).u16(r.nameID)
            .u16(uint16_t(r.bytes.size())).u16(offset);
        offset = uint16_t(offset + r.bytes.size());
    }
    for (const NameRecord& r : records) out.bytes(r.bytes);
    return std::string(out.data().begin(), out.data().end());
}

// A font holding just a naming table (and a trailing byte, so that the
// directory entry is found).
inline std::vector<uint8_t> fontWithNames(const std::vector<NameRecord>& records)
{
    ByteWriter out;
    return appendSfnt(out, 0x00010000, {{"name", nameTable(records)}}).u8(0).take();
}

}  // namespace testfonts
