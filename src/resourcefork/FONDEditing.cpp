// The FOND editing operations of TypeprobeResourceFile: promoting a style
// to the plain style and purging association entries. Identification never
// calls them.
#include <algorithm>

#include "resourcefork/FONDRecord.h"
#include "resourcefork/FONDStyleNames.h"
#include "resourcefork/PascalStrings.h"
#include "resourcefork/TypeprobeResourceFile.h"

namespace {

constexpr size_t kKerningEntryHeader = 4;  // style, pair count
constexpr size_t kKerningPairSize = 4;

// Bounds-checked big-endian stores into a handle's bytes.
bool put16(std::vector<uint8_t>& bytes, size_t at, uint16_t value)
{
    if (at > bytes.size() || bytes.size() - at < 2) return false;
    bytes[at] = uint8_t(value >> 8);
    bytes[at + 1] = uint8_t(value);
    return true;
}

bool put32(std::vector<uint8_t>& bytes, size_t at, uint32_t value)
{
    return put16(bytes, at, uint16_t(value >> 16)) && put16(bytes, at + 2, uint16_t(value));
}

void zero(std::vector<uint8_t>& bytes, size_t at, size_t count)
{
    if (at >= bytes.size()) return;
    count = std::min(count, bytes.size() - at);
    std::fill_n(bytes.begin() + std::ptrdiff_t(at), count, uint8_t(0));
}

void promoteEntries(std::vector<uint8_t>& bytes, int16_t style)
{
    const ByteView view(bytes.data(), bytes.size());
    const int count = FOND::EntryCount(view);
    if (count <= 0 || !view.contains(0, FOND::EntryOffset(size_t(count)))) return;
    for (int i = 0; i < count; ++i) {
        auto entry = FOND::EntryAt(view, size_t(i));
        if (entry && entry->style == style) put16(bytes, FOND::EntryOffset(size_t(i)) + 2, 0);
    }
}

void promoteKerning(std::vector<uint8_t>& bytes, int16_t style)
{
    uint32_t table = 0;
    int16_t countMinusOne = 0;
    const ByteView view(bytes.data(), bytes.size());
    if (!view.u32(FOND::kKerningTableOffset, table) || table == 0 ||
        !view.i16(table, countMinusOne))
        return;
    size_t at = size_t(table) + 2;
    for (int i = 0; i <= countMinusOne; ++i) {
        int16_t entryStyle = 0;
        uint16_t pairs = 0;
        if (!view.i16(at, entryStyle) || !view.u16(at + 2, pairs)) return;
        put16(bytes, at, entryStyle == style ? 0 : 1);
        at += kKerningEntryHeader + size_t(pairs) * kKerningPairSize;
    }
}

void promoteStyleNames(std::vector<uint8_t>& bytes, const std::string& name)
{
    const ByteView view(bytes.data(), bytes.size());
    const size_t table = FOND::StyleMappingOffset(view);
    int16_t count = 0;
    if (table == 0 || !view.i16(table + FOND::kStringCount, count)) return;
    size_t at = table + FOND::kStrings;
    for (int i = 0; i < count; ++i) {
        uint8_t length = 0;
        if (!ByteView(bytes.data(), bytes.size()).u8(at, length)) break;
        zero(bytes, at, size_t(length) + 1);
        at += size_t(length) + 1;
    }
    zero(bytes, table + FOND::kNameCodeIndex, FOND::kNameCodeCount);
    put16(bytes, table + FOND::kStringCount, 1);
    const size_t first = table + FOND::kStrings;
    if (name.size() <= 255 && first < bytes.size() && bytes.size() - first >= name.size() + 1) {
        bytes[first] = uint8_t(name.size());
        std::copy(name.begin(), name.end(), bytes.begin() + std::ptrdiff_t(first + 1));
    }
}

}  // namespace

void TypeprobeResourceFile::promoteFOND(ResourceHandle* fond, int16_t style)
{
    if (!fond) return;
    unsigned char buffer[kPascalBufferSize];
    GetPrinterFontNameFromResource(fond, style & 0xFF, buffer, sizeof buffer);
    const std::string name(PascalText(buffer));  // ASCII already: Mac Roman as it is
    if (style != 0 && !name.empty() && setResInfo(*fond, fond->id, name)) fond->name = name;
    promoteEntries(fond->data, style);
    promoteKerning(fond->data, style);
    promoteStyleNames(fond->data, name);
    changedResource(*fond);
}

void TypeprobeResourceFile::compactFOND(ResourceHandle& fond,
                                        const std::function<bool(int16_t style)>& remove,
                                        const std::function<void(int16_t id)>& removed)
{
    std::vector<uint8_t>& bytes = fond.data;
    if (bytes.size() < FOND::kEntries) return;
    const int count = FOND::EntryCount(fond.view());
    size_t gone = 0;
    for (int i = count - 1; i >= 0; --i) {
        auto entry = FOND::EntryAt(fond.view(), size_t(i));
        if (!entry || !remove(entry->style)) continue;
        removed(entry->id);
        // Close the gap: the rest of the table and record move down.
        const size_t at = FOND::EntryOffset(size_t(i));
        std::copy(bytes.begin() + std::ptrdiff_t(at + FOND::kEntrySize), bytes.end(),
                  bytes.begin() + std::ptrdiff_t(at));
        ++gone;
    }
    if (gone == 0) return;
    const size_t shrink = gone * FOND::kEntrySize;
    put16(bytes, FOND::kEntryCountMinusOne, uint16_t(count - 1 - int(gone)));
    for (size_t field : {FOND::kWidthTableOffset, FOND::kKerningTableOffset, FOND::kStyleMappingOffset}) {
        uint32_t offset = 0;
        fond.view().u32(field, offset);
        put32(bytes, field, offset > shrink ? uint32_t(offset - shrink) : 0);
    }
    // Only a record that keeps some bytes is shrunk and stored (intended).
    if (bytes.size() <= shrink) return;
    bytes.resize(bytes.size() - shrink);
    changedResource(fond);
}

void TypeprobeResourceFile::purgeFromFOND(ResourceHandle* fond, const std::vector<int16_t>& styles,
                                          bool deleteFONTs)
{
    if (!fond) return;
    compactFOND(
        *fond,
        [&](int16_t style) { return std::find(styles.begin(), styles.end(), style) != styles.end(); },
        [&](int16_t id) {
            if (!deleteFONTs) return;
            for (uint32_t type : {fourCC("NFNT"), fourCC("sfnt"), fourCC("FONT")})
                purgeResource(type, id);
        });
}

void TypeprobeResourceFile::purgeAllBut(int16_t style, ResourceHandle* fond)
{
    if (!fond) return;
    compactFOND(
        *fond, [style](int16_t entryStyle) { return entryStyle != style; }, [](int16_t) {});
}
