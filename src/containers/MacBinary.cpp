#include "containers/MacBinary.h"

#include <limits>

#include "support/ByteWriter.h"

namespace MacBinary {

namespace {

// Header fields, by offset.
constexpr size_t kOldVersion = 0;
constexpr size_t kNameLength = 1;
constexpr size_t kName = 2;
constexpr size_t kFileType = 65;
constexpr size_t kFileCreator = 69;
constexpr size_t kZeroByte74 = 74;
constexpr size_t kZeroByte82 = 82;
constexpr size_t kDataLength = 83;
constexpr size_t kResourceLength = 87;
constexpr size_t kCommentLength = 99;
constexpr size_t kSignature = 102;
constexpr size_t kSecondaryHeaderLength = 120;
constexpr size_t kCrc = 124;
constexpr size_t kCrcCoverage = 124;
constexpr size_t kMacBinaryIZeroFrom = 99;  // MacBinary I: zero from here to the end

constexpr uint8_t kMaxNameLength = 63;
constexpr uint32_t kMacBinaryIMaxForkLength = 0x7FFFFF;

uint64_t padded(uint64_t length)
{
    return (length + kBlockSize - 1) / kBlockSize * kBlockSize;
}

bool allZero(ByteView bytes)
{
    for (size_t i = 0; i < bytes.size(); ++i) {
        uint8_t value = 0;
        if (!bytes.u8(i, value) || value != 0) return false;
    }
    return true;
}

// The rules every version shares: the zero bytes and a sensible name length.
bool commonRulesHold(ByteView header)
{
    uint8_t oldVersion = 1, nameLength = 0, zero74 = 1, zero82 = 1;
    return header.u8(kOldVersion, oldVersion) && header.u8(kNameLength, nameLength) &&
           header.u8(kZeroByte74, zero74) && header.u8(kZeroByte82, zero82) && oldVersion == 0 &&
           zero74 == 0 && zero82 == 0 && nameLength >= 1 && nameLength <= kMaxNameLength;
}

int detectVersion(ByteView header)
{
    if (header.chars(kSignature, 4) == "mBIN") return 3;
    uint16_t crc = 0;
    auto covered = header.sub(0, kCrcCoverage);
    if (covered && header.u16(kCrc, crc) && crc == Crc16(*covered)) return 2;
    uint32_t dataLength = 0, resourceLength = 0;
    if (header.u32(kDataLength, dataLength) && header.u32(kResourceLength, resourceLength) &&
        dataLength <= kMacBinaryIMaxForkLength && resourceLength <= kMacBinaryIMaxForkLength &&
        allZero(header.tail(kMacBinaryIZeroFrom)))
        return 1;
    return 0;
}

}  // namespace

uint16_t Crc16(ByteView bytes)
{
    uint16_t crc = 0;
    for (size_t i = 0; i < bytes.size(); ++i) {
        uint8_t value = 0;
        bytes.u8(i, value);
        crc = uint16_t(crc ^ (uint16_t(value) << 8));
        for (int bit = 0; bit < 8; ++bit)
            crc = uint16_t((crc & 0x8000) ? (crc << 1) ^ 0x1021 : crc << 1);
    }
    return crc;
}

std::optional<Header> Parse(ByteView bytes, uint64_t fileSize)
{
    auto header = bytes.sub(0, kHeaderSize);
    if (!header || fileSize < kHeaderSize || !commonRulesHold(*header)) return std::nullopt;
    Header result;
    result.version = detectVersion(*header);
    if (result.version == 0) return std::nullopt;

    uint8_t nameLength = 0;
    uint32_t dataLength = 0, resourceLength = 0;
    uint16_t secondary = 0;
    if (!header->u8(kNameLength, nameLength) || !header->tag(kFileType, result.fileType) ||
        !header->tag(kFileCreator, result.fileCreator) ||
        !header->u32(kDataLength, dataLength) || !header->u32(kResourceLength, resourceLength) ||
        !header->u16(kSecondaryHeaderLength, secondary))
        return std::nullopt;
    result.name = std::string(header->chars(kName, nameLength));
    result.dataLength = dataLength;
    result.resourceLength = resourceLength;
    result.dataOffset = kHeaderSize + (result.version >= 2 ? padded(secondary) : 0);
    result.resourceOffset = result.dataOffset + padded(dataLength);
    const uint64_t end = result.resourceOffset + resourceLength;
    if (end > fileSize) return std::nullopt;
    // MacBinary I has no CRC to vouch for it: nothing may follow the padding.
    if (result.version == 1 && fileSize > padded(end)) return std::nullopt;
    return result;
}

std::optional<std::vector<uint8_t>> ReplaceForks(ByteView file, std::optional<ByteView> dataFork,
                                                 std::optional<ByteView> resourceFork)
{
    auto header = Parse(file, file.size());
    if (!header) return std::nullopt;
    auto oldData = file.sub(size_t(header->dataOffset), size_t(header->dataLength));
    auto oldResource = file.sub(size_t(header->resourceOffset), size_t(header->resourceLength));
    auto prefix = file.sub(0, size_t(header->dataOffset));
    if (!oldData || !oldResource || !prefix) return std::nullopt;
    ByteView data = dataFork.value_or(*oldData);
    ByteView resource = resourceFork.value_or(*oldResource);
    const uint64_t limit = header->version == 1 ? kMacBinaryIMaxForkLength
                                                : std::numeric_limits<uint32_t>::max();
    if (data.size() > limit || resource.size() > limit) return std::nullopt;

    // The Finder comment of MacBinary II and III follows the resource fork.
    uint16_t commentLength = 0;
    file.u16(kCommentLength, commentLength);
    auto comment = file.sub(size_t(padded(header->resourceOffset + header->resourceLength)),
                            commentLength);

    ByteWriter out;
    out.bytes(*prefix).bytes(data).pad(kBlockSize).bytes(resource).pad(kBlockSize);
    if (header->version >= 2 && comment) out.bytes(*comment).pad(kBlockSize);
    out.putU32(kDataLength, uint32_t(data.size()));
    out.putU32(kResourceLength, uint32_t(resource.size()));
    if (header->version >= 2) {
        if (!comment) out.putU16(kCommentLength, 0);
        auto covered = out.view().sub(0, kCrcCoverage);
        out.putU16(kCrc, covered ? Crc16(*covered) : 0);
    }
    return out.take();
}

}  // namespace MacBinary
