// The FOND editing operations of TypeprobeResourceFile: promoting a style
// to the plain style and purging association entries. Identification never
// calls them.
#include <algorithm>

#include "resourcefork/FONDRecord.h"
#include "resourcefork/FONDStyleNames.h"
#include "resourcefork/PascalStrings.h"
#include "resourcefork/TypeprobeResourceFile.h"
#include "support/ByteWriter.h"

namespace {

// Overwrites the record's bytes from `at` with `bytes`; nothing when they
// do not all lie inside.
void overwrite(ByteWriter& record, size_t at, ByteView bytes)
{
    const ByteView old = record.view();
    if (!old.contains(at, bytes.size())) return;
    ByteWriter rebuilt;
    rebuilt.bytes(old.head(at)).bytes(bytes).bytes(old.tail(at + bytes.size()));
    record = std::move(rebuilt);
}

// Zeroes the bytes [at, at + count) that lie inside the record.
void zero(ByteWriter& record, size_t at, size_t count)
{
    if (at >= record.size()) return;
    count = std::min(count, record.size() - at);
    overwrite(record, at, ByteWriter().zeros(count).view());
}

void promoteEntries(ByteWriter& record, int16_t style)
{
    const ByteView view = record.view();
    const int count = FOND::EntryCount(view);
    if (count <= 0 || !view.contains(0, FOND::EntryOffset(size_t(count)))) return;
    for (int i = 0; i < count; ++i) {
        auto entry = FOND::EntryAt(view, size_t(i));
        if (entry && entry->style == style)
            record.putU16(FOND::EntryOffset(size_t(i)) + FOND::AsscEntry::fontStyle.offset, 0);
    }
}

void promoteKerning(ByteWriter& record, int16_t style)
{
    uint32_t table = 0;
    int16_t countMinusOne = 0;
    const ByteView view = record.view();
    if (!view.read(0, FOND::Header::ffKernOff, table) || table == 0 ||
        !view.read(table, FOND::KernTable::numKerns, countMinusOne))
        return;
    size_t at = size_t(table) + FOND::KernTable::size;
    for (int i = 0; i <= countMinusOne; ++i) {
        int16_t entryStyle = 0;
        uint16_t pairs = 0;
        if (!view.read(at, FOND::KernEntry::kernStyle, entryStyle) ||
            !view.read(at, FOND::KernEntry::kernLength, pairs))
            return;
        record.putU16(at + FOND::KernEntry::kernStyle.offset, entryStyle == style ? 0 : 1);
        at += FOND::KernEntry::size + size_t(pairs) * FOND::KernEntry::pairSize;
    }
}

void promoteStyleNames(ByteWriter& record, const std::string& name)
{
    using FOND::StyleTable;
    const size_t table = FOND::StyleMappingOffset(record.view());
    int16_t count = 0;
    if (table == 0 || !record.view().read(table, StyleTable::stringCount, count)) return;
    // The strings, walked to the end of the last one or of the record.
    const size_t first = table + StyleTable::strings;
    size_t end = first;
    for (int i = 0; i < count; ++i) {
        uint8_t length = 0;
        if (!record.view().u8(end, length)) break;
        end += size_t(length) + 1;
    }
    zero(record, first, end - first);
    zero(record, table + StyleTable::indexes.offset, StyleTable::indexCount);
    record.putU16(table + StyleTable::stringCount.offset, 1);
    if (name.size() <= 255) overwrite(record, first, ByteWriter().pascal(name).view());
}

}  // namespace

void TypeprobeResourceFile::promoteFOND(ResourceHandle* fond, int16_t style)
{
    if (!fond) return;
    unsigned char buffer[kPascalBufferSize];
    GetPrinterFontNameFromResource(fond, style & 0xFF, buffer, sizeof buffer);
    const std::string name(PascalText(buffer));  // ASCII already: Mac Roman as it is
    if (style != 0 && !name.empty() && setResInfo(*fond, fond->id, name)) fond->name = name;
    ByteWriter record;
    record.bytes(fond->view());
    promoteEntries(record, style);
    promoteKerning(record, style);
    promoteStyleNames(record, name);
    fond->data = record.take();
    changedResource(*fond);
}

void TypeprobeResourceFile::compactFOND(ResourceHandle& fond,
                                        const std::function<bool(int16_t style)>& remove,
                                        const std::function<void(int16_t id)>& removed)
{
    const ByteView bytes = fond.view();
    if (bytes.size() < FOND::kEntries) return;
    const int count = FOND::EntryCount(bytes);
    std::vector<size_t> cut;  // where the removed entries start, last first
    for (int i = count - 1; i >= 0; --i) {
        auto entry = FOND::EntryAt(bytes, size_t(i));
        if (!entry || !remove(entry->style)) continue;
        removed(entry->id);
        cut.push_back(FOND::EntryOffset(size_t(i)));
    }
    if (cut.empty()) return;
    // The rest of the table and record move down over the removed entries.
    ByteWriter record;
    size_t from = 0;
    for (auto at = cut.rbegin(); at != cut.rend(); ++at) {
        record.bytes(bytes.head(*at).tail(from));
        from = *at + FOND::AsscEntry::size;
    }
    record.bytes(bytes.tail(from));
    const size_t gone = cut.size();
    const size_t shrink = gone * FOND::AsscEntry::size;
    record.putU16(FOND::FontAssoc::numAssoc.offset, uint16_t(count - 1 - int(gone)));
    for (auto field : {FOND::Header::ffWTabOff, FOND::Header::ffKernOff, FOND::Header::ffStylOff}) {
        uint32_t offset = 0;
        bytes.read(0, field, offset);
        record.putU32(field.offset, offset > shrink ? uint32_t(offset - shrink) : 0);
    }
    fond.data = record.take();
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
