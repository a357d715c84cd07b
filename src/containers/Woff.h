// WOFF 1.0: an sfnt whose tables are each stored as they are or deflated,
// behind a header and a directory of where each table lies in the WOFF and
// how long it was in the font. Decoding gives back the sfnt the WOFF was
// made from, byte for byte when its maker kept the tables' order.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "containers/SfntLayout.h"
#include "support/ByteView.h"

namespace Woff {

inline constexpr uint32_t kSignature = 0x774F4646;  // 'wOFF'
inline constexpr uint64_t kLargestSfnt = kLargestDecodedSfnt;

struct WOFFHeader {
    static constexpr Field<uint32_t> signature{0}, flavor{4}, length{8};
    static constexpr Field<uint16_t> numTables{12}, reserved{14};
    static constexpr Field<uint32_t> totalSfntSize{16};
    static constexpr Field<uint16_t> majorVersion{20}, minorVersion{22};
    static constexpr Field<uint32_t> metaOffset{24}, metaLength{28}, metaOrigLength{32},
        privOffset{36}, privLength{40};
    static constexpr size_t size = 44;
};

// One of numTables, right after the header, in ascending tag order.
struct TableDirectoryEntry {
    static constexpr Field<uint32_t> tag{0}, offset{4}, compLength{8}, origLength{12},
        origChecksum{16};
    static constexpr size_t size = 20;
};

// True when the bytes start with the WOFF signature.
bool Claims(ByteView bytes);

// The sfnt the WOFF was made from: tables in the order their data lies in
// the WOFF (the font's own order, when the encoder kept it), each padded to
// 4 bytes, the offset table's search fields computed, table records in tag
// order with the original checksums. Nothing (after a reason) when the WOFF
// is malformed; every size is checked against the header's claims before
// anything is allocated.
std::optional<std::vector<uint8_t>> DecodeToSfnt(ByteView woff);

}  // namespace Woff
