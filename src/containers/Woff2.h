// WOFF2: an sfnt (or a collection) whose tables are transformed and brotli-
// compressed together. Debian's woff2 decoder does the decoding; this reader
// checks the header's claims first and bounds what the decoder may allocate.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "containers/SfntLayout.h"
#include "support/ByteView.h"

namespace Woff2 {

inline constexpr uint32_t kSignature = 0x774F4632;  // 'wOF2'
inline constexpr uint64_t kLargestSfnt = kLargestDecodedSfnt;

struct WOFF2Header {
    static constexpr Field<uint32_t> signature{0}, flavor{4}, length{8};
    static constexpr Field<uint16_t> numTables{12}, reserved{14};
    static constexpr Field<uint32_t> totalSfntSize{16}, totalCompressedSize{20};
    static constexpr Field<uint16_t> majorVersion{24}, minorVersion{26};
    static constexpr Field<uint32_t> metaOffset{28}, metaLength{32}, metaOrigLength{36},
        privOffset{40}, privLength{44};
    static constexpr size_t size = 48;
};

// True when the bytes start with the WOFF2 signature.
bool Claims(ByteView bytes);

// The font as the woff2 decoder rebuilds it (a WOFF2 collection gives a
// collection); nothing (after a reason) when it is malformed.
std::optional<std::vector<uint8_t>> DecodeToSfnt(ByteView woff2);

}  // namespace Woff2
