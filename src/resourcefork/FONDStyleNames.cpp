#include "resourcefork/FONDStyleNames.h"

#include <optional>
#include <vector>

#include "resourcefork/FONDRecord.h"
#include "resourcefork/PascalStrings.h"

namespace {

constexpr int kBold = 0x01, kItalic = 0x02, kOutline = 0x08, kShadow = 0x10;
constexpr int kCondense = 0x20, kExtend = 0x40;

// Offsets of strings 1 to 255 of the table, walking from string 1; each
// step skips the length byte read as signed (intended: a long string sends
// the walk backwards, as it always did). The walk ends where it leaves the
// record. Made once per name: a descriptor names up to 255 strings.
class StringOffsets {
public:
    StringOffsets(ByteView fond, size_t firstString)
    {
        int64_t at = int64_t(firstString);
        while (offsets_.size() < kMaxString && at >= 0 && size_t(at) < fond.size()) {
            offsets_.push_back(size_t(at));
            int8_t length = 0;
            fond.i8(size_t(at), length);
            at += int64_t(length) + 1;
        }
    }

    // String `number` (1 or less: string 1); nothing once the walk left the
    // record before it.
    std::optional<size_t> find(int number) const
    {
        const size_t index = number <= 1 ? 0 : size_t(number) - 1;
        if (index >= offsets_.size()) return std::nullopt;
        return offsets_[index];
    }

private:
    static constexpr size_t kMaxString = 255;
    std::vector<size_t> offsets_;
};

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
    const size_t firstString = table + FOND::StyleTable::strings;
    unsigned char base[kPascalBufferSize];
    if (!readString(bytes, firstString, base)) return;
    CopyPascalString(base, dst, limit);

    int8_t code = 0;
    int16_t stringCount = 0;
    bytes.read(table, FOND::StyleTable::indexes.at(size_t(GetStyleIndex(style))), code);
    bytes.read(table, FOND::StyleTable::stringCount, stringCount);
    if (code > 1 && code <= stringCount) {
        unsigned char descriptor[kPascalBufferSize];
        const StringOffsets strings(bytes, firstString);
        auto at = strings.find(code);
        if (at && readString(bytes, *at, descriptor)) {
            for (size_t i = 1; i <= descriptor[0]; ++i) {
                unsigned char suffix[kPascalBufferSize];
                auto suffixAt = strings.find(descriptor[i]);
                if (suffixAt && readString(bytes, *suffixAt, suffix))
                    AppendPascalString(dst, suffix, limit);
            }
        }
    }
    CopyPascalStringAsciiLimit(dst, dst, limit);
}
