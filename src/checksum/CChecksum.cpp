#include "checksum/CChecksum.h"

#include <isa-l/crc.h>
#include <zlib.h>

#include <cstdint>
#include <optional>
#include <string>

#include "support/ByteView.h"
#include "containers/MacForks.h"
#include "containers/ReadScope.h"

namespace {

ReadScope::FileCRCs readFileCRCs(const std::string& path)
{
    ReadScope::FileCRCs sums;
    const MacFile file = MacForks::Resolve(path);
    for (int fork = 0; fork < 2; ++fork) {
        const bool isDataFork = fork == 0;
        const std::optional<SharedBytes> bytes =
            MacForks::ForkBytes(isDataFork ? file.dataFork : file.resourceFork);
        if (!bytes) continue;
        if (!isDataFork) sums.resourceForkRead = true;
        if (bytes->empty()) continue;
        const ByteView view = bytes->view();
        // The data fork comes first, so its own CRC is the total so far.
        sums.total = CChecksum::icrc(view.data(), view.size(), sums.total);
        if (isDataFork) {
            sums.hasDataFork = true;
            sums.dataFork = sums.total;
        }
    }
    return sums;
}

}  // namespace

unsigned long CChecksum::icrc(const unsigned char* data, unsigned long length, unsigned long crc)
{
    if (!data) return crc;
    // ISA-L's gzip CRC-32 is zlib's, continued the same way, and several
    // times faster where the CPU multiplies carry-less on wide vectors.
    return crc32_gzip_refl(uint32_t(crc), data, length);
}

unsigned long CChecksum::combine(unsigned long crcA, unsigned long crcB, uint64_t lengthB)
{
    return crc32_combine64(crcA, crcB, z_off64_t(lengthB));
}

unsigned long CChecksum::icrcRepeated(unsigned long crc, unsigned long blockCrc,
                                      uint64_t blockLength, uint64_t count)
{
    if (blockLength == 0 || count == 0) return crc;
    // The CRC of all the copies from 0, by doubling: the CRC of two blocks
    // is the combination of their CRCs.
    unsigned long copies = 0;
    uint64_t copiesLength = 0;
    for (;;) {
        if (count & 1) {
            copies = copiesLength ? crc32_combine64(copies, blockCrc, z_off64_t(blockLength)) : blockCrc;
            copiesLength += blockLength;
        }
        count >>= 1;
        if (count == 0) break;
        blockCrc = crc32_combine64(blockCrc, blockCrc, z_off64_t(blockLength));
        blockLength *= 2;
    }
    return crc32_combine64(crc, copies, z_off64_t(copiesLength));
}

bool CChecksum::CalculateFileChecksum(const std::string& path, unsigned long* total,
                                      unsigned long* dataForkOnly)
{
    if (!total) return true;
    // The entry value only serves to tell whether anything was read: the
    // whole-file CRC always starts from 0.
    const unsigned long entryValue = *total;
    ReadScope::Memory* memory = ReadScope::Active();
    ReadScope::FileCRCs sums;
    if (!memory) {
        sums = readFileCRCs(path);
    } else if (auto known = memory->crcs.find(path); known != memory->crcs.end()) {
        sums = known->second;
    } else {
        sums = memory->crcs.emplace(path, readFileCRCs(path)).first->second;
    }
    *total = sums.total;
    if (dataForkOnly && sums.hasDataFork) *dataForkOnly = sums.dataFork;
    return sums.resourceForkRead || *total != entryValue;
}

unsigned long ChecksumLongAlignedData(unsigned long sum, const void* data, unsigned long length)
{
    const unsigned long words = (length + 3) / 4;
    // The last word is read whole, as padded sfnt tables require.
    ByteView bytes(static_cast<const uint8_t*>(data), words * 4);
    uint32_t total = uint32_t(sum);
    for (unsigned long i = 0; i < words; ++i) {
        uint32_t word = 0;
        bytes.u32(i * 4, word);
        total += word;
    }
    return total;
}
