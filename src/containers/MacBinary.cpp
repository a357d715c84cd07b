#include "containers/MacBinary.h"

#include <limits>

#include "support/ByteWriter.h"
#include "support/Refusal.h"

namespace MacBinary {

namespace {

using Fields = HeaderFields;

constexpr uint8_t kMaxNameLength = 63;
constexpr uint32_t kMacBinaryIMaxForkLength = 0x7FFFFF;
// MacBinary I ends its header before the comment length: zero from there on.
constexpr size_t kMacBinaryIZeroFrom = Fields::commentLength.offset;

const char* const kVersionNames[] = {"MacBinary", "MacBinary I", "MacBinary II", "MacBinary III"};

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

bool hasSignature(ByteView header)
{
    uint32_t signature = 0;
    return header.read(0, Fields::signature, signature) && signature == fourCC("mBIN");
}

// A broken rule: a refusal when the header claims to be MacBinary; any
// other file is simply not one.
template <typename... Parts>
bool broken(bool claimed, const Parts&... reason)
{
    if (claimed) Refuse(reason...);
    return false;
}

// The rules every version shares: the zero bytes and a sensible name length.
// Only the MacBinary III signature claims the format before they hold.
bool commonRulesHold(ByteView header)
{
    uint8_t oldVersion = 1, nameLength = 0, zero74 = 1, zero82 = 1;
    if (!header.read(0, Fields::oldVersion, oldVersion) ||
        !header.read(0, Fields::nameLength, nameLength) ||
        !header.read(0, Fields::zeroFill74, zero74) || !header.read(0, Fields::zeroFill82, zero82))
        return false;
    const bool claimed = hasSignature(header);
    if (oldVersion != 0)
        return broken(claimed, "MacBinary III: old version byte ", oldVersion, ", not zero");
    if (zero74 != 0) return broken(claimed, "MacBinary III: byte 74 is ", zero74, ", not zero");
    if (zero82 != 0) return broken(claimed, "MacBinary III: byte 82 is ", zero82, ", not zero");
    if (nameLength < 1 || nameLength > kMaxNameLength)
        return broken(claimed, "MacBinary III: name length ", nameLength, " outside 1 to ",
                      kMaxNameLength);
    return true;
}

int detectVersion(ByteView header)
{
    if (hasSignature(header)) return 3;
    uint16_t crc = 0;
    auto covered = header.sub(0, Fields::crc.offset);
    if (covered && header.read(0, Fields::crc, crc) && crc == Crc16(*covered)) return 2;
    uint32_t dataLength = 0, resourceLength = 0;
    if (header.read(0, Fields::dataForkLength, dataLength) &&
        header.read(0, Fields::resourceForkLength, resourceLength) &&
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
    auto header = bytes.sub(0, Fields::size);
    if (!header || fileSize < Fields::size || !commonRulesHold(*header)) return std::nullopt;
    Header result;
    result.version = detectVersion(*header);
    if (result.version == 0) return std::nullopt;

    uint8_t nameLength = 0;
    uint32_t dataLength = 0, resourceLength = 0;
    uint16_t secondary = 0;
    if (!header->read(0, Fields::nameLength, nameLength) ||
        !header->read(0, Fields::fileType, result.fileType) ||
        !header->read(0, Fields::fileCreator, result.fileCreator) ||
        !header->read(0, Fields::dataForkLength, dataLength) ||
        !header->read(0, Fields::resourceForkLength, resourceLength) ||
        !header->read(0, Fields::secondaryHeaderLength, secondary))
        return std::nullopt;
    result.name = std::string(header->chars(Fields::name, nameLength));
    result.dataLength = dataLength;
    result.resourceLength = resourceLength;
    result.dataOffset = Fields::size + (result.version >= 2 ? padded(secondary) : 0);
    result.resourceOffset = result.dataOffset + padded(dataLength);
    const char* format = kVersionNames[result.version];
    if (result.dataOffset + dataLength > fileSize)
        return Refuse(format, ": data fork (offset ", result.dataOffset, ", length ", dataLength,
                      ") runs past the end of the file (", fileSize, " bytes)");
    const uint64_t end = result.resourceOffset + resourceLength;
    if (end > fileSize)
        return Refuse(format, ": resource fork (offset ", result.resourceOffset, ", length ",
                      resourceLength, ") runs past the end of the file (", fileSize, " bytes)");
    // MacBinary I has no CRC to vouch for it: nothing may follow the padding.
    if (result.version == 1 && fileSize > padded(end))
        return Refuse(format, ": ", fileSize - padded(end), " bytes follow the padded forks");
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
    file.read(0, Fields::commentLength, commentLength);
    auto comment = file.sub(size_t(padded(header->resourceOffset + header->resourceLength)),
                            commentLength);

    ByteWriter out;
    out.bytes(*prefix).bytes(data).pad(kBlockSize).bytes(resource).pad(kBlockSize);
    if (header->version >= 2 && comment) out.bytes(*comment).pad(kBlockSize);
    out.putU32(Fields::dataForkLength.offset, uint32_t(data.size()));
    out.putU32(Fields::resourceForkLength.offset, uint32_t(resource.size()));
    if (header->version >= 2) {
        if (!comment) out.putU16(Fields::commentLength.offset, 0);
        auto covered = out.view().sub(0, Fields::crc.offset);
        out.putU16(Fields::crc.offset, covered ? Crc16(*covered) : 0);
    }
    return out.take();
}

}  // namespace MacBinary
