#include "checksum/FondKerning.h"

#include <cstdint>

#include "checksum/CChecksum.h"
#include "resourcefork/FONDRecord.h"

namespace {

using FOND::Header;
using FOND::KernEntry;
using FOND::KernTable;

// Calls visit(header, pairs) for each kerning entry of `style`; `pairs` is
// empty when the entry has no pairs or they run past the resource.
template <typename Visit>
void forEachKerningEntry(ByteView fond, short style, Visit visit)
{
    uint32_t tableOffset = 0;
    if (fond.size() < Header::size || !fond.read(0, Header::ffKernOff, tableOffset) ||
        tableOffset == 0 || uint64_t(tableOffset) + KernTable::size > fond.size())
        return;
    int16_t countMinusOne = 0;
    if (!fond.read(tableOffset, KernTable::numKerns, countMinusOne)) return;
    int64_t at = int64_t(tableOffset) + KernTable::size;
    // Entries follow one another, so a table walks over at most the bytes
    // the resource holds. One that has covered more is stepping back over
    // itself: its walk ends there, or it would take count x size steps.
    uint64_t walked = 0;
    for (int entry = 0; entry < countMinusOne + 1; ++entry) {
        // The entry's header must end strictly before the resource's end.
        if (at < 0 || uint64_t(at) + KernEntry::size >= fond.size()) return;
        int16_t entryStyle = 0;
        uint16_t length = 0;
        fond.read(size_t(at), KernEntry::kernStyle, entryStyle);
        fond.read(size_t(at), KernEntry::kernLength, length);
        // Read signed: a negative count steps backwards, as the data says.
        const int64_t pairBytes = int64_t(KernEntry::pairSize) * int16_t(length);
        ByteView pairs;
        if (pairBytes > 0)
            pairs = fond.sub(size_t(at) + KernEntry::size, size_t(pairBytes)).value_or(ByteView());
        walked += KernEntry::size + pairs.size();
        if (walked > fond.size()) return;
        if (entryStyle == style) visit(*fond.sub(size_t(at), KernEntry::size), pairs);
        at += int64_t(KernEntry::size) + pairBytes;
    }
}

unsigned long byteSum(ByteView bytes)
{
    uint32_t sum = 0;
    for (uint8_t byte : bytes.span()) sum += byte;
    return sum;
}

}  // namespace

unsigned long GetVaultlineChecksum(ByteView fond, short style)
{
    uint32_t sum = 0;
    forEachKerningEntry(fond, style, [&](ByteView header, ByteView pairs) {
        sum += uint32_t(byteSum(header) + byteSum(pairs));
    });
    return sum;
}

unsigned long KerningPairsCRC(ByteView fond, short style)
{
    unsigned long crc = 0;
    forEachKerningEntry(fond, style, [&](ByteView, ByteView pairs) {
        crc = CChecksum::icrc(pairs.data(), pairs.size(), crc);
    });
    return crc;
}
