#include "checksum/CChecksum.h"

#include <libdeflate.h>
#include <zlib.h>

#include <cstdint>
#include <optional>

#include "support/ByteView.h"
#include "support/MacForks.h"

unsigned long CChecksum::icrc(const unsigned char* data, unsigned long length, unsigned long crc)
{
    if (!data) return crc;
    // libdeflate's CRC-32 is zlib's, several times faster where the CPU
    // multiplies carry-less.
    return libdeflate_crc32(uint32_t(crc), data, length);
}

unsigned long CChecksum::combine(unsigned long crcA, unsigned long crcB, uint64_t lengthB)
{
    return crc32_combine(crcA, crcB, z_off_t(lengthB));
}

bool CChecksum::CalculateFileChecksum(const std::string& path, unsigned long* total,
                                      unsigned long* dataForkOnly)
{
    if (!total) return true;
    // The entry value only serves to tell whether anything was read: the
    // whole-file CRC always starts from 0.
    const unsigned long entryValue = *total;
    *total = 0;
    const MacFile file = MacForks::Resolve(path);
    bool resourceForkRead = false;
    for (int fork = 0; fork < 2; ++fork) {
        const bool isDataFork = fork == 0;
        const std::optional<SharedBytes> bytes =
            MacForks::ForkBytes(isDataFork ? file.dataFork : file.resourceFork);
        if (!bytes) continue;
        if (!isDataFork) resourceForkRead = true;
        if (bytes->empty()) continue;
        const ByteView view = bytes->view();
        *total = icrc(view.data(), view.size(), *total);
        if (isDataFork && dataForkOnly) *dataForkOnly = icrc(view.data(), view.size(), 0);
    }
    return resourceForkRead || *total != entryValue;
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
