#include "containers/Woff2.h"

#include <woff2/decode.h>
#include <woff2/output.h>

#include <algorithm>
#include <cstring>

#include "support/Refusal.h"

namespace Woff2 {

namespace {

// The decoder's output, grown in a vector up to a ceiling: the decoder
// writes the tables first and goes back to fill in the directory.
class VectorOut : public woff2::WOFF2Out {
public:
    VectorOut(size_t expected, size_t ceiling) : ceiling_(ceiling) { bytes_.reserve(expected); }

    bool Write(const void* buf, size_t n) override { return Write(buf, bytes_.size(), n); }
    bool Write(const void* buf, size_t offset, size_t n) override
    {
        if (offset > ceiling_ || n > ceiling_ - offset) return false;
        if (offset + n > bytes_.size()) bytes_.resize(offset + n);
        if (n > 0) std::memcpy(bytes_.data() + offset, buf, n);
        return true;
    }
    size_t Size() override { return bytes_.size(); }

    std::vector<uint8_t> take() { return std::move(bytes_); }

private:
    std::vector<uint8_t> bytes_;
    size_t ceiling_;
};

// Brotli and the table transforms together rarely grow a font more than
// tenfold; room beyond that grows only as the decoder writes.
constexpr size_t kReservedPerByte = 16;

}  // namespace

bool Claims(ByteView bytes)
{
    uint32_t signature = 0;
    return bytes.read(0, WOFF2Header::signature, signature) && signature == kSignature;
}

std::optional<std::vector<uint8_t>> DecodeToSfnt(ByteView woff2)
{
    if (!Claims(woff2)) return std::nullopt;
    uint32_t length = 0, totalSfntSize = 0;
    uint16_t numTables = 0, reserved = 0;
    if (!woff2.read(0, WOFF2Header::length, length) ||
        !woff2.read(0, WOFF2Header::numTables, numTables) ||
        !woff2.read(0, WOFF2Header::reserved, reserved) ||
        !woff2.read(0, WOFF2Header::totalSfntSize, totalSfntSize) ||
        !woff2.contains(0, WOFF2Header::size))
        return Refuse("WOFF2: header cut short (", woff2.size(), " of ", WOFF2Header::size, " bytes)");
    if (length != woff2.size())
        return Refuse("WOFF2: header claims ", length, " bytes, the file holds ", woff2.size());
    if (reserved != 0) return Refuse("WOFF2: reserved header field is ", reserved, ", not 0");
    if (numTables == 0) return Refuse("WOFF2: no tables");
    const size_t finalSize = woff2::ComputeWOFF2FinalSize(woff2.data(), woff2.size());
    if (finalSize > kLargestSfnt)
        return Refuse("WOFF2: the font decodes to ", finalSize, " bytes, more than the ",
                      kLargestSfnt, " any font needs");
    VectorOut out(std::min(finalSize, woff2.size() * kReservedPerByte), size_t(kLargestSfnt));
    if (!woff2::ConvertWOFF2ToTTF(woff2.data(), woff2.size(), &out))
        return Refuse("WOFF2: the decoder rejects the font's tables (", numTables,
                      " tables claiming ", totalSfntSize, " bytes)");
    return out.take();
}

}  // namespace Woff2
