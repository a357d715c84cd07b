#include "resourcefork/FONDStyleNames.h"

#include <optional>

#include "resourcefork/FONDRecord.h"
#include "resourcefork/PascalStrings.h"

namespace {

constexpr int kBold = 0x01, kItalic = 0x02, kOutline = 0x08, kShadow = 0x10;
constexpr int kCondense = 0x20, kExtend = 0x40;

// Offset of string `number` of the table, walking from string 1; each
// step skips the length byte read as signed (intended: a long string sends
// the walk backwards, as it always did). Nothing once the walk leaves the
// record.
std::optional<size_t> findString(ByteView fond, size_t firstString, int number)
{
    int64_t at = int64_t(firstString);
    for (int i = 1; i < number; ++i) {
        int8_t length = 0;
        if (at < 0 || !fond.i8(size_t(at), length)) return std::nullopt;
        at += int64_t(length) + 1;
    }
    if (at < 0 || size_t(at) >= fond.size()) return std::nullopt;
    return size_t(at);
}

// The Pascal string at `at` copied out, when it lies inside the record.
bool readString(ByteView fond, size_t at, unsigned char (&out)[kPascalBufferSize])
{
    uint8_t length = 0;
    return fond.u8(at, length) && fond.copy(at, size_t(length) + 1, out);
}

}  // namespace

int GetStyleIndex(int style)
{
    int index = 0;
    if (style & kBold) index += 1;
    if (style & kItalic) index += 2;
    if (style & kOutline) index += 4;
    if (style & kShadow) index += 8;
    if (style & kCondense)
        index += 16;
    else if (style & kExtend)
        index += 32;
    return index;
}

void GetPrinterFontNameFromResource(const ResourceHandle* fond, int style, unsigned char* dst,
                                    size_t limit)
{
    if (!dst || limit == 0) return;
    dst[0] = 0;
    if (!fond) return;
    const ByteView bytes = fond->view();
    if (bytes.size() < FOND::kHeaderSize) return;
    // The offset is not tested for 0 here (intended).
    const size_t table = FOND::StyleMappingOffset(bytes);
    const size_t firstString = table + FOND::kStrings;
    unsigned char base[kPascalBufferSize];
    if (!readString(bytes, firstString, base)) return;
    CopyPascalString(base, dst, limit);

    int8_t code = 0;
    int16_t stringCount = 0;
    bytes.i8(table + FOND::kNameCodeIndex + size_t(GetStyleIndex(style)), code);
    bytes.i16(table + FOND::kStringCount, stringCount);
    if (code > 1 && code <= stringCount) {
        unsigned char descriptor[kPascalBufferSize];
        auto at = findString(bytes, firstString, code);
        if (at && readString(bytes, *at, descriptor)) {
            for (size_t i = 1; i <= descriptor[0]; ++i) {
                unsigned char suffix[kPascalBufferSize];
                auto suffixAt = findString(bytes, firstString, descriptor[i]);
                if (suffixAt && readString(bytes, *suffixAt, suffix))
                    AppendPascalString(dst, suffix, limit);
            }
        }
    }
    CopyPascalStringAsciiLimit(dst, dst, limit);
}
