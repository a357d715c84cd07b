// MacBinary I, II and III: a 128-byte header (name, Finder type and creator,
// fork lengths), an optional secondary header, then the data fork and the
// resource fork, each padded to a multiple of 128 bytes. Detection is
// strict so that no ordinary file is ever taken for one: MacBinary III by
// its "mBIN" signature, MacBinary II by the CRC of its header, MacBinary I
// only when every zero and length rule of the format holds.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "support/ByteView.h"

namespace MacBinary {

// The header: the fields its checks and its writer read.
struct HeaderFields {
    static constexpr Field<uint8_t> oldVersion{0}, nameLength{1};
    static constexpr size_t name = 2;  // nameLength bytes, at most 63
    static constexpr Field<uint32_t> fileType{65}, fileCreator{69};
    static constexpr Field<uint8_t> zeroFill74{74}, zeroFill82{82};
    static constexpr Field<uint32_t> dataForkLength{83}, resourceForkLength{87};
    static constexpr Field<uint16_t> commentLength{99};  // the Finder comment after the forks
    static constexpr Field<uint32_t> signature{102};     // "mBIN" in MacBinary III
    static constexpr Field<uint16_t> secondaryHeaderLength{120};
    static constexpr Field<uint16_t> crc{124};           // of the bytes before it
    static constexpr size_t size = 128;
};

inline constexpr size_t kHeaderSize = HeaderFields::size;
inline constexpr size_t kBlockSize = 128;

struct Header {
    int version = 0;  // 1, 2 or 3
    std::string name;
    uint32_t fileType = 0;
    uint32_t fileCreator = 0;
    uint64_t dataOffset = 0;
    uint64_t dataLength = 0;
    uint64_t resourceOffset = 0;
    uint64_t resourceLength = 0;
};

// CRC-16/XMODEM (CCITT polynomial 0x1021, initial value 0, no reflection).
uint16_t Crc16(ByteView bytes);

// Reads the header (the first kHeaderSize bytes of `header`) of a file
// `fileSize` bytes long; nothing unless the file is MacBinary and both
// forks lie inside it.
std::optional<Header> Parse(ByteView header, uint64_t fileSize);

// The whole MacBinary file `file` with one or both forks replaced (a fork
// given as nothing is kept); the header's lengths and CRC follow. Nothing
// when `file` is not MacBinary or a fork is too long for the format.
std::optional<std::vector<uint8_t>> ReplaceForks(ByteView file, std::optional<ByteView> dataFork,
                                                 std::optional<ByteView> resourceFork);

}  // namespace MacBinary
