// CRC-32 and the whole-file checksum that identity checksums rest on.
#pragma once

#include <cstdint>
#include <string>

class CChecksum {
public:
    // zlib's CRC-32 of the bytes, continued from `crc` (0 starts afresh).
    static unsigned long icrc(const unsigned char* data, unsigned long length, unsigned long crc);
    // The CRC-32 of A followed by B, from the CRCs of A and of B (each from
    // 0) and B's length.
    static unsigned long combine(unsigned long crcA, unsigned long crcB, uint64_t lengthB);

    // `crc` continued over `count` copies of a block whose CRC from 0 is
    // `blockCrc`, computed without reading the block again: a family can
    // name one large resource thousands of times.
    static unsigned long icrcRepeated(unsigned long crc, unsigned long blockCrc,
                                      uint64_t blockLength, uint64_t count);

    // CRC-32 over the data fork and then the resource fork of the logical
    // file at `path`, from 0, into *total; with `dataForkOnly`, also the
    // data fork's own CRC. True when the resource fork was read, otherwise
    // when the total differs from the value *total held on entry. Each fork
    // is viewed in place (mapped); inside a ReadScope each file is
    // checksummed once and answered again from memory.
    static bool CalculateFileChecksum(const std::string& path, unsigned long* total,
                                      unsigned long* dataForkOnly);
};

// `sum` plus (length + 3) / 4 big-endian words of `data`, modulo 2^32; a
// length that is not a multiple of 4 reads the whole last word.
unsigned long ChecksumLongAlignedData(unsigned long sum, const void* data, unsigned long length);
